// The stock system font: the SANSSERIF sheet in the order of Windows-1252. It needs no font of the system.
// Constant; any thread.

#include "platform/Resources.h"
#include "platform/Text.h"
#include "platform/linux/fonts/FontObject.h"

namespace {

constexpr int kCellWidth = 8;
constexpr int kCellHeight = 16;
constexpr int kDescent = 4;  // lines of the cell below the baseline
constexpr std::size_t kSheetWidth = 128;
constexpr std::size_t kSheetBytes = kSheetWidth * 256 * 4;
constexpr unsigned char kDefaultCharacter = '?';

struct Character {
  GLWCHAR m_iCharacter;
  unsigned char m_iCell;
};

/// Cells of the sheet with the characters of Windows-1252 that are not in ASCII.
constexpr Character kCells[] = {
    {0x00A0, 255}, {0x00A1, 173}, {0x00A2, 155}, {0x00A3, 156}, {0x00A5, 157}, {0x00A7, 21},  {0x00AA, 166},
    {0x00AB, 174}, {0x00AC, 170}, {0x00B0, 248}, {0x00B1, 241}, {0x00B2, 253}, {0x00B5, 230}, {0x00B6, 20},
    {0x00B7, 250}, {0x00BA, 167}, {0x00BB, 175}, {0x00BC, 172}, {0x00BD, 171}, {0x00BF, 168}, {0x00C4, 142},
    {0x00C5, 143}, {0x00C6, 146}, {0x00C7, 128}, {0x00C9, 144}, {0x00D1, 165}, {0x00D6, 153}, {0x00DC, 154},
    {0x00DF, 225}, {0x00E0, 133}, {0x00E1, 160}, {0x00E2, 131}, {0x00E4, 132}, {0x00E5, 134}, {0x00E6, 145},
    {0x00E7, 135}, {0x00E8, 138}, {0x00E9, 130}, {0x00EA, 136}, {0x00EB, 137}, {0x00EC, 141}, {0x00ED, 161},
    {0x00EE, 140}, {0x00EF, 139}, {0x00F1, 164}, {0x00F2, 149}, {0x00F3, 162}, {0x00F4, 147}, {0x00F6, 148},
    {0x00F7, 246}, {0x00F9, 151}, {0x00FA, 163}, {0x00FB, 150}, {0x00FC, 129}, {0x00FF, 152}, {0x0192, 159},
    {0x2022, 7}};

unsigned char CellOf(unsigned char aCode) noexcept {
  if (aCode == 0 || (aCode >= 0x20 && aCode < 0x7F)) return aCode;
  GLWCHAR character = 0;
  const auto byte = static_cast<char>(aCode);
  MultiByteToWideChar(CP_ACP, 0, &byte, 1, &character, 1);
  for (const Character& known : kCells) {
    if (known.m_iCharacter == character) return known.m_iCell;
  }
  return kDefaultCharacter;
}

const unsigned char* Sheet() noexcept {
  const HRSRC resource = FindResourceA(nullptr, "SANSSERIF", RT_RCDATA);
  if (SizeofResource(nullptr, resource) != kSheetBytes) return nullptr;
  return static_cast<const unsigned char*>(LockResource(LoadResource(nullptr, resource)));
}

class SystemFont final : public FontObject {
 public:
  TEXTMETRICA Metrics() const override {
    return {kCellHeight, kCellHeight - kDescent, kDescent, 0, 0, kCellWidth, kCellWidth};
  }
  int Advance(unsigned char) const override { return kCellWidth; }

  GlyphBitmap Bitmap(unsigned char aCode) const override {
    GlyphBitmap bitmap;
    bitmap.m_iAdvance = kCellWidth;
    const unsigned char* sheet = Sheet();
    if (sheet == nullptr) return bitmap;
    bitmap.m_iWidth = kCellWidth;
    bitmap.m_iRows = kCellHeight;
    bitmap.m_iBottom = -kDescent;
    const unsigned cell = CellOf(aCode);
    const std::size_t left = (cell & 15) * kCellWidth;
    const std::size_t bottom = (15 - (cell >> 4)) * kCellHeight;  // the lowest row of the sheet comes first
    for (std::size_t y = 0; y < kCellHeight; ++y) {
      const unsigned char* texel = sheet + ((bottom + y) * kSheetWidth + left) * 4;
      unsigned row = 0;
      for (std::size_t x = 0; x < kCellWidth; ++x) row = row << 1 | (texel[x * 4 + 3] != 0 ? 1u : 0u);
      bitmap.m_vBits.push_back(static_cast<unsigned char>(row));
    }
    return bitmap;
  }

  bool Outline(unsigned char, double, GlyphOutline&) const override { return false; }
};

}  // namespace

FontObject& StockFont() noexcept {
  static SystemFont font;
  return font;
}
