// A font of a context.

#pragma once

#include <gllib/GLTypes.h>

// Style bits of a font; they combine freely.
inline constexpr int GLFS_ITALIC = 1;
inline constexpr int GLFS_UNDERLINE = 2;
inline constexpr int GLFS_STRIKEOUT = 4;
inline constexpr int GLFS_FIXED_PITCH = 8;
inline constexpr int GLFS_DECORATIVE = 16;
inline constexpr int GLFS_SCRIPT = 32;
inline constexpr int GLFS_MODERN = 64;
inline constexpr int GLFS_ROMAN = 128;

/// Font.
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
