// DeviceFont: a font that FreeType draws from a face of the system. Any thread; the functions take the font
// library's lock.

#pragma once

#include <array>
#include <memory>

#include "platform/linux/fonts/FontLibrary.h"
#include "platform/linux/fonts/FontObject.h"

/// The arguments of CreateFontW that affect the result.
struct FontDescription {
  const char* m_szFace;  ///< UTF-8; empty for none
  int m_iHeight;         ///< positive: height of the cell; negative: of the characters; 0: default
  int m_iWidth;          ///< average width in pixels; 0 for that of the face
  int m_iOrientation;    ///< of each character, in tenths of a degree
  int m_iWeight;         ///< 0 for the default
  DWORD m_dwPitchAndFamily;
  bool m_bItalic, m_bUnderline, m_bStrikeOut;
};

class DeviceFont final : public FontObject {
 public:
  /// @return null if no face is available or the size cannot be drawn
  static std::unique_ptr<DeviceFont> Create(const FontDescription& aDescription);

  TEXTMETRICA Metrics() const override;
  int Advance(unsigned char aCode) const override;
  GlyphBitmap Bitmap(unsigned char aCode) const override;
  bool Outline(unsigned char aCode, double aDeviation, GlyphOutline& aOutline) const override;

 private:
  /// Metrics of the face, in its design units. m_iAverage is the average width of its characters.
  struct FaceMeasures {
    int m_iAscent, m_iDescent, m_iAverage;
    int m_iUnderlineTop, m_iUnderlineSize, m_iStrikeOutTop, m_iStrikeOutSize;
  };

  DeviceFont(FacePtr aFace, const FaceMatch& aMatch, const FontDescription& aDescription);
  void Measure();
  bool SetSize(int aHeight, int aWidth);
  bool Load(unsigned char aCode, FT_Int32 aFlags) const;
  void Style(FT_Outline& aOutline, FT_Pos aEm) const;
  int PixelAdvance() const;
  void DrawBars(GlyphBitmap& aBitmap) const;
  void AddBars(GlyphOutline& aOutline, bool aClockwise) const;

  FacePtr m_pFace;
  FaceMeasures m_Measures{};
  std::array<FT_UInt, 256> m_auGlyph{};
  mutable std::array<int, 256> m_aiAdvance{};  // -1 if not yet computed
  int m_iOrientation;
  bool m_bUnderline, m_bStrikeOut;
  bool m_bEmbolden;  // the mapper found no bold face
  bool m_bSlant;     // the mapper found no italic face
};
