// Coordinate systems (GLCoord, and GCoord behind it) compared with glm in double precision. No display.

#include <glm/glm.hpp>
#include <glm/gtc/matrix_transform.hpp>
#include <glm/gtc/type_ptr.hpp>

#include "geometry/GCoord.h"
#include "geometry/Random.h"
#include "support/Test.h"

namespace {

using I = IGLCoord;

// Derived angles are normalised with the kernel's pi, which is 2e-13 above the exact value. Rotations
// therefore differ from exact ones by up to 1.6e-12 here, matrices by up to 4.3e-13.
constexpr double kClosePi = 2e-12;
// Near their limits acos and asin lose half of the digits.
constexpr double kCloseAngles = 1e-7;

/// Returns the placement computed by glm: T * Rx * Ry * Rz.
glm::dmat4 MatrixOf(const GLDATA_MATRIX6D& c) {
  glm::dmat4 m = glm::translate(glm::dmat4(1), {c.x, c.y, c.z});
  m = glm::rotate(m, c.m_dAngleX, {1, 0, 0});
  m = glm::rotate(m, c.m_dAngleY, {0, 1, 0});
  return glm::rotate(m, c.m_dAngleZ, {0, 0, 1});
}

double Off(const glm::dmat4& a, const glm::dmat4& b) {
  double largest = 0.0;
  for (int k = 0; k < 16; ++k) largest = std::max(largest, std::abs(a[k / 4][k % 4] - b[k / 4][k % 4]));
  return largest;
}

class Coord : public testing::Test {
 protected:
  /// Sets a random placement. @return its six numbers
  GLDATA_MATRIX6D Randomise() {
    const GPoint origin = m_Random.Point(), angles = m_Random.Point(7);
    GLDATA_MATRIX6D placement{origin.x, origin.y, origin.z, angles.x, angles.y, angles.z};
    m_Coord->SetMatrix6d(&placement);
    return placement;
  }
  GLDATA_MATRIX6D Placement() const {
    GLDATA_MATRIX6D now{};
    m_Coord->GetMatrix6d(&now);
    return now;
  }
  glm::dmat4 Elements() const {
    GLDATA_MATRIX16D matrix{};
    m_Coord->GetMatrix16d(&matrix);
    return glm::make_mat4(&matrix.m[0][0]);
  }
  void SetElements(const glm::dmat4& aMatrix) const {
    GLDATA_MATRIX16D matrix;
    std::memcpy(&matrix, &aMatrix, sizeof matrix);
    EXPECT_EQ(m_Coord->SetMatrix16d(&matrix), S_OK);
  }

  GLPtr<IGLCoord> m_Coord = GLCreate<IGLCoord>(CLSID_GLCoord);
  Random m_Random;
};

}  // namespace

TEST_F(Coord, AgreesWithGlm) {
  for (int i = 0; i < kPlacements; ++i) {
    const glm::dmat4 m = MatrixOf(Randomise()), inverse = glm::inverse(m);
    const GPoint point = m_Random.Point();
    const glm::dvec4 p(ToGlm(point), 1), v(ToGlm(point), 0);
    const std::pair<HRESULT (I::*)(GLDATA_POINT*) noexcept, glm::dvec4> conversions[] = {
        {&I::PointLCStoPCS, m * p},
        {&I::PointPCStoLCS, inverse * p},
        {&I::VectorLCStoPCS, m * v},
        {&I::VectorPCStoLCS, inverse * v}};
    for (const auto& [convert, expected] : conversions) {
      auto found = point.As<GLDATA_POINT>();
      ASSERT_EQ((*m_Coord.*convert)(&found), S_OK);
      ASSERT_LT(glm::distance(ToGlm(GPoint(found)), glm::dvec3(expected)), kClose * 200);
      ASSERT_EQ((*m_Coord.*convert)(nullptr), E_INVALIDARG);
    }
    ASSERT_LT(Off(Elements(), m), kClose * 100);
    Randomise();
    SetElements(m);
    ASSERT_LT(Off(Elements(), m), kClosePi);
  }
}

TEST_F(Coord, RotatesAndMovesInTheLocalSystem) {
  double largest = 0.0;
  for (int i = 0; i < kPlacements; ++i) {
    GLDATA_MATRIX6D before = Randomise();
    const double angle = m_Random.Number(7);
    const glm::dmat4 m = MatrixOf(before);
    const auto off = [&](HRESULT (I::*change)(double) noexcept, const glm::dmat4& expected) {
      m_Coord->SetMatrix6d(&before);
      EXPECT_EQ((*m_Coord.*change)(angle), S_OK);
      return Off(MatrixOf(Placement()), expected);
    };
    largest = std::max({largest, off(&I::RotateAboutX_RAD, glm::rotate(m, angle, {1, 0, 0})),
                        off(&I::RotateAboutY_RAD, glm::rotate(m, angle, {0, 1, 0})),
                        off(&I::RotateAboutZ_RAD, glm::rotate(m, angle, {0, 0, 1}))});
    ASSERT_LT(off(&I::MoveRight, glm::translate(m, {angle, 0, 0})), kClose * 100);
    ASSERT_LT(off(&I::MoveUp, glm::translate(m, {0, angle, 0})), kClose * 100);
    ASSERT_LT(off(&I::MoveForward, glm::translate(m, {0, 0, -angle})), kClose * 100);
    // A pivot perpendicular to the axis: for it the rotation about a pivot is exact.
    const GPoint along = m_Random.Point(), at = along.Cross(m_Random.Point()) * 0.01;
    auto axis = along.As<GLDATA_POINT>(), pivot = at.As<GLDATA_POINT>();
    m_Coord->SetMatrix6d(&before);
    ASSERT_EQ(m_Coord->Rotate_RAD(angle, &axis, &pivot), S_OK);
    glm::dmat4 expected = glm::translate(m, ToGlm(at));
    expected = glm::translate(glm::rotate(expected, angle, glm::normalize(ToGlm(along))), -ToGlm(at));
    largest = std::max(largest, Off(MatrixOf(Placement()), expected));
  }
  EXPECT_LT(largest, kClosePi);
  GLDATA_POINT axis{1, 2, 0};
  EXPECT_EQ(m_Coord->Rotate_RAD(0.4, &axis, nullptr), E_INVALIDARG);
}

TEST_F(Coord, SingularOrientations) {
  // The local z axis along the parent's x: the angle about X results from rounding.
  m_Coord->RotateAboutY_RAD(kHalfPi);
  m_Coord->RotateAboutY_RAD(0.25);
  EXPECT_LT(Off(MatrixOf(Placement()), glm::rotate(glm::dmat4(1), kHalfPi + 0.25, {0, 1, 0})), kCloseAngles);
  // The third column exactly along X: the angle about X is 0, the other two angles contain the rotation.
  const glm::dmat4 along({0, 0, -1, 0}, {0, 1, 0, 0}, {1, 0, 0, 0}, {5, 6, 7, 1});
  SetElements(along);
  EXPECT_EQ(Placement().m_dAngleX, 0.0);
  EXPECT_LT(Off(MatrixOf(Placement()), along), kCloseAngles);
  GCoord coord(Placement());
  coord.SetFromAxes({0, 1, 0}, {-1, 0, 0}, {0, 0, 1});
  EXPECT_NEAR(coord.m_dAngleZ, kHalfPi, kCloseAngles) << "the former angles have no effect";
}

TEST_F(Coord, StartsAtTheParentAndMovesAlongItsAxes) {
  EXPECT_EQ(Elements(), glm::dmat4(1));
  GLDATA_POINT origin{1, 2, 3};
  m_Coord->SetOrigin(&origin);
  m_Coord->MoveForward(1);
  m_Coord->GetOrigin(&origin);
  EXPECT_EQ(GPoint(origin), GPoint(1, 2, 2));
  m_Coord->MoveRight(1);
  GLDATA_POINT shift{0, -1, 5};
  m_Coord->MoveOrigin(&shift);
  m_Coord->GetOrigin(&origin);
  EXPECT_EQ(GPoint(origin), GPoint(2, 1, 7));
  for (const auto refused :
       {m_Coord->SetOrigin(nullptr), m_Coord->MoveOrigin(nullptr), m_Coord->SetMatrix6d(nullptr),
        m_Coord->SetMatrix16d(nullptr), m_Coord->GetMatrix16d(nullptr)})
    EXPECT_EQ(refused, E_INVALIDARG);

  GLDATA_MATRIX6D placement{2, 2, 7, 7, 0.5, 0.25};
  m_Coord->SetMatrix6d(&placement);
  EXPECT_EQ(Placement().m_dAngleX, 7.0) << "stored as passed";
  m_Coord->RotateAboutZ_RAD(0);
  EXPECT_NE(Placement().m_dAngleX, 7.0) << "a rotation derives the angles again";
  EXPECT_LT(Off(MatrixOf(Placement()), MatrixOf(placement)), kCloseAngles);
  EXPECT_EQ(m_Coord->ResetRotation(), S_OK);
  EXPECT_EQ(MatrixOf(Placement()), glm::translate(glm::dmat4(1), {2, 2, 7}));
}
