// Fonts of a context: built by a task, printed during captures, and destroyed at each possible moment.
// Headless display.

#include "support/LogLines.h"
#include "support/Scene.h"

namespace {

void Destroy(Fonts aFonts, IGLContext& aContext) {
  for (const auto& font : aFonts) aContext.DestroyFont(font.Get());
}

void Print(const Fonts& aFonts) {
  GLString text("text");
  GLDATA_POINT start{0, 0, 0};
  for (const auto& font : aFonts) EXPECT_EQ(font->Print(text, &start), S_OK);
}

std::vector<float> WidthsOf(const Fonts& aFonts) {
  GLString text("text");
  std::vector<float> widths;
  for (const auto& font : aFonts) font->GetStringWidth(text, &widths.emplace_back());
  return widths;
}

/// Counts the lists and textures of the context, in a frame that begins after the call.
std::pair<int, int> NamesOf(ContextFixture& aFixture) {
  aFixture.Frame();
  std::pair<int, int> names{0, 0};
  aFixture.Frame([&names](Scene&) {
    for (GLuint name = 1; name < 4096; ++name) {
      names.first += glIsList(name);
      names.second += glIsTexture(name);
    }
  });
  return names;
}

}  // namespace

TEST(ContextFonts, ReleaseTheirNamesWhereverTheyAreDestroyed) {
  ContextFixture fixture(64, 64);
  IGLContext& context = fixture.Context();
  const auto names = NamesOf(fixture);
  Destroy(MakeFonts(context), context);
  EXPECT_EQ(NamesOf(fixture), names) << "destroyed before or during their tasks";
  Fonts fonts = MakeFonts(context);
  fixture.Frame([&](Scene&) { Print(fonts); });
  EXPECT_EQ(NamesOf(fixture), std::pair(names.first + 4 * 256, names.second + 1));
  Destroy(std::move(fonts), context);
  EXPECT_EQ(NamesOf(fixture), names) << "destroyed by a task on the draw thread";
  fonts = MakeFonts(context);
  fixture.Frame([&](Scene&) {
    Print(fonts);
    Destroy(std::move(fonts), context);
  });
  EXPECT_EQ(NamesOf(fixture), names) << "destroyed in a frame";
}

TEST(ContextFonts, OutliveTheirContext) {
  auto fixture = std::make_unique<ContextFixture>(64, 64);
  const Fonts fonts = MakeFonts(fixture->Context());
  fixture->Frame([&](Scene&) { Print(fonts); });
  const auto widths = WidthsOf(fonts);
  fixture.reset();
  EXPECT_EQ(WidthsOf(fonts), widths);
  GLDATA_POINT start{};
  EXPECT_EQ(fonts[2]->Print(nullptr, &start), E_GL_BADSTATE);
  EXPECT_EQ(GLCreate<IGLFont>(CLSID_GLFont)->Print(nullptr, &start), E_GL_BADSTATE) << "without a context";
}

TEST(ContextFonts, DeleteTheirListsWhenAnotherContextCaptures) {
  ContextFixture fixture(16, 16);
  const Fonts fonts = MakeFonts(fixture.Context());
  GLuint hosts = 0;
  const auto lists = [&] {
    int count = 0;
    fixture.Frame([&](Scene&) {
      if (hosts == 0) glNewList(hosts = glGenLists(1), GL_COMPILE), glEndList();
      Print(fonts);
      for (GLuint name = 1; name < 32768; ++name) count += glIsList(name);
    });
    return count;
  };
  const int before = lists();
  EXPECT_GE(before, 4 * 256);
  const FreeContext other;
  const auto capture = GLMake<TestCapture>();
  other.context->AttachCapture(capture.Get());
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(capture->Take(), 1);
    EXPECT_EQ(lists(), before);
  }
  fixture.Frame([&](Scene&) { EXPECT_TRUE(glIsList(hosts)) << "a list that the painter created"; });
}

TEST(ContextFonts, AreNotBuiltIntoAnOpenList) {
  const LogLines log(LogLevel::kDebug);
  ContextFixture fixture(64, 64);
  fixture.Context().EnableLighting(0);
  for (const bool early : {true, false}) {
    SCOPED_TRACE(early ? "made before the list" : "made in the list");
    const Picture picture = fixture.FramePicture([&](Scene& scene) {
      IGLCanvas& canvas = scene.Canvas();
      GLPtr<IGLFont> font;
      GLDATA_POINT start{-45, 40, -5};
      int list = 0;
      if (early) scene.Context().CreateSystemFont(font.Put());
      canvas.BeginCompileList(&list);
      if (!early) scene.Context().CreateSystemFont(font.Put());
      EXPECT_EQ(font->Print(GLString("text"), &start), early ? S_OK : E_GL_BADSTATE);
      DrawRectangle(canvas, -50, -50, 50, 0);
      canvas.EndCompileList();
      canvas.DrawCompiledList(list);
      scene.Context().DestroyFont(font.Get());
    });
    EXPECT_EQ(picture.At(32, 60), 0xFFFFFFFF) << "the list is complete";
    EXPECT_EQ(picture.CountOther(0x000000FF) > 64 * 32, early) << "text above the square";
  }
  const char message[] = "IGLFont::Print is refused: the font cannot be built while a display list is open";
  EXPECT_EQ(log.Count(message, "debug"), 1) << log.Joined();
}
