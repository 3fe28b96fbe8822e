// Points, matrices, lines and planes compared with glm in double precision, and their limiting cases. No
// display.

#include <gmock/gmock.h>

#include <glm/glm.hpp>
#include <glm/gtc/matrix_transform.hpp>
#include <glm/gtc/type_ptr.hpp>

#include "geometry/GMatrix.h"
#include "geometry/GPlane.h"
#include "geometry/Random.h"
#include "support/Test.h"

using testing::ElementsAre;

namespace {

double Off(const GPoint& a, const glm::dvec3& b) { return glm::length(ToGlm(a) - b); }

/// The error code of the kernel, which is cleared at the start of a test.
class GeomErrors {
 public:
  GeomErrors() { g_iGeomError = kGeomNoError; }
  /// Clears the error code. @return the previous code
  int Take() { return g_iGeomError.exchange(kGeomNoError); }
};

GMatrix Matrix(std::int32_t n, std::initializer_list<double> aElements) { return {n, n, aElements.begin()}; }

std::vector<double> Elements(const GMatrix& m) { return {m.Data(), m.Data() + m.Rows() * m.Cols()}; }

}  // namespace

TEST(Geometry, TolerantComparison) {
  const GPoint zero(0, 0, 0), atTolerance(0.5, 0, 0);
  EXPECT_FALSE(zero.IsEqual(atTolerance, 0.5)) << "strictly below";
  EXPECT_FALSE(zero.IsNotEqual(atTolerance, 0.5)) << "strictly above";
  EXPECT_TRUE(zero.IsEqual({9e-8, 0, -9e-8}, -1.0)) << "-1 selects the module's tolerance";
  EXPECT_TRUE(zero.IsNotEqual({0, 0, 2e-7}, -1.0));
  struct Case {
    GPoint a, b;
    bool greater, less;
  };
  for (const auto& [a, b, greater, less] :
       {Case{{2, 0, 0}, {1, 5, 5}, true, false}, Case{{1, 0, 0}, {2, -5, -5}, false, true},
        Case{{1.05, 2, 0}, {1, 1, 9}, true, false}, Case{{1, 1, 1}, {1.05, 1.05, 2}, false, true},
        Case{{1, 1, 1}, {1.05, 1.05, 1.05}, false, false}}) {
    EXPECT_EQ(a.IsGreater(b, 0.1), greater) << a.x << " " << b.x;
    EXPECT_EQ(a.IsLess(b, 0.1), less) << a.x << " " << b.x;
  }
  EXPECT_TRUE(GPoint(1, 2, 3) < GPoint(1, 2, 4));
  EXPECT_TRUE(GPoint(1, 3, 0) > GPoint(1, 2, 9));
  EXPECT_TRUE(GPoint(1, 2, 3 + 5e-8) <= GPoint(1, 2, 3)) << "equal within the tolerance";
  EXPECT_FALSE(GPoint(1, 2, 3 + 5e-8) < GPoint(1, 2, 3)) << "exact";
  EXPECT_TRUE(GPoint(0.5, 1, 2 + 5e-8).IsBetween({1, 1, 2}, {0, 3, 0}));
  EXPECT_FALSE(GPoint(0.5, 1, 2 + 5e-7).IsBetween({1, 1, 2}, {0, 3, 0}));
}

TEST(Geometry, ZeroVectorsAreReported) {
  GeomErrors errors;
  GPoint zero(0, 0, 0);
  EXPECT_EQ(zero.Angle({1, 2, 3}), 0.0);
  EXPECT_EQ(errors.Take(), kGeomZeroLength);
  EXPECT_EQ(zero.SetLength(5).Length(), 0.0);
  EXPECT_EQ(errors.Take(), kGeomZeroLength);
  GPoint point(1, 2, 3);
  EXPECT_EQ(point / 0, point);
  EXPECT_EQ(errors.Take(), kGeomZeroLength);
  point /= 0;
  EXPECT_EQ(point, GPoint(1, 2, 3));
  EXPECT_EQ(errors.Take(), kGeomZeroLength);
  EXPECT_EQ(point.Project(zero), point);
  EXPECT_EQ(point.Angle(point), 0.0) << "exactly";
  EXPECT_EQ(errors.Take(), kGeomNoError);
}

TEST(Geometry, VectorsAgreeWithGlm) {
  Random random;
  for (int i = 0; i < kPlacements; ++i) {
    const GPoint a = random.Point(), b = random.Point();
    const glm::dvec3 u = ToGlm(a), v = ToGlm(b);
    ASSERT_LT(Off(a.Cross(b), glm::cross(u, v)), kClose * 1e4);
    ASSERT_NEAR(a.Dot(b), glm::dot(u, v), kClose * 1e4);
    ASSERT_NEAR(a.Distance(b), glm::distance(u, v), kClose * 100);
    ASSERT_NEAR(a.Angle(b), std::atan2(glm::length(glm::cross(u, v)), glm::dot(u, v)), kClose * 100);
    ASSERT_LT(Off(a.Project(b), v * (glm::dot(u, v) / glm::dot(v, v))), kClose * 100);
    GPoint clamped = random.Point();
    const glm::dvec3 expected = glm::clamp(ToGlm(clamped), glm::min(u, v), glm::max(u, v));
    clamped.Clamp(a, b);
    ASSERT_EQ(Off(clamped, expected), 0.0);
  }
}

TEST(Geometry, RotationAgreesWithGlmExceptForPivots) {
  Random random;
  for (int i = 0; i < kPlacements; ++i) {
    const GPoint point = random.Point(), axis = random.Point(), pivot = random.Point();
    const double angle = random.Number(10);
    const glm::dvec3 a = glm::normalize(ToGlm(axis)), o = ToGlm(pivot);
    const glm::dmat4 turn = glm::rotate(glm::dmat4(1), angle, a);
    const glm::dvec3 exact = glm::dvec3(turn * glm::dvec4(ToGlm(point) - o, 1)) + o;
    // The component of the pivot along the axis is added (1 - cos) times too often.
    const glm::dvec3 expected = exact + (1 - std::cos(angle)) * glm::dot(o, a) * a;
    GPoint turned = point;
    turned.Rotate_RAD(angle, axis, pivot);
    ASSERT_LT(Off(turned, expected), kClose * 100) << "angle " << angle;
    const std::pair<void (GPoint::*)(double) noexcept, glm::dvec3> turns[] = {
        {&GPoint::RotateAboutX_RAD, {1, 0, 0}},
        {&GPoint::RotateAboutY_RAD, {0, 1, 0}},
        {&GPoint::RotateAboutZ_RAD, {0, 0, 1}}};
    for (const auto& [rotate, about] : turns) {
      turned = point;
      (turned.*rotate)(angle);
      ASSERT_LT(Off(turned, glm::dmat3(glm::rotate(glm::dmat4(1), angle, about)) * ToGlm(point)),
                kClose * 100);
    }
  }
}

TEST(Geometry, ProductHasTheArgumentOnTheLeft) {
  const GMatrix t = Matrix(2, {1, 2, 3, 4}), o = Matrix(2, {0, 1, 5, 0});
  EXPECT_THAT(Elements(t.Multiply(o)), ElementsAre(3, 4, 5, 10)) << "o * t";
  const double six[] = {1, 2, 3, 4, 5, 6};
  const GMatrix wide(2, 3, six), tall(3, 2, six);
  EXPECT_THAT(Elements(wide.Multiply(tall)), ElementsAre(9, 12, 19, 26))
      << "tall * wide, cut to two rows and two columns";
  EXPECT_THAT(Elements(wide.Multiply(wide)), ElementsAre(0, 0, 0, 0, 0, 0)) << "inner dimensions differ";
  EXPECT_THAT(Elements(wide.Subtract(tall)), ElementsAre(0, 0, 0, 0, 0, 0)) << "sizes differ";
  EXPECT_THAT(Elements(t.Add(o)), ElementsAre(1, 3, 8, 4));
  GMatrix transposed = wide;
  transposed.Transpose();
  EXPECT_THAT(Elements(transposed), ElementsAre(1, 4, 2, 5, 3, 6));
  EXPECT_EQ(transposed.Rows(), 3);
}

TEST(Geometry, SingularMatricesAreUnchanged) {
  for (GMatrix m : {Matrix(1, {5}), Matrix(2, {1, 2, 2, 4}), Matrix(3, {1, 2, 3, 2, 4, 6, 0, 0, 1}),
                    Matrix(5, {}), GMatrix(2, 3)}) {
    const std::vector<double> before = Elements(m);
    EXPECT_FALSE(m.Invert()) << m.Rows() << " by " << m.Cols();
    EXPECT_EQ(Elements(m), before);
  }
  EXPECT_EQ(Matrix(1, {5}).Determinant(), 0.0);
}

TEST(Geometry, EachSizeInvertsByCofactors) {
  Random random;
  for (int round = 0; round < 1000; ++round) {
    const std::int32_t n = 2 + round % 5;
    GMatrix m(n, n), expected(n, n);
    for (std::int32_t k = 0; k < n * n; ++k)
      m.SetElement(k / n, k % n, random.Number(1) + (k % (n + 1) == 0 ? 4 : 0));
    for (std::int32_t k = 0; k < n * n; ++k) expected.SetElement(k % n, k / n, m.Cofactor(k / n, k % n));
    expected.Divide(m.Determinant());
    if (n == 4) {  // the transpose has the same inverse
      ASSERT_NEAR(m.Determinant(), glm::determinant(glm::make_mat4(m.Data())), kClose * 256);
    }
    const GMatrix before = m;
    ASSERT_TRUE(m.Invert());
    ASSERT_EQ(Elements(m), Elements(expected)) << "bit by bit, size " << n;
    const GMatrix product = m.Multiply(before);
    for (std::int32_t k = 0; k < n * n; ++k)
      ASSERT_NEAR(product.GetElement(k / n, k % n), k % (n + 1) == 0 ? 1 : 0, kClose) << "size " << n;
  }
}

TEST(Geometry, PlanesAndLinesIntersect) {
  Random random;
  for (int i = 0; i < kPlacements; ++i) {
    const GPlane plane(random.Point(), random.Point(), random.Point());
    const GLine line(random.Point(), random.Point());
    const glm::dvec3 normal = glm::normalize(
        glm::cross(ToGlm(plane.m_ptB) - ToGlm(plane.m_ptA), ToGlm(plane.m_ptC) - ToGlm(plane.m_ptA)));
    const glm::dvec3 direction = glm::normalize(ToGlm(line.m_ptB) - ToGlm(line.m_ptA));
    ASSERT_LT(Off(plane.GetUnitNormal(), normal), kClose);
    GPoint point(0, 0, 0);
    ASSERT_TRUE(plane.Intersect(line, point));
    const double scale = 100 + point.Length();
    ASSERT_LT(std::abs(glm::dot(ToGlm(point) - ToGlm(plane.m_ptA), normal)), kClose * scale);
    ASSERT_LT(glm::length(glm::cross(ToGlm(point) - ToGlm(line.m_ptA), direction)), kClose * scale);
    ASSERT_NEAR(plane.Angle(line), std::asin(glm::dot(normal, direction)), kClose * 100);
    GPoint moved(0, 0, 0);
    const double distance = std::abs(glm::dot(ToGlm(line.m_ptA) - ToGlm(plane.m_ptA), normal));
    ASSERT_NEAR(plane.DistanceToPoint(line.m_ptA, moved), distance, kClose * 100);
    ASSERT_LT(Off(moved, ToGlm(line.m_ptA) + normal * distance), kClose * 100) << "along the normal";

    const GPlane second(random.Point(), random.Point());
    ASSERT_NEAR(
        glm::dot(ToGlm(second.GetUnitNormal()), glm::normalize(ToGlm(second.m_ptC) - ToGlm(second.m_ptA))), 0,
        kClose);
    const GPlane third(random.Point(), random.Point(), random.Point());
    ASSERT_TRUE(plane.Intersect(second, third, point));
    for (const GPlane& each : {plane, second, third})
      ASSERT_LT(std::abs(each.DistanceToPoint(point, moved)), kClose * (1e4 + point.Length()));
    GLine met;
    ASSERT_TRUE(plane.Intersect(third, met));
    ASSERT_GT(met.Direction().Dot(plane.GetUnitNormal().Cross(third.GetUnitNormal())), 0.0);
    for (const GPlane& each : {plane, third}) {
      ASSERT_LT(each.DistanceToPoint(met.m_ptA, moved), kClose * (100 + met.m_ptA.Length()));
      ASSERT_NEAR(each.Angle(met), 0.0, kClose);
    }
  }
  // A direction without x: the line starts at y = 0, mirrored through the origin.
  const GPlane x2({2, 0, 0}, {2, 1, 0}, {2, 0, 1});
  const GPlane z3({0, 0, 3}, {1, 0, 3}, {0, 1, 3});
  GLine line;
  ASSERT_TRUE(x2.Intersect(z3, line));
  EXPECT_EQ(line.m_ptA, GPoint(-2, 0, -3));
}

TEST(Geometry, PlaneRelations) {
  const GPlane z0;
  const GPlane z1({0, 0, 1}, {1, 0, 1}, {0, 1, 1});
  const GPlane x0({0, 0, 0}, {0, 1, 0}, {0, 0, 1});
  const GPlane none({0, 0, 0}, {1, 1, 1}, {2, 2, 2});
  const GPlane tilted({0, 0, 0}, {1, 0, 1e-15}, {0, 1, 0});
  EXPECT_EQ(z0.Relation(z0), kPlanesSame);
  EXPECT_EQ(z0.Relation(z1), kPlanesParallel);
  EXPECT_EQ(z0.Relation(x0), kPlanesMeet);
  EXPECT_EQ(z0.Relation(tilted), kPlanesMeet) << "exact";
  EXPECT_EQ(z0.Relation(none), kPlanesUnrelated);
  EXPECT_EQ(GPlane({0, 0, 1}, {0, 2, 1}, {2, 0, 1}).Relation(z1), kPlanesSame) << "regardless of orientation";
  GLine line;
  GPoint point(7, 7, 7);
  EXPECT_FALSE(z0.Intersect(z1, line));
  EXPECT_FALSE(z0.Intersect(z1, x0, point));
  EXPECT_FALSE(z0.Intersect(GLine(), point)) << "a line in the plane";
  EXPECT_FALSE(z0.Intersect(GLine({1, 2, 3}, {1, 2, 3}), point)) << "a line without a direction";
  EXPECT_EQ(point, GPoint(7, 7, 7));
}

TEST(Geometry, DefaultAndDegeneratePlanes) {
  GeomErrors errors;
  const auto [a, b, c, d] = GPlane().GetEquation();
  EXPECT_THAT((std::array{a, b, c, d}), ElementsAre(0, 0, 1, 0));
  EXPECT_EQ(GPlane().GetUnitNormal(), GPoint(0, 0, 1));
  EXPECT_EQ(GPlane({0, 0, 0}, {0, 1, 0}, {1, 0, 0}).GetUnitNormal(), GPoint(0, 0, -1)) << "clockwise";
  const GPlane none({0, 0, 0}, {1, 1, 1}, {2, 2, 2});
  EXPECT_FALSE(none.IsValid());
  for (const double bad : {std::nan(""), HUGE_VAL, 1e300})
    EXPECT_FALSE(GPlane({bad, 0, 0}, {0, bad, 0}, {0, 0, 1}).IsValid()) << bad;
  EXPECT_EQ(none.GetUnitNormal(), GPoint(0, 0, 0));
  EXPECT_EQ(errors.Take(), kGeomZeroLength);
  GPoint point(7, 7, 7);
  EXPECT_EQ(none.DistanceToPoint({1, 2, 3}, point), 0.0);
  EXPECT_EQ(errors.Take(), kGeomNoNormal);
  EXPECT_EQ(point, GPoint(7, 7, 7));
  EXPECT_TRUE(none.ContainsPoint({1, 2, 3}));
  EXPECT_TRUE(std::isnan(none.Angle(GPlane())));
  EXPECT_TRUE(GPlane().ContainsLine(GLine()));
  EXPECT_FALSE(GPlane().ContainsLine(GLine({0, 0, 0}, {0, 0, 1})));
}

TEST(Geometry, LineDistancesInLimitingCases) {
  GeomErrors errors;
  const GLine x;
  const GLine above({0, 5, 0}, {1, 5, 0});
  const GLine skew({0, 0, 3}, {0, 2, 3});
  const GLine none({0, 3, 4}, {0, 3, 4});
  EXPECT_EQ(x.Distance(above), 5.0) << "parallel: a magnitude";
  EXPECT_EQ(x.Distance(skew), -3.0) << "skew: signed";
  EXPECT_EQ(skew.Distance(x), -3.0) << "the order and the direction both change the sign";
  EXPECT_EQ(GLine({0, 0, 3}, {0, -1, 3}).Distance(x), 3.0);
  EXPECT_EQ(x.Distance(none), 5.0);
  EXPECT_EQ(none.Distance(x), 5.0);
  EXPECT_EQ(errors.Take(), kGeomNoError);
  EXPECT_EQ(none.Distance(none), 0.0);
  EXPECT_EQ(errors.Take(), kGeomNoDirection);
  GPoint point(7, 7, 7);
  EXPECT_FALSE(x.Intersect(skew, point));
  EXPECT_FALSE(x.Intersect(x, point)) << "the same line has no single intersection";
  EXPECT_EQ(point, GPoint(7, 7, 7));
  EXPECT_EQ(none.DistanceToPoint({0, 0, 0}, point), 5.0);
  EXPECT_EQ(errors.Take(), kGeomNoDirection);
  EXPECT_EQ(point, none.m_ptA);
  EXPECT_FALSE(none.IsValid());
  EXPECT_TRUE(std::isnan(x.Angle(none)));
  EXPECT_NEAR(x.Angle(skew), kHalfPi, 1e-12);
  EXPECT_TRUE(x.ContainsPoint({17, 0, 5e-8}));
}
