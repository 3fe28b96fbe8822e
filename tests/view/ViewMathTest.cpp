// What a viewer shows where, against the matrices that plain geometry makes of its settings.

#include "RandomViews.h"
#include "component/CreateObject.h"

namespace {

constexpr double kClose = 1e-6;

class ViewMath : public testing::Test {
 protected:
  ViewMath() { m_Context->CreateViewer(1, 0, &m_pViewer); }
  GLViewGeometry View() const { return GLViewGeometry::Of(*m_Context, *m_pViewer); }

  GLPtr<IGLContext> m_Context = CreateObject<IGLContext>(CLSID_GLContext);
  IGLViewer* m_pViewer = nullptr;
};

TEST_F(ViewMath, AgreesWithTheMatricesOfEveryViewer) {
  RandomViews random(1);
  int visible = 0;
  for (int round = 0; round < 1000; ++round) {
    SCOPED_TRACE(round);
    random.Randomise(*m_Context, *m_pViewer);
    const GLViewGeometry view = View();
    const PlainView plain = PlainView::Of(*m_Context, *m_pViewer);
    const double height = view.m_iWindowHeight;
    // A place of the picture and a depth, from near to far.
    const glm::dvec3 window(plain.viewport.x + random.Number(0, 1) * plain.viewport.z,
                            plain.viewport.y + random.Number(0, 1) * plain.viewport.w,
                            random.Number(0, 0.999));
    const GLPixelPlace pixel = {window.x, height - window.y};
    const glm::dvec3 point = plain.UnProject(window);
    const double size = 1 + glm::length(point);
    const auto expectNear = [&](const GLDATA_POINT& a, const glm::dvec3& b) {
      EXPECT_LT(glm::distance(ToVec(a), b), kClose * size);
    };
    expectNear(view.PointAtDepth(pixel, window.z), point);
    const auto seen = view.PixelOf(ToPoint(point));
    ASSERT_TRUE(seen);
    EXPECT_NEAR(seen->m_sPixel.x, pixel.x, kClose * 1000);
    EXPECT_NEAR(seen->m_sPixel.y, pixel.y, kClose * 1000);
    EXPECT_NEAR(seen->m_dDepth, window.z, kClose);
    EXPECT_EQ(seen->m_bVisible, view.Contains(pixel));
    visible += seen->m_bVisible;

    const GLRay ray = view.Ray(pixel);
    expectNear(ray.m_sStart, plain.UnProject({window.x, window.y, 0}));
    expectNear(ray.ClosestTo(ToPoint(point)), point);
    EXPECT_NEAR(GLVector::Length(ray.m_sDirection), 1, kClose);
    EXPECT_GT(glm::dot(ToVec(ray.m_sDirection), point - ToVec(ray.m_sStart)), 0);

    const glm::dvec3 other = plain.UnProject({plain.viewport.x, plain.viewport.y, 0.3});
    const GLDATA_POINT inPlane = view.PointInPlaneOf(ToPoint(other), pixel);
    EXPECT_LT(glm::length(glm::cross(ToVec(ray.m_sDirection), ToVec(inPlane) - ToVec(ray.m_sStart))),
              kClose * 1000);
    EXPECT_NEAR((plain.view * glm::dvec4(ToVec(inPlane), 1)).z, (plain.view * glm::dvec4(other, 1)).z,
                kClose * size);
  }
  EXPECT_GT(visible, 400);
}

TEST_F(ViewMath, KnowsWhatAViewerShows) {
  m_Context->SetViewport(0, 0, 200, 100);
  m_pViewer->SetClipRectangle(50, 20, 100, 40);  // from the lower left: rows 40 to 79 from the top
  const struct {
    int clip;
    GLPixelPlace pixel;
    bool shown;
    double x, y;
  } cases[] = {
      {0, {0, 0}, true, -1, 1},
      {0, {199.5, 99.5}, true, 0.995, -0.99},
      {0, {200, 50}, false, 1, 0},
      {0, {100, -0.5}, false, 0, 1.01},
      {1, {50, 40}, true, -1, 1},
      {1, {100, 60}, true, 0, 0},
      {1, {149.5, 79.5}, true, 0.99, -0.975},
      {1, {49.5, 60}, false, -1.01, 0},
      {1, {100, 80}, false, 0, -1},
  };
  for (const auto& [clip, pixel, shown, x, y] : cases) {
    for (const int scaled : {0, 1}) {
      m_pViewer->Clip(clip);
      m_pViewer->ScaleClip(scaled);
      EXPECT_EQ(View().Contains(pixel), shown) << clip << ' ' << pixel.x << ' ' << pixel.y;
      const GLDATA_POINT point = View().SelectPoint(pixel);
      EXPECT_NEAR(point.x, x, 1e-12);
      EXPECT_NEAR(point.y, y, 1e-12);
    }
  }
}

TEST_F(ViewMath, TellsWhatCantBeSeen) {
  m_Context->SetViewport(0, 0, 100, 100);
  m_pViewer->SetEyeZNearAndFar(1, 10);
  GLPtr<IGLCoord> eye;
  m_pViewer->GetCoord(eye.Put());
  eye->SetOrigin3d(0, 0, 0);
  EXPECT_FALSE(View().PixelOf({0, 0, 0}));
  EXPECT_FALSE(View().PixelOf({0, 0, 1})) << "behind the eye";
  for (const auto& [z, visible] : {std::pair{-0.5, false}, {-2.0, true}, {-11.0, false}}) {
    EXPECT_EQ(View().PixelOf({0, 0, z})->m_bVisible, visible) << z;
  }
  EXPECT_FALSE(View().PixelOf({5, 0, -2})->m_bVisible);
}

TEST_F(ViewMath, KeepsEyesThroughPlacements) {
  RandomViews random(2);
  for (int round = 0; round < 300; ++round) {
    GLDATA_MATRIX6D placement = {1, 2, 3, random.Number(-4, 4), random.Number(-4, 4), random.Number(-4, 4)};
    if (round % 3 == 0) placement.m_dAngleY = (round % 2 == 0 ? 1 : -1) * GLVector::kPi / 2;  // straight
    const GLEye eye = GLEye::FromPlacement(placement), again = GLEye::FromPlacement(eye.Placement());
    for (const auto axis : {&GLEye::m_sOrigin, &GLEye::m_sRight, &GLEye::m_sUp, &GLEye::m_sBack}) {
      EXPECT_LT(GLVector::Length(GLVector::Difference(eye.*axis, again.*axis)), 1e-9) << round;
    }
  }
}

}  // namespace
