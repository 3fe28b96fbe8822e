// GLFont on a real rendering context: its states, the order of its calls, what it measures and what it
// leaves.

#include <gtest/gtest.h>

#include <cmath>

#include "media/FontBench.h"
#include "support/Counting.h"
#include "support/GLRecorder.h"
#include "support/PlainGL.h"

namespace {

/// Runs a test's body where a plain rendering context is current.
void WithGL(const std::function<void(FontBench&)>& aBody) {
  DrawPlainGL(256, 256, [&] {
    ModelInPixels(256, 256);
    FontBench bench;
    aBody(bench);
  });
}

/// What a warm Print of "Hi" at (1, 2, 3) calls, the look at its list key apart.
std::vector<std::string> CallsOfPrint(GLFont& aFont, GLRecorder& aRecorder) {
  aRecorder.Clear();
  EXPECT_EQ(Print(aFont, u"Hi", {1, 2, 3}), S_OK);
  std::vector<std::string> calls = aRecorder.Calls();
  std::erase_if(calls, [](const std::string& call) { return call.starts_with("glIsList"); });
  return calls;
}

using Calls = std::vector<std::string>;

Calls operator+(Calls aFirst, const Calls& aSecond) {
  aFirst.insert(aFirst.end(), aSecond.begin(), aSecond.end());
  return aFirst;
}

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

int CountTextures() {
  int count = 0;
  for (GLuint name = 1; name < 64; ++name) count += glIsTexture(name);
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
      EXPECT_EQ(recorder.Count("glGetString"), 1) << "the driver's vendor is looked up once";
      const std::string base = recorder.CallsOf({"glListBase"}).at(0);
      const Calls texture = recorder.CallsOf({"glBindTexture"});
      font->SetEscapement_DEG(30);
      font->SetHeight(4);

      const Calls lists{"glPushAttrib(131072)", base, "glCallLists(2, GL_UNSIGNED_BYTE, data)",
                        "glPopAttrib()"};
      const Calls placed{"glMatrixMode(GL_MODELVIEW)", "glPushMatrix()", "glTranslated(1, 2, 3)",
                         "glRotatef(-30, 0, 0, 1)"};
      Calls expected = Calls{"glRasterPos3d(1, 2, 3)"} + lists;
      if (kind == FontKind::kTrueType)
        expected = placed + Calls{"glScalef(1, 4, 0)"} + lists + Calls{"glPopMatrix()"};
      if (kind == FontKind::kInternal) {
        const Calls state{"glPushAttrib(270344)",
                          "glEnable(GL_TEXTURE_2D)",
                          "glEnable(GL_BLEND)",
                          "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
                          "glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)",
                          texture.back(),
                          "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP)",
                          "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP)",
                          "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST)",
                          "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST)",
                          "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE)"};
        expected = placed + state + lists + Calls{"glPopMatrix()", "glPopAttrib()"};
      }
      EXPECT_EQ(CallsOfPrint(*font, recorder), expected);
    }
  });
}

TEST(Font, NamesListsOneByOneForTheVendorThatWantsIt) {
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
      EXPECT_EQ(recorder.CallsOf({"glCallLists"}), Calls{array ? "glCallLists(16, GL_UNSIGNED_INT, data)"
                                                               : "glCallLists(16, GL_UNSIGNED_BYTE, data)"});
    });
  }
  EXPECT_GT(pictures[0].CountOther(0x000000FF), 100);
  EXPECT_EQ(Difference(pictures[0], pictures[1]), 0);
}

TEST(Font, BuildsAtItsFirstPrintAndAgainWhenItsListsAreGone) {
  WithGL([](FontBench& bench) {
    for (const FontKind kind : kFontKinds) {
      const auto font = bench.Make(kind);
      float width = 0;
      EXPECT_EQ(font->GetStringWidth(const_cast<BSTR>(u"W"), &width), E_FAIL);
      EXPECT_EQ(width, -1.0f) << "not built yet";
      EXPECT_EQ(Print(*font, u""), S_OK);
      const float built = WidthOf(*font, u"Wide");
      EXPECT_GT(built, 0.0f) << "an empty string builds, too";

      ++g_uListGeneration;
      EXPECT_EQ(WidthOf(*font, u"Wide"), built) << "stale lists don't touch the metrics";
      GLRecorder recorder;
      EXPECT_EQ(font->Print(nullptr, nullptr), E_INVALIDARG);
      EXPECT_EQ(recorder.Count("glGenLists"), 0);
      GLDATA_POINT start{};
      EXPECT_EQ(font->Print(nullptr, &start), S_OK) << "no text counts as empty";
      EXPECT_EQ(recorder.Count("glNewList"), 256);
      EXPECT_EQ(recorder.Count("glCallLists"), 0);
      EXPECT_EQ(WidthOf(*font, u"Wide"), built);
      recorder.Clear();
      EXPECT_EQ(Print(*font, u"Wide"), S_OK);
      EXPECT_EQ(recorder.Count("glNewList"), 0) << "once a generation, not once a string";
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
      EXPECT_EQ(recorder.Count("glPush*"), 0) << "nothing pushed, nothing drawn";
      EXPECT_EQ(WidthOf(*font, u"x"), -1.0f);
    }
    auto font = bench.Make(FontKind::kInternal);
    font->InitInternalFont(bench.m_pLink, "SANS");
    GLRecorder recorder;
    EXPECT_EQ(Print(*font, u"x"), E_FAIL);
    EXPECT_EQ(recorder.Count("glGenTextures"), 0);
    EXPECT_EQ(Print(*font, u"x"), E_FAIL);
    EXPECT_EQ(recorder.Count("glGenLists"), 2) << "each Print tries anew";
    EXPECT_EQ(CountLists(), lists) << "a failed build gives its lists back";
    font->InitInternalFont(bench.m_pLink, "sansserif");
    EXPECT_EQ(Print(*font, u"x"), S_OK);
    EXPECT_EQ(font->InitInternalFont(bench.m_pLink, std::string(64, 'x').c_str()), E_INVALIDARG);
  });
}

TEST(Font, WithoutAContextRefusesToPrint) {
  FontBench bench;
  auto font = bench.Make(FontKind::kRaster);
  EXPECT_TRUE(font->HasSite());
  bench.m_pLink->Clear();
  EXPECT_FALSE(font->HasSite());
  EXPECT_EQ(Print(*font, u"x"), E_GL_BADSTATE);
  EXPECT_FALSE(font->CreateFontLists());
  font = GLPtr<GLFont>::FromBorrowed(new GLFont);
  EXPECT_EQ(Print(*font, u"x"), E_GL_BADSTATE);
}

TEST(Font, MeasuresWhatItDraws) {
  WithGL([](FontBench& bench) {
    const std::u16string text = u"Five quacking zephyrs, 27 %";
    for (const auto& order : {FontOrder{.m_Kind = FontKind::kSystem}, FontOrder{}, FontOrder{.m_iHeight = 30},
                              FontOrder{.m_iWidth = 9}, FontOrder{.m_iWeight = 700, .m_iHeight = -13},
                              FontOrder{.m_iStyle = GLFS_FIXED_PITCH | GLFS_UNDERLINE}}) {
      const auto font = bench.Make(order);
      ASSERT_EQ(Print(*font, text, {3, 20, 0}), S_OK);
      EXPECT_NEAR(WidthOf(*font, text), RasterX() - 3.0f, 0.001f);
      EXPECT_EQ(WidthOf(*font, u"A\u00DCB"), WidthOf(*font, u"AB")) << "codes from 0x80 up aren't measured";
    }
    const auto outline = bench.Make(FontKind::kTrueType);
    ASSERT_TRUE(outline->CreateFontLists());
    outline->SetWidth(100);
    outline->SetHeight(7);
    EXPECT_NEAR(WidthOf(*outline, u"HH"), 2 * 75.195f, 0.01f)
        << "two em-scaled advances of 1540 in 2048 units";
    const auto atlas = bench.Make(FontKind::kInternal);
    ASSERT_TRUE(atlas->CreateFontLists());
    EXPECT_EQ(WidthOf(*atlas, u"four"), 32.0f);
  });
}

TEST(Font, TakesTheAverageWidthWhereNoneIsGiven) {
  WithGL([](FontBench& bench) {
    const auto font = bench.Make({.m_iHeight = -40});
    const auto widthOf = [&] {
      float width = -1;
      font->GetWidth(&width);
      return width;
    };
    EXPECT_EQ(widthOf(), 0.0f);
    ASSERT_TRUE(font->CreateFontLists());
    EXPECT_NEAR(widthOf(), 40 * 1038 / 2048.0f, 0.5f);
    const float measured = WidthOf(*font, u"stable");
    ++g_uListGeneration;
    ASSERT_TRUE(font->CreateFontLists());
    EXPECT_EQ(WidthOf(*font, u"stable"), measured) << "a rebuild doesn't take the average for a request";
  });
}

TEST(Font, PrintsTextOfAnyLengthAndContent) {
  WithGL([](FontBench& bench) {
    std::u16string all;
    for (char16_t c = 1; c < 256; ++c) all += c;
    const std::u16string odd{u'a', 0xD800, u'\n', 0xDC00, u'\t', 0x4E2D, u'b'};
    for (const FontKind kind : kFontKinds) {
      const auto font = bench.Make(kind);
      GLRecorder recorder;
      EXPECT_EQ(Print(*font, all), S_OK);
      EXPECT_EQ(Print(*font, odd), S_OK);
      EXPECT_EQ(recorder.CallsOf({"glCallLists"}), (Calls{"glCallLists(255, GL_UNSIGNED_BYTE, data)",
                                                          "glCallLists(7, GL_UNSIGNED_BYTE, data)"}));
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
    EXPECT_EQ(WidthOf(*font, huge), 80'000'000.0f);
  });
}

TEST(Font, AllocatesNothingOnceWarm) {
  WithGL([](FontBench& bench) {
    for (const bool array : {false, true}) {
      GLRecorder recorder;
      recorder.Pause();
      if (array) recorder.SetString(GL_VENDOR, "Microsoft");
      for (const FontKind kind : kFontKinds) {
        const auto font = bench.Make(kind);
        const std::u16string texts[] = {u"twenty characters, so", std::u16string(5000, u'x')};
        for (const auto& text : texts) Print(*font, text);
        EXPECT_EQ(CountAllocations([&] {
                    for (const auto& text : texts) {
                      Print(*font, text);
                      WidthOf(*font, text);
                    }
                  }),
                  0u);
      }
    }
  });
}

TEST(Font, LeavesTheCallersStateButForTheBlendFunction) {
  WithGL([](FontBench& bench) {
    for (const FontKind kind : kFontKinds) {
      const auto font = bench.Make(kind);
      Print(*font, u"warm");
      glMatrixMode(GL_PROJECTION);
      glBlendFunc(GL_ONE, GL_ZERO);
      glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
      glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
      glListBase(77);
      glMatrixMode(GL_MODELVIEW);
      float before[16], after[16];
      glGetFloatv(GL_MODELVIEW_MATRIX, before);
      Print(*font, u"some text", {5, 5, 5});
      glGetFloatv(GL_MODELVIEW_MATRIX, after);
      EXPECT_EQ(std::memcmp(before, after, sizeof before), 0);
      const auto get = [](GLenum name) {
        GLint values[2] = {};
        glGetIntegerv(name, values);
        return values[0];
      };
      GLint mode = 0;
      glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
      EXPECT_EQ(mode, GL_DECAL);
      EXPECT_EQ(get(GL_POLYGON_MODE), GL_LINE);
      EXPECT_EQ(get(GL_LIST_BASE), 77);
      EXPECT_EQ(get(GL_TEXTURE_BINDING_2D), kind == FontKind::kInternal ? get(GL_TEXTURE_BINDING_2D) : 0);
      EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D) || glIsEnabled(GL_BLEND));
      EXPECT_EQ(get(GL_BLEND_SRC), kind == FontKind::kInternal ? GL_SRC_ALPHA : GL_ONE);
      EXPECT_EQ(get(GL_MATRIX_MODE), GL_MODELVIEW);
      glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    }
  });
}

TEST(Font, SetsWhatItsKindHas) {
  FontBench bench;
  for (const FontKind kind : kFontKinds) {
    const auto font = bench.Make(kind);
    const bool outline = kind == FontKind::kTrueType;
    const HRESULT set = outline ? S_OK : E_GL_BADSTATE, refused = outline ? E_GL_BADVALUE : E_GL_BADSTATE;
    for (const float value : {0.0f, -1.0f, NAN}) {
      EXPECT_EQ(font->SetWidth(value), refused);
      EXPECT_EQ(font->SetHeight(value), refused);
      if (value != 0.0f) {
        EXPECT_EQ(font->SetExtrusionZ(value), refused);
      }
    }
    EXPECT_EQ(font->SetWidth(2.5f), set);
    EXPECT_EQ(font->SetHeight(3.5f), set);
    EXPECT_EQ(font->SetExtrusionZ(0.0f), set);
    EXPECT_EQ(font->SetEscapement_DEG(45), outline || kind == FontKind::kInternal ? S_OK : E_GL_BADSTATE);
    float width = 0, height = 0;
    font->GetWidth(&width);
    font->GetHeight(&height);
    if (outline) {
      EXPECT_EQ(std::pair(width, height), std::pair(2.5f, 3.5f));
    }
    EXPECT_EQ(font->GetWidth(nullptr), E_INVALIDARG);
    EXPECT_EQ(font->GetStringWidth(nullptr, nullptr), E_INVALIDARG);
  }
}

TEST(Font, TellsItsWeightAndStyleAsBuilt) {
  WithGL([](FontBench& bench) {
    const auto read = [](GLFont& font) {
      int style = -1, weight = -1;
      font.GetStyle(&style);
      font.GetWeight(&weight);
      return std::pair(style, weight);
    };
    const auto heavy = bench.Make({.m_iStyle = 0x10001, .m_iWeight = 2000});
    EXPECT_EQ(read(*heavy), std::pair(0x10001, 2000));
    EXPECT_TRUE(heavy->CreateFontLists());
    EXPECT_EQ(read(*heavy), std::pair(0x10001, 1000));
    const auto atlas = bench.Make(FontKind::kInternal);
    EXPECT_EQ(read(*atlas), std::pair(0, 0));
    EXPECT_TRUE(atlas->CreateFontLists());
    EXPECT_EQ(read(*atlas), std::pair(int{GLFS_FIXED_PITCH}, 400));
    const auto system = bench.Make(FontKind::kSystem);
    EXPECT_TRUE(system->CreateFontLists());
    EXPECT_EQ(read(*system), std::pair(0, 0));

    const auto longName =
        bench.Make({.m_szFace = "0123456789012345678901234567890123456789012345678901234567890123456789"});
    BSTR face = nullptr;
    EXPECT_EQ(longName->GetFace(&face), S_OK);
    EXPECT_EQ(SysStringLen(face), 63u);
    SysFreeString(face);

    const auto stock = bench.Make({.m_Kind = FontKind::kTrueType, .m_szFace = "System"});
    EXPECT_EQ(Print(*stock, u"x"), S_OK);
    LONG trueType = 0;
    stock->IsTrueType(&trueType);
    float height = 0;
    stock->GetHeight(&height);
    EXPECT_EQ(std::pair(trueType, height), std::pair(LONG{1}, 16.0f)) << "the stock font by another door";
  });
}

TEST(Font, GivesItsListsAndTextureBack) {
  WithGL([](FontBench& bench) {
    const int lists = CountLists(), textures = CountTextures();
    for (const FontKind kind : kFontKinds) {
      auto font = bench.Make(kind);
      Print(*font, u"x");
      EXPECT_EQ(CountLists(), lists + 256);
      font.Reset();
      EXPECT_EQ(CountLists(), lists) << "at once where the rendering context is current";
      EXPECT_EQ(CountTextures(), textures);

      font = bench.Make(kind);
      Print(*font, u"x");
      bench.m_Site.m_bCurrent = false;
      font.Reset();
      EXPECT_EQ(CountLists(), lists + 256) << "no GL call where it isn't";
      bench.m_Site.m_bCurrent = true;
      bench.m_Site.RunTasks();
      EXPECT_EQ(CountLists(), lists) << "but by a task";
      EXPECT_EQ(CountTextures(), textures);
    }
    bench.Make(FontKind::kRaster).Reset();
    EXPECT_TRUE(bench.m_Site.m_vTasks.empty()) << "a font that was never built leaves nothing";

    auto early = bench.Make(FontKind::kInternal), late = bench.Make(FontKind::kInternal);
    Print(*early, u"x");
    Print(*late, u"x");
    bench.m_Site.m_bCurrent = false;
    early.Reset();
    bench.m_pLink->Clear();
    bench.m_Site.RunTasks();
    late.Reset();
    EXPECT_TRUE(bench.m_Site.m_vTasks.empty()) << "nothing to give back to a context that has gone";
  });
}

TEST(Font, KeepsTheWindowsTextureOverACapture) {
  WithGL([](FontBench& bench) {
    const int textures = CountTextures();
    auto font = bench.Make(FontKind::kInternal);
    Print(*font, u"x");
    GLRecorder recorder;
    bench.m_Site.m_uWindowContext = 0;  // a capture's rendering context is current
    ++g_uListGeneration;
    Print(*font, u"x");
    EXPECT_EQ(recorder.Count("glDeleteTextures"), 0) << "the window's texture has no meaning there";
    bench.m_Site.m_uWindowContext = 1;
    ++g_uListGeneration;
    Print(*font, u"x");
    EXPECT_EQ(recorder.Count("glDeleteTextures"), 1) << "back at the window its texture is replaced";
    bench.m_Site.m_uWindowContext = 2;  // another window, another rendering context
    ++g_uListGeneration;
    Print(*font, u"x");
    EXPECT_EQ(recorder.Count("glDeleteTextures"), 1) << "a texture of a former window went with it";
    font.Reset();
    EXPECT_EQ(CountTextures(), textures + 2)
        << "those of the capture and of the former window, which really end then";
  });
}
