/// @file
/// GLDrawAttr: how points, lines and faces are drawn. Made by hosts, applied by IGLCanvas::SetDrawAttributes.

#pragma once

#include <gllib/GLTypes.h>

/// Bits of the draw mode; they combine by |.
enum eGLDrawMode : int {
  GLDM_LINE_FRONT = 1,         ///< front faces as lines; beats GLDM_POINT_FRONT
  GLDM_LINE_BACK = 2,          ///< back faces as lines; beats GLDM_POINT_BACK
  GLDM_POINT_FRONT = 4,        ///< front faces as points
  GLDM_POINT_BACK = 8,         ///< back faces as points
  GLDM_SHOW_FRONT = 16,        ///< with GLDM_SHOW_BACK: both sides show. Alone no different from clear
  GLDM_SHOW_BACK = 32,         ///< set: back faces show; clear: front faces alone do
  GLDM_TRANSPARENCY = 64,      ///< kept, without effect: blending is always on and goes by alpha
  GLDM_SMOOTH_LIGHTING = 128,  ///< colours run across a face; clear: one colour a face
  GLDM_SMOOTH_POINT = 256,     ///< round, antialiased points
  GLDM_SMOOTH_LINE = 512,      ///< antialiased lines
  GLDM_POLYGON_OFFSET = 1024,  ///< filled faces move away from the eye, so that lines drawn on them show
  GLDM_POLYGON_OFFSET_REVERSE =
      2048  ///< faces drawn as lines move towards the eye; beats GLDM_POLYGON_OFFSET
};

/// Both modes' bits.
constexpr eGLDrawMode operator|(eGLDrawMode a, eGLDrawMode b) noexcept {
  return static_cast<eGLDrawMode>(static_cast<int>(a) | static_cast<int>(b));
}

/// A value object: it holds no GL state and belongs to no context. A new one is opaque white, point size and
/// line width 1, a solid line, GLDM_SHOW_FRONT | GLDM_SMOOTH_LIGHTING.
///
/// Applying the same unchanged object again sends its colour alone; every setter, also one that changes
/// nothing, makes the next application a full one.
///
/// Threads: any, at any time; no operation waits. A change acts at the next SetDrawAttributes; one that runs
/// at the same time may apply a part of it.
/// Results: S_OK; E_INVALIDARG when a pointer is null, with nothing changed or written.
struct IGLDrawAttr : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x1750378E, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Gives the colour.
  virtual HRESULT GetColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Sets the colour, each component cut to 0 to 1.
  virtual HRESULT SetColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// @param aColor receives 1 minus each of red, green and blue; alpha as it is
  virtual HRESULT GetComplementColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// @param aColor receives for each of red, green and blue 1 where it is below 0.5, else 0; alpha as it is
  virtual HRESULT GetContrastColor(GLDATA_RGBA* aColor) noexcept = 0;

  // The colour component by component.
  /// Gives the red, from 0 to 1.
  virtual HRESULT GetRed(float* aValue) noexcept = 0;
  /// Sets the red, cut to 0 to 1.
  virtual HRESULT SetRed(float aValue) noexcept = 0;
  /// Gives the green, from 0 to 1.
  virtual HRESULT GetGreen(float* aValue) noexcept = 0;
  /// Sets the green, cut to 0 to 1.
  virtual HRESULT SetGreen(float aValue) noexcept = 0;
  /// Gives the blue, from 0 to 1.
  virtual HRESULT GetBlue(float* aValue) noexcept = 0;
  /// Sets the blue, cut to 0 to 1.
  virtual HRESULT SetBlue(float aValue) noexcept = 0;
  /// Gives the opacity, from 0 to 1.
  virtual HRESULT GetAlpha(float* aValue) noexcept = 0;
  /// Sets the opacity, cut to 0 to 1.
  virtual HRESULT SetAlpha(float aValue) noexcept = 0;

  /// Gives the size of points in pixels.
  virtual HRESULT GetPointSize(float* aValue) noexcept = 0;
  /// Sets the size of points in pixels, cut to GetPointSizeLimits. Before the first rendering context of the
  /// process these are 0 to 0, and 0 is stored: set sizes after Initialize.
  virtual HRESULT SetPointSize(float aValue) noexcept = 0;
  /// Gives GL's limits, as the rendering context that was made last told them; 0 and 0 before the first.
  virtual HRESULT GetPointSizeLimits(float* aMin, float* aMax) noexcept = 0;
  /// Gives the step between two sizes that GL can tell apart; 0 before the first rendering context.
  virtual HRESULT GetPointSizeStep(float* aValue) noexcept = 0;

  /// Gives the width of lines in pixels.
  virtual HRESULT GetLineWidth(float* aValue) noexcept = 0;
  /// Sets the width of lines in pixels, cut to GetLineWidthLimits. As SetPointSize before the first rendering
  /// context.
  virtual HRESULT SetLineWidth(float aValue) noexcept = 0;
  /// As GetPointSizeLimits.
  virtual HRESULT GetLineWidthLimits(float* aMin, float* aMax) noexcept = 0;
  /// As GetPointSizeStep.
  virtual HRESULT GetLineWidthStep(float* aValue) noexcept = 0;

  /// Gives which pixels of a line are drawn.
  virtual HRESULT GetLineStipplePattern(std::uint16_t* aPattern) noexcept = 0;
  /// Sets which pixels of a line are drawn, from the lowest bit on; 0xFFFF is a solid line.
  virtual HRESULT SetLineStipplePattern(std::uint16_t aPattern) noexcept = 0;
  /// Gives how many pixels each bit of the pattern stands for.
  virtual HRESULT GetLineStippleFactor(int* aFactor) noexcept = 0;
  /// Sets how many pixels each bit of the pattern stands for; below 1 becomes 1. GL cuts at 256.
  virtual HRESULT SetLineStippleFactor(int aFactor) noexcept = 0;

  /// Sets (aEnable non-zero) or clears all bits of aMode.
  virtual HRESULT EnableDrawMode(eGLDrawMode aMode, LONG aEnable) noexcept = 0;
  /// Tells whether a mode is set.
  /// @param aMode    one or more bits
  /// @param aEnabled receives 1 if any bit of aMode is set, else 0
  virtual HRESULT IsDrawModeEnabled(eGLDrawMode aMode, LONG* aEnabled) noexcept = 0;
  /// @param aMode receives all bits
  virtual HRESULT GetDrawMode(int* aMode) noexcept = 0;

 protected:
  ~IGLDrawAttr() = default;
};
