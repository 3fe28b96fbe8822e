/// @file
/// GLCoord: a coordinate system. Viewers and lights have one each; hosts make their own.

#pragma once

#include <gllib/GLTypes.h>

/// An origin and three angles in radians, given in a parent system (PCS), which define a local one (LCS). A
/// local point p stands in the parent at T(origin) * Rx * Ry * Rz * p: it is turned about z first, moved
/// last. A new one coincides with its parent.
///
/// A viewer's system has the world as its parent and the eye as its origin; the eye looks along local -z,
/// with y upward. So MoveForward flies, RotateAboutY_RAD turns the head.
///
/// Angles are kept as they are set. Rotating takes them anew from the axes, which can change their form, not
/// the orientation.
///
/// Threads: any, at any time; no operation waits. A reader sees six numbers of one moment. Of two moves or
/// rotations at the same time one can be lost. A viewer or light shows a change at its next pass. Results:
/// S_OK; E_INVALIDARG when a pointer is null, with nothing changed or written.
struct IGLCoord : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x882DD086, 0x033E, 0x11D4, {0xA3, 0x19, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  // The origin, in the parent system. Move adds to it.
  /// Gives the origin.
  virtual HRESULT GetOrigin(GLDATA_POINT* aPoint) noexcept = 0;
  /// Puts the origin somewhere else.
  virtual HRESULT SetOrigin(GLDATA_POINT* aPoint) noexcept = 0;
  /// As SetOrigin.
  virtual HRESULT SetOrigin3d(double aX, double aY, double aZ) noexcept = 0;
  /// Moves the origin along the parent's axes.
  virtual HRESULT MoveOrigin(GLDATA_POINT* aPoint) noexcept = 0;
  /// As MoveOrigin.
  virtual HRESULT MoveOrigin3d(double aX, double aY, double aZ) noexcept = 0;

  // Moves along the local axes.

  /// Moves along local x.
  virtual HRESULT MoveRight(double aDistance) noexcept = 0;
  /// Moves along local y.
  virtual HRESULT MoveUp(double aDistance) noexcept = 0;
  /// Moves along local -z.
  virtual HRESULT MoveForward(double aDistance) noexcept = 0;

  // Turns about a local axis, counter-clockwise seen from its tip; radians.
  /// Turns about local x.
  virtual HRESULT RotateAboutX_RAD(double aAngle) noexcept = 0;
  /// Turns about local y.
  virtual HRESULT RotateAboutY_RAD(double aAngle) noexcept = 0;
  /// Turns about local z.
  virtual HRESULT RotateAboutZ_RAD(double aAngle) noexcept = 0;
  /// Turns the system about any axis through a pivot, both given in the local system; moves the origin if the
  /// axis doesn't pass through it. Exact only for a pivot without a component along the axis: with one, the
  /// origin is off along the axis by that component times 1 - cos(aAngle). Take the component off the pivot,
  /// which stays on the same axis, or turn by GLOrbit (gllib/GLNavigation.h).
  /// @param aAngle  radians
  /// @param aAxis   of any length; 0, 0, 0 turns nothing
  /// @param aOrigin the pivot
  virtual HRESULT Rotate_RAD(double aAngle, GLDATA_POINT* aAxis, GLDATA_POINT* aOrigin) noexcept = 0;
  /// Sets the three angles to 0; the origin stays.
  virtual HRESULT ResetRotation() noexcept = 0;

  // Conversions, in place. Vectors are turned, points are turned and moved.
  /// Turns a vector from the parent system into the local one.
  virtual HRESULT VectorPCStoLCS(GLDATA_POINT* aVector) noexcept = 0;
  /// Turns a vector from the local system into the parent one.
  virtual HRESULT VectorLCStoPCS(GLDATA_POINT* aVector) noexcept = 0;
  /// Takes a point from the parent system to the local one.
  virtual HRESULT PointPCStoLCS(GLDATA_POINT* aPoint) noexcept = 0;
  /// Takes a point from the local system to the parent one.
  virtual HRESULT PointLCStoPCS(GLDATA_POINT* aPoint) noexcept = 0;

  /// Gives origin and angles.
  virtual HRESULT GetMatrix6d(GLDATA_MATRIX6D* aMatrix) noexcept = 0;
  /// Sets origin and angles, as they are.
  virtual HRESULT SetMatrix6d(GLDATA_MATRIX6D* aMatrix) noexcept = 0;
  /// Gives the matrix that takes local points to the parent, in GL's order.
  virtual HRESULT GetMatrix16d(GLDATA_MATRIX16D* aMatrix) noexcept = 0;
  /// Takes origin and angles from such a matrix.
  /// @param aMatrix a rotation and a shift; with scale or shear the result is of no use
  virtual HRESULT SetMatrix16d(GLDATA_MATRIX16D* aMatrix) noexcept = 0;

 protected:
  ~IGLCoord() = default;
};
