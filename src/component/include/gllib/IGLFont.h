/// @file
/// GLFont: text in four kinds. A context's creators make one: CreateSystemFont, CreateRasterFont,
/// CreateTrueTypeFont, CreateInternalFont.

#pragma once

#include <gllib/GLTypes.h>

// Style bits of a font; they combine freely. Without a family bit the family is sans-serif.
inline constexpr int GLFS_ITALIC = 1;       ///< leaning
inline constexpr int GLFS_UNDERLINE = 2;    ///< with a line below
inline constexpr int GLFS_STRIKEOUT = 4;    ///< with a line through
inline constexpr int GLFS_FIXED_PITCH = 8;  ///< all characters of one width
inline constexpr int GLFS_DECORATIVE = 16;  ///< a family of ornaments
inline constexpr int GLFS_SCRIPT = 32;      ///< a family like handwriting; comes before the other families
inline constexpr int GLFS_MODERN = 64;      ///< a family of constant strokes
inline constexpr int GLFS_ROMAN = 128;      ///< a family with serifs

/// A font draws 256 characters of 8 bits, by display lists.
///
///     kind      made of              stands                            size
///     system    bitmaps              upright on the screen at a point  fixed, in pixels
///     raster    bitmaps              upright on the screen at a point  fixed, in pixels
///     TrueType  outlines, also deep  in the model                      width and height times one em
///     internal  textured rectangles  in the model                      8 by 16 units, 9 to the next one
///
/// Text is converted to the system's 8-bit code page, Windows-1252 off Windows; the sheets of the internal
/// kind are laid out by code page 437. Characters outside of the page are replaced, and text that can't be
/// converted counts as empty.
///
/// Lists that are lost with their rendering context are built again by the next Print, by themselves.
///
/// Threads: any; Print belongs into a painter or gauge. No operation waits. Setters act at the next Print.
/// Results: S_OK; E_INVALIDARG when a pointer is null; what else stands at the operation.
struct IGLFont : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x17503792, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// @param aTrueType receives 1 or 0
  virtual HRESULT IsTrueType(LONG* aTrueType) noexcept = 0;
  /// @param aFace receives a new string, the caller's to free; "System" for the system kind, the sheet's name
  ///              for the internal one
  virtual HRESULT GetFace(BSTR* aFace) noexcept = 0;
  /// @param aStyle receives the GLFS_ bits
  virtual HRESULT GetStyle(int* aStyle) noexcept = 0;
  /// @param aWeight receives what was asked for; once the font is built cut to 0 to 1000
  virtual HRESULT GetWeight(int* aWeight) noexcept = 0;
  /// @param aOrientation receives degrees
  virtual HRESULT GetOrientation(float* aOrientation) noexcept = 0;

  /// @param aValue receives pixels of the bitmap kinds, units of the others
  virtual HRESULT GetWidth(float* aValue) noexcept = 0;
  /// Scales a TrueType font in x.
  /// @return S_OK; E_GL_BADSTATE when it isn't TrueType; E_GL_BADVALUE unless aValue is above 0
  virtual HRESULT SetWidth(float aValue) noexcept = 0;
  /// @param aValue receives pixels of the bitmap kinds, units of the others
  virtual HRESULT GetHeight(float* aValue) noexcept = 0;
  /// Scales a TrueType font in y. As SetWidth.
  virtual HRESULT SetHeight(float aValue) noexcept = 0;
  /// @param aValue receives the factor of the depth; 0 for a flat font
  virtual HRESULT GetExtrusionZ(float* aValue) noexcept = 0;
  /// Scales the depth of a TrueType font that was made with one. 0 makes it flat.
  /// @return S_OK; E_GL_BADSTATE when it isn't TrueType; E_GL_BADVALUE unless aValue is 0 or more
  virtual HRESULT SetExtrusionZ(float aValue) noexcept = 0;
  /// @param aValue receives degrees clockwise
  virtual HRESULT GetEscapement_DEG(float* aValue) noexcept = 0;
  /// Turns the whole line of a TrueType or internal font about z, in degrees clockwise. Any value is kept.
  /// @return S_OK; E_GL_BADSTATE for the bitmap kinds
  virtual HRESULT SetEscapement_DEG(float aValue) noexcept = 0;

  /// Measures text: the sum of the advances of its characters below 128; pixels of the bitmap kinds, units of
  /// the others (8 a character of the internal kind).
  /// @param aString null counts as empty
  /// @param aWidth  receives the width, -1 on failure
  /// @return S_OK; E_FAIL when the font isn't built: its first cycle is still to come, or the face can't be
  ///         had
  virtual HRESULT GetStringWidth(BSTR aString, float* aWidth) noexcept = 0;
  /// Prints text in the current colour. In the bitmap kinds nothing appears when the start is outside the
  /// view. The model-view matrix is selected afterwards; the internal kind leaves GL's blend function at
  /// source alpha.
  /// @param aString null counts as empty
  /// @param aStart  the left end of the base line, in the painter's present coordinates; of the internal kind
  ///                the cell's lower left corner
  /// @return S_OK; E_FAIL when the font can't be built, with nothing drawn; E_GL_BADSTATE when it has no
  ///         context, outside of a painter or gauge, and when the font would have to be built while a list is
  ///         open (one that was created since the list was opened); E_OUTOFMEMORY
  virtual HRESULT Print(BSTR aString, GLDATA_POINT* aStart) noexcept = 0;

 protected:
  ~IGLFont() = default;
};
