// IGLFont.

#pragma once

#include <gllib/GLTypes.h>

/// Bits of a font's style; with none of the families set a sans-serif one, without GLFS_FIXED_PITCH variable
/// pitch.
enum eGLFontStyle : int {
  GLFS_ITALIC = 1,
  GLFS_UNDERLINE = 2,
  GLFS_STRIKEOUT = 4,
  GLFS_FIXED_PITCH = 8,
  GLFS_DECORATIVE = 16,  ///< family, looked at second
  GLFS_SCRIPT = 32,      ///< family, looked at first
  GLFS_MODERN = 64,      ///< family, looked at third
  GLFS_ROMAN = 128,      ///< family, looked at fourth
};

/// A font of a context: prints text into the current frame.
struct IGLFont : IUnknown {
  static constexpr IID Identifier = {
      0x17503792, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  virtual HRESULT IsTrueType(LONG* aTrueType) noexcept = 0;
  virtual HRESULT GetFace(BSTR* aFace) noexcept = 0;
  virtual HRESULT GetStyle(int* aStyle) noexcept = 0;
  virtual HRESULT GetWeight(int* aWeight) noexcept = 0;
  virtual HRESULT GetOrientation(float* aOrientation) noexcept = 0;
  virtual HRESULT GetWidth(float* aValue) noexcept = 0;
  virtual HRESULT SetWidth(float aValue) noexcept = 0;
  virtual HRESULT GetHeight(float* aValue) noexcept = 0;
  virtual HRESULT SetHeight(float aValue) noexcept = 0;
  virtual HRESULT GetExtrusionZ(float* aValue) noexcept = 0;
  virtual HRESULT SetExtrusionZ(float aValue) noexcept = 0;
  virtual HRESULT GetEscapement_DEG(float* aValue) noexcept = 0;
  virtual HRESULT SetEscapement_DEG(float aValue) noexcept = 0;
  virtual HRESULT GetStringWidth(BSTR aString, float* aWidth) noexcept = 0;
  virtual HRESULT Print(BSTR aString, GLDATA_POINT* aStart) noexcept = 0;

 protected:
  ~IGLFont() = default;
};
