// GLCoord: a coordinate system as an object. Any thread at any time. Numbers are copied under one lock;
// calculations run without it.

#pragma once

#include <gllib/IGLCoord.h>

#include "component/GLObject.h"
#include "geometry/GCoord.h"

/// The object around a GCoord. If two threads move or rotate one object at the same time, one change may be
/// lost. The numbers are never a mixture of two changes.
class GLCoord final : public GLObject<GLCoord, IGLCoord> {
 public:
  HRESULT GetOrigin(GLDATA_POINT* aPoint) noexcept override;
  HRESULT SetOrigin(GLDATA_POINT* aPoint) noexcept override;
  HRESULT SetOrigin3d(double aX, double aY, double aZ) noexcept override;
  HRESULT MoveOrigin(GLDATA_POINT* aPoint) noexcept override;
  HRESULT MoveOrigin3d(double aX, double aY, double aZ) noexcept override;
  HRESULT MoveRight(double aDistance) noexcept override;
  HRESULT MoveUp(double aDistance) noexcept override;
  HRESULT MoveForward(double aDistance) noexcept override;
  HRESULT RotateAboutX_RAD(double aAngle) noexcept override;
  HRESULT RotateAboutY_RAD(double aAngle) noexcept override;
  HRESULT RotateAboutZ_RAD(double aAngle) noexcept override;
  HRESULT Rotate_RAD(double aAngle, GLDATA_POINT* aAxis, GLDATA_POINT* aOrigin) noexcept override;
  HRESULT ResetRotation() noexcept override;
  HRESULT VectorPCStoLCS(GLDATA_POINT* aVector) noexcept override;
  HRESULT VectorLCStoPCS(GLDATA_POINT* aVector) noexcept override;
  HRESULT PointPCStoLCS(GLDATA_POINT* aPoint) noexcept override;
  HRESULT PointLCStoPCS(GLDATA_POINT* aPoint) noexcept override;
  HRESULT GetMatrix6d(GLDATA_MATRIX6D* aMatrix) noexcept override;
  HRESULT SetMatrix6d(GLDATA_MATRIX6D* aMatrix) noexcept override;
  HRESULT GetMatrix16d(GLDATA_MATRIX16D* aMatrix) noexcept override;
  HRESULT SetMatrix16d(GLDATA_MATRIX16D* aMatrix) noexcept override;

 private:
  GCoord Load() const noexcept;
  void Store(const GCoord& aCoord) noexcept;
  /// Copies the numbers, changes the copy without the lock, and writes it back.
  template <class Change>
  HRESULT Modify(const Change& aChange) noexcept;
  /// A conversion of a point or vector by a member of GCoord.
  using Conversion = GPoint (GCoord::*)(const GPoint&) const noexcept;
  HRESULT Convert(GLDATA_POINT* aPoint, Conversion aConversion) const noexcept;

  GCoord m_Coord;
};
