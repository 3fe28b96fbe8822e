// GL state and overlays of a viewer pass, before and after the painter. Headless display.

#include "geometry/Geometry.h"
#include "support/Scene.h"
#include "view/GLViewer.h"

namespace {

/// Fills the view with red, and counts its calls.
class RedGauge final : public GLViewerGaugeBase {
 public:
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*) noexcept override {
    ++m_iDraws;
    GLDATA_RGBA red{1, 0, 0, 1};
    aCanvas->SetVertexColor(&red);
    DrawRectangle(*aCanvas, -1, -1, 1, 1);
    return S_OK;
  }

  std::atomic<int> m_iDraws = 0;
};

constexpr std::uint32_t kBlack = 0x000000FF, kRed = 0xFF0000FF;

TEST(ViewerOverlay, ShowsTheAxesWithAFrameOrGauge) {
  ContextFixture context(100, 100);
  IGLViewer& viewer = context.Viewer();
  static_cast<GLViewer&>(viewer).SetShowAxes(1);
  viewer.Clip(1), viewer.SetClipRectangle(0, 0, 100, 100), viewer.ShowClipFrame(0);
  EXPECT_EQ(context.FramePicture().CountOther(kBlack), 0) << "axes are drawn only with a frame or gauge";
  viewer.ShowClipFrame(1), viewer.SetFrameOffset(0.11f);
  EyeOf(viewer)->RotateAboutZ_RAD(kHalfPi);  // rotates the figure in the opposite direction
  const Picture framed = context.FramePicture();
  EXPECT_EQ(framed.At(94, 50), 0xFFFFFFFF) << "the frame, inset by half of its offset";
  EXPECT_EQ(framed.At(34, 99 - 18), kRed) << "the x axis, downwards from the figure's centre";
  EXPECT_EQ(framed.At(50, 99 - 34), 0x00FF00FF) << "the y axis, to the right";
  int letters = 0;
  for (int x = 6; x < 34; ++x) {
    for (int y = 6; y < 24; ++y) letters += framed.At(x, 99 - y) != framed.At(60, 99 - 6) ? 1 : 0;
  }
  EXPECT_GT(letters, 20) << "the names of the axes";
}

TEST(ViewerOverlay, EndsTheFontOfTheAxesWithTheViewer) {
  ContextFixture context(100, 100);
  const auto lists = [&] {
    int count = 0;
    context.Frame([&](Scene&) {
      for (GLuint name = 1; name <= 0xFFFF; ++name) count += glIsList(name);
    });
    return count;
  };
  for (int round = 0; round < 2; ++round) {
    IGLViewer* viewer = nullptr;
    context.Context().CreateViewer(1, 1, &viewer);
    viewer->Clip(1);
    static_cast<GLViewer*>(viewer)->SetShowAxes(1);
    context.Frame();
    context.Context().DestroyViewer(viewer);
    EXPECT_TRUE(Eventually([&] { return lists() == 0; })) << "round " << round;
  }
}

TEST(ViewerOverlay, DrawsGaugesAndRestoresTheMatrices) {
  ContextFixture context(32, 32);
  IGLViewer& viewer = context.Viewer();
  const auto gauge = GLMake<RedGauge>();
  viewer.AddGauge(gauge.Get()), viewer.AddGauge(gauge.Get());
  context.Frame();
  EXPECT_EQ(gauge->m_iDraws, 0) << "gauges are not shown";
  viewer.ShowGauges(1);
  gauge->Show(0);
  EXPECT_EQ(context.FramePicture().CountOther(kBlack), 0) << "the gauge is not visible";
  gauge->Show(1);
  const auto dark = [](Scene& scene) {
    GLDATA_POINT away{0, 0, -500};
    scene.Canvas().Translate(&away);
    glEnable(GL_LIGHTING);
  };
  EXPECT_EQ(context.FramePicture(dark).CountOther(kRed), 0) << "unlit, over the whole view";
  GLDATA_POINT a{1000, 0, 0}, b{1000, 1, 0}, c{1000, 0, 1};
  context.Context().ClipPlane(&a, &b, &c);
  EXPECT_EQ(context.FramePicture().CountOther(kRed), 0) << "gauges are not clipped";
  int depth[2] = {};
  gauge->m_iDraws = 0;
  context.Frame([&](Scene&) {
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth[0]), glGetIntegerv(GL_PROJECTION_STACK_DEPTH, &depth[1]);
  });
  EXPECT_EQ(gauge->m_iDraws, 1) << "added twice, drawn once";
  EXPECT_EQ(depth[0], 1);
  EXPECT_EQ(depth[1], 1);
}

}  // namespace
