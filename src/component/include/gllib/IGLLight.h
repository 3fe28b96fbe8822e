// A light of a context.

#pragma once

#include <gllib/GLTypes.h>

struct IGLCoord;

/// A light.
struct IGLLight : IUnknown {
  static constexpr IID Identifier = {
      0x17503794, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  virtual HRESULT Enable(LONG aEnable) noexcept = 0;
  virtual HRESULT IsEnabled(LONG* aEnabled) noexcept = 0;
  virtual HRESULT SetAsSpotlight(LONG aSet) noexcept = 0;
  virtual HRESULT IsSpotlight(LONG* aSpotlight) noexcept = 0;
  virtual HRESULT GetAmbientLight(GLDATA_RGBA* aLight) noexcept = 0;
  virtual HRESULT SetAmbientLight(GLDATA_RGBA* aLight) noexcept = 0;
  virtual HRESULT GetDiffuseLight(GLDATA_RGBA* aLight) noexcept = 0;
  virtual HRESULT SetDiffuseLight(GLDATA_RGBA* aLight) noexcept = 0;
  virtual HRESULT GetSpecularLight(GLDATA_RGBA* aLight) noexcept = 0;
  virtual HRESULT SetSpecularLight(GLDATA_RGBA* aLight) noexcept = 0;
  virtual HRESULT GetSpotPosition(GLDATA_POINT* aVector) noexcept = 0;
  virtual HRESULT SetSpotPosition(GLDATA_POINT* aVector) noexcept = 0;
  virtual HRESULT GetCutOffAngle_DEG(float* aAngle) noexcept = 0;
  virtual HRESULT SetCutOffAngle_DEG(float aAngle) noexcept = 0;
  virtual HRESULT GetSpotExponent(float* aExponent) noexcept = 0;
  virtual HRESULT SetSpotExponent(float aExponent) noexcept = 0;
  virtual HRESULT GetConstantAttenuation(float* aAtt) noexcept = 0;
  virtual HRESULT SetConstantAttenuation(float aAtt) noexcept = 0;
  virtual HRESULT GetLinearAttenuation(float* aAtt) noexcept = 0;
  virtual HRESULT SetLinearAttenuation(float aAtt) noexcept = 0;
  virtual HRESULT GetQuadraticAttenuation(float* aAtt) noexcept = 0;
  virtual HRESULT SetQuadraticAttenuation(float aAtt) noexcept = 0;
  virtual HRESULT GetCoord(IGLCoord** aCS) noexcept = 0;
  virtual HRESULT AttachCoord(IGLCoord* aCS) noexcept = 0;
  virtual HRESULT GetDirection(GLDATA_POINT* aVector) noexcept = 0;
  virtual HRESULT SetDirection(GLDATA_POINT* aVector) noexcept = 0;

 protected:
  ~IGLLight() = default;
};
