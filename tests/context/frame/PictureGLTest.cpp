// Frames compared with plain GL by pixels (primitives, clip planes), and matrices compared with glm. Headless
// display.

#include <glm/glm.hpp>
#include <glm/gtc/matrix_transform.hpp>

#include "component/Module.h"
#include "support/Counting.h"
#include "support/PlainGL.h"
#include "support/Scene.h"

namespace {

constexpr int kWidth = 160, kHeight = 120;

struct ColoredVertex {
  float red, green, blue, alpha;
  double x, y, z;
};

/// An irregular figure around the middle of the default view. Its halves have different colours and depths.
constexpr ColoredVertex kFigure[] = {{1, 0, 0, 1, -40, -30, -10},  {0, 1, 0, 1, -35, 25, -20},
                                     {0, 0, 1, 1, -10, -35, -30},  {1, 1, 0, 1, -5, 30, -40},
                                     {1, 0, 1, 0.5f, 15, -25, -5}, {0, 1, 1, 1, 20, 35, -15},
                                     {1, 1, 1, 1, 45, -40, -25},   {0.5f, 0.25f, 0.75f, 1, 40, 20, -35}};

using Begin = HRESULT (IGLCanvas::*)() noexcept;

void DrawFigure(IGLCanvas& aCanvas, Begin aBegin = &IGLCanvas::BeginDrawTriangleStrip) {
  (aCanvas.*aBegin)();
  for (const auto& [red, green, blue, alpha, x, y, z] : kFigure) {
    GLDATA_RGBA color{red, green, blue, alpha};
    aCanvas.SetVertexColor(&color);
    aCanvas.Vertex3d(x, y, z);
  }
  aCanvas.EndDrawVertices();
}

void DrawPlainFigure(GLenum aMode = GL_TRIANGLE_STRIP) {
  glBegin(aMode);
  for (const auto& [red, green, blue, alpha, x, y, z] : kFigure) {
    glColor4f(red, green, blue, alpha);
    glVertex3d(x, y, z);
  }
  glEnd();
}

/// Draws by plain GL with the state of a context without lighting and with the default viewer: extents of 50
/// to each side, widened to the window, and an eye at (0, 0, 1).
Picture PlainPicture(const std::function<void()>& aDraw) {
  return DrawPlainGL(kWidth, kHeight, [&] {
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_FASTEST);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glMatrixMode(GL_PROJECTION);
    const double wide = double(kWidth) / kHeight;
    glOrtho(-50 * wide, 50 * wide, -50, 50, 0, 1000);
    glMatrixMode(GL_MODELVIEW);
    glTranslated(0, 0, -1);
    aDraw();
  });
}

/// Compares a frame with the plain picture. Both must show something.
void ExpectEqual(const Picture& aOurs, const Picture& aPlain, const std::string& aWhat) {
  EXPECT_GT(aPlain.CountOther(0x000000FF), 50) << aWhat << ": the picture is empty";
  EXPECT_EQ(Difference(aOurs, aPlain), 0) << aWhat;
}

void ExpectMatrix(GLenum aName, const glm::dmat4& aWanted, const std::string& aWhat) {
  glm::dmat4 found;
  glGetDoublev(aName, &found[0][0]);
  for (int k = 0; k < 16; ++k) EXPECT_NEAR(found[k / 4][k % 4], aWanted[k / 4][k % 4], 1e-5) << aWhat;
}

/// A context without lighting.
class FramePicture : public testing::Test {
 protected:
  FramePicture() { context.Context().EnableLighting(0); }

  ContextFixture context{kWidth, kHeight};
};

}  // namespace

TEST_F(FramePicture, EqualsPlainGLInEveryPrimitiveMode) {
  constexpr std::pair<Begin, GLenum> kModes[] = {{&IGLCanvas::BeginDrawPoints, GL_POINTS},
                                                 {&IGLCanvas::BeginDrawLines, GL_LINES},
                                                 {&IGLCanvas::BeginDrawLineStrip, GL_LINE_STRIP},
                                                 {&IGLCanvas::BeginDrawLineLoop, GL_LINE_LOOP},
                                                 {&IGLCanvas::BeginDrawTriangles, GL_TRIANGLES},
                                                 {&IGLCanvas::BeginDrawTriangleStrip, GL_TRIANGLE_STRIP},
                                                 {&IGLCanvas::BeginDrawTriangleFan, GL_TRIANGLE_FAN},
                                                 {&IGLCanvas::BeginDrawQuads, GL_QUADS},
                                                 {&IGLCanvas::BeginDrawQuadStrip, GL_QUAD_STRIP},
                                                 {&IGLCanvas::BeginDrawPolygon, GL_POLYGON}};
  for (const auto& [begin, mode] : kModes) {
    const Picture ours = context.FramePicture([&](Scene& scene) {
      scene.Canvas().SetVertexPointSize(5);
      scene.Canvas().SetVertexLineWidth(3);
      for (int again = 0; again < 2; ++again)
        DrawFigure(scene.Canvas(), begin);  // fragments of equal depth are drawn
    });
    const Picture plain = PlainPicture([&] {
      glPointSize(5);
      glLineWidth(3);
      for (int again = 0; again < 2; ++again) DrawPlainFigure(mode);
    });
    ExpectEqual(ours, plain, "mode " + std::to_string(mode));
  }
}

TEST(Matrices, AgreeWithGlmForEachOperation) {
  GLDATA_MATRIX6D placement{5, -8, 3, 0.4, -0.3, 0.7};
  const glm::dvec3 way{6, -4, 2}, sizes{0.5, 0.75, 1.5}, direction{1, 2, 3};
  glm::dmat4 matrix = glm::translate(glm::dmat4(1), {5, -8, 3});
  matrix = glm::rotate(matrix, 0.4, {1, 0, 0});
  matrix = glm::rotate(matrix, -0.3, {0, 1, 0});
  matrix = glm::rotate(matrix, 0.7, {0, 0, 1});
  GLDATA_MATRIX16D elements;
  std::memcpy(&elements, &matrix, sizeof elements);
  GLDATA_POINT point{6, -4, 2}, scale{0.5, 0.75, 1.5}, axis{1, 2, 3};
  const glm::dmat4 one(1), moved = glm::translate(one, way), unit = glm::rotate(one, 1.0, direction);
  const auto canvas = GLCreate<IGLCanvas>(CLSID_GLCanvas);
  IGLCanvas& c = *canvas;
  const std::pair<std::function<void()>, glm::dmat4> cases[] = {
      {[&] { c.SetModelview6d(&placement); }, matrix},
      {[&] { c.SetModelview16d(&elements); }, matrix},
      {[&] { c.ResetModelview16d(&elements); }, glm::inverse(matrix)},
      {[&] { c.Translate(&point), c.Rotate_RAD(0.6, &axis), c.Scale(&scale); },
       glm::scale(glm::rotate(moved, 0.6, direction), sizes)},
      {[&] { c.Translate(&point), c.PushModelviewMatrix(0), c.Scale(&scale); }, glm::scale(moved, sizes)},
      {[&] { c.Translate(&point), c.PushModelviewMatrix(1), c.Rotate_RAD(1, &axis); }, unit},
      {[&] { c.Translate(&point), c.PushModelviewMatrix(1), c.Scale(&scale), c.PopModelviewMatrix(); },
       moved}};
  DrawPlainGL(8, 8, [&] {
    for (std::size_t i = 0; i < std::size(cases); ++i) {
      glMatrixMode(GL_MODELVIEW), glLoadIdentity();
      cases[i].first();
      ExpectMatrix(GL_MODELVIEW_MATRIX, cases[i].second, "case " + std::to_string(i));
    }
  });
}

TEST(Matrices, ProjectEachForm) {
  GLDATA_POINT low{-60, -20, 5}, high{40, 70, 300};
  const auto perspective = [](IGLViewer& v) {
    v.SetOrtho(0);
    v.SetEyeFovy_DEG(70);
    v.SetEyeAspect(1.25);
    v.SetEyeZNearAndFar(2, 500);
  };
  const struct {
    const char* name;
    int width, height;
    std::function<void(IGLViewer&)> set;
    glm::dmat4 wanted;
  } cases[] = {
      {"parallel, wide", 160, 80, [](IGLViewer&) {}, glm::ortho(-100., 100., -50., 50., 0., 1000.)},
      {"parallel, tall", 80, 160, [](IGLViewer&) {}, glm::ortho(-50., 50., -100., 100., 0., 1000.)},
      {"parallel, extents", 160, 80, [&](IGLViewer& v) { v.SetOrthoExtents(&high, &low); },
       glm::ortho(-120., 80., -20., 70., 5., 300.)},
      {"perspective", 160, 80, perspective, glm::perspective(glm::radians(70.), 2.5, 2., 500.)},
      {"perspective, tall", 80, 160, perspective, glm::perspective(glm::radians(70.), 0.625, 2., 500.)},
  };
  for (const auto& [name, width, height, set, wanted] : cases) {
    ContextFixture context(width, height);
    set(context.Viewer());
    context.Frame([&](Scene&) { ExpectMatrix(GL_PROJECTION_MATRIX, wanted, name); });
    LONG ortho = 0;
    context.Viewer().IsOrtho(&ortho);
    if (ortho != 0) continue;
    // The conversion looks from behind the eye, which is at (0, 0, 1): from where the window has its size.
    const double behind = height / 80 / (std::tan(glm::radians(35.)) * 1.25);
    GLDATA_POINT point{0.5, -0.25, -9};
    const glm::dvec4 seen = wanted * glm::dvec4(0.5, -0.25, -10 - behind, 1);
    context.Viewer().PointWCStoSCS(&point);
    EXPECT_NEAR(point.x, seen.x / seen.w * width / 80, 1e-6) << name;
    EXPECT_NEAR(point.y, seen.y / seen.w * height / 80, 1e-6) << name;
  }
}

TEST(NewBuffers, ShowTheBackgroundWhereNoViewerDraws) {
  ContextFixture context(64, 48);
  GLDATA_RGBA red{1, 0, 0, 1};
  context.Viewer().Clip(1);
  context.Viewer().SetClipRectangle(4, 4, 10, 10);
  context.Context().SetBackgroundColor(&red);
  for (const int size : {80, 64}) {  // each size needs other buffers
    context.Context().SetViewport(0, 0, size, size);
    context.Frame();  // some drivers apply a window's size only at the end of a frame
    const Picture picture = context.FramePicture();
    EXPECT_EQ(picture.At(60, 40), 0xFF0000FFu) << size;
    EXPECT_EQ(picture.At(8, 8), 0xFF0000FFu) << size;
  }
}

TEST(NewBuffers, ReplaceThoseOfTheFormerSize) {
  ContextFixture context(1000, 1000);
  const long before = ResidentKiB();
  for (int i = 1; i <= 100; ++i) {  // each with 8 megabytes of colour and depth
    context.Context().SetViewport(0, 0, 1000 - i % 2, 1000);
    context.Frame();
  }
  EXPECT_LT(ResidentKiB() - before, 400 * 1024) << "a sanitizer keeps 256 MiB of freed memory";
}

TEST_F(FramePicture, EqualsPlainGLBehindClipPlanes) {
  // Planes are in world coordinates, and keep the side that their normal points to.
  GLDATA_POINT a{0, -10, 0}, b{0, 10, 0}, c{0, -10, 10}, d{20, 20, 0}, e{-20, 22, 0};
  EyeOf(context.Viewer())->SetOrigin3d(8, 4, 1);
  const auto plain = [](std::initializer_list<std::array<double, 4>> planes) {
    return PlainPicture([&] {
      glLoadIdentity();
      glTranslated(-8, -4, -1);
      GLenum name = GL_CLIP_PLANE0;
      for (const auto& plane : planes) {
        glEnable(name);
        glClipPlane(name++, plane.data());
      }
      DrawPlainFigure();
    });
  };
  const auto ours = [&] { return context.FramePicture([](Scene& scene) { DrawFigure(scene.Canvas()); }); };
  ASSERT_EQ(context.Context().ClipPlane(&a, &b, &c), S_OK);
  ExpectEqual(ours(), plain({{1, 0, 0, 0}}), "right half");
  // Through (20, 20), (-20, 22) and along z: keeps the part below.
  GLDATA_POINT f{-20, 22, -5};
  ASSERT_EQ(context.Context().ClipPlane(&d, &e, &f), S_OK);
  ExpectEqual(ours(), plain({{1, 0, 0, 0}, {-10, -200, 0, 4200}}), "right half, lower part");
  EXPECT_EQ(context.Context().ClipPlane(&a, &b, &b), E_GL_BADVALUE);
  context.Context().ResetClipPlanes();
  ASSERT_EQ(context.Context().ClipPlane(&a, &c, &b), S_OK);
  ExpectEqual(ours(), plain({{-1, 0, 0, 0}}), "left half");
  const auto switched = [&] {
    return context.FramePicture([](Scene& scene) {
      scene.Canvas().EnableClipPlanes(0);
      scene.Canvas().EnableClipPlanes(1);
      DrawFigure(scene.Canvas());
    });
  };
  ExpectEqual(switched(), plain({{-1, 0, 0, 0}}), "left half, planes of before the reset switched on");
  context.Context().ResetClipPlanes();
  ExpectEqual(ours(), plain({}), "no planes");
  // The first plane cuts everything. The next ones cut nothing, and the last one replaces the first.
  GLDATA_POINT g{1000, 0, 0}, h{1000, 1, 0}, i{1000, 0, 1};
  ASSERT_EQ(context.Context().ClipPlane(&g, &h, &i), S_OK);
  for (int n = 0; n < g_iMaxClipPlanes; ++n) ASSERT_EQ(context.Context().ClipPlane(&g, &i, &h), S_OK);
  ExpectEqual(ours(), plain({}), "planes beyond GL's number");
}
