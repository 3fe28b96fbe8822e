// FontObject: the object behind an HFONT. A device font is drawn from a face of the system, the stock font
// from the module's own glyph sheet. Any thread.

#pragma once

#include <vector>

#include "platform/Fonts.h"
#include "platform/linux/GdiObject.h"

/// A glyph as a one-bit image in pixels, relative to the pen: x to the right, rows upward from the baseline.
struct GlyphBitmap {
  int m_iWidth = 0, m_iRows = 0;
  int m_iLeft = 0, m_iBottom = 0;  ///< lower left corner
  int m_iAdvance = 0;
  std::vector<unsigned char> m_vBits;  ///< lowest row first; each row is padded to a byte

  int RowBytes() const noexcept { return (m_iWidth + 7) / 8; }
};

/// A point of an outline, in em units.
struct OutlinePoint {
  double x, y;

  friend bool operator==(const OutlinePoint&, const OutlinePoint&) = default;
};

/// A glyph as closed polygons in em units.
struct GlyphOutline {
  std::vector<std::vector<OutlinePoint>> m_vContours;
  bool m_bEvenOdd = false;  ///< even-odd instead of non-zero winding rule
  double m_dAdvance = 0;
};

/// A font with the 256 codes of Windows-1252.
struct FontObject : GdiObject {
  virtual TEXTMETRICA Metrics() const = 0;
  virtual int Advance(unsigned char aCode) const = 0;
  virtual GlyphBitmap Bitmap(unsigned char aCode) const = 0;
  /// Returns the outline of a glyph.
  /// @param aDeviation largest distance of a polygon from the curve, in em units; 0 for one design unit of
  ///         the face
  /// @return false if the font has no outlines or memory is insufficient
  virtual bool Outline(unsigned char aCode, double aDeviation, GlyphOutline& aOutline) const = 0;
};

/// Returns the stock font, which always exists.
FontObject& StockFont() noexcept;

/// Returns the font selected into a device context; the stock font if none was selected.
/// @return null if the context is null
const FontObject* SelectedFont(HDC aDC) noexcept;
