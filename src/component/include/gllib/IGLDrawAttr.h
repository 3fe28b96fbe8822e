// How points, lines and faces are drawn.

#pragma once

#include <gllib/GLTypes.h>

enum eGLDrawMode : int {
  GLDM_LINE_FRONT = 1,
  GLDM_LINE_BACK = 2,
  GLDM_POINT_FRONT = 4,
  GLDM_POINT_BACK = 8,
  GLDM_SHOW_FRONT = 16,
  GLDM_SHOW_BACK = 32,
  GLDM_TRANSPARENCY = 64,
  GLDM_SMOOTH_LIGHTING = 128,
  GLDM_SMOOTH_POINT = 256,
  GLDM_SMOOTH_LINE = 512,
  GLDM_POLYGON_OFFSET = 1024,
  GLDM_POLYGON_OFFSET_REVERSE = 2048
};

constexpr eGLDrawMode operator|(eGLDrawMode a, eGLDrawMode b) noexcept {
  return static_cast<eGLDrawMode>(static_cast<int>(a) | static_cast<int>(b));
}

/// Draw attributes.
struct IGLDrawAttr : IUnknown {
  static constexpr IID Identifier = {
      0x1750378E, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  virtual HRESULT GetColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT SetColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT GetComplementColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT GetContrastColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT GetRed(float* aValue) noexcept = 0;
  virtual HRESULT SetRed(float aValue) noexcept = 0;
  virtual HRESULT GetGreen(float* aValue) noexcept = 0;
  virtual HRESULT SetGreen(float aValue) noexcept = 0;
  virtual HRESULT GetBlue(float* aValue) noexcept = 0;
  virtual HRESULT SetBlue(float aValue) noexcept = 0;
  virtual HRESULT GetAlpha(float* aValue) noexcept = 0;
  virtual HRESULT SetAlpha(float aValue) noexcept = 0;
  virtual HRESULT GetPointSize(float* aValue) noexcept = 0;
  virtual HRESULT SetPointSize(float aValue) noexcept = 0;
  virtual HRESULT GetPointSizeLimits(float* aMin, float* aMax) noexcept = 0;
  virtual HRESULT GetPointSizeStep(float* aValue) noexcept = 0;
  virtual HRESULT GetLineWidth(float* aValue) noexcept = 0;
  virtual HRESULT SetLineWidth(float aValue) noexcept = 0;
  virtual HRESULT GetLineWidthLimits(float* aMin, float* aMax) noexcept = 0;
  virtual HRESULT GetLineWidthStep(float* aValue) noexcept = 0;
  virtual HRESULT GetLineStipplePattern(std::uint16_t* aPattern) noexcept = 0;
  virtual HRESULT SetLineStipplePattern(std::uint16_t aPattern) noexcept = 0;
  virtual HRESULT GetLineStippleFactor(int* aFactor) noexcept = 0;
  virtual HRESULT SetLineStippleFactor(int aFactor) noexcept = 0;
  virtual HRESULT EnableDrawMode(eGLDrawMode aMode, LONG aEnable) noexcept = 0;
  virtual HRESULT IsDrawModeEnabled(eGLDrawMode aMode, LONG* aEnabled) noexcept = 0;
  virtual HRESULT GetDrawMode(int* aMode) noexcept = 0;

 protected:
  ~IGLDrawAttr() = default;
};
