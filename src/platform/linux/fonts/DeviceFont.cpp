// DeviceFont: size, style, bitmaps and outlines of a face of the system. Any thread; the functions take the
// font library's lock.

#include "platform/linux/fonts/DeviceFont.h"

#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <utility>

#include "platform/Text.h"

namespace {

constexpr int kDefaultCell = 16;     // pixels; the cell height if the host does not set one
constexpr int kLargestSize = 4096;   // pixels per em; larger bitmaps would need hundreds of megabytes
constexpr FT_Fixed kSlant = 0x3333;  // tangent of about 11 degrees, in 16.16
constexpr int kBoldFrom = 550;       // heavier weights are bold; they are emboldened if the face is not bold
constexpr int kLongestBar = 16;      // em; longest underline or strike-out bar, also for wider characters

const char* GenericOf(DWORD aPitchAndFamily) noexcept {
  switch (aPitchAndFamily & 0xF0) {
    case FF_ROMAN:
      return "serif";
    case FF_MODERN:
      return "monospace";
    case FF_SCRIPT:
      return "cursive";
    case FF_DECORATIVE:
      return "fantasy";
    default:
      return (aPitchAndFamily & 3) == FIXED_PITCH ? "monospace" : "sans-serif";
  }
}

FT_UInt GlyphOf(FT_Face aFace, unsigned char aCode) noexcept {
  GLWCHAR character = 0;
  const auto byte = static_cast<char>(aCode);
  MultiByteToWideChar(CP_ACP, 0, &byte, 1, &character, 1);
  const bool symbol = aFace->charmap != nullptr && aFace->charmap->encoding == FT_ENCODING_MS_SYMBOL;
  return FT_Get_Char_Index(aFace, symbol ? 0xF000u + aCode : character);
}

int Scaled(int aUnits, FT_Fixed aScale) noexcept {
  return static_cast<int>((FT_MulFix(aUnits, aScale) + 32) >> 6);
}

}  // namespace

std::unique_ptr<DeviceFont> DeviceFont::Create(const FontDescription& aDescription) {
  FontLibrary& library = FontLibrary::Instance();
  const auto lock = library.Lock();
  const int weight = aDescription.m_iWeight > 0 ? std::min(aDescription.m_iWeight, 1000) : 400;
  const auto match =
      library.Match({aDescription.m_szFace, GenericOf(aDescription.m_dwPitchAndFamily), weight,
                     aDescription.m_bItalic, (aDescription.m_dwPitchAndFamily & 3) == FIXED_PITCH});
  FacePtr face = match ? library.Open(*match) : nullptr;
  if (face == nullptr) return nullptr;
  std::unique_ptr<DeviceFont> font(new DeviceFont(std::move(face), *match, aDescription));
  if (!font->SetSize(aDescription.m_iHeight, aDescription.m_iWidth)) return nullptr;
  return font;
}

DeviceFont::DeviceFont(FacePtr aFace, const FaceMatch& aMatch, const FontDescription& aDescription)
    : m_pFace(std::move(aFace)),
      m_iOrientation(aDescription.m_iOrientation % 3600),
      m_bUnderline(aDescription.m_bUnderline),
      m_bStrikeOut(aDescription.m_bStrikeOut),
      m_bEmbolden(aDescription.m_iWeight > kBoldFrom && aMatch.m_iWeight <= kBoldFrom),
      m_bSlant(aDescription.m_bItalic && !aMatch.m_bItalic) {
  if (FT_Select_Charmap(m_pFace.get(), FT_ENCODING_UNICODE) != 0)
    FT_Select_Charmap(m_pFace.get(), FT_ENCODING_MS_SYMBOL);
  for (std::size_t code = 0; code < m_auGlyph.size(); ++code) {
    m_auGlyph[code] = GlyphOf(m_pFace.get(), static_cast<unsigned char>(code));
  }
  m_aiAdvance.fill(-1);
  Measure();
}

void DeviceFont::Measure() {
  const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(m_pFace.get(), FT_SFNT_OS2));
  if (os2 != nullptr && os2->version == 0xFFFF) os2 = nullptr;
  const int em = m_pFace->units_per_EM;
  FaceMeasures& m = m_Measures;
  m.m_iAscent = os2 != nullptr ? os2->usWinAscent : m_pFace->ascender;
  m.m_iDescent = os2 != nullptr ? os2->usWinDescent : -m_pFace->descender;
  if (m.m_iAscent + m.m_iDescent <= 0) {
    m.m_iAscent = em * 4 / 5;
    m.m_iDescent = em - m.m_iAscent;
  }
  m.m_iAverage = os2 != nullptr && os2->xAvgCharWidth > 0 ? os2->xAvgCharWidth : std::max(em / 2, 1);
  m.m_iUnderlineSize = m_pFace->underline_thickness > 0 ? m_pFace->underline_thickness : em / 20;
  m.m_iUnderlineTop = m_pFace->underline_position + m.m_iUnderlineSize / 2;
  m.m_iStrikeOutSize = os2 != nullptr && os2->yStrikeoutSize > 0 ? os2->yStrikeoutSize : m.m_iUnderlineSize;
  m.m_iStrikeOutTop = os2 != nullptr && os2->yStrikeoutPosition > 0 ? os2->yStrikeoutPosition : em * 3 / 10;
  // A font file may contain any number. Bars far from the baseline would need bitmaps of gigabytes.
  for (int* size : {&m.m_iUnderlineSize, &m.m_iStrikeOutSize}) *size = std::clamp(*size, 1, em);
  for (int* top : {&m.m_iUnderlineTop, &m.m_iStrikeOutTop}) *top = std::clamp(*top, -em, 2 * em);
}

// Sets whole pixels per em in both directions, as font mappers do for device fonts.
bool DeviceFont::SetSize(int aHeight, int aWidth) {
  const double em = m_pFace->units_per_EM;
  const double cell = aHeight > 0 ? aHeight : kDefaultCell;
  const double tall = aHeight < 0 ? -static_cast<double>(aHeight)
                                  : std::round(cell * em / (m_Measures.m_iAscent + m_Measures.m_iDescent));
  const double wide = aWidth != 0
                          ? std::round(std::abs(static_cast<double>(aWidth)) * em / m_Measures.m_iAverage)
                          : std::max(tall, 1.0);
  if (tall > kLargestSize || wide > kLargestSize) return false;
  return FT_Set_Pixel_Sizes(m_pFace.get(), static_cast<FT_UInt>(std::max(wide, 1.0)),
                            static_cast<FT_UInt>(std::max(tall, 1.0))) == 0;
}

TEXTMETRICA DeviceFont::Metrics() const {
  const auto lock = FontLibrary::Instance().Lock();
  const FT_Size_Metrics& size = m_pFace->size->metrics;
  TEXTMETRICA metrics{};
  metrics.tmAscent = Scaled(m_Measures.m_iAscent, size.y_scale);
  metrics.tmDescent = Scaled(m_Measures.m_iDescent, size.y_scale);
  metrics.tmHeight = metrics.tmAscent + metrics.tmDescent;
  metrics.tmInternalLeading = metrics.tmHeight - size.y_ppem;
  metrics.tmAveCharWidth = std::max(Scaled(m_Measures.m_iAverage, size.x_scale), 1);
  metrics.tmMaxCharWidth = std::max(static_cast<LONG>((size.max_advance + 32) >> 6), metrics.tmAveCharWidth);
  return metrics;
}

bool DeviceFont::Load(unsigned char aCode, FT_Int32 aFlags) const {
  return FT_Load_Glyph(m_pFace.get(), m_auGlyph[aCode], aFlags | FT_LOAD_NO_BITMAP) == 0 &&
         m_pFace->glyph->format == FT_GLYPH_FORMAT_OUTLINE;
}

/// Applies the styles that the face lacks, then rotates the glyph about its origin. aEm is in units of the
/// outline.
void DeviceFont::Style(FT_Outline& aOutline, FT_Pos aEm) const {
  if (m_bEmbolden) FT_Outline_Embolden(&aOutline, aEm / 24);
  if (m_bSlant) {
    const FT_Matrix slant{0x10000, kSlant, 0, 0x10000};
    FT_Outline_Transform(&aOutline, &slant);
  }
  if (m_iOrientation == 0) return;
  const double angle = m_iOrientation * std::numbers::pi / 1800.0;
  const auto cosine = static_cast<FT_Fixed>(std::lround(std::cos(angle) * 0x10000));
  const auto sine = static_cast<FT_Fixed>(std::lround(std::sin(angle) * 0x10000));
  const FT_Matrix turn{cosine, -sine, sine, cosine};
  FT_Outline_Transform(&aOutline, &turn);
}

/// Returns the advance of the loaded, hinted glyph.
int DeviceFont::PixelAdvance() const {
  const FT_Pos bold =
      m_bEmbolden && !FT_IS_FIXED_WIDTH(m_pFace) ? m_pFace->size->metrics.x_ppem * 64 / 24 : 0;
  return static_cast<int>((m_pFace->glyph->advance.x + bold + 32) >> 6);
}

int DeviceFont::Advance(unsigned char aCode) const {
  const auto lock = FontLibrary::Instance().Lock();
  int& advance = m_aiAdvance[aCode];
  if (advance < 0) advance = Load(aCode, FT_LOAD_TARGET_MONO) ? PixelAdvance() : 0;
  return advance;
}

GlyphBitmap DeviceFont::Bitmap(unsigned char aCode) const {
  const auto lock = FontLibrary::Instance().Lock();
  GlyphBitmap bitmap;
  if (!Load(aCode, FT_LOAD_TARGET_MONO)) return bitmap;
  bitmap.m_iAdvance = m_aiAdvance[aCode] = PixelAdvance();
  // Hints fit only upright glyphs to the grid, so rotated glyphs are drawn without them.
  if (m_iOrientation != 0 && !Load(aCode, FT_LOAD_TARGET_MONO | FT_LOAD_NO_HINTING)) return bitmap;
  const FT_GlyphSlot slot = m_pFace->glyph;
  Style(slot->outline, m_pFace->size->metrics.y_ppem * 64);
  if (FT_Render_Glyph(slot, FT_RENDER_MODE_MONO) == 0 && slot->bitmap.rows > 0 && slot->bitmap.width > 0) {
    const FT_Bitmap& drawn = slot->bitmap;
    bitmap.m_iWidth = static_cast<int>(drawn.width);
    bitmap.m_iRows = static_cast<int>(drawn.rows);
    bitmap.m_iLeft = slot->bitmap_left;
    bitmap.m_iBottom = slot->bitmap_top - bitmap.m_iRows;
    const auto row = static_cast<std::size_t>(bitmap.RowBytes());
    bitmap.m_vBits.resize(row * drawn.rows);
    for (std::size_t y = 0; y < drawn.rows; ++y) {
      const unsigned char* from = drawn.buffer + static_cast<std::ptrdiff_t>(y) * drawn.pitch;
      std::copy_n(from, row, bitmap.m_vBits.data() + (drawn.rows - 1 - y) * row);
    }
  }
  DrawBars(bitmap);
  return bitmap;
}

namespace {

/// Enlarges the bitmap to hold a bar that starts at the pen, and draws the bar.
void DrawBar(GlyphBitmap& aBitmap, int aLength, int aTop, int aSize) {
  const GlyphBitmap old = std::move(aBitmap);
  const bool empty = old.m_iRows == 0;
  GlyphBitmap& grown = aBitmap = {};
  grown.m_iAdvance = old.m_iAdvance;
  grown.m_iLeft = std::min(empty ? 0 : old.m_iLeft, 0);
  grown.m_iBottom = empty ? aTop - aSize : std::min(old.m_iBottom, aTop - aSize);
  const int right = std::max(empty ? 0 : old.m_iLeft + old.m_iWidth, aLength);
  const int top = empty ? aTop : std::max(old.m_iBottom + old.m_iRows, aTop);
  grown.m_iWidth = right - grown.m_iLeft;
  grown.m_iRows = top - grown.m_iBottom;
  grown.m_vBits.resize(static_cast<std::size_t>(grown.RowBytes()) * static_cast<std::size_t>(grown.m_iRows));
  const auto set = [&grown](int aX, int aY) {
    const int column = aX - grown.m_iLeft;
    const auto row =
        static_cast<std::size_t>(aY - grown.m_iBottom) * static_cast<std::size_t>(grown.RowBytes());
    grown.m_vBits[row + static_cast<std::size_t>(column / 8)] |=
        static_cast<unsigned char>(0x80 >> (column % 8));
  };
  for (int y = 0; y < old.m_iRows; ++y) {
    for (int x = 0; x < old.m_iWidth; ++x) {
      const auto byte = old.m_vBits[static_cast<std::size_t>(y) * static_cast<std::size_t>(old.RowBytes()) +
                                    static_cast<std::size_t>(x / 8)];
      if ((byte & (0x80 >> (x % 8))) != 0) set(old.m_iLeft + x, old.m_iBottom + y);
    }
  }
  for (int y = aTop - aSize; y < aTop; ++y) {
    for (int x = 0; x < aLength; ++x) set(x, y);
  }
}

}  // namespace

// The bars follow the line of text, also if the characters are rotated.
void DeviceFont::DrawBars(GlyphBitmap& aBitmap) const {
  const FT_Fixed scale = m_pFace->size->metrics.y_scale;
  const FaceMeasures& m = m_Measures;
  const int length = std::min(aBitmap.m_iAdvance, kLongestBar * m_pFace->size->metrics.x_ppem);
  if (m_bUnderline)
    DrawBar(aBitmap, length, Scaled(m.m_iUnderlineTop, scale),
            std::max(Scaled(m.m_iUnderlineSize, scale), 1));
  if (m_bStrikeOut)
    DrawBar(aBitmap, length, Scaled(m.m_iStrikeOutTop, scale),
            std::max(Scaled(m.m_iStrikeOutSize, scale), 1));
}

void DeviceFont::AddBars(GlyphOutline& aOutline, bool aClockwise) const {
  const double em = m_pFace->units_per_EM;
  const auto add = [&](int aTop, int aSize) {
    const double top = aTop / em, bottom = (aTop - aSize) / em, right = aOutline.m_dAdvance;
    std::vector<OutlinePoint> bar{{0, bottom}, {right, bottom}, {right, top}, {0, top}};
    if (aClockwise) std::reverse(bar.begin(), bar.end());
    aOutline.m_vContours.push_back(std::move(bar));
  };
  if (aOutline.m_dAdvance <= 0) return;
  if (m_bUnderline) add(m_Measures.m_iUnderlineTop, m_Measures.m_iUnderlineSize);
  if (m_bStrikeOut) add(m_Measures.m_iStrikeOutTop, m_Measures.m_iStrikeOutSize);
}

namespace {

/// Converts an outline to polygons that deviate from its curves by at most aDeviation, with up to 64 edges
/// per curve. The outline and aDeviation are in design units, the polygons in em units.
class Flattener {
 public:
  Flattener(GlyphOutline& aOutline, double aEm, double aDeviation) noexcept
      : m_Outline(aOutline), m_dEm(aEm), m_dDeviation(aDeviation) {}

  bool Run(FT_Outline& aSource) {
    FT_Outline_Funcs steps{};
    steps.move_to = [](const FT_Vector* aEnd, void* aSelf) {
      return static_cast<Flattener*>(aSelf)->Move(*aEnd);
    };
    steps.line_to = [](const FT_Vector* aEnd, void* aSelf) {
      return static_cast<Flattener*>(aSelf)->Line(*aEnd);
    };
    steps.conic_to = [](const FT_Vector* aControl, const FT_Vector* aEnd, void* aSelf) {
      return static_cast<Flattener*>(aSelf)->Conic(*aControl, *aEnd);
    };
    steps.cubic_to = [](const FT_Vector* aControl1, const FT_Vector* aControl2, const FT_Vector* aEnd,
                        void* aSelf) {
      return static_cast<Flattener*>(aSelf)->Cubic(*aControl1, *aControl2, *aEnd);
    };
    return FT_Outline_Decompose(&aSource, &steps, this) == 0;
  }

 private:
  static OutlinePoint At(const FT_Vector& a) noexcept {
    return {static_cast<double>(a.x), static_cast<double>(a.y)};
  }

  // Each step returns 0 to continue. If memory runs out, it returns 1, which ends the decomposition.
  int Put(OutlinePoint aPoint) noexcept {
    try {
      auto& contour = m_Outline.m_vContours.back();
      const OutlinePoint scaled{aPoint.x / m_dEm, aPoint.y / m_dEm};
      if (contour.empty() || !(contour.back() == scaled)) contour.push_back(scaled);
    } catch (...) {
      return 1;
    }
    m_Last = aPoint;
    return 0;
  }

  int Move(const FT_Vector& a) noexcept {
    try {
      m_Outline.m_vContours.emplace_back();
    } catch (...) {
      return 1;
    }
    return Put(At(a));
  }
  int Line(const FT_Vector& a) noexcept { return Put(At(a)); }

  // The chord over 1/n of a curve deviates by at most an eighth of the curve's second derivative, divided by
  // n squared.
  int Pieces(double aSecondDerivative) const noexcept {
    const double pieces = std::ceil(std::sqrt(aSecondDerivative / 8.0 / m_dDeviation));
    return static_cast<int>(std::clamp(pieces, 1.0, 64.0));
  }

  int Conic(const FT_Vector& aControl, const FT_Vector& aTo) noexcept {
    const OutlinePoint p0 = m_Last, p1 = At(aControl), p2 = At(aTo);
    const int pieces = Pieces(2.0 * std::hypot(p0.x - 2 * p1.x + p2.x, p0.y - 2 * p1.y + p2.y));
    for (int i = 1; i <= pieces; ++i) {
      const double t = static_cast<double>(i) / pieces, s = 1 - t;
      const double a = s * s, b = 2 * s * t, c = t * t;
      if (Put({a * p0.x + b * p1.x + c * p2.x, a * p0.y + b * p1.y + c * p2.y}) != 0) return 1;
    }
    return 0;
  }

  int Cubic(const FT_Vector& aFirst, const FT_Vector& aSecond, const FT_Vector& aTo) noexcept {
    const OutlinePoint p0 = m_Last, p1 = At(aFirst), p2 = At(aSecond), p3 = At(aTo);
    const int pieces = Pieces(6.0 * std::max(std::hypot(p0.x - 2 * p1.x + p2.x, p0.y - 2 * p1.y + p2.y),
                                             std::hypot(p1.x - 2 * p2.x + p3.x, p1.y - 2 * p2.y + p3.y)));
    for (int i = 1; i <= pieces; ++i) {
      const double t = static_cast<double>(i) / pieces, s = 1 - t;
      const double a = s * s * s, b = 3 * s * s * t, c = 3 * s * t * t, d = t * t * t;
      if (Put({a * p0.x + b * p1.x + c * p2.x + d * p3.x, a * p0.y + b * p1.y + c * p2.y + d * p3.y}) != 0)
        return 1;
    }
    return 0;
  }

  GlyphOutline& m_Outline;
  double m_dEm, m_dDeviation;
  OutlinePoint m_Last{};
};

}  // namespace

bool DeviceFont::Outline(unsigned char aCode, double aDeviation, GlyphOutline& aOutline) const {
  const auto lock = FontLibrary::Instance().Lock();
  aOutline = {};
  if (!Load(aCode, FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING)) return true;  // an unreadable glyph is empty
  FT_Outline& source = m_pFace->glyph->outline;
  const double em = m_pFace->units_per_EM;
  const double bold = m_bEmbolden && !FT_IS_FIXED_WIDTH(m_pFace) ? em / 24 : 0;
  aOutline.m_dAdvance = (static_cast<double>(m_pFace->glyph->metrics.horiAdvance) + bold) / em;
  aOutline.m_bEvenOdd = (source.flags & FT_OUTLINE_EVEN_ODD_FILL) != 0;
  const bool clockwise = FT_Outline_Get_Orientation(&source) == FT_ORIENTATION_TRUETYPE;
  Style(source, m_pFace->units_per_EM);
  if (!Flattener(aOutline, em, aDeviation > 0 ? aDeviation * em : 1.0).Run(source)) return false;
  AddBars(aOutline, clockwise);
  return true;
}
