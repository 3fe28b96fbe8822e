// A coordinate system.

#pragma once

#include <gllib/GLTypes.h>

/// Coordinate system.
struct IGLCoord : IUnknown {
  static constexpr IID Identifier = {
      0x882DD086, 0x033E, 0x11D4, {0xA3, 0x19, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  virtual HRESULT GetOrigin(GLDATA_POINT* aPoint) noexcept = 0;
  virtual HRESULT SetOrigin(GLDATA_POINT* aPoint) noexcept = 0;
  virtual HRESULT SetOrigin3d(double aX, double aY, double aZ) noexcept = 0;
  virtual HRESULT MoveOrigin(GLDATA_POINT* aPoint) noexcept = 0;
  virtual HRESULT MoveOrigin3d(double aX, double aY, double aZ) noexcept = 0;
  virtual HRESULT MoveRight(double aDistance) noexcept = 0;
  virtual HRESULT MoveUp(double aDistance) noexcept = 0;
  virtual HRESULT MoveForward(double aDistance) noexcept = 0;
  virtual HRESULT RotateAboutX_RAD(double aAngle) noexcept = 0;
  virtual HRESULT RotateAboutY_RAD(double aAngle) noexcept = 0;
  virtual HRESULT RotateAboutZ_RAD(double aAngle) noexcept = 0;
  virtual HRESULT Rotate_RAD(double aAngle, GLDATA_POINT* aAxis, GLDATA_POINT* aOrigin) noexcept = 0;
  virtual HRESULT ResetRotation() noexcept = 0;
  virtual HRESULT VectorPCStoLCS(GLDATA_POINT* aVector) noexcept = 0;
  virtual HRESULT VectorLCStoPCS(GLDATA_POINT* aVector) noexcept = 0;
  virtual HRESULT PointPCStoLCS(GLDATA_POINT* aPoint) noexcept = 0;
  virtual HRESULT PointLCStoPCS(GLDATA_POINT* aPoint) noexcept = 0;
  virtual HRESULT GetMatrix6d(GLDATA_MATRIX6D* aMatrix) noexcept = 0;
  virtual HRESULT SetMatrix6d(GLDATA_MATRIX6D* aMatrix) noexcept = 0;
  virtual HRESULT GetMatrix16d(GLDATA_MATRIX16D* aMatrix) noexcept = 0;
  virtual HRESULT SetMatrix16d(GLDATA_MATRIX16D* aMatrix) noexcept = 0;

 protected:
  ~IGLCoord() = default;
};
