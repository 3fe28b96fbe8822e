// Coordinate systems (GCoord, GLCoord) compared with glm in double precision. No display.

#include <glm/glm.hpp>
#include <glm/gtc/matrix_transform.hpp>
#include <glm/gtc/type_ptr.hpp>

#include "component/Catalogue.h"
#include "geometry/GCoord.h"
#include "geometry/Random.h"
#include "support/Test.h"

namespace {

// Derived angles are normalised with the kernel's pi, which is 2e-13 above the exact value. Rotations
// therefore differ from exact ones by up to 1.6e-12 here, matrices by up to 4.3e-13.
constexpr double kClosePi = 2e-12;
// Near their limits acos and asin lose half of the digits.
constexpr double kCloseAngles = 1e-7;

/// Returns the placement computed by glm: T * Rx * Ry * Rz.
glm::dmat4 MatrixOf(const GCoord& c) {
  glm::dmat4 m = glm::translate(glm::dmat4(1), ToGlm(c.Origin()));
  m = glm::rotate(m, c.m_dAngleX, {1, 0, 0});
  m = glm::rotate(m, c.m_dAngleY, {0, 1, 0});
  return glm::rotate(m, c.m_dAngleZ, {0, 0, 1});
}

double Off(const glm::dmat4& a, const glm::dmat4& b) {
  double largest = 0.0;
  for (int k = 0; k < 16; ++k) largest = std::max(largest, std::abs(a[k / 4][k % 4] - b[k / 4][k % 4]));
  return largest;
}

GCoord AnyCoord(Random& aRandom) {
  GCoord coord(aRandom.Point());
  coord.m_dAngleX = aRandom.Number(7);
  coord.m_dAngleY = aRandom.Number(7);
  coord.m_dAngleZ = aRandom.Number(7);
  return coord;
}

}  // namespace

TEST(Coord, AgreesWithGlm) {
  Random random;
  for (int i = 0; i < kPlacements; ++i) {
    const GCoord coord = AnyCoord(random);
    const GPoint point = random.Point();
    const glm::dmat4 m = MatrixOf(coord);
    const glm::dmat4 inverse = glm::inverse(m);
    const glm::dvec4 p(ToGlm(point), 1);
    const glm::dvec4 v(ToGlm(point), 0);
    ASSERT_LT(glm::distance(ToGlm(coord.PointLCStoPCS(point)), glm::dvec3(m * p)), kClose * 200);
    ASSERT_LT(glm::distance(ToGlm(coord.PointPCStoLCS(point)), glm::dvec3(inverse * p)), kClose * 200);
    ASSERT_LT(glm::distance(ToGlm(coord.VectorLCStoPCS(point)), glm::dvec3(m * v)), kClose * 200);
    ASSERT_LT(glm::distance(ToGlm(coord.VectorPCStoLCS(point)), glm::dvec3(inverse * v)), kClose * 200);
    glm::dmat4 elements;
    coord.GetMatrix16d(&elements[0][0]);
    ASSERT_LT(Off(elements, m), kClose * 100);
  }
}

TEST(Coord, RotatesAndMovesInTheLocalSystem) {
  Random random;
  double largest = 0.0;
  for (int i = 0; i < kPlacements; ++i) {
    const GCoord before = AnyCoord(random);
    const double angle = random.Number(7);
    const glm::dmat4 m = MatrixOf(before);
    const auto turned = [&](auto turn) {
      GCoord coord = before;
      (coord.*turn)(angle);
      return MatrixOf(coord);
    };
    largest = std::max({largest, Off(turned(&GCoord::RotateAboutX_RAD), glm::rotate(m, angle, {1, 0, 0})),
                        Off(turned(&GCoord::RotateAboutY_RAD), glm::rotate(m, angle, {0, 1, 0})),
                        Off(turned(&GCoord::RotateAboutZ_RAD), glm::rotate(m, angle, {0, 0, 1}))});
    ASSERT_LT(Off(turned(&GCoord::MoveRight), glm::translate(m, {angle, 0, 0})), kClose * 100);
    ASSERT_LT(Off(turned(&GCoord::MoveUp), glm::translate(m, {0, angle, 0})), kClose * 100);
    ASSERT_LT(Off(turned(&GCoord::MoveForward), glm::translate(m, {0, 0, -angle})), kClose * 100);
    // A pivot perpendicular to the axis: for it the rotation about a pivot is exact.
    const GPoint axis = random.Point();
    const GPoint pivot = axis.Cross(random.Point()) * 0.01;
    GCoord coord = before;
    coord.Rotate_RAD(angle, axis, pivot);
    glm::dmat4 expected = glm::translate(m, ToGlm(pivot));
    expected = glm::translate(glm::rotate(expected, angle, glm::normalize(ToGlm(axis))), -ToGlm(pivot));
    largest = std::max(largest, Off(MatrixOf(coord), expected));
  }
  EXPECT_LT(largest, kClosePi);
}

TEST(Coord, MatrixSurvivesARoundTrip) {
  Random random;
  double largest = 0.0;
  for (int i = 0; i < kPlacements; ++i) {
    const glm::dmat4 m = MatrixOf(AnyCoord(random));
    GCoord coord;
    coord.SetMatrix16d(&m[0][0]);
    glm::dmat4 again;
    coord.GetMatrix16d(&again[0][0]);
    largest = std::max(largest, Off(again, m));
  }
  EXPECT_LT(largest, kClosePi);
}

TEST(Coord, SingularOrientations) {
  // The local z axis along the parent's x: the angle about X results from rounding.
  GCoord coord;
  coord.RotateAboutY_RAD(kHalfPi);
  coord.RotateAboutY_RAD(0.25);
  EXPECT_LT(Off(MatrixOf(coord), glm::rotate(glm::dmat4(1), kHalfPi + 0.25, {0, 1, 0})), kCloseAngles);
  // The third column exactly along X: the angle about X is 0, the other two angles contain the rotation.
  const glm::dmat4 along({0, 0, -1, 0}, {0, 1, 0, 0}, {1, 0, 0, 0}, {5, 6, 7, 1});
  coord.SetMatrix16d(&along[0][0]);
  EXPECT_EQ(coord.m_dAngleX, 0.0);
  EXPECT_LT(Off(MatrixOf(coord), along), kCloseAngles);
  coord.SetFromAxes({0, 1, 0}, {-1, 0, 0}, {0, 0, 1});
  EXPECT_NEAR(coord.m_dAngleZ, kHalfPi, kCloseAngles) << "the former angles have no effect";
}

namespace {

GLPtr<IGLCoord> NewCoord() {
  GLPtr<IGLCoord> coord;
  CreateGLCoord(nullptr, IGLCoord::Identifier, coord.PutVoid());
  return coord;
}

}  // namespace

TEST(CoordObject, StartsAtTheParentAndMovesAlongItsAxes) {
  const auto coord = NewCoord();
  GLDATA_MATRIX16D matrix{};
  coord->GetMatrix16d(&matrix);
  EXPECT_EQ(glm::make_mat4(&matrix.m[0][0]), glm::dmat4(1));
  GLDATA_POINT origin{};
  coord->SetOrigin3d(1, 2, 3);
  coord->MoveForward(1);
  coord->GetOrigin(&origin);
  EXPECT_EQ(GPoint(origin), GPoint(1, 2, 2));
  coord->MoveRight(1);
  GLDATA_POINT shift{0, 0, 5};
  coord->MoveOrigin(&shift);
  coord->GetOrigin(&origin);
  EXPECT_EQ(GPoint(origin), GPoint(2, 2, 7));

  GLDATA_MATRIX6D placement{0, 0, 0, 7, 0.5, 0.25};
  coord->SetMatrix6d(&placement);
  const glm::dmat4 before = MatrixOf(GCoord(placement));
  coord->GetMatrix6d(&placement);
  EXPECT_EQ(placement.m_dAngleX, 7.0) << "stored as passed";
  coord->RotateAboutZ_RAD(0);
  coord->GetMatrix6d(&placement);
  EXPECT_NE(placement.m_dAngleX, 7.0) << "a rotation derives the angles again";
  EXPECT_LT(Off(MatrixOf(GCoord(placement)), before), kCloseAngles);
  coord->SetMatrix16d(&matrix);
  coord->GetMatrix6d(&placement);
  EXPECT_LT(Off(MatrixOf(GCoord(placement)), glm::dmat4(1)), kCloseAngles);
}

TEST(CoordObject, ConvertsMovesAndRotatesLikeThePlacement) {
  using I = IGLCoord;
  using G = GCoord;
  const G start(GLDATA_MATRIX6D{3, -2, 5, 0.3, 0.7, -1.1});
  const auto coord = NewCoord();
  const auto placement = [&] {
    GLDATA_MATRIX6D now{};
    coord->GetMatrix6d(&now);
    return MatrixOf(G(now));
  };
  const auto restart = [&] {
    auto values = start.As<GLDATA_MATRIX6D>();
    coord->SetMatrix6d(&values);
    return start;
  };
  restart();
  const std::pair<HRESULT (I::*)(GLDATA_POINT*) noexcept, GPoint (G::*)(const GPoint&) const noexcept>
      conversions[] = {{&I::VectorPCStoLCS, &G::VectorPCStoLCS},
                       {&I::VectorLCStoPCS, &G::VectorLCStoPCS},
                       {&I::PointPCStoLCS, &G::PointPCStoLCS},
                       {&I::PointLCStoPCS, &G::PointLCStoPCS}};
  for (const auto& [ours, expected] : conversions) {
    GLDATA_POINT point{1, 2, 4};
    EXPECT_EQ((coord.Get()->*ours)(&point), S_OK);
    EXPECT_EQ(GPoint(point), (start.*expected)({1, 2, 4}));
    EXPECT_EQ((coord.Get()->*ours)(nullptr), E_INVALIDARG);
  }
  const std::pair<HRESULT (I::*)(double) noexcept, void (G::*)(double) noexcept> changes[] = {
      {&I::MoveRight, &G::MoveRight},
      {&I::MoveUp, &G::MoveUp},
      {&I::MoveForward, &G::MoveForward},
      {&I::RotateAboutX_RAD, &G::RotateAboutX_RAD},
      {&I::RotateAboutY_RAD, &G::RotateAboutY_RAD},
      {&I::RotateAboutZ_RAD, &G::RotateAboutZ_RAD}};
  for (const auto& [ours, expected] : changes) {
    G changed = restart();
    (changed.*expected)(0.4);
    EXPECT_EQ((coord.Get()->*ours)(0.4), S_OK);
    EXPECT_EQ(placement(), MatrixOf(changed));
  }
  G changed = restart();
  GLDATA_POINT axis{1, 2, 0}, pivot{2, -1, 3};
  changed.Rotate_RAD(0.4, GPoint(axis), GPoint(pivot));
  EXPECT_EQ(coord->Rotate_RAD(0.4, &axis, &pivot), S_OK);
  EXPECT_EQ(placement(), MatrixOf(changed));
  EXPECT_EQ(coord->Rotate_RAD(0.4, &axis, nullptr), E_INVALIDARG);
  EXPECT_EQ(coord->ResetRotation(), S_OK);
  EXPECT_EQ(placement(), glm::translate(glm::dmat4(1), ToGlm(changed.Origin())));
}

TEST(CoordObject, IsReadAndWrittenWhole) {
  const auto coord = NewCoord();
  std::atomic<bool> stop{false};
  std::thread writer([&] {
    for (int i = 0; !stop; ++i) {
      const double n = i % 1000;
      GLDATA_MATRIX6D placement{n, n, n, n, n, n};
      coord->SetMatrix6d(&placement);
    }
  });
  for (int i = 0; i < 20'000; ++i) {
    GLDATA_MATRIX6D seen{};
    coord->GetMatrix6d(&seen);
    const bool whole = seen.x == seen.y && seen.y == seen.z && seen.z == seen.m_dAngleX &&
                       seen.m_dAngleX == seen.m_dAngleY && seen.m_dAngleY == seen.m_dAngleZ;
    if (!whole) {
      ADD_FAILURE() << "half-written placement at " << i;
      break;
    }
  }
  stop = true;
  writer.join();
}
