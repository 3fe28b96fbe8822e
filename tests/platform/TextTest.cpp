// Conversion between UTF-16 and 8-bit text. No display.

#include "platform/Text.h"
#include "support/Test.h"

namespace {

/// A text in the form that operations expect.
const GLWCHAR* Units(const std::u16string& aText) { return reinterpret_cast<const GLWCHAR*>(aText.data()); }

std::string ToBytes(UINT aCodePage, const std::u16string& aText) {
  const int units = static_cast<int>(aText.size());
  const int need = WideCharToMultiByte(aCodePage, 0, Units(aText), units, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(need), '\0');
  EXPECT_EQ(WideCharToMultiByte(aCodePage, 0, Units(aText), units, bytes.data(), need, nullptr, nullptr),
            need);
  return bytes;
}

std::u16string ToWide(UINT aCodePage, const std::string& aBytes) {
  const int count = static_cast<int>(aBytes.size());
  const int need = MultiByteToWideChar(aCodePage, 0, aBytes.data(), count, nullptr, 0);
  std::u16string wide(static_cast<std::size_t>(need), u'\0');
  EXPECT_EQ(
      MultiByteToWideChar(aCodePage, 0, aBytes.data(), count, reinterpret_cast<GLWCHAR*>(wide.data()), need),
      need);
  return wide;
}

}  // namespace

TEST(Text, EachByteSurvivesARoundTrip) {
  for (const UINT codePage : {UINT{CP_ACP}, UINT{CP_THREAD_ACP}, UINT{1252}}) {
    for (int byte = 0; byte < 256; ++byte) {
      const std::string text(1, static_cast<char>(byte));
      const std::u16string wide = ToWide(codePage, text);
      ASSERT_EQ(wide.size(), 1u);
      EXPECT_EQ(ToBytes(codePage, wide), text) << "byte " << byte;
    }
  }
}

TEST(Text, ConvertsBetweenItsCodePages) {
  struct {
    UINT m_uCodePage;
    std::u16string m_sWide;
    std::string m_sBytes;
    bool m_bBack;
  } const cases[] = {
      {CP_ACP, u"\u20AC\u201Cd\u00FC\u00DF\u201D\u2026\u2122\u0178",
       "\x80\x93"
       "d\xFC\xDF\x94\x85\x99\x9F",
       true},
      {CP_ACP, u"\u0416\u4E2D", "??", false},
      {CP_ACP,
       u"a\xD83D\xDE00"
       u"b",
       "a??b", false},
      {CP_ACP, std::u16string{u'x', 0xD800, u'y', 0xDC00}, "x?y?", false},
      {CP_UTF8, u"\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF",
       "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", true},
      {CP_UTF8, std::u16string{u'x', 0xD800, u'y', 0xDC00}, "x\xEF\xBF\xBDy\xEF\xBF\xBD", false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ToBytes(c.m_uCodePage, c.m_sWide), c.m_sBytes);
    if (c.m_bBack) {
      EXPECT_EQ(ToWide(c.m_uCodePage, c.m_sBytes), c.m_sWide);
    }
  }
}

TEST(Text, MalformedUtf8BecomesReplacements) {
  for (const std::string bad :
       {"\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF", "\xE2\x82", "\xC3"}) {
    const std::u16string wide = ToWide(CP_UTF8, bad);
    EXPECT_EQ(wide, std::u16string(wide.size(), u'\xFFFD')) << bad.size() << " bytes";
    EXPECT_FALSE(wide.empty());
  }
  EXPECT_EQ(ToWide(CP_UTF8, "\xE2\x28\xA1"), u"\uFFFD(\uFFFD") << "only the lead byte is invalid";
}

TEST(Text, StaysWithinItsBuffer) {
  BOOL used = FALSE;
  char bytes[5] = "####";
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, Units(u"abc"), -1, bytes, 3, nullptr, nullptr), 0)
      << "no terminator";
  EXPECT_EQ(bytes[3], '#');
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, Units(u"a\u4E2Dc"), -1, bytes, 4, "*", &used), 4);
  EXPECT_STREQ(bytes, "a*c");
  EXPECT_TRUE(used);
  GLWCHAR wide[3] = {u'#', u'#', u'#'};
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xF0\x9F\x98\x80z", 5, wide, 2), 0);
  EXPECT_EQ(wide[2], u'#');
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, nullptr, 1, bytes, 4, nullptr, nullptr), 0);
  EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a", 0, wide, 3), 0);
}
