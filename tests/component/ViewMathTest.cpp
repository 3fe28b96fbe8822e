// GLViewMath without pictures; ViewingGLTest compares it with drawn pixels. No display.

#include "RandomViews.h"

namespace {

class ViewMath : public testing::Test {
 protected:
  ViewMath() { m_Context->CreateViewer(1, 0, &m_pViewer); }
  GLViewGeometry View() const { return GLViewGeometry::Of(*m_Context, *m_pViewer); }

  GLPtr<IGLContext> m_Context = GLCreate<IGLContext>(CLSID_GLContext);
  IGLViewer* m_pViewer = nullptr;
};

TEST_F(ViewMath, DescribesAViewer) {
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

TEST_F(ViewMath, RejectsInvisiblePoints) {
  m_Context->SetViewport(0, 0, 100, 100);
  m_pViewer->SetEyeZNearAndFar(1, 10);
  GLPtr<IGLCoord> eye;
  m_pViewer->GetCoord(eye.Put());
  eye->SetOrigin3d(0, 0, 0);
  EXPECT_FALSE(View().PixelOf({0, 0, 0}));
  EXPECT_FALSE(View().PixelOf({0, 0, 1})) << "behind the eye";
  for (const auto& [z, visible] : {std::pair{-0.5, false}, {-2.0, true}, {-11.0, false}})
    EXPECT_EQ(View().PixelOf({0, 0, z})->m_bVisible, visible) << z;
  EXPECT_FALSE(View().PixelOf({5, 0, -2})->m_bVisible);
}

TEST_F(ViewMath, ConvertsPlacementsBothWays) {
  RandomViews random(2);
  for (int round = 0; round < 300; ++round) {
    GLDATA_MATRIX6D placement = {1, 2, 3, random.Number(-4, 4), random.Number(-4, 4), random.Number(-4, 4)};
    if (round % 3 == 0)
      placement.m_dAngleY = (round % 2 == 0 ? 1 : -1) * GLVector::kPi / 2;  // straight up or down
    const GLEye eye = GLEye::FromPlacement(placement), again = GLEye::FromPlacement(eye.Placement());
    for (const auto axis : {&GLEye::m_sOrigin, &GLEye::m_sRight, &GLEye::m_sUp, &GLEye::m_sBack})
      EXPECT_LT(GLVector::Length(GLVector::Difference(eye.*axis, again.*axis)), 1e-9) << round;
  }
}

}  // namespace
