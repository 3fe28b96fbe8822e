/// @file
/// GLMaterial: how lit faces reflect light. Made by hosts, applied by IGLCanvas::SetMaterial.

#pragma once

#include <gllib/GLTypes.h>

/// Bits of a material's mode; they combine by |.
enum eGLMatDrawMode : int {
  GLMM_ENABLE_FRONT = 1,              ///< the front values go to front faces
  GLMM_ENABLE_BACK = 2,               ///< the back values go to back faces
  GLMM_LIGHT_MODEL_LOCAL_VIEWER = 4,  ///< highlights go by the eye's place; clear: by its direction alone
  GLMM_LIGHT_MODEL_TWO_SIDE = 8  ///< back faces are lit on their own side; acts with GLMM_ENABLE_BACK alone
};

/// Both modes' bits.
constexpr eGLMatDrawMode operator|(eGLMatDrawMode a, eGLMatDrawMode b) noexcept {
  return static_cast<eGLMatDrawMode>(static_cast<int>(a) | static_cast<int>(b));
}

/// A value object: it holds no GL state and belongs to no context. A new one has GL's own initial values on
/// both sides (ambient 0.2, diffuse 0.8, specular and emission black, shininess 0) and GLMM_ENABLE_FRONT |
/// GLMM_LIGHT_MODEL_LOCAL_VIEWER.
///
/// aFront chooses the side: non-zero is the front, zero the back. A colour's alpha is 1 and stays so: a
/// material can't make a face transparent.
///
/// Threads: any, at any time; no operation waits. A change acts at the next SetMaterial.
/// Results: S_OK; E_INVALIDARG when a pointer is null, with nothing changed or written.
struct IGLMaterial : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x17503796, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  // The colours. A setter cuts each of red, green and blue to 0 to 1 and ignores alpha. While lighting is on,
  // ambient and diffuse give way to the current colour until the painter calls
  // IGLCanvas14_4::Disable(GLE_COLOR_MATERIAL).

  /// How much of the ambient light comes back.
  virtual HRESULT GetAmbientReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// Sets how much of the ambient light comes back.
  virtual HRESULT SetAmbientReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// How much of a light comes back to all sides.
  virtual HRESULT GetDiffuseReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// Sets how much of a light comes back to all sides.
  virtual HRESULT SetDiffuseReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// How much of a light comes back as highlight.
  virtual HRESULT GetSpecularReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// Sets how much of a light comes back as highlight.
  virtual HRESULT SetSpecularReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// The colour that the face has with no light at all.
  virtual HRESULT GetEmissionLight(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  /// Sets the colour that the face has with no light at all.
  virtual HRESULT SetEmissionLight(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;

  /// Gives how sharp highlights are, 0 to 1.
  virtual HRESULT GetShininess(LONG aFront, float* aValue) noexcept = 0;
  /// Sets how sharp highlights are, cut to 0 to 1; 1 is GL's exponent 128.
  virtual HRESULT SetShininess(LONG aFront, float aValue) noexcept = 0;

  /// Sets (aEnable non-zero) or clears all bits of aMode.
  virtual HRESULT EnableDrawMode(eGLMatDrawMode aMode, LONG aEnable) noexcept = 0;
  /// Tells whether a mode is set.
  /// @param aMode    one or more bits
  /// @param aEnabled receives 1 if any bit of aMode is set, else 0
  virtual HRESULT IsDrawModeEnabled(eGLMatDrawMode aMode, LONG* aEnabled) noexcept = 0;
  /// @param aMode receives all bits
  virtual HRESULT GetDrawMode(int* aMode) noexcept = 0;

 protected:
  ~IGLMaterial() = default;
};
