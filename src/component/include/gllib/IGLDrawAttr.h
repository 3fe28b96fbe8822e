// IGLDrawAttr.

#pragma once

#include <gllib/GLTypes.h>

/// Bits of the drawing mode; they combine freely.
enum eGLDrawMode : int {
  GLDM_LINE_FRONT = 1,                 ///< front faces as lines; beats points
  GLDM_LINE_BACK = 2,                  ///< back faces as lines; beats points
  GLDM_POINT_FRONT = 4,                ///< front faces as points
  GLDM_POINT_BACK = 8,                 ///< back faces as points
  GLDM_SHOW_FRONT = 16,                ///< beside GLDM_SHOW_BACK: nothing is culled
  GLDM_SHOW_BACK = 32,                 ///< alone: front faces are culled; clear: back faces are
  GLDM_TRANSPARENCY = 64,              ///< kept and told, without effect: the colour's alpha counts
  GLDM_SMOOTH_LIGHTING = 128,          ///< smooth shading, else flat
  GLDM_SMOOTH_POINT = 256,             ///< round points
  GLDM_SMOOTH_LINE = 512,              ///< smooth lines
  GLDM_POLYGON_OFFSET = 1024,          ///< filled faces move away from the eye
  GLDM_POLYGON_OFFSET_REVERSE = 2048,  ///< faces drawn as lines move towards it; beats the other
};

/// Colour, sizes, stipple and drawing mode, applied by IGLCanvas::SetDrawAttributes.
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
