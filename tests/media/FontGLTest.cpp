// GLFont: states, order of GL calls, metrics, and GL state after its calls. Plain rendering context.

#include "media/FontBench.h"
#include "support/GLRecorder.h"
#include "support/PlainGL.h"

namespace {

/// Runs a test's body with a current plain rendering context.
void WithGL(const std::function<void(FontBench&)>& aBody) {
  DrawPlainGL(256, 256, [&] {
    ModelInPixels(256, 256);
    FontBench bench;
    aBody(bench);
  });
}

/// Calls of a repeated Print of "Hi" at (1, 2, 3), without the query of its list key.
std::vector<std::string> CallsOfPrint(GLFont& aFont, GLRecorder& aRecorder) {
  aRecorder.Clear();
  EXPECT_EQ(Print(aFont, u"Hi", {1, 2, 3}), S_OK);
  std::vector<std::string> calls = aRecorder.Calls();
  std::erase_if(calls, [](const std::string& call) { return call.starts_with("glIsList"); });
  return calls;
}

using Calls = std::vector<std::string>;

std::string Number(GLenum aValue) { return std::to_string(aValue); }

bool IsPlacedByMatrix(FontKind aKind) { return aKind == FontKind::kTrueType || aKind == FontKind::kInternal; }

float RasterX() {
  float position[4] = {};
  glGetFloatv(GL_CURRENT_RASTER_POSITION, position);
  return position[0];
}

int CountLists() {
  int count = 0;
  for (GLuint name = 1; name < 4096; ++name) count += glIsList(name);
  return count;
}

}  // namespace

TEST(Font, CallsListsInTheOrderOfItsKind) {
  WithGL([](FontBench& bench) {
    GLRecorder recorder;
    for (const FontKind kind : kFontKinds) {
      recorder.Clear();
      const auto font = bench.Make(kind);
      Print(*font, u"x");
      EXPECT_EQ(recorder.Count("glGetString"), 1) << "the driver's vendor is queried once";
      font->SetEscapement_DEG(30);
      font->SetHeight(4);
      int base = 0, texture = 0;
      const Calls ours = CallsOfPrint(*font, recorder);
      std::sscanf(recorder.CallsOf("glListBase").at(0).c_str(), "glListBase(%d)", &base);
      if (kind == FontKind::kInternal)
        std::sscanf(recorder.CallsOf("glBindTexture").at(0).c_str(), "glBindTexture(%*d, %d)", &texture);
      recorder.Clear();
      if (IsPlacedByMatrix(kind)) {
        glMatrixMode(GL_MODELVIEW), glPushMatrix(), glTranslated(1, 2, 3), glRotatef(-30, 0, 0, 1);
      } else {
        glRasterPos3d(1, 2, 3);
      }
      if (kind == FontKind::kTrueType) glScalef(1, 4, 0);
      if (kind == FontKind::kInternal) {
        glPushAttrib(GL_POLYGON_BIT | GL_ENABLE_BIT | GL_TEXTURE_BIT);
        glEnable(GL_TEXTURE_2D), glEnable(GL_BLEND), glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glPolygonMode(GL_FRONT_AND_BACK, GL_FILL), glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture));
        for (const GLenum wrap : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T})
          glTexParameteri(GL_TEXTURE_2D, wrap, GL_CLAMP);
        for (const GLenum filter : {GL_TEXTURE_MAG_FILTER, GL_TEXTURE_MIN_FILTER})
          glTexParameteri(GL_TEXTURE_2D, filter, GL_NEAREST);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
      }
      glPushAttrib(GL_LIST_BIT), glListBase(static_cast<GLuint>(base));
      glCallLists(2, GL_UNSIGNED_BYTE, "Hi"), glPopAttrib();
      if (IsPlacedByMatrix(kind)) glPopMatrix();
      if (kind == FontKind::kInternal) glPopAttrib();
      EXPECT_EQ(ours, recorder.Calls());
    }
  });
}

TEST(Font, CallsListsSinglyForOneVendor) {
  Picture pictures[2];
  for (const bool array : {false, true}) {
    pictures[array] = DrawPlainGL(256, 64, [array] {
      ModelInPixels(256, 64);
      FontBench bench;
      GLRecorder recorder;
      if (array) recorder.SetString(GL_VENDOR, "Microsoft Corporation");
      const auto font = bench.Make(FontKind::kRaster);
      EXPECT_EQ(Print(*font, u"\u00C4rger \u00FCber 100 \u20AC", {4, 10, 0}), S_OK);
      EXPECT_EQ(recorder.Count("glListBase"), array ? 0 : 1);
      EXPECT_EQ(recorder.CallsOf("glCallLists"),
                Calls{"glCallLists(16, " + Number(array ? GL_UNSIGNED_INT : GL_UNSIGNED_BYTE) + ", data)"});
    });
  }
  EXPECT_GT(pictures[0].CountOther(0x000000FF), 100);
  EXPECT_EQ(Difference(pictures[0], pictures[1]), 0);
}

TEST(Font, BuildsAtItsFirstPrintAndAfterALossOfLists) {
  WithGL([](FontBench& bench) {
    for (const FontKind kind : kFontKinds) {
      const auto font = bench.Make(kind);
      float width = 0;
      EXPECT_EQ(font->GetStringWidth(TextOf(u"W"), &width), E_FAIL);
      EXPECT_EQ(width, -1.0f) << "not built yet";
      EXPECT_EQ(Print(*font, u""), S_OK);
      const float built = WidthOf(*font, u"Wide");
      EXPECT_GT(built, 0.0f) << "an empty string also builds the font";

      ++g_uListGeneration;
      EXPECT_EQ(WidthOf(*font, u"Wide"), built) << "stale lists do not affect the metrics";
      GLRecorder recorder;
      EXPECT_EQ(font->Print(nullptr, nullptr), E_INVALIDARG);
      EXPECT_EQ(recorder.Count("glGenLists"), 0);
      GLDATA_POINT start{};
      EXPECT_EQ(font->Print(nullptr, &start), S_OK) << "a null text is empty";
      EXPECT_EQ(recorder.Count("glGenLists"), 1);
      EXPECT_EQ(recorder.Count("glCallLists"), 0);
      EXPECT_EQ(WidthOf(*font, u"Wide"), built);
      recorder.Clear();
      EXPECT_EQ(Print(*font, u"Wide"), S_OK);
      EXPECT_EQ(recorder.Count("glGenLists"), 0) << "lists are created per generation, not per string";
    }
  });
}

TEST(Font, FailsWithoutListsOrAtlasAndRecovers) {
  WithGL([](FontBench& bench) {
    const int lists = CountLists();
    for (const FontKind kind : kFontKinds) {
      const auto font = bench.Make(kind);
      GLRecorder recorder;
      recorder.Fail("glGenLists");
      EXPECT_EQ(Print(*font, u"x"), E_FAIL);
      EXPECT_EQ(recorder.Count("glPush*"), 0) << "no push and no drawing";
      EXPECT_EQ(WidthOf(*font, u"x"), -1.0f);
    }
    auto font = bench.Make(FontKind::kInternal);
    font->InitInternalFont(bench.m_pLink, TextOf(u"SANS"));
    GLRecorder recorder;
    EXPECT_EQ(Print(*font, u"x"), E_FAIL);
    EXPECT_EQ(recorder.Count("glGenTextures"), 0);
    EXPECT_EQ(Print(*font, u"x"), E_FAIL);
    EXPECT_EQ(recorder.Count("glGenLists"), 2) << "each Print tries again";
    EXPECT_EQ(CountLists(), lists) << "a failed build deletes its lists";
    font->InitInternalFont(bench.m_pLink, TextOf(u"sansserif"));
    EXPECT_EQ(Print(*font, u"x"), S_OK);
    EXPECT_EQ(font->InitInternalFont(bench.m_pLink, TextOf(std::u16string(64, u'x'))), E_INVALIDARG);
  });
}

TEST(Font, MeasuresItsPicture) {
  WithGL([](FontBench& bench) {
    const std::u16string text = u"Five quacking zephyrs, 27 %";
    for (const auto& order : {FontOrder{.m_Kind = FontKind::kSystem}, FontOrder{}, FontOrder{.m_iHeight = 30},
                              FontOrder{.m_iWidth = 9}, FontOrder{.m_iWeight = 700, .m_iHeight = -13},
                              FontOrder{.m_iStyle = GLFS_FIXED_PITCH | GLFS_UNDERLINE}}) {
      const auto font = bench.Make(order);
      ASSERT_EQ(Print(*font, text, {3, 20, 0}), S_OK);
      EXPECT_NEAR(WidthOf(*font, text), RasterX() - 3.0f, 0.001f);
      EXPECT_EQ(WidthOf(*font, u"A\u00DCB"), WidthOf(*font, u"AB")) << "codes from 0x80 are not measured";
      const float measured = WidthOf(*font, text);
      ++g_uListGeneration;
      EXPECT_EQ(Print(*font, text), S_OK);
      EXPECT_EQ(WidthOf(*font, text), measured) << "an average width is not requested by a second build";
    }
    const auto outline = bench.Make(FontKind::kTrueType);
    ASSERT_TRUE(outline->CreateFontLists());
    outline->SetWidth(100);
    outline->SetHeight(7);
    EXPECT_NEAR(WidthOf(*outline, u"HH"), 2 * 75.195f, 0.01f) << "two advances of 1540 of 2048 units per em";
    const auto atlas = bench.Make(FontKind::kInternal);
    ASSERT_TRUE(atlas->CreateFontLists());
    EXPECT_EQ(WidthOf(*atlas, u"four"), 32.0f);
  });
}

TEST(Font, ShowsItsWeightAndSlant) {
  for (const FontKind kind : {FontKind::kRaster, FontKind::kTrueType}) {
    const auto draw = [kind](int aStyle, int aWeight) {
      return DrawText(160, 64, {.m_Kind = kind, .m_iStyle = aStyle, .m_iWeight = aWeight, .m_iHeight = -30},
                      u"Hill", {20, 20, 0}, 30);
    };
    const Picture plain = draw(0, 400);
    const int ink = plain.CountOther(0x000000FF);
    EXPECT_GT(draw(0, 700).CountOther(0x000000FF), ink * 5 / 4);
    EXPECT_GT(Difference(draw(GLFS_ITALIC, 400), plain), ink / 3);
  }
}

TEST(Font, PrintsAnyText) {
  WithGL([](FontBench& bench) {
    std::u16string all;
    for (char16_t c = 1; c < 256; ++c) all += c;
    const std::u16string odd{u'a', 0xD800, u'\n', 0xDC00, u'\t', 0x4E2D, u'b'};
    for (const FontKind kind : kFontKinds) {
      const auto font = bench.Make(kind);
      GLRecorder recorder;
      EXPECT_EQ(Print(*font, all), S_OK);
      EXPECT_EQ(Print(*font, odd), S_OK);
      EXPECT_EQ(recorder.CallsOf("glCallLists"),
                (Calls{"glCallLists(255, " + Number(GL_UNSIGNED_BYTE) + ", data)",
                       "glCallLists(7, " + Number(GL_UNSIGNED_BYTE) + ", data)"}));
      EXPECT_NEAR(WidthOf(*font, odd), WidthOf(*font, u"a?\n?\t?b"), 0.01f);
      for (const std::size_t length : {1024u, 1025u, 10'000u}) {
        EXPECT_EQ(Print(*font, std::u16string(length, u' ')), S_OK);
        EXPECT_NEAR(WidthOf(*font, std::u16string(length, u'm')) /
                        (static_cast<float>(length) * WidthOf(*font, u"m")),
                    1.0f, 0.001f);
      }
    }
    const auto font = bench.Make(FontKind::kSystem);
    const std::u16string huge(10'000'000, u' ');
    EXPECT_EQ(Print(*font, huge, {-5, 0, 0}), S_OK);
    const float space = WidthOf(*font, u" ");
    float sum = 0;  // in the order of the component's additions
    for (std::size_t i = 0; i < huge.size(); ++i) sum += space;
    EXPECT_EQ(WidthOf(*font, huge), sum);
  });
}

TEST(Font, StoresThePropertiesOfItsKind) {
  WithGL([](FontBench& bench) {
    const auto read = [](GLFont& font) {
      int style = -1, weight = -1;
      font.GetStyle(&style);
      font.GetWeight(&weight);
      return std::pair(style, weight);
    };
    // Style and weight are those of the request until the build determines them.
    const std::pair<int, int> before[] = {{0, 0}, {0x10001, 2000}, {0x10001, -3}, {0, 0}};
    const std::pair<int, int> after[] = {{0, 0}, {0x10001, 1000}, {0x10001, 0}, {GLFS_FIXED_PITCH, 400}};
    for (const FontKind kind : kFontKinds) {
      const auto which = static_cast<std::size_t>(kind);
      const auto font = bench.Make({.m_Kind = kind, .m_iStyle = 0x10001, .m_iWeight = before[which].second});
      EXPECT_EQ(read(*font), before[which]);
      EXPECT_TRUE(font->CreateFontLists());
      EXPECT_EQ(read(*font), after[which]);

      const bool outline = kind == FontKind::kTrueType;
      const HRESULT set = outline ? S_OK : E_GL_BADSTATE, refused = outline ? E_GL_BADVALUE : E_GL_BADSTATE;
      for (const float value : {0.0f, -1.0f, NAN}) {
        EXPECT_EQ(font->SetWidth(value), refused);
        EXPECT_EQ(font->SetHeight(value), refused);
        EXPECT_EQ(font->SetExtrusionZ(value), value == 0.0f ? set : refused);
      }
      EXPECT_EQ(font->SetEscapement_DEG(45), IsPlacedByMatrix(kind) ? S_OK : E_GL_BADSTATE);
    }
    const std::u16string x62(62, u'x');
    for (const auto& [given, kept] : {std::pair{x62 + u"yz", x62 + u"y"},
                                      {x62 + u"\U0001F600", x62},
                                      {u"\u0428 \u00FC", u"\u0428 \u00FC"}}) {
      BSTR face = nullptr;
      EXPECT_EQ(bench.Make({.m_szFace = given.c_str()})->GetFace(&face), S_OK);
      EXPECT_TRUE(std::equal(kept.begin(), kept.end(), face, face + SysStringLen(face)));
      SysFreeString(face);
    }
  });
}

// The host has bound a texture, and pixel state as after drawing a part of an image.
TEST(Font, BuildKeepsTextureAndPixelState) {
  Picture pictures[2];
  for (const bool odd : {false, true}) {
    pictures[odd] = DrawPlainGL(256, 64, [odd] {
      ModelInPixels(256, 64);
      FontBench bench;
      GLuint texture = 0;
      glGenTextures(1, &texture);
      glBindTexture(GL_TEXTURE_2D, texture);
      if (odd) {
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 100'000);
        glPixelStorei(GL_UNPACK_SKIP_ROWS, 1000);
        glPixelStorei(GL_UNPACK_SKIP_PIXELS, 7);
      }
      for (const FontKind kind : kFontKinds)
        EXPECT_EQ(Print(*bench.Make(kind), u"Text", {60.0 * static_cast<int>(kind), 20, 0}), S_OK);
      GLint bound = 0, length = 0, rows = 0, pixels = 0;
      glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
      glGetIntegerv(GL_UNPACK_ROW_LENGTH, &length);
      glGetIntegerv(GL_UNPACK_SKIP_ROWS, &rows);
      glGetIntegerv(GL_UNPACK_SKIP_PIXELS, &pixels);
      EXPECT_EQ(static_cast<GLuint>(bound), texture);
      EXPECT_EQ(std::tuple(length, rows, pixels), odd ? std::tuple(100'000, 1000, 7) : std::tuple(0, 0, 0));
    });
  }
  EXPECT_GT(pictures[0].CountOther(0x000000FF), 100);
  EXPECT_EQ(Difference(pictures[0], pictures[1]), 0);
}
