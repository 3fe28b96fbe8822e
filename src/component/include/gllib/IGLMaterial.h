/// @file
/// GLMaterial: how lit faces reflect light. Hosts create materials; IGLCanvas::SetMaterial applies them.

#pragma once

#include <gllib/GLTypes.h>

/// Bits of a material's mode, combined by |.
enum eGLMatDrawMode : int {
  GLMM_ENABLE_FRONT = 1,              ///< apply the front values to front faces
  GLMM_ENABLE_BACK = 2,               ///< apply the back values to back faces
  GLMM_LIGHT_MODEL_LOCAL_VIEWER = 4,  ///< highlights depend on the eye's position
  GLMM_LIGHT_MODEL_TWO_SIDE = 8       ///< two-sided lighting; requires GLMM_ENABLE_BACK
};

/// Combines the bits of two modes.
constexpr eGLMatDrawMode operator|(eGLMatDrawMode a, eGLMatDrawMode b) noexcept {
  return static_cast<eGLMatDrawMode>(static_cast<int>(a) | static_cast<int>(b));
}

/// A value object: it holds no GL state and belongs to no context. A new material has GL's initial values on
/// both sides (ambient 0.2, diffuse 0.8, specular and emission black, shininess 0) and GLMM_ENABLE_FRONT |
/// GLMM_LIGHT_MODEL_LOCAL_VIEWER.
///
/// aFront selects the side: non-zero is the front, zero the back. The alpha of a material colour is always 1:
/// a material cannot make a face transparent.
///
/// Threads: any, at any time; no operation blocks. A change takes effect at the next SetMaterial.
/// Results: S_OK; E_INVALIDARG if a pointer is null (nothing changes).
struct IGLMaterial : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x17503796, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  // The colours. A setter clamps red, green and blue to 0 to 1 and ignores alpha. While lighting is on, the
  // current colour replaces ambient and diffuse until the painter calls
  // IGLCanvas14_4::Disable(GLE_COLOR_MATERIAL).

  /// Returns the share of the ambient light that is reflected.
  virtual HRESULT GetAmbientReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// Sets the share of the ambient light that is reflected.
  virtual HRESULT SetAmbientReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// Returns the share of a light that is reflected diffusely.
  virtual HRESULT GetDiffuseReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// Sets the share of a light that is reflected diffusely.
  virtual HRESULT SetDiffuseReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// Returns the share of a light that is reflected as highlight.
  virtual HRESULT GetSpecularReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// Sets the share of a light that is reflected as highlight.
  virtual HRESULT SetSpecularReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// Returns the colour that the face emits without any light.
  virtual HRESULT GetEmissionLight(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// Sets the colour that the face emits without any light.
  virtual HRESULT SetEmissionLight(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;

  /// Returns the shininess, 0 to 1.
  virtual HRESULT GetShininess(LONG aFront, float* aValue) noexcept = 0;
  /// Sets the shininess, clamped to 0 to 1; 1 is GL's exponent 128.
  virtual HRESULT SetShininess(LONG aFront, float aValue) noexcept = 0;

  /// Sets (aEnable non-zero) or clears all bits of aMode.
  virtual HRESULT EnableDrawMode(eGLMatDrawMode aMode, LONG aEnable) noexcept = 0;
  /// Returns whether a mode is set.
  /// @param aMode    one or more bits
  /// @param aEnabled receives 1 if any bit of aMode is set, else 0
  virtual HRESULT IsDrawModeEnabled(eGLMatDrawMode aMode, LONG* aEnabled) noexcept = 0;
  /// Returns the mode.
  /// @param aMode receives all bits
  virtual HRESULT GetDrawMode(int* aMode) noexcept = 0;

 protected:
  ~IGLMaterial() = default;
};
