// GCoord: conversions between the local and the parent system, and rotations. Any thread; one thread per
// object.

#include "geometry/GCoord.h"

#include <algorithm>
#include <cmath>

#include "geometry/GMatrix.h"

namespace {

// Rotations about the axes as 4 by 4 matrices, from the cosine and the sine of the angle.
GMatrix RotationX(double c, double s) {
  const double elements[16] = {1, 0, 0, 0, 0, c, -s, 0, 0, s, c, 0, 0, 0, 0, 1};
  return {4, 4, elements};
}
GMatrix RotationY(double c, double s) {
  const double elements[16] = {c, 0, s, 0, 0, 1, 0, 0, -s, 0, c, 0, 0, 0, 0, 1};
  return {4, 4, elements};
}
GMatrix RotationZ(double c, double s) {
  const double elements[16] = {c, -s, 0, 0, s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  return {4, 4, elements};
}

}  // namespace

void GCoord::RotateAboutX_RAD(double aAngle) noexcept {
  const double c = std::cos(aAngle);
  const double s = std::sin(aAngle);
  RotateToAxes({1, 0, 0}, {0, c, s}, {0, -s, c});
}

void GCoord::RotateAboutY_RAD(double aAngle) noexcept {
  const double c = std::cos(aAngle);
  const double s = std::sin(aAngle);
  RotateToAxes({c, 0, -s}, {0, 1, 0}, {s, 0, c});
}

void GCoord::RotateAboutZ_RAD(double aAngle) noexcept {
  const double c = std::cos(aAngle);
  const double s = std::sin(aAngle);
  RotateToAxes({c, s, 0}, {-s, c, 0}, {0, 0, 1});
}

void GCoord::Rotate_RAD(double aAngle, const GPoint& aAxis, const GPoint& aPivot) noexcept {
  GPoint e1(1, 0, 0);
  GPoint e2(0, 1, 0);
  GPoint e3(0, 0, 1);
  GPoint origin(0, 0, 0);
  for (GPoint* point : {&e1, &e2, &e3, &origin}) point->Rotate_RAD(aAngle, aAxis, aPivot);
  for (GPoint* axis : {&e1, &e2, &e3}) *axis -= origin;
  origin = PointLCStoPCS(origin);  // uses the angles from before the rotation
  RotateToAxes(e1, e2, e3);
  *this = origin;
}

void GCoord::RotateToAxes(GPoint aX, GPoint aY, GPoint aZ) noexcept {
  for (GPoint* axis : {&aX, &aY, &aZ}) *axis = VectorLCStoPCS(*axis);
  // Rotates Z onto the parent's z axis, first about x, then about y. A rotation about z remains. The
  // comparisons with 0 are exact.
  if (aZ.y == 0.0 && aZ.z == 0.0) {
    m_dAngleX = 0.0;
  } else {
    const double d = std::sqrt(aZ.z * aZ.z + aZ.y * aZ.y);
    const double angle = AngleFromCosSin(aZ.z / d, aZ.y / d);
    m_dAngleX = -angle;
    for (GPoint* axis : {&aX, &aY, &aZ}) axis->RotateAboutX_RAD(angle);
  }
  if (aZ.x == 0.0 && aZ.z == 0.0) {
    m_dAngleY = 0.0;
  } else {
    const double d = std::sqrt(aZ.z * aZ.z + aZ.x * aZ.x);
    const double angle = AngleFromCosSin(aZ.z / d, -aZ.x / d);
    m_dAngleY = -angle;
    for (GPoint* axis : {&aX, &aY, &aZ}) axis->RotateAboutY_RAD(angle);
  }
  if (aX.x == 0.0 && aX.y == 0.0) {
    m_dAngleZ = 0.0;
  } else {
    const double d = std::sqrt(aX.y * aX.y + aX.x * aX.x);
    m_dAngleZ = AngleFromCosSin(aX.x / d, aX.y / d);
  }
}

void GCoord::SetFromAxes(const GPoint& aX, const GPoint& aY, const GPoint& aZ) noexcept {
  ResetRotation();
  RotateToAxes(aX, aY, aZ);
}

GPoint GCoord::PointLCStoPCS(const GPoint& aPoint) const noexcept {
  GPoint point = aPoint;
  point.RotateAboutZ_RAD(m_dAngleZ);
  point.RotateAboutY_RAD(m_dAngleY);
  point.RotateAboutX_RAD(m_dAngleX);
  return point + Origin();
}

GPoint GCoord::PointPCStoLCS(const GPoint& aPoint) const noexcept {
  GPoint point = aPoint - Origin();
  point.RotateAboutX_RAD(-m_dAngleX);
  point.RotateAboutY_RAD(-m_dAngleY);
  point.RotateAboutZ_RAD(-m_dAngleZ);
  return point;
}

GLine GCoord::LineLCStoPCS(const GLine& aLine) const noexcept {
  return {PointLCStoPCS(aLine.m_ptA), PointLCStoPCS(aLine.m_ptB)};
}

GLine GCoord::LinePCStoLCS(const GLine& aLine) const noexcept {
  return {PointPCStoLCS(aLine.m_ptA), PointPCStoLCS(aLine.m_ptB)};
}

GPlane GCoord::PlaneLCStoPCS(const GPlane& aPlane) const noexcept {
  return {PointLCStoPCS(aPlane.m_ptA), PointLCStoPCS(aPlane.m_ptB), PointLCStoPCS(aPlane.m_ptC)};
}

GPlane GCoord::PlanePCStoLCS(const GPlane& aPlane) const noexcept {
  return {PointPCStoLCS(aPlane.m_ptA), PointPCStoLCS(aPlane.m_ptB), PointPCStoLCS(aPlane.m_ptC)};
}

void GCoord::GetMatrix16d(double* aElements) const {
  const double shift[16] = {1, 0, 0, x, 0, 1, 0, y, 0, 0, 1, z, 0, 0, 0, 1};
  GMatrix matrix = RotationZ(std::cos(m_dAngleZ), std::sin(m_dAngleZ))
                       .Multiply(RotationY(std::cos(m_dAngleY), std::sin(m_dAngleY)))
                       .Multiply(RotationX(std::cos(m_dAngleX), std::sin(m_dAngleX)))
                       .Multiply(GMatrix(4, 4, shift));
  matrix.Transpose();
  std::copy_n(matrix.Data(), 16, aElements);
}

void GCoord::SetMatrix16d(const double* aElements) {
  GMatrix matrix(4, 4, aElements);
  matrix.Transpose();
  const GPoint origin(matrix.GetElement(0, 3), matrix.GetElement(1, 3), matrix.GetElement(2, 3));
  for (int row = 0; row < 3; ++row) matrix.SetElement(row, 3, 0.0);

  // Reads each angle and removes its rotation, the outermost first.
  double angleX = 0.0;
  const double a = matrix.GetElement(1, 2);
  const double b = matrix.GetElement(2, 2);
  const double d = std::sqrt(std::abs(b * b + a * a));
  if (d != 0.0) {
    const double c = b / d;
    const double s = -a / d;
    angleX = AngleFromCosSin(c, s);
    GMatrix rotation = RotationX(c, s);
    rotation.Invert();
    matrix = matrix.Multiply(rotation);
  }
  const double c = matrix.GetElement(2, 2);
  const double s = matrix.GetElement(0, 2);
  GMatrix rotation = RotationY(c, s);
  rotation.Invert();
  matrix = matrix.Multiply(rotation);

  *this = origin;
  m_dAngleX = angleX;
  m_dAngleY = AngleFromCosSin(c, s);
  m_dAngleZ = AngleFromCosSin(matrix.GetElement(0, 0), matrix.GetElement(1, 0));
}
