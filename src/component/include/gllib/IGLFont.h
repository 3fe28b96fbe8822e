/// @file
/// GLFont: text in four kinds. A context creates fonts: CreateSystemFont, CreateRasterFont,
/// CreateTrueTypeFont, CreateInternalFont.

#pragma once

#include <gllib/GLTypes.h>

// Style bits of a font, combined by |. Without a family bit the family is sans-serif.
inline constexpr int GLFS_ITALIC = 1;       ///< italic
inline constexpr int GLFS_UNDERLINE = 2;    ///< underlined
inline constexpr int GLFS_STRIKEOUT = 4;    ///< struck out
inline constexpr int GLFS_FIXED_PITCH = 8;  ///< all characters have the same width
inline constexpr int GLFS_DECORATIVE = 16;  ///< decorative family
inline constexpr int GLFS_SCRIPT = 32;      ///< script family; has precedence over the other families
inline constexpr int GLFS_MODERN = 64;      ///< family with constant stroke width
inline constexpr int GLFS_ROMAN = 128;      ///< serif family

/// A font draws 256 characters of 8 bits by display lists.
///
///     kind      made of              position                          size
///     system    bitmaps              at a point, parallel to screen    fixed, in pixels
///     raster    bitmaps              at a point, parallel to screen    fixed, in pixels
///     TrueType  outlines, also deep  in the model                      width and height times one em
///     internal  textured rectangles  in the model                      8 by 16 units, 9 to the next one
///
/// Text is converted to the system's 8-bit code page; on systems other than Windows this is Windows-1252. The
/// sheets of the internal kind are laid out by code page 437. Characters outside the page are replaced. Text
/// that cannot be converted is treated as empty.
///
/// Display lists are lost with their rendering context. The draw thread builds them again at the start of the
/// next frame, selection or capture.
///
/// Threads: any, but call Print in a painter or gauge only. No operation blocks. Setters take effect at the
/// next Print.
/// Results: S_OK; E_INVALIDARG when a pointer is null; other results are documented at the operation.
struct IGLFont : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x17503792, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Returns whether this is a TrueType font.
  /// @param aTrueType receives 1 or 0
  virtual HRESULT IsTrueType(LONG* aTrueType) noexcept = 0;
  /// Returns the face name.
  /// @param aFace receives a new string, which the caller frees; "System" for the system kind, the sheet's
  ///              name for the internal kind
  /// @return S_OK; E_OUTOFMEMORY
  virtual HRESULT GetFace(BSTR* aFace) noexcept = 0;
  /// Returns the style.
  /// @param aStyle receives the GLFS_ bits
  virtual HRESULT GetStyle(int* aStyle) noexcept = 0;
  /// Returns the weight.
  /// @param aWeight receives the requested weight; clamped to 0 to 1000 once the font is built
  virtual HRESULT GetWeight(int* aWeight) noexcept = 0;
  /// Returns the rotation of each character.
  /// @param aOrientation receives degrees counter-clockwise
  virtual HRESULT GetOrientation(float* aOrientation) noexcept = 0;

  /// Returns the width.
  /// @param aValue receives pixels for the bitmap kinds, model units for the others. Before the font is
  ///               built: 1 for the system and internal kinds, 0 for a raster font without a given width
  virtual HRESULT GetWidth(float* aValue) noexcept = 0;
  /// Scales a TrueType font in x.
  /// @return S_OK; E_GL_BADSTATE if the font is not TrueType; E_GL_BADVALUE if aValue is not greater than 0
  virtual HRESULT SetWidth(float aValue) noexcept = 0;
  /// Returns the height.
  /// @param aValue receives pixels for the bitmap kinds, model units for the others. Before the font is
  ///               built: 1 for the system and internal kinds
  virtual HRESULT GetHeight(float* aValue) noexcept = 0;
  /// Scales a TrueType font in y. Results as at SetWidth.
  virtual HRESULT SetHeight(float aValue) noexcept = 0;
  /// Returns the depth factor.
  /// @param aValue receives the factor; 0 for a flat font
  virtual HRESULT GetExtrusionZ(float* aValue) noexcept = 0;
  /// Scales the depth of a TrueType font that was created with depth. 0 makes it flat.
  /// @return S_OK; E_GL_BADSTATE if the font is not TrueType; E_GL_BADVALUE if aValue is not at least 0
  virtual HRESULT SetExtrusionZ(float aValue) noexcept = 0;
  /// Returns the rotation of the line about z.
  /// @param aValue receives degrees clockwise
  virtual HRESULT GetEscapement_DEG(float* aValue) noexcept = 0;
  /// Sets the rotation of the whole line of a TrueType or internal font about z, in degrees clockwise. Any
  /// value is accepted.
  /// @return S_OK; E_GL_BADSTATE for the bitmap kinds
  virtual HRESULT SetEscapement_DEG(float aValue) noexcept = 0;

  /// Returns the width of a text: the sum of the advances of its characters below 128. The unit is pixels for
  /// the bitmap kinds and model units for the others (8 per character for the internal kind).
  /// @param aString null is treated as empty
  /// @param aWidth  receives the width; -1 on failure
  /// @return S_OK; E_FAIL if the font is not built: the draw thread has not built it yet, or no face is
  ///         available
  virtual HRESULT GetStringWidth(BSTR aString, float* aWidth) noexcept = 0;
  /// Draws text in the current colour. The bitmap kinds draw nothing if the start is outside the view. The
  /// other kinds select the model-view matrix. The internal kind leaves GL's blend function at source alpha.
  /// @param aString null is treated as empty
  /// @param aStart  the left end of the base line, in the painter's current coordinates; for the internal
  ///                kind the lower left corner of the first cell
  /// @return S_OK; E_FAIL if the font cannot be built (nothing is drawn); E_GL_BADSTATE if the font has no
  ///         context, outside a painter or gauge, and if a font must be built while a list is open (it was
  ///         created after the list was opened); E_OUTOFMEMORY
  virtual HRESULT Print(BSTR aString, GLDATA_POINT* aStart) noexcept = 0;

 protected:
  ~IGLFont() = default;
};
