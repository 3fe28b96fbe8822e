// The viewing headers compared with drawn pictures: pixels and rays, depths, overlays and kinds of passes.
// Headless display.

#include "RandomViews.h"
#include "component/Viewing.h"

namespace {

using GLVector::Difference;
using GLVector::Length;

void DrawPoint(IGLCanvas& aCanvas, GLDATA_POINT aPoint) {
  GLDATA_RGBA white{1, 1, 1, 1};
  aCanvas.SetVertexColor(&white);
  aCanvas.BeginDrawPoints();
  aCanvas.Vertex(&aPoint);
  aCanvas.EndDrawVertices();
}

void DrawQuad(IGLCanvas& aCanvas, GLDATA_RGBA aColor, std::array<GLDATA_POINT, 4> aCorners) {
  glDisable(GL_CULL_FACE);
  aCanvas.SetVertexColor(&aColor);
  aCanvas.BeginDrawQuads();
  for (GLDATA_POINT& corner : aCorners) aCanvas.Vertex(&corner);
  aCanvas.EndDrawVertices();
}

TEST_F(Viewing, FindsThePixelOfADrawnPoint) {
  RandomViews random(7);
  AddBackdrop();
  int drawn = 0;
  for (int round = 0; round < 40; ++round) {
    SCOPED_TRACE(round);
    random.Randomise(*m_Context.Get(), *m_pViewer);
    m_pViewer->ShowClipFrame(0);
    if (round % 10 == 0) m_pViewer->SetOrtho(0), m_pViewer->SetEyeFovy_DEG(0);  // no perspective
    const GLViewGeometry view = GLViewGeometry::Of(*m_Context.Get(), *m_pViewer);
    const GLPixelRectangle& box = view.m_sVisible;
    const GLPixelPlace pixel = {
        box.m_iX + std::floor(random.Number(0, box.m_iWidth)) + random.Number(0.1, 0.9),
        view.m_iWindowHeight - box.m_iY - std::floor(random.Number(0, box.m_iHeight)) -
            random.Number(0.1, 0.9)};
    const GLDATA_POINT point = view.PointAtDepth(pixel, random.Number(0.05, 0.95));
    if (!view.PixelOf(point)->m_bVisible) continue;  // the clip rectangle exceeds the window's picture
    Paint([point](Scene& scene) { DrawPoint(scene.Canvas(), point); });
    const Picture picture = Take();
    const int x = static_cast<int>(pixel.x), y = static_cast<int>(std::floor(pixel.y));
    if (x >= picture.Width() || y < 0) continue;  // outside the window
    ++drawn;
    EXPECT_EQ(picture.CountOther(kBlack), 1);
    EXPECT_EQ(picture.At(x, y), kWhite);
    const GLRay ray = view.Ray(GLMiddleOfPixel(x, y));
    const auto beside = view.PixelOf(ray.ClosestTo(point));
    ASSERT_TRUE(beside);
    EXPECT_NEAR(beside->m_sPixel.x, x + 0.5, 1e-4);
    EXPECT_NEAR(beside->m_sPixel.y, y + 0.5, 1e-4);
  }
  EXPECT_GT(drawn, 20);
}

TEST_F(Viewing, ReadsThePointUnderAPixel) {
  RandomViews random(11);
  for (int round = 0; round < 24; ++round) {
    SCOPED_TRACE(round);
    random.Randomise(*m_Context.Get(), *m_pViewer);
    SetSize(400, 300);
    m_pViewer->SetClipRectangle(100, 50, 200, 150);
    m_pViewer->SetEyeZNearAndFar(2, 50);
    const GLViewGeometry view = GLViewGeometry::Of(*m_Context.Get(), *m_pViewer);
    const GLPixelPlace pixel = GLMiddleOfPixel(random.Whole(110, 290), random.Whole(110, 240));
    // An inclined plane, through a point in the middle of the depth range.
    const GLDATA_POINT centre = view.PointAtDepth({200, 175}, view.m_bOrtho ? 0.5 : 0.9);
    const GLDATA_POINT right = view.m_Eye.VectorToWorld({1, 0, 0.2}),
                       up = view.m_Eye.VectorToWorld({0, 1, -0.1});
    const double size = view.m_bOrtho ? 100 : 12;
    const auto corner = [&](double a, double b) {
      return GLVector::Sum(centre,
                           GLVector::Sum(GLVector::Scaled(right, a * size), GLVector::Scaled(up, b * size)));
    };
    Paint(
        [&, corners = std::array{corner(-1, -1), corner(1, -1), corner(1, 1), corner(-1, 1)}](Scene& scene) {
          DrawQuad(scene.Canvas(), {1, 0, 0, 1}, corners);
          glPixelStorei(GL_PACK_SKIP_PIXELS, 7);  // state that the painter leaves must have no effect
          glMatrixMode(GL_MODELVIEW);
          glTranslated(1, 2, 3);
        });
    Await(m_Viewing->PointUnder(*m_pViewer, pixel));  // some drivers resize a window only after a frame
    const auto point = Await(m_Viewing->PointUnder(*m_pViewer, pixel));
    const GLRay ray = view.Ray(pixel);
    const GLDATA_POINT normal = GLVector::Cross(right, up);
    const GLDATA_POINT expected = ray.PointAt(GLVector::Dot(Difference(centre, ray.m_sStart), normal) /
                                              GLVector::Dot(ray.m_sDirection, normal));
    const GLDATA_POINT flat = view.m_Eye.VectorToEye(Difference(expected, centre));
    if (std::abs(flat.x) > size || std::abs(flat.y) > size) {
      EXPECT_FALSE(point) << "beside the plane";
    } else {
      ASSERT_TRUE(point);
      EXPECT_LT(Length(Difference(*point, expected)),
                2e-4 * Length(Difference(expected, view.m_Eye.m_sOrigin)));
    }
  }
  m_pViewer->Clip(1);
  EXPECT_FALSE(Await(m_Viewing->PointUnder(*m_pViewer, {5, 5}))) << "outside the clip rectangle";
  m_pViewer->Show(0);
  EXPECT_FALSE(Await(m_Viewing->PointUnder(*m_pViewer, {200, 175}))) << "a hidden viewer draws nothing";
}

TEST_F(Viewing, KnowsTheOrderOfViewers) {
  // In each frame the context calls the painter once per viewer, in drawing order.
  std::mutex lock;
  std::vector<IGLViewer*> frame, order;
  Paint([&](Scene& scene) {
    if (m_Viewing->Pass() != GLPassKind::Frame) return;
    const std::scoped_lock hold(lock);
    frame.push_back(&scene.Viewer());
  });
  m_Viewing->SetFrameListener([&](const GLFrameInfo&) {
    const std::scoped_lock hold(lock);
    order = std::exchange(frame, {});
  });
  std::vector<IGLViewer*> viewers = {m_pViewer};
  for (const int count : {3, 10, 11, 45, 160}) {
    while (static_cast<int>(viewers.size()) < count) viewers.push_back(AddViewer(1));
    m_Context->DestroyViewer(viewers[1]);
    viewers.erase(viewers.begin() + 1);
    Take();  // a complete frame has been drawn
    std::vector<IGLViewer*> named;
    for (const auto& viewer : GLViewersOf(*m_Context.Get())) named.push_back(viewer.Get());
    const std::scoped_lock hold(lock);
    EXPECT_EQ(named, order);
    EXPECT_EQ(static_cast<int>(named.size()), count - 1);
  }

  for (IGLViewer* viewer : viewers) viewer->Show(0);
  const auto ordered = GLViewersOf(*m_Context.Get());
  IGLViewer &lower = *ordered[1].Get(), &upper = *ordered[5].Get();
  for (IGLViewer* viewer : {&lower, &upper}) viewer->Show(1), viewer->Clip(1);
  lower.SetClipRectangle(0, 0, 50, 60), upper.SetClipRectangle(30, 0, 40, 60);
  EXPECT_EQ(GLViewerAt(*m_Context.Get(), {20, 30}).Get(), &lower);
  EXPECT_EQ(GLViewerAt(*m_Context.Get(), {40, 30}).Get(), &upper);
  EXPECT_FALSE(GLViewerAt(*m_Context.Get(), {80, 30}));
  upper.Show(0);
  EXPECT_EQ(GLViewerAt(*m_Context.Get(), {40, 30}).Get(), &lower);
}

TEST_F(Viewing, ReportsPassesAndFrames) {
  std::map<GLPassKind, std::atomic<int>> passes;
  for (const auto kind : {GLPassKind::Frame, GLPassKind::Capture, GLPassKind::Selection}) passes[kind] = 0;
  std::vector<GLFrameInfo> frames;
  Paint([&](Scene&) { ++passes.at(m_Viewing->Pass()); });
  m_Viewing->SetFrameListener([&](const GLFrameInfo& aFrame) { frames.push_back(aFrame); });
  const auto capture = GLMake<TestCapture>();
  m_Viewing->AttachCapture(capture.Get());
  Take();
  EXPECT_EQ(passes[GLPassKind::Capture], 1);
  EXPECT_EQ(passes[GLPassKind::Selection], 0);
  capture->Request(capture->target.Get());
  m_Context.As<IGLContext2>()->TriggerDrawThread();
  EXPECT_TRUE(Eventually([&] { return capture->answer == 1; })) << "a later capture is served";
  EXPECT_EQ(passes[GLPassKind::Capture], 2);
  const int before = passes[GLPassKind::Frame];
  EXPECT_GE(before, 2);

  EXPECT_EQ(Pick(*m_Context, *m_pViewer, {-1, -1, 0}, {1, 1, 0}).result, S_OK);
  EXPECT_EQ(passes[GLPassKind::Selection], 1);
  m_Context->DetachPainter();
  m_Context->DetachCapture();
  ASSERT_GE(std::ssize(frames), before);
  for (std::size_t i = 1; i < frames.size(); ++i) {
    EXPECT_EQ(frames[i].m_uNumber, frames[i - 1].m_uNumber + 1);
    EXPECT_EQ(frames[i].m_Shown - frames[i - 1].m_Shown, frames[i].m_SinceLast);
    EXPECT_GT(frames[i].m_SinceLast.count(), 0);
  }
}

TEST_F(Viewing, CountsFramesFromTheFirstOneWithItsPainter) {
  std::vector<std::uint64_t> numbers;
  m_Viewing->SetFrameListener([&](const GLFrameInfo& aFrame) { numbers.push_back(aFrame.m_uNumber); });
  m_Context->AttachCapture(m_Viewing.Get());  // as if a frame ended in the middle of AttachPainter
  Take();
  m_pViewer->Show(0);
  EXPECT_FALSE(Await(m_Viewing->PointUnder(*m_pViewer, {5, 5})));
  m_pViewer->Show(1);
  Paint([](Scene&) {});
  Take();
  m_Context->DetachCapture();
  ASSERT_FALSE(numbers.empty());
  EXPECT_LE(numbers.size(), 2u) << "frames without the painter are not reported";
  EXPECT_EQ(numbers[0], 1u);
}

TEST_F(Viewing, ServesAllRequestsThatCameBeforeAFrame) {
  Paint([](Scene&) {});
  const auto capture = GLMake<TestCapture>();
  m_Viewing->AttachCapture(capture.Get());
  const auto target = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  const auto suspension = m_Context.As<IGLContext12>();
  suspension->SuspendDrawThread();
  capture->Request(capture->target.Get());
  std::vector<std::pair<float, std::future<bool>>> taken;
  for (const float zoom : {1.0f, 0.5f, 2.0f, 1.0f})
    taken.emplace_back(zoom, m_Viewing->TakePicture(target.Get(), {.m_fZoom = zoom}));
  suspension->ResumeDrawThread();
  for (auto& [zoom, picture] : taken) EXPECT_EQ(Await(std::move(picture)), zoom >= 1) << zoom;
  EXPECT_TRUE(Eventually([&] { return capture->answer == 1; })) << "the host's capture is asked after them";
}

TEST_F(Viewing, BreaksItsPromisesAtTheEndOfTheContext) {
  Paint([](Scene&) {});
  m_Context.As<IGLContext12>()->SuspendDrawThread();
  const auto target = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  auto taken = m_Viewing->TakePicture(target.Get());
  auto point = m_Viewing->PointUnder(*m_pViewer, {5, 5});
  m_Context.Reset();  // the host keeps its GLViewing
  EXPECT_THROW(Await(std::move(taken)), std::future_error);
  EXPECT_THROW(Await(std::move(point)), std::future_error);
}

TEST_F(Viewing, DrawsOverlaysAndRestoresState) {
  AddBackdrop();
  m_pViewer->Clip(1);
  m_pViewer->SetClipRectangle(20, 10, 60, 40);
  m_pViewer->ShowClipFrame(0);
  GLDATA_POINT a{0, 0, -5}, b{1, 0, -5}, c{0, 1, -5};  // cuts points nearer than z = -5
  m_Context->ClipPlane(&a, &c, &b);
  m_Context->EnableLighting(1);
  const GLDATA_POINT distant = {0, 0, -20};
  std::atomic<int> changed{0};
  Paint([&](Scene& scene) {
    const auto quad = [&](float aGreen, double aZ, double aHalf) {
      DrawQuad(scene.Canvas(), {1, aGreen, 0, 1},
               {{{-aHalf, -aHalf, aZ}, {aHalf, -aHalf, aZ}, {aHalf, aHalf, aZ}, {-aHalf, aHalf, aZ}}});
    };
    const auto state = [] {
      std::array<GLint, 4> found{};
      constexpr GLenum kNames[] = {GL_ATTRIB_STACK_DEPTH, GL_MODELVIEW_STACK_DEPTH, GL_PROJECTION_STACK_DEPTH,
                                   GL_MATRIX_MODE};
      for (std::size_t i = 0; i < 4; ++i) glGetIntegerv(kNames[i], &found[i]);
      return found;
    };
    quad(0, -10, 100);
    const auto before = state();
    {
      const GLOverlay overlay;
      quad(1, -20, 1);   // behind the first quad
      quad(1, -3, 0.2);  // on the cut side of the plane
    }
    {
      const GLOverlay overlay(GLOverlayUnits::Pixels, m_Viewing->Scale());
      EXPECT_EQ(std::pair(overlay.Width(), overlay.Height()), std::pair(60.0, 40.0));
      DrawQuad(scene.Canvas(), {0, 0, 1, 1}, {{{2, 3, 0}, {8, 3, 0}, {8, 5, 0}, {2, 5, 0}}});
      const auto place = overlay.PlaceOf(scene.Canvas(), distant);
      const auto pixel = GLViewGeometry::Of(scene.Context(), scene.Viewer()).PixelOf(distant)->m_sPixel;
      EXPECT_NEAR(place->x, pixel.x - 20, 1e-3);
      EXPECT_NEAR(place->y, pixel.y - 10, 1e-3);
      EXPECT_FALSE(overlay.PlaceOf(scene.Canvas(), {0, 0, 5})) << "behind the eye";
    }
    changed += state() != before;
    quad(0.9f, -30, 1);  // hidden again
    quad(0.9f, -3, 1);   // cut again
  });
  const Picture picture = Take();
  EXPECT_EQ(changed, 0);
  EXPECT_EQ(picture.At(50, 30), 0xFFFF00FF) << "without depth test, clip plane and lighting";
  EXPECT_EQ(picture.At(22, 13), 0x0000FFFFu);
  EXPECT_EQ(picture.At(28, 13), picture.At(60, 20)) << "beside the blue quad";
  EXPECT_EQ(picture.At(45, 25), picture.At(60, 20)) << "later drawing is behind again";
}

}  // namespace
