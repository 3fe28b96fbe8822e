// A view into a context.

#pragma once

#include <gllib/GLTypes.h>

struct IGLCollection;
struct IGLCoord;
struct IGLViewerGauge;

/// A view.
struct IGLViewer : IUnknown {
  static constexpr IID Identifier = {
      0x17503798, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  virtual HRESULT Show(LONG aShow) noexcept = 0;
  virtual HRESULT IsVisible(LONG* aVisible) noexcept = 0;
  virtual HRESULT SetOrtho(LONG aOrtho) noexcept = 0;
  virtual HRESULT IsOrtho(LONG* aOrtho) noexcept = 0;
  virtual HRESULT ShowGauges(LONG aShow) noexcept = 0;
  virtual HRESULT AreGaugesVisible(LONG* aVisible) noexcept = 0;
  virtual HRESULT Clip(LONG aClip) noexcept = 0;
  virtual HRESULT IsClipped(LONG* aClipped) noexcept = 0;
  virtual HRESULT ScaleClip(LONG aScale) noexcept = 0;
  virtual HRESULT IsClipScaled(LONG* aScaled) noexcept = 0;
  virtual HRESULT ShowClipFrame(LONG aShow) noexcept = 0;
  virtual HRESULT IsClipFrameVisible(LONG* aVisible) noexcept = 0;
  virtual HRESULT GetEyeFovy_DEG(double* aFovy) noexcept = 0;
  virtual HRESULT SetEyeFovy_DEG(double aFovy) noexcept = 0;
  virtual HRESULT GetEyeZNear(double* aValue) noexcept = 0;
  virtual HRESULT GetEyeZFar(double* aValue) noexcept = 0;
  virtual HRESULT SetEyeZNearAndFar(double aNear, double aFar) noexcept = 0;
  virtual HRESULT GetEyeAspect(double* aValue) noexcept = 0;
  virtual HRESULT SetEyeAspect(double aValue) noexcept = 0;
  virtual HRESULT GetOrthoExtents(GLDATA_POINT* aMin, GLDATA_POINT* aMax) noexcept = 0;
  virtual HRESULT SetOrthoExtents(GLDATA_POINT* aMin, GLDATA_POINT* aMax) noexcept = 0;
  virtual HRESULT GetClipX(int* aValue) noexcept = 0;
  virtual HRESULT GetClipY(int* aValue) noexcept = 0;
  virtual HRESULT GetClipWidth(int* aValue) noexcept = 0;
  virtual HRESULT GetClipHeight(int* aValue) noexcept = 0;
  virtual HRESULT SetClipRectangle(int aX, int aY, int aWidth, int aHeight) noexcept = 0;
  virtual HRESULT GetFrameColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT SetFrameColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT GetFrameThickness(float* aValue) noexcept = 0;
  virtual HRESULT SetFrameThickness(float aValue) noexcept = 0;
  virtual HRESULT GetFrameOffset(float* aValue) noexcept = 0;
  virtual HRESULT SetFrameOffset(float aValue) noexcept = 0;
  virtual HRESULT AddGauge(IGLViewerGauge* aGauge) noexcept = 0;
  virtual HRESULT RemoveGauge(IGLViewerGauge* aGauge) noexcept = 0;
  virtual HRESULT RemoveAllGauges() noexcept = 0;
  virtual HRESULT EnumGauges(IGLCollection* aColl) noexcept = 0;
  virtual HRESULT GetCoord(IGLCoord** aCS) noexcept = 0;
  virtual HRESULT PointWCStoSCS(GLDATA_POINT* aPntWCS) noexcept = 0;
  virtual HRESULT PointSCStoWCS(GLDATA_POINT* aPntSCS) noexcept = 0;

 protected:
  ~IGLViewer() = default;
};

/// The axes figure.
struct IGLViewer2 : IUnknown {
  static constexpr IID Identifier = {
      0xAD73F8A0, 0xC1B2, 0x409F, {0xAD, 0x01, 0x58, 0xFD, 0x29, 0x26, 0xFF, 0x02}};

  virtual HRESULT GetShowAxes(LONG* pbShowAxes) noexcept = 0;
  virtual HRESULT SetShowAxes(LONG bShowAxes) noexcept = 0;

 protected:
  ~IGLViewer2() = default;
};
