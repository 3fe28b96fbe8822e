// Conversions between window and model coordinates compared with drawn pixels, matrices that a painter reads,
// and display lists. Headless display.

#include "support/PlainGL.h"
#include "support/Scene.h"

namespace {

constexpr int kWidth = 320, kHeight = 200;

void ExpectNear(const GLDATA_POINT& aFound, const GLDATA_POINT& aWanted, double aMargin, const char* aWhat) {
  EXPECT_NEAR(aFound.x, aWanted.x, aMargin) << aWhat;
  EXPECT_NEAR(aFound.y, aWanted.y, aMargin) << aWhat;
  EXPECT_NEAR(aFound.z, aWanted.z, aMargin) << aWhat;
}

/// Lights one pixel at the projection of a point. @return its place from the lower left, with its depth
GLDATA_POINT Landed(IGLCanvas& aCanvas, GLDATA_POINT aPoint) {
  aCanvas.BeginDrawPoints(), aCanvas.Vertex(&aPoint), aCanvas.EndDrawVertices();
  std::vector<float> red(kWidth * kHeight), depth(kWidth * kHeight);
  glReadPixels(0, 0, kWidth, kHeight, GL_RED, GL_FLOAT, red.data());
  glReadPixels(0, 0, kWidth, kHeight, GL_DEPTH_COMPONENT, GL_FLOAT, depth.data());
  const auto isLit = [](float aRed) { return aRed > 0.0f; };
  EXPECT_EQ(std::ranges::count_if(red, isLit), 1) << "number of lit pixels";
  const auto lit = std::ranges::find_if(red, isLit) - red.begin();
  return {static_cast<double>(lit % kWidth), static_cast<double>(lit / kWidth),
          depth.at(static_cast<std::size_t>(lit))};
}

TEST(Mapping, AgreesWithDrawnPoints) {
  const std::pair<const char*, std::function<void(IGLViewer&)>> views[] = {
      {"whole window", [](IGLViewer&) {}},
      {"perspective", [](IGLViewer& v) { v.SetOrtho(0); }},
      {"clipped and scaled", [](IGLViewer& v) { v.Clip(1); }},
      {"clipped, not scaled", [](IGLViewer& v) { v.Clip(1), v.ScaleClip(0); }}};
  for (const auto& [name, set] : views) {
    ContextFixture context(kWidth, kHeight);
    GLDATA_MATRIX6D placed{2, -3, 60, 0.1, -0.05, 0.4};
    EyeOf(context.Viewer())->SetMatrix6d(&placed);
    context.Frame();  // clears the whole window: a clipped viewer clears only its rectangle
    context.Viewer().SetClipRectangle(50, 40, 150, 120), context.Viewer().ShowClipFrame(0);
    set(context.Viewer());
    GLDATA_POINT model{1.5, 2.25, -7}, shift{3, -2, 4}, world{4.5, 0.25, -3}, window{}, fromWorld{}, back{};
    context.Frame([&, name = name](Scene& scene) {
      const auto canvas = scene.CanvasAs<IGLCanvas3>();
      canvas->GetWindowCoords(&world, 1, &fromWorld);
      canvas->GetWindowCoords(&world, 0, &window);
      ExpectNear(window, fromWorld, 0.0, name);
      scene.Canvas().PushModelviewMatrix(0), scene.Canvas().Translate(&shift);
      canvas->GetWindowCoords(&model, 0, &window);
      ExpectNear(window, fromWorld, 1e-4, name);
      canvas->GetModelCoords(&window, 0, &back);
      ExpectNear(back, model, 1e-4, name);
      const GLDATA_POINT landed = Landed(scene.Canvas(), model);
      ExpectNear(landed, {std::floor(window.x), std::floor(window.y), window.z}, 1e-5, name);
      scene.Canvas().PopModelviewMatrix();
    });
    // The last call without the cache left the painter's set-up in it, for all threads.
    GLPtr<IGLCanvas> canvas;
    context.ContextAs<IGLContext14_2>()->GetCanvas(canvas.Put());
    canvas.As<IGLCanvas3>()->GetWindowCoords(&model, 1, &back);
    ExpectNear(back, window, 0.0, name);
    context.Frame();
    canvas.As<IGLCanvas3>()->GetWindowCoords(&world, 1, &back);
    ExpectNear(back, fromWorld, 0.0, "the next pass restores the viewer's set-up");
  }
}

TEST(Mapping, ReadsTheMatrixAndItsInverse) {
  const auto canvas = GLCreate<IGLCanvas>(CLSID_GLCanvas);
  const auto raw = [&] {
    GLDATA_MATRIX16D matrix;
    canvas.As<IGLCanvas14_2>()->GetRawModelviewMatrix(&matrix);
    return std::vector<double>(&matrix.m[0][0], &matrix.m[0][0] + 16);
  };
  DrawPlainGL(8, 8, [&] {
    GLDATA_MATRIX6D placed{1, 2, 3, 0.1, 0.2, 0.3};
    canvas->SetModelview6d(&placed);
    const std::vector<double> before = raw();
    EXPECT_EQ(std::vector<double>(before.end() - 4, before.end()), (std::vector<double>{1, 2, 3, 1}));
    GLDATA_MATRIX16D inverse;
    canvas.As<IGLCanvas2>()->GetModelviewMatrix(&inverse);
    canvas->PushModelviewMatrix(1), canvas->ResetModelview6d(&placed);
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(inverse.m[i / 4][i % 4], raw()[i], 1e-6) << "element " << i;
    canvas->PopModelviewMatrix(), canvas->PushModelviewMatrix(1), canvas->ResetModelview16d(&inverse);
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(raw()[i], before[i], 1e-6) << "element " << i;

    glScaled(1, 0, 1);
    const std::vector<double> singular = raw();
    canvas.As<IGLCanvas2>()->GetModelviewMatrix(&inverse);
    EXPECT_EQ(std::vector<double>(&inverse.m[0][0], &inverse.m[0][0] + 16), singular);
    GLDATA_POINT window{4, 4, 0.5}, model{7, 8, 9};
    EXPECT_EQ(canvas.As<IGLCanvas3>()->GetModelCoords(&window, 0, &model), S_OK);
    ExpectNear(model, {7, 8, 9}, 0.0, "a point that cannot be mapped is unchanged");
  });
}

}  // namespace
