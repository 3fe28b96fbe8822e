// FontObject: what stands behind an HFONT. The device font is drawn from a face of the system, the stock font
// from the module's own glyph sheet. Any thread.

#pragma once

#include <vector>

#include "platform/Fonts.h"
#include "platform/linux/GdiObject.h"

/// A glyph as a one-bit image, placed from the pen: pixels to the right, rows upward from the baseline.
struct GlyphBitmap {
  int m_iWidth = 0, m_iRows = 0;
  int m_iLeft = 0, m_iBottom = 0;  ///< where the lower left corner stands
  int m_iAdvance = 0;
  std::vector<unsigned char> m_vBits;  ///< the lowest row first, each one filled up to a byte

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
  bool m_bEvenOdd = false;  ///< the inside by the even-odd rule instead of a winding number that isn't 0
  double m_dAdvance = 0;
};

/// A font, by its 256 codes of Windows-1252.
struct FontObject : GdiObject {
  virtual TEXTMETRICA Metrics() const = 0;
  virtual int Advance(unsigned char aCode) const = 0;
  virtual GlyphBitmap Bitmap(unsigned char aCode) const = 0;
  /// @param aDeviation how far a polygon may keep from a curve, in em units; 0 for one design unit of the
  /// face
  /// @return false when the font has no outlines
  virtual bool Outline(unsigned char aCode, double aDeviation, GlyphOutline& aOutline) const = 0;
};

/// The stock font; always there.
FontObject& StockFont() noexcept;

/// The font that is selected into a device context; the stock font where none was. @return null for no
/// context
const FontObject* SelectedFont(HDC aDC) noexcept;
