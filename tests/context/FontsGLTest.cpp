// Fonts of a real context: built by a task, printed over captures, and destroyed wherever a host may do it.

#include <gllib/IGLFont.h>
#include <gtest/gtest.h>

#include <atomic>

#include "platform/GL.h"
#include "support/Eventually.h"
#include "support/Scene.h"

namespace {

/// One font of each kind: borrowed where the context gives no count.
struct Fonts {
  explicit Fonts(IGLContext& aContext) {
    const GLString face("DejaVu Sans");
    aContext.CreateSystemFont(m_ap[0].Put());
    aContext.CreateRasterFont(face, 0, 400, 0, -20, 0, &m_pRaster);
    aContext.CreateTrueTypeFont(face, 0, 400, 0, 1, &m_pTrueType);
    GLPtr<IGLContext>::FromBorrowed(&aContext).As<IGLContext2>()->CreateInternalFont(GLString("HAND"),
                                                                                     m_ap[3].Put());
    m_ap[1] = GLPtr<IGLFont>::FromBorrowed(m_pRaster);
    m_ap[2] = GLPtr<IGLFont>::FromBorrowed(m_pTrueType);
  }
  void Destroy(IGLContext& aContext) {
    for (auto& font : m_ap) {
      aContext.DestroyFont(font.Get());
      font.Reset();
    }
  }
  void Print() const {
    GLString text("text");
    GLDATA_POINT start{0, 0, 0};
    for (const auto& font : m_ap) EXPECT_EQ(font->Print(text, &start), S_OK);
  }
  std::vector<float> Widths() const {
    GLString text("text");
    std::vector<float> widths;
    for (const auto& font : m_ap) font->GetStringWidth(text, &widths.emplace_back());
    return widths;
  }

  GLPtr<IGLFont> m_ap[4];
  IGLFont *m_pRaster = nullptr, *m_pTrueType = nullptr;
};

/// Lists and textures that live in the context, counted by a frame that began after the call.
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

/// Captures a number of frames.
class Captures : public GLCaptureBase {
 public:
  explicit Captures(int aWanted) : m_iLeft(aWanted) {}
  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    *aEnabled = m_iLeft > 0;
    return S_OK;
  }
  HRESULT GetPixmap(IGLPixmap** aPixmap) noexcept override {
    *aPixmap = GLPtr(m_pPixmap).Detach();
    return S_OK;
  }
  HRESULT GetRectangle(int* aX, int* aY, int* aWidth, int* aHeight) noexcept override {
    *aX = *aY = 0;
    *aWidth = *aHeight = 16;
    return S_OK;
  }
  HRESULT OnData(LONG aSuccess) noexcept override {
    if (aSuccess != 0) --m_iLeft;
    return S_OK;
  }
  std::atomic<int> m_iLeft;

 private:
  GLPtr<IGLPixmap> m_pPixmap = GLCreate<IGLPixmap>(CLSID_GLPixmap);
};

}  // namespace

TEST(ContextFonts, GoWithTheirNamesWhereverTheyAreDestroyed) {
  ContextFixture fixture(64, 64);
  const auto names = NamesOf(fixture);
  Fonts(fixture.Context()).Destroy(fixture.Context());
  EXPECT_EQ(NamesOf(fixture), names) << "destroyed before or while their tasks ran";
  Fonts byHost(fixture.Context());
  fixture.Frame([&](Scene&) { byHost.Print(); });
  EXPECT_EQ(NamesOf(fixture), std::pair(names.first + 4 * 256, names.second + 1));
  byHost.Destroy(fixture.Context());
  EXPECT_EQ(NamesOf(fixture), names) << "by a task on the draw thread";
  Fonts byPainter(fixture.Context());
  fixture.Frame([&](Scene& scene) {
    byPainter.Print();
    byPainter.Destroy(scene.Context());
  });
  EXPECT_EQ(NamesOf(fixture), names) << "within a frame";
}

TEST(ContextFonts, OutliveTheirContext) {
  auto fixture = std::make_unique<ContextFixture>(64, 64);
  const Fonts fonts(fixture->Context());
  fixture->Frame([&](Scene&) { fonts.Print(); });
  const auto widths = fonts.Widths();
  fixture.reset();
  EXPECT_EQ(fonts.Widths(), widths);
  GLDATA_POINT start{};
  EXPECT_EQ(fonts.m_ap[1]->Print(nullptr, &start), E_GL_BADSTATE);
}

TEST(ContextFonts, LeaveNoListsBehindWhenAnotherContextCaptures) {
  ContextFixture fixture(16, 16);
  const Fonts fonts(fixture.Context());
  GLuint hosts = 0;
  const auto lists = [&] {
    int count = 0;
    fixture.Frame([&](Scene&) {
      if (hosts == 0) glNewList(hosts = glGenLists(1), GL_COMPILE), glEndList();
      fonts.Print();
      for (GLuint name = 1; name < 32768; ++name) count += glIsList(name);
    });
    return count;
  };
  const int before = lists();
  EXPECT_GE(before, 4 * 256);

  const auto other = GLCreate<IGLContext>(CLSID_GLContext);
  ASSERT_EQ(other->Initialize(0), S_OK);
  other->SetViewport(0, 0, 16, 16);
  for (int i = 0; i < 3; ++i) {
    const auto captures = GLMake<Captures>(1);
    other->AttachCapture(captures.Get());
    ASSERT_TRUE(Eventually([&] { return captures->m_iLeft == 0; }));
    EXPECT_EQ(lists(), before);
  }
  fixture.Frame([&](Scene&) { EXPECT_TRUE(glIsList(hosts)) << "which the painter has made by itself"; });
}

TEST(ContextFonts, PrintAndMeasureOverCaptures) {
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  ASSERT_EQ(context->Initialize(0), S_OK);
  IGLViewer* viewer = nullptr;
  context->CreateViewer(1, 1, &viewer);
  const auto captures = GLMake<Captures>(3);
  const Fonts fonts(*context);
  std::atomic<int> textures{-1}, frames{0};
  const auto painter = GLMake<TestPainter>([&](Scene&) {
    fonts.Print();
    int count = 0;
    for (GLuint name = 1; name < 64; ++name) count += glIsTexture(name);
    textures = count;
    ++frames;
  });
  context->AttachPainter(painter.Get());
  ASSERT_TRUE(Eventually([&] { return frames > 2; }));
  const auto widths = fonts.Widths();
  const int before = textures;
  context->AttachCapture(captures.Get());
  ASSERT_TRUE(Eventually([&] {
    EXPECT_EQ(fonts.Widths(), widths) << "measured while the lists are thrown away and made";
    return captures->m_iLeft == 0;
  }));
  const int captured = frames;
  ASSERT_TRUE(Eventually([&] { return frames > captured + 1; }));
  EXPECT_EQ(fonts.Widths(), widths);
  EXPECT_EQ(textures, before) << "one texture at the window, whatever the captures had";
  context->DetachPainter();
}
