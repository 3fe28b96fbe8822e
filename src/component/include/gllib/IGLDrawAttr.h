/// @file
/// GLDrawAttr: how points, lines and faces are drawn. Hosts create draw attributes;
/// IGLCanvas::SetDrawAttributes applies them.

#pragma once

#include <gllib/GLTypes.h>

/// Bits of the draw mode, combined by |.
enum eGLDrawMode : int {
  GLDM_LINE_FRONT = 1,         ///< front faces as lines; overrides GLDM_POINT_FRONT
  GLDM_LINE_BACK = 2,          ///< back faces as lines; overrides GLDM_POINT_BACK
  GLDM_POINT_FRONT = 4,        ///< front faces as points
  GLDM_POINT_BACK = 8,         ///< back faces as points
  GLDM_SHOW_FRONT = 16,        ///< with GLDM_SHOW_BACK: shows both sides. No effect without it
  GLDM_SHOW_BACK = 32,         ///< shows back faces; clear: shows front faces only
  GLDM_TRANSPARENCY = 64,      ///< stored, no effect: blending by alpha is always on
  GLDM_SMOOTH_LIGHTING = 128,  ///< smooth shading; clear: one colour per face
  GLDM_SMOOTH_POINT = 256,     ///< round, antialiased points
  GLDM_SMOOTH_LINE = 512,      ///< antialiased lines
  GLDM_POLYGON_OFFSET = 1024,  ///< moves filled faces away from the eye, so that lines on them are visible
  GLDM_POLYGON_OFFSET_REVERSE =
      2048  ///< moves faces drawn as lines towards the eye; overrides GLDM_POLYGON_OFFSET
};

/// Combines the bits of two modes.
constexpr eGLDrawMode operator|(eGLDrawMode a, eGLDrawMode b) noexcept {
  return static_cast<eGLDrawMode>(static_cast<int>(a) | static_cast<int>(b));
}

/// A value object: it holds no GL state and belongs to no context. A new object is opaque white, with point
/// size and line width 1, a solid line, and GLDM_SHOW_FRONT | GLDM_SMOOTH_LIGHTING.
///
/// If the same unchanged object is applied again, the canvas sends only its colour to GL. After a call of any
/// setter, even with the same value, the canvas sends all attributes.
///
/// Threads: any, at any time; no operation blocks. A change takes effect at the next SetDrawAttributes; one
/// that runs at the same time may apply a part of it.
/// Results: S_OK; E_INVALIDARG if a pointer is null (nothing changes).
struct IGLDrawAttr : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x1750378E, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Returns the colour.
  virtual HRESULT GetColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Sets the colour. Each component is clamped to 0 to 1.
  virtual HRESULT SetColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Returns the complementary colour.
  /// @param aColor receives 1 minus each of red, green and blue, and the same alpha
  virtual HRESULT GetComplementColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Returns a colour that contrasts with this one.
  /// @param aColor receives 1 for each of red, green and blue that is below 0.5, else 0, and the same alpha
  virtual HRESULT GetContrastColor(GLDATA_RGBA* aColor) noexcept = 0;

  // The colour component by component.
  /// Returns the red, from 0 to 1.
  virtual HRESULT GetRed(float* aValue) noexcept = 0;
  /// Sets the red, clamped to 0 to 1.
  virtual HRESULT SetRed(float aValue) noexcept = 0;
  /// Returns the green, from 0 to 1.
  virtual HRESULT GetGreen(float* aValue) noexcept = 0;
  /// Sets the green, clamped to 0 to 1.
  virtual HRESULT SetGreen(float aValue) noexcept = 0;
  /// Returns the blue, from 0 to 1.
  virtual HRESULT GetBlue(float* aValue) noexcept = 0;
  /// Sets the blue, clamped to 0 to 1.
  virtual HRESULT SetBlue(float aValue) noexcept = 0;
  /// Returns the opacity, from 0 to 1.
  virtual HRESULT GetAlpha(float* aValue) noexcept = 0;
  /// Sets the opacity, clamped to 0 to 1.
  virtual HRESULT SetAlpha(float aValue) noexcept = 0;

  /// Returns the size of points in pixels.
  virtual HRESULT GetPointSize(float* aValue) noexcept = 0;
  /// Sets the size of points in pixels, clamped to GetPointSizeLimits. Before the first rendering context of
  /// the process both limits are 0, so the size becomes 0: set sizes after Initialize.
  virtual HRESULT SetPointSize(float aValue) noexcept = 0;
  /// Returns the limits of the rendering context created last; 0 and 0 before the first.
  virtual HRESULT GetPointSizeLimits(float* aMin, float* aMax) noexcept = 0;
  /// Returns GL's granularity of point sizes; 0 before the first rendering context.
  virtual HRESULT GetPointSizeStep(float* aValue) noexcept = 0;

  /// Returns the width of lines in pixels.
  virtual HRESULT GetLineWidth(float* aValue) noexcept = 0;
  /// Sets the width of lines in pixels, clamped to GetLineWidthLimits. Before the first rendering context as
  /// SetPointSize.
  virtual HRESULT SetLineWidth(float aValue) noexcept = 0;
  /// Same as GetPointSizeLimits.
  virtual HRESULT GetLineWidthLimits(float* aMin, float* aMax) noexcept = 0;
  /// Same as GetPointSizeStep.
  virtual HRESULT GetLineWidthStep(float* aValue) noexcept = 0;

  /// Returns the stipple pattern of lines.
  virtual HRESULT GetLineStipplePattern(std::uint16_t* aPattern) noexcept = 0;
  /// Sets the stipple pattern of lines, from the lowest bit on; 0xFFFF is a solid line.
  virtual HRESULT SetLineStipplePattern(std::uint16_t aPattern) noexcept = 0;
  /// Returns the number of pixels for each bit of the pattern.
  virtual HRESULT GetLineStippleFactor(int* aFactor) noexcept = 0;
  /// Sets the number of pixels for each bit of the pattern; below 1 becomes 1. GL clamps it to 256.
  virtual HRESULT SetLineStippleFactor(int aFactor) noexcept = 0;

  /// Sets (aEnable non-zero) or clears all bits of aMode.
  virtual HRESULT EnableDrawMode(eGLDrawMode aMode, LONG aEnable) noexcept = 0;
  /// Returns whether a mode is set.
  /// @param aMode    one or more bits
  /// @param aEnabled receives 1 if any bit of aMode is set, else 0
  virtual HRESULT IsDrawModeEnabled(eGLDrawMode aMode, LONG* aEnabled) noexcept = 0;
  /// Returns the mode.
  /// @param aMode receives all bits
  virtual HRESULT GetDrawMode(int* aMode) noexcept = 0;

 protected:
  ~IGLDrawAttr() = default;
};
