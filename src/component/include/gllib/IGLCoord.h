/// @file
/// GLCoord: a coordinate system. Each viewer and light has one; hosts can create others.

#pragma once

#include <gllib/GLTypes.h>

/// An origin and three angles in radians, relative to a parent system (PCS), define a local system (LCS). A
/// local point p is T(origin) * Rx * Ry * Rz * p in the parent system: the rotation about z is applied first,
/// the translation last. A new system coincides with its parent.
///
/// A viewer's system has the world as parent and the eye as origin. The eye looks along local -z, and local y
/// is up. MoveForward therefore moves the eye in its view direction, and RotateAboutY_RAD turns it to the
/// side.
///
/// SetMatrix6d stores angles unchanged. A rotation computes them from the axes; equivalent angles may result.
///
/// Threads: any, at any time; no operation blocks. A reader gets six consistent values. If two threads move
/// or rotate at the same time, one change can be lost. A change takes effect at the next pass of the viewer
/// or light.
/// Results: S_OK; E_INVALIDARG if a pointer is null (nothing changes).
struct IGLCoord : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x882DD086, 0x033E, 0x11D4, {0xA3, 0x19, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  // The origin, in the parent system.
  /// Returns the origin.
  virtual HRESULT GetOrigin(GLDATA_POINT* aPoint) noexcept = 0;
  /// Sets the origin.
  virtual HRESULT SetOrigin(GLDATA_POINT* aPoint) noexcept = 0;
  /// Same as SetOrigin.
  virtual HRESULT SetOrigin3d(double aX, double aY, double aZ) noexcept = 0;
  /// Moves the origin along the parent's axes.
  virtual HRESULT MoveOrigin(GLDATA_POINT* aPoint) noexcept = 0;
  /// Same as MoveOrigin.
  virtual HRESULT MoveOrigin3d(double aX, double aY, double aZ) noexcept = 0;

  // Moves along the local axes.

  /// Moves along local x.
  virtual HRESULT MoveRight(double aDistance) noexcept = 0;
  /// Moves along local y.
  virtual HRESULT MoveUp(double aDistance) noexcept = 0;
  /// Moves along local -z.
  virtual HRESULT MoveForward(double aDistance) noexcept = 0;

  // Rotations about a local axis, counter-clockwise when seen from its tip; radians.
  /// Rotates about local x.
  virtual HRESULT RotateAboutX_RAD(double aAngle) noexcept = 0;
  /// Rotates about local y.
  virtual HRESULT RotateAboutY_RAD(double aAngle) noexcept = 0;
  /// Rotates about local z.
  virtual HRESULT RotateAboutZ_RAD(double aAngle) noexcept = 0;
  /// Rotates the system about any axis through a pivot, both in the local system. Moves the origin if the
  /// axis does not pass through it. Exact only for a pivot without a component along the axis: such a
  /// component, times 1 - cos(aAngle), is the error of the origin along the axis. Subtract the component from
  /// the pivot, which does not change the axis, or use GLOrbit (gllib/GLNavigation.h).
  /// @param aAngle  radians
  /// @param aAxis   of any length; 0, 0, 0 does nothing
  /// @param aOrigin the pivot
  virtual HRESULT Rotate_RAD(double aAngle, GLDATA_POINT* aAxis, GLDATA_POINT* aOrigin) noexcept = 0;
  /// Sets the three angles to 0. The origin does not change.
  virtual HRESULT ResetRotation() noexcept = 0;

  // Conversions, in place. Vectors are rotated, points are rotated and translated.
  /// Converts a vector from the parent system to the local one.
  virtual HRESULT VectorPCStoLCS(GLDATA_POINT* aVector) noexcept = 0;
  /// Converts a vector from the local system to the parent one.
  virtual HRESULT VectorLCStoPCS(GLDATA_POINT* aVector) noexcept = 0;
  /// Converts a point from the parent system to the local one.
  virtual HRESULT PointPCStoLCS(GLDATA_POINT* aPoint) noexcept = 0;
  /// Converts a point from the local system to the parent one.
  virtual HRESULT PointLCStoPCS(GLDATA_POINT* aPoint) noexcept = 0;

  /// Returns origin and angles.
  virtual HRESULT GetMatrix6d(GLDATA_MATRIX6D* aMatrix) noexcept = 0;
  /// Sets origin and angles.
  virtual HRESULT SetMatrix6d(GLDATA_MATRIX6D* aMatrix) noexcept = 0;
  /// Returns the matrix from local to parent coordinates, in GL's order.
  /// @return S_OK; E_OUTOFMEMORY (nothing is written)
  virtual HRESULT GetMatrix16d(GLDATA_MATRIX16D* aMatrix) noexcept = 0;
  /// Sets origin and angles from a matrix from local to parent coordinates.
  /// @param aMatrix a rotation and a translation; with scale or shear the result is meaningless
  /// @return S_OK; E_OUTOFMEMORY (nothing changes)
  virtual HRESULT SetMatrix16d(GLDATA_MATRIX16D* aMatrix) noexcept = 0;

 protected:
  ~IGLCoord() = default;
};
