// The platform's fonts: bitmaps and outlines compared with FreeType; solids, styles, substitutes, the stock
// font, and damaged files. Plain rendering context.

#include <ft2build.h>

#include FT_FREETYPE_H

#include "media/FontBench.h"
#include "platform/Text.h"
#include "platform/linux/fonts/DeviceFont.h"
#include "support/PlainGL.h"
#include "support/TestFolder.h"

namespace {

constexpr std::uint32_t kWhite = 0xFFFFFFFF;

/// A face opened by FreeType directly.
class PlainFace {
 public:
  explicit PlainFace(const char* aName, int aWeight = 400) {
    const auto match = FontLibrary::Instance().Match({aName, "sans-serif", aWeight});
    EXPECT_TRUE(match.has_value()) << "the tests need a font on the system";
    FT_Init_FreeType(&m_pLibrary);
    if (match) FT_New_Face(m_pLibrary, match->m_sFile.c_str(), match->m_iIndex, &m_pFace);
  }
  ~PlainFace() { FT_Done_FreeType(m_pLibrary); }
  PlainFace(PlainFace&&) = delete;

  FT_Face operator->() const { return m_pFace; }
  FT_Face Get() const { return m_pFace; }

 private:
  FT_Library m_pLibrary = nullptr;
  FT_Face m_pFace = nullptr;
};

FT_UInt GlyphOf(const PlainFace& aFace, char16_t aCharacter) {
  return FT_Get_Char_Index(aFace.Get(), aCharacter);
}

/// Draws the same text with FreeType's one-bit renderer, each glyph at the sum of the previous advances.
Picture DrawByFreeType(int aWidth, int aHeight, const PlainFace& aFace, const std::u16string& aText, int aX,
                       int aY) {
  Picture picture(aWidth, aHeight);
  for (int y = 0; y < aHeight; ++y) {
    for (int x = 0; x < aWidth; ++x) picture.Set(x, y, 0x000000FF);
  }
  for (const char16_t character : aText) {
    FT_Load_Glyph(aFace.Get(), GlyphOf(aFace, character), FT_LOAD_RENDER | FT_LOAD_TARGET_MONO);
    const FT_GlyphSlot slot = aFace->glyph;
    for (int row = 0; row < static_cast<int>(slot->bitmap.rows); ++row) {
      for (int column = 0; column < static_cast<int>(slot->bitmap.width); ++column) {
        const int byte = slot->bitmap.buffer[row * slot->bitmap.pitch + column / 8];
        if ((byte & (0x80 >> column % 8)) == 0) continue;
        picture.Set(aX + slot->bitmap_left + column, aHeight - (aY + slot->bitmap_top - row), kWhite);
      }
    }
    aX += static_cast<int>(slot->advance.x >> 6);
  }
  return picture;
}

}  // namespace

TEST(Fonts, DrawsTheOneBitGlyphsOfFreeType) {
  const std::u16string text = u"Hamburgefons &@%8g, \u00C4\u00E9\u00DF\u20AC! ~0x1F";
  for (const int pixels : {9, 16, 31, 60}) {
    const PlainFace face("DejaVu Sans");
    FT_Set_Pixel_Sizes(face.Get(), 0, static_cast<FT_UInt>(pixels));
    const Picture ours = DrawText(1300, 80, {.m_iHeight = -pixels}, text, {5, 20, 0});
    const Picture plain = DrawByFreeType(1300, 80, face, text, 5, 20);
    EXPECT_GT(plain.CountOther(0x000000FF), 100);
    EXPECT_EQ(Difference(ours, plain), 0) << pixels << " pixels";
  }
}

// Pixels that FreeType covers completely are lit, and pixels outside are not. No pixel is lit twice, not even
// where a bar crosses the glyph.
TEST(Fonts, FillsTheOutlinesOfFreeTypeOnce) {
  const PlainFace face("DejaVu Sans");
  FT_Set_Pixel_Sizes(face.Get(), 0, 200);
  for (const char16_t character : std::u16string(u"&@%8gQ#\u00C5\u00D8")) {
    FT_Load_Glyph(face.Get(), GlyphOf(face, character), FT_LOAD_RENDER | FT_LOAD_NO_HINTING);
    const FT_GlyphSlot slot = face->glyph;
    const auto width = static_cast<int>(slot->bitmap.width), rows = static_cast<int>(slot->bitmap.rows);
    for (const int style : {0, int{GLFS_UNDERLINE | GLFS_STRIKEOUT}}) {
      const Picture ours = DrawText(256, 256, {.m_Kind = FontKind::kTrueType, .m_iStyle = style}, {character},
                                    {20, 60, 0}, 200, 0.6f);
      int missing = 0, beyond = 0, twice = 0;
      for (int y = 0; y < 256; ++y) {
        for (int x = 0; x < 256; ++x) {
          const int column = x - 20 - slot->bitmap_left, row = slot->bitmap_top - 1 - (y - 60);
          const bool inside = column >= 0 && row >= 0 && column < width && row < rows;
          const int coverage = inside ? slot->bitmap.buffer[row * slot->bitmap.pitch + column] : 0;
          missing += coverage == 255 && !IsLit(ours, x, y);
          beyond += coverage == 0 && IsLit(ours, x, y);
          twice += (ours.At(x, y) >> 24) > 160;
        }
      }
      EXPECT_EQ(missing, 0) << "character " << static_cast<int>(character);
      EXPECT_EQ(twice, 0) << "character " << static_cast<int>(character);
      EXPECT_TRUE(style == 0 ? beyond == 0 : beyond > 500) << beyond << " pixels beyond the glyph";
    }
  }
}

// From any side, each visible face of a closed solid faces the eye. It therefore survives culling, and a
// light at the eye leaves no face dark.
TEST(Fonts, ExtrudesIntoClosedSolids) {
  Picture pictures[2];
  for (const float turn : {0.0f, 50.0f, 130.0f, 180.0f, 260.0f}) {
    for (const bool culled : {false, true}) {
      pictures[culled] = DrawPlainGL(300, 300, [=] {
        ModelInPixels(300, 300);
        const float eye[] = {0, 0, 1, 0}, none[] = {0, 0, 0, 1}, white[] = {1, 1, 1, 1};
        glLightfv(GL_LIGHT0, GL_POSITION, eye);
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, none);
        glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, white);
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
        glEnable(GL_NORMALIZE);
        glEnable(GL_DEPTH_TEST);
        if (culled) glEnable(GL_CULL_FACE);
        glTranslatef(150, 100, 0);
        glRotatef(25, 1, 0, 0);
        glRotatef(turn, 0, 1, 0);
        FontBench bench;
        const auto font = bench.Make({.m_Kind = FontKind::kTrueType, .m_bExtruded = true});
        font->SetWidth(150);
        font->SetHeight(150);
        font->SetExtrusionZ(60);
        EXPECT_EQ(Print(*font, u"&8", {-100, 0, 0}), S_OK);
      });
    }
    EXPECT_GT(pictures[true].CountOther(0x000000FF), 3000);
    EXPECT_LE(Difference(pictures[false], pictures[true]), 8) << "turned by " << turn;
    int dark = 0;
    for (int y = 1; y < 299; ++y) {
      for (int x = 1; x < 299; ++x) {
        const auto lit = [&](int dx, int dy) { return pictures[true].At(x + dx, y + dy) >> 24 > 0; };
        dark += !lit(0, 0) && lit(1, 0) && lit(-1, 0) && lit(0, 1) && lit(0, -1);
      }
    }
    EXPECT_LE(dark, 4) << "turned by " << turn;
  }
}

TEST(Fonts, RotatesAndUnderlinesText) {
  for (const FontKind kind : {FontKind::kRaster, FontKind::kTrueType}) {
    const auto draw = [kind](int aStyle, float aOrientation = 0) {
      return DrawText(160, 64,
                      {.m_Kind = kind, .m_iStyle = aStyle, .m_fOrientation = aOrientation, .m_iHeight = -30},
                      u"Hill", {20, 20, 0}, 30);
    };
    const Picture plain = draw(0);
    EXPECT_GT(Difference(draw(0, 90), plain), plain.CountOther(0x000000FF) / 3) << "orientation";
    EXPECT_EQ(Difference(draw(0, 360), plain), 0);
    EXPECT_EQ(Difference(draw(0, NAN), plain), 0);
    // A bar is continuous from the first pen position to the last.
    const auto unbroken = [](const Picture& picture, int aFromRow, int aToRow) {
      bool found = false;
      for (int y = aFromRow; y < aToRow; ++y) {
        bool whole = true;
        for (int x = 21; x < 52; ++x) whole = whole && IsLit(picture, x, y);
        found = found || whole;
      }
      return found;
    };
    EXPECT_FALSE(unbroken(plain, 0, 40));
    EXPECT_TRUE(unbroken(draw(GLFS_UNDERLINE), 13, 20));
    EXPECT_TRUE(unbroken(draw(GLFS_STRIKEOUT), 24, 36));
  }
}

TEST(Fonts, SubstitutesAFaceByFamilyAndPitch) {
  const auto draw = [](const char16_t* aFace, int aStyle) {
    return DrawText(160, 64, {.m_szFace = aFace, .m_iStyle = aStyle, .m_iHeight = -30}, u"Will", {20, 20, 0});
  };
  const struct {
    int m_iStyle;
    const char16_t* m_szFace;
  } cases[] = {{0, u"DejaVu Sans"},
               {GLFS_ROMAN, u"DejaVu Serif"},
               {GLFS_MODERN, u"DejaVu Sans Mono"},
               {GLFS_FIXED_PITCH, u"DejaVu Sans Mono"}};
  for (const auto& c : cases)
    EXPECT_EQ(Difference(draw(u"No Such Face", c.m_iStyle), draw(c.m_szFace, 0)), 0) << c.m_iStyle;
}

TEST(Fonts, DrawsTheStockFontByWindows1252) {
  // The cell of each character in the sheet; '?' for characters that the sheet lacks.
  const struct {
    char16_t m_iCharacter;
    unsigned char m_iCell;
  } cases[] = {{u'A', 'A'},      {u'~', '~'},    {u'\u00C4', 142}, {u'\u00DF', 225}, {u'\u00E9', 130},
               {u'\u00B1', 241}, {u'\u2022', 7}, {u'\u20AC', '?'}, {u'\u00C0', '?'}};
  for (const auto& c : cases) {
    const Picture stock = DrawText(12, 24, {.m_Kind = FontKind::kSystem}, {c.m_iCharacter}, {2, 8, 0});
    const Picture sheet = DrawPlainGL(12, 24, [&c] {
      ModelInPixels(12, 24);
      FontBench bench;
      const auto font = GLPtr<GLFont>::FromBorrowed(new GLFont);
      font->InitInternalFont(bench.m_pLink, TextOf(u"SANSSERIF"));
      char16_t character = 0;
      const auto byte = static_cast<char>(c.m_iCell);
      MultiByteToWideChar(CP_ACP, 0, &byte, 1, &character, 1);
      EXPECT_EQ(Print(*font, {character}, {1.5, 3.5, 0}), S_OK);  // on pixels, four lines below the baseline
    });
    EXPECT_GT(stock.CountOther(0x000000FF), 4);
    EXPECT_EQ(Difference(stock, sheet), 0) << static_cast<int>(c.m_iCharacter);
  }
}

namespace {

/// Sets another configuration of fontconfig until the object is destroyed.
class FontConfiguration {
 public:
  explicit FontConfiguration(const std::string& aFile) {
    setenv("FONTCONFIG_FILE", aFile.c_str(), 1);
    FontLibrary::Instance().End();
  }
  ~FontConfiguration() {
    m_sBefore.empty() ? unsetenv("FONTCONFIG_FILE") : setenv("FONTCONFIG_FILE", m_sBefore.c_str(), 1);
    FontLibrary::Instance().End();
  }
  FontConfiguration(FontConfiguration&&) = delete;

 private:
  const std::string m_sBefore =
      std::getenv("FONTCONFIG_FILE") != nullptr ? std::getenv("FONTCONFIG_FILE") : "";
};

/// Returns a configuration whose only fonts are in a folder.
std::string ConfigurationOf(const TestFolder& aFolder) {
  const std::string folder = aFolder.Path().string();
  return aFolder
      .Put("fonts.conf",
           "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\"><fontconfig><dir>" + folder +
               "</dir><cachedir>" + folder + "/cache</cachedir></fontconfig>")
      .string();
}

}  // namespace

TEST(Fonts, SystemAndAtlasFontsNeedNoFile) {
  const TestFolder folder;
  const FontConfiguration none(ConfigurationOf(folder));
  DrawPlainGL(64, 64, [] {
    FontBench bench;
    for (const FontKind kind : kFontKinds) {
      const bool fails = kind == FontKind::kRaster || kind == FontKind::kTrueType;
      const auto font = bench.Make(kind);
      EXPECT_EQ(Print(*font, u"x"), fails ? E_FAIL : S_OK) << static_cast<int>(kind);
      EXPECT_EQ(WidthOf(*font, u"x") == -1.0f, fails) << static_cast<int>(kind);
    }
  });
}

// The configuration maps two names, one of Latin letters with diacritics and one of Cyrillic letters, to
// faces of the system.
TEST(Fonts, FindFacesByUnicodeNames) {
  const FontConfiguration names(GLLIB_SOURCE_DIR "/tests/media/plain-faces.conf");
  const auto draw = [](const char16_t* aFace) {
    return DrawText(160, 64, {.m_szFace = aFace, .m_iHeight = -30}, u"Will", {20, 20, 0});
  };
  EXPECT_EQ(Difference(draw(u"Gr\u00F6\u00DFe"), draw(u"DejaVu Sans Mono")), 0);
  EXPECT_EQ(Difference(draw(u"\u0428\u0440\u0438\u0444\u0442"), draw(u"DejaVu Serif")), 0);
}

namespace {

/// The bytes of a font file; the test replaces 16-bit numbers in it.
struct FontFile {
  std::vector<std::uint8_t> m_vBytes;

  int At16(std::size_t aPlace) const { return m_vBytes.at(aPlace) << 8 | m_vBytes.at(aPlace + 1); }
  void Set16(std::size_t aPlace, int aValue) {
    m_vBytes.at(aPlace) = static_cast<std::uint8_t>(aValue >> 8);
    m_vBytes.at(aPlace + 1) = static_cast<std::uint8_t>(aValue);
  }
  /// Returns the offset of a table, from the directory at the start of the file.
  std::size_t Table(std::string_view aTag) const {
    std::size_t record = 12;
    while (!std::equal(aTag.begin(), aTag.end(), &m_vBytes.at(record))) record += 16;
    return static_cast<std::size_t>(At16(record + 8)) << 16 | static_cast<std::size_t>(At16(record + 10));
  }
};

}  // namespace

TEST(Fonts, LimitTheBarsOfADamagedFile) {
  const auto match = FontLibrary::Instance().Match({"DejaVu Sans", "sans-serif", 400});
  ASSERT_TRUE(match.has_value());
  for (const int value : {0x7FFF, -0x8000}) {
    std::ifstream system(match->m_sFile, std::ios::binary);
    FontFile file{{std::istreambuf_iterator<char>(system), {}}};
    const std::size_t underline = file.Table("post") + 8, strikeOut = file.Table("OS/2") + 26;
    for (const std::size_t place : {underline, underline + 2, strikeOut, strikeOut + 2})
      file.Set16(place, value);
    const std::size_t widths = file.Table("hmtx");
    const int advances = file.At16(file.Table("hhea") + 34);
    for (int i = 0; i < advances; ++i) file.Set16(widths + 4 * static_cast<std::size_t>(i), 0xFFFF);
    const TestFolder folder;
    folder.Put("hostile.ttf", file.m_vBytes);
    const FontConfiguration hostile(ConfigurationOf(folder));
    const auto font = DeviceFont::Create({.m_szFace = "",
                                          .m_iHeight = -100,
                                          .m_iWidth = 0,
                                          .m_iOrientation = 0,
                                          .m_iWeight = 400,
                                          .m_dwPitchAndFamily = FF_SWISS,
                                          .m_bItalic = false,
                                          .m_bUnderline = true,
                                          .m_bStrikeOut = true});
    ASSERT_NE(font, nullptr);
    const GlyphBitmap bitmap = font->Bitmap('A');
    EXPECT_GT(bitmap.m_iAdvance, 3000) << "the face is in use";
    EXPECT_LE(bitmap.m_iWidth, 1700) << value;
    EXPECT_GE(bitmap.m_iBottom, -200) << value;
    EXPECT_LE(bitmap.m_iBottom + bitmap.m_iRows, 200) << value;
  }
}
