// GLNavigation compared with plain geometry: pivots, pans, fits and transitions. No display.

#include <gllib/GLNavigation.h>

#include "RandomViews.h"

namespace {

using GLVector::Difference;
using GLVector::Dot;
using GLVector::kPi;
using GLVector::Length;

constexpr double kClose = 1e-7;

class Navigation : public testing::Test {
 protected:
  Navigation() { m_Context->CreateViewer(1, 0, &m_pViewer); }
  GLViewGeometry Random() {
    m_Random.Randomise(*m_Context, *m_pViewer);
    return GLViewGeometry::Of(*m_Context, *m_pViewer);
  }
  /// A visible point of a view, and its pixel.
  std::pair<GLDATA_POINT, GLPixelPlace> Shown(const GLViewGeometry& aView) {
    const GLPixelRectangle& box = aView.m_sViewport;
    const GLPixelPlace pixel = {box.m_iX + m_Random.Number(0, box.m_iWidth),
                                aView.m_iWindowHeight - box.m_iY - m_Random.Number(0, box.m_iHeight)};
    return {aView.PointAtDepth(pixel, m_Random.Number(0.01, 0.99)), pixel};
  }
  static void ExpectPixel(const GLViewGeometry& aView, const GLDATA_POINT& aPoint,
                          const GLPixelPlace& aPixel) {
    const auto seen = aView.PixelOf(aPoint);
    ASSERT_TRUE(seen);
    EXPECT_NEAR(seen->m_sPixel.x, aPixel.x, 1e-5);
    EXPECT_NEAR(seen->m_sPixel.y, aPixel.y, 1e-5);
  }
  static void ExpectRightAngles(const GLEye& aEye) {
    EXPECT_NEAR(Length(aEye.m_sRight), 1, kClose);
    EXPECT_NEAR(Length(aEye.m_sUp), 1, kClose);
    EXPECT_NEAR(Dot(aEye.m_sRight, aEye.m_sUp), 0, kClose);
    EXPECT_LT(Length(Difference(GLVector::Cross(aEye.m_sRight, aEye.m_sUp), aEye.m_sBack)), kClose);
  }

  GLPtr<IGLContext> m_Context = GLCreate<IGLContext>(CLSID_GLContext);
  IGLViewer* m_pViewer = nullptr;
  RandomViews m_Random{3};
};

TEST_F(Navigation, KeepsThePixelOfEachPivot) {
  for (int round = 0; round < 500; ++round) {
    SCOPED_TRACE(round);
    GLViewGeometry view = Random();
    const auto [pivot, pixel] = Shown(view);
    const double distance = Length(Difference(pivot, view.m_Eye.m_sOrigin));
    for (int step = 0; step < 20; ++step)
      GLOrbit(view, pivot, m_Random.Number(-1, 1), m_Random.Number(-1, 1));
    view.Apply(*m_pViewer);
    view = GLViewGeometry::Of(*m_Context, *m_pViewer);
    ExpectRightAngles(view.m_Eye);
    ExpectPixel(view, pivot, pixel);
    EXPECT_NEAR(Length(Difference(pivot, view.m_Eye.m_sOrigin)), distance, kClose * distance);

    GLPixelPlace there = Shown(view).second;
    GLPan(view, pivot, there);
    ExpectPixel(view, pivot, there);
    const double factor = m_Random.Number(0.3, 3);
    const double before =
        view.m_bOrtho ? view.HalfExtents()[0] : Length(Difference(pivot, view.m_Eye.m_sOrigin));
    GLZoom(view, pivot, factor);
    ExpectPixel(view, pivot, there);
    const double after =
        view.m_bOrtho ? view.HalfExtents()[0] : Length(Difference(pivot, view.m_Eye.m_sOrigin));
    EXPECT_NEAR(after, factor * before, kClose * after);
  }
}

TEST_F(Navigation, OrbitsUpToThePoles) {
  GLViewGeometry view = Random();
  GLTurnTo(view, GLStandardView::Front);
  view.m_Eye.m_sOrigin = {0, 0, 10};
  GLOrbit(view, {0, 0, 0}, kPi / 2, 0);
  EXPECT_NEAR(view.m_Eye.m_sOrigin.x, 10, kClose) << "to the right";
  GLOrbit(view, {0, 0, 0}, 0, kPi / 6);
  EXPECT_NEAR(view.m_Eye.m_sOrigin.y, 5, kClose) << "up";
  GLOrbit(view, {0, 0, 0}, 0.3, 100);
  EXPECT_NEAR(view.m_Eye.m_sOrigin.y, 10, kClose) << "limited to the pole";
  EXPECT_NEAR(view.m_Eye.m_sRight.y, 0, kClose);
  GLOrbit(view, {0, 0, 0}, 0, -100);
  EXPECT_NEAR(view.m_Eye.m_sOrigin.y, -10, kClose);
  for (int i = 0; i < 100; ++i) GLOrbit(view, {1, 2, 3}, m_Random.Number(-1, 1), m_Random.Number(-1, 1));
  EXPECT_NEAR(view.m_Eye.m_sRight.y, 0, kClose) << "the eye is still upright";

  const GLDATA_POINT z = {0, 0, 1};
  GLTurnTo(view, GLStandardView::Front, GLUpAxis::Z);
  for (int i = 0; i < 100; ++i) GLOrbit(view, {1, 2, 3}, m_Random.Number(-1, 1), m_Random.Number(-1, 1), z);
  EXPECT_NEAR(view.m_Eye.m_sRight.z, 0, kClose);
}

TEST_F(Navigation, WalksAndLooks) {
  GLViewGeometry view;
  GLLook(view, kPi / 2, 0);
  GLWalk(view, 1, 2, 3);  // the initial left is now ahead
  EXPECT_LT(Length(Difference(view.m_Eye.m_sOrigin, {-3, 2, -1})), kClose);
  GLLook(view, 0, 0.4);
  EXPECT_NEAR(view.m_Eye.m_sBack.y, -std::sin(0.4), kClose) << "looks up";
  GLLook(view, 0, 10);
  EXPECT_NEAR(view.m_Eye.m_sBack.y, -1, kClose) << "limited to straight up";
  EXPECT_LT(Length(Difference(view.m_Eye.m_sOrigin, {-3, 2, -1})), kClose);
}

TEST_F(Navigation, FitsBoxesAndBallsTightly) {
  for (int round = 0; round < 500; ++round) {
    SCOPED_TRACE(round);
    GLViewGeometry view = Random();
    view.m_sViewport = view.m_sVisible;  // otherwise the visible part of the picture differs
    const GLViewGeometry before = view;
    const GLDATA_POINT low = m_Random.Point(50);
    const GLDATA_POINT high = {low.x + m_Random.Number(0.1, 30), low.y + m_Random.Number(0.1, 30),
                               low.z + m_Random.Number(0.1, 30)};
    ASSERT_TRUE(GLFitBox(view, low, high, 1.0));
    EXPECT_EQ(view.m_Eye.m_sBack.x, before.m_Eye.m_sBack.x);
    double nearest = 1e9;
    double reach[4] = {-1, -1, -1, -1};  // right, left, top, bottom, as shares of half the picture
    for (int corner = 0; corner < 8; ++corner) {
      const GLDATA_POINT p = {corner & 1 ? low.x : high.x, corner & 2 ? low.y : high.y,
                              corner & 4 ? low.z : high.z};
      const auto seen = view.PixelOf(p);
      ASSERT_TRUE(seen);
      EXPECT_GE(seen->m_dDepth, 0);
      EXPECT_LE(seen->m_dDepth, 1);
      nearest = std::min(nearest, -view.m_Eye.PointToEye(p).z);
      const GLDATA_POINT place = view.SelectPoint(seen->m_sPixel);
      reach[0] = std::max(reach[0], place.x);
      reach[1] = std::max(reach[1], -place.x);
      reach[2] = std::max(reach[2], place.y);
      reach[3] = std::max(reach[3], -place.y);
    }
    const double largest = *std::max_element(reach, reach + 4), room = Length(Difference(high, low)) / 20;
    EXPECT_LE(largest, 1 + 1e-6);
    const bool close = !view.m_bOrtho && nearest < room * (1 + 1e-6);
    if (close) continue;  // the angle is wide, and the eye keeps a distance from a corner
    EXPECT_NEAR(largest, 1, 1e-6) << "touches an edge";
    EXPECT_TRUE(std::abs(reach[0] - reach[1]) < 1e-6 || std::abs(reach[2] - reach[3]) < 1e-6)
        << "in the middle";

    // For a ball, the four tangent planes through the eye are the edges of the picture.
    const GLDATA_POINT centre = m_Random.Point(50);
    const double radius = m_Random.Number(0.1, 30);
    ASSERT_TRUE(GLFitBall(view, centre, radius, 1.0));
    const GLDATA_POINT c = view.m_Eye.PointToEye(centre);
    const auto [x, y] = view.HalfExtents();
    const double half = std::min(x, y);
    EXPECT_NEAR(view.m_bOrtho ? half : -c.z * half / std::hypot(1, half), radius, 1e-6 * radius);
    EXPECT_NEAR(std::hypot(c.x, c.y), 0, kClose * 100);
  }
  GLViewGeometry flat;
  flat.m_bOrtho = false;
  flat.m_dFovy = 0;
  EXPECT_FALSE(GLFitBall(flat, {0, 0, 0}, 1)) << "no fit without a field of view";
}

TEST_F(Navigation, LooksFromTheStandardDirections) {
  const double d = std::sqrt(1.0 / 3);
  const struct {
    GLStandardView view;
    GLDATA_POINT from, up, fromZ;  // the last in a world whose z axis points up
  } cases[] = {
      {GLStandardView::Front, {0, 0, 1}, {0, 1, 0}, {0, -1, 0}},
      {GLStandardView::Back, {0, 0, -1}, {0, 1, 0}, {0, 1, 0}},
      {GLStandardView::Left, {-1, 0, 0}, {0, 1, 0}, {-1, 0, 0}},
      {GLStandardView::Right, {1, 0, 0}, {0, 1, 0}, {1, 0, 0}},
      {GLStandardView::Top, {0, 1, 0}, {0, 0, -1}, {0, 0, 1}},
      {GLStandardView::Bottom, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}},
      {GLStandardView::Isometric,
       {d, d, d},
       {-d / std::sqrt(2), std::sqrt(2) * d, -d / std::sqrt(2)},
       {d, -d, d}},
  };
  for (const auto& [standard, from, up, fromZ] : cases) {
    GLViewGeometry view = Random();
    GLTurnTo(view, standard);
    EXPECT_LT(Length(Difference(view.m_Eye.m_sBack, from)), kClose) << static_cast<int>(standard);
    EXPECT_LT(Length(Difference(view.m_Eye.m_sUp, up)), kClose) << static_cast<int>(standard);
    GLTurnTo(view, standard, GLUpAxis::Z);
    EXPECT_LT(Length(Difference(view.m_Eye.m_sBack, fromZ)), kClose) << static_cast<int>(standard);
  }
}

TEST_F(Navigation, MovesBetweenViews) {
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(round);
    const GLDATA_POINT centre = m_Random.Point(10);
    GLViewGeometry from = Random(), to = from;
    GLTurnTo(from, static_cast<GLStandardView>(m_Random.Whole(0, 6)));
    GLTurnTo(to, static_cast<GLStandardView>(m_Random.Whole(0, 6)));
    if (round % 2 == 0) GLOrbit(to, centre, m_Random.Number(-3, 3), m_Random.Number(-1, 1));
    ASSERT_TRUE(GLFitBall(from, centre, m_Random.Number(1, 5)));
    ASSERT_TRUE(GLFitBall(to, centre, m_Random.Number(5, 50)));
    const GLTransition way(from, to, centre, 5, 2.0);
    EXPECT_FALSE(way.IsOver(1.99));
    EXPECT_TRUE(way.IsOver(2.0));
    const auto apart = [](const GLViewGeometry& a, const GLViewGeometry& b) {
      return Length(Difference(a.m_Eye.m_sRight, b.m_Eye.m_sRight)) +
             Length(Difference(a.m_Eye.m_sUp, b.m_Eye.m_sUp)) +
             Length(Difference(a.m_Eye.m_sOrigin, b.m_Eye.m_sOrigin));
    };
    EXPECT_EQ(apart(way.At(0), from), 0);
    EXPECT_EQ(apart(way.At(5), to), 0);
    EXPECT_LT(apart(way.At(1e-6), from), 1e-4) << "no jump at the start";
    EXPECT_LT(apart(way.At(2 - 1e-6), to), 1e-4) << "no jump at the end";
    const GLPixelPlace middle = from.PixelOf(centre)->m_sPixel;
    double turned = 0;
    for (double seconds = 0; seconds <= 2; seconds += 0.1) {
      const GLViewGeometry view = way.At(seconds);
      ExpectRightAngles(view.m_Eye);
      ExpectPixel(view, centre, middle);
      const double angle = Dot(view.m_Eye.m_sBack, from.m_Eye.m_sBack);
      turned = std::max(turned, std::acos(std::clamp(angle, -1.0, 1.0)));
      EXPECT_GE(-view.m_Eye.PointToEye(centre).z, -from.m_Eye.PointToEye(centre).z * (1 - 1e-9));
    }
    EXPECT_LE(turned, kPi + kClose) << "the shorter way";
  }
}

}  // namespace
