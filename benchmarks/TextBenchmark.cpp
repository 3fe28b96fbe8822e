// Text beside its limits: Print of 20 characters beside bare glCallLists of the same lists, and the build of
// a font beside FreeType's own drawing of its 256 glyphs.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "PlainContext.h"
#include "component/Module.h"
#include "component/SiteLink.h"
#include "media/GLFont.h"
#include "platform/linux/fonts/FontLibrary.h"

namespace {

constexpr char kFace[] = "DejaVu Sans";
constexpr char kText[] = "twenty characters OK";
constexpr int kLength = sizeof kText - 1;
constexpr int kHeight = -16;

enum Kind { kSystem, kRaster, kTrueType, kInternal };

/// The list keys of a context over the rendering context that is current, and nothing else of it.
class ListSite final : public GLContextSite {
 public:
  ~ListSite() { ReleaseDC(nullptr, m_hDC); }
  int ViewportWidth() const noexcept override { return 1; }
  int ViewportHeight() const noexcept override { return 1; }
  bool HasClipPlanes() const noexcept override { return false; }
  HDC DeviceContext() const noexcept override { return m_hDC; }
  bool IsCurrentHere() const noexcept override { return true; }
  ULONG WindowContextNumber() const noexcept override { return 1; }
  void LockGL() noexcept override {}
  void UnlockGL() noexcept override {}
  ULONG GenListKey(int aCount) noexcept override { return g_uListGeneration << 16 | glGenLists(aCount); }
  ULONG BeginListKey() noexcept override { return 0; }
  void EndListKey() noexcept override {}
  void CallListKey(ULONG) noexcept override {}
  ULONG GetListBase(ULONG aKey) const noexcept override { return aKey & 0xFFFF; }
  void DeleteListKey(ULONG aKey, int aCount) noexcept override { glDeleteLists(aKey & 0xFFFF, aCount); }
  bool IsListKeyValid(ULONG aKey) const noexcept override {
    return aKey != 0 && aKey >> 16 == (g_uListGeneration & 0xFFFF) && glIsList(aKey & 0xFFFF) != GL_FALSE;
  }
  bool PostTask(PEvent*) noexcept override { return false; }

 private:
  HDC m_hDC = GetDC(nullptr);
};

/// A rendering context of 512 by 512 model units, and a font of one kind on it.
struct Bench {
  explicit Bench(Kind aKind) {
    glMatrixMode(GL_PROJECTION);
    glOrtho(0, 512, 0, 512, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    switch (aKind) {
      case kSystem:
        m_Font->InitSystemFont(m_pLink);
        break;
      case kRaster:
        m_Font->InitRasterFont(m_pLink, kFace, 0, 400, 0, kHeight, 0);
        break;
      case kTrueType:
        m_Font->InitTrueTypeFont(m_pLink, kFace, 0, 400, 0, false);
        break;
      case kInternal:
        m_Font->InitInternalFont(m_pLink, "SANSSERIF");
        break;
    }
    m_Font->SetWidth(16);
    m_Font->SetHeight(16);
    m_Font->CreateFontLists();
  }

  PlainContext m_Context;
  ListSite m_Site;
  GLSiteLinkPtr m_pLink = std::make_shared<GLSiteLink>(&m_Site);
  GLPtr<GLFont> m_Font = GLPtr<GLFont>::FromBorrowed(new GLFont);
};

template <class Draw>
void Measure(benchmark::State& aState, const Draw& aDraw) {
  constexpr int kPrints = 100;
  aDraw();
  glFinish();
  for (auto _ : aState) {
    for (int i = 0; i < kPrints; ++i) aDraw();
    glFinish();
  }
  aState.SetItemsProcessed(aState.iterations() * kPrints);
}

void Print(benchmark::State& aState) {
  const Bench bench(static_cast<Kind>(aState.range(0)));
  std::u16string text(kText, kText + kLength);
  GLDATA_POINT start{20, 200, 0};
  Measure(aState, [&] { bench.m_Font->Print(text.data(), &start); });
}

/// What a program that owns the lists would call, with the state that each kind needs set once.
void BareCallLists(benchmark::State& aState) {
  const auto kind = static_cast<Kind>(aState.range(0));
  const Bench bench(kind);
  std::u16string text(kText, kText + kLength);
  GLDATA_POINT start{20, 200, 0};
  bench.m_Font->Print(text.data(), &start);
  GLuint base = 1;
  while (glIsList(base) == GL_FALSE) ++base;
  if (kind == kInternal) {
    GLuint texture = 1;
    while (glIsTexture(texture) == GL_FALSE) ++texture;
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBindTexture(GL_TEXTURE_2D, texture);
  }
  glListBase(base);
  Measure(aState, [&] {
    if (kind == kSystem || kind == kRaster) {
      glRasterPos3d(start.x, start.y, start.z);
      glCallLists(kLength, GL_UNSIGNED_BYTE, kText);
      return;
    }
    glPushMatrix();
    glTranslated(start.x, start.y, start.z);
    if (kind == kTrueType) glScalef(16, 16, 0);
    glCallLists(kLength, GL_UNSIGNED_BYTE, kText);
    glPopMatrix();
  });
}

void Build(benchmark::State& aState) {
  const Bench bench(static_cast<Kind>(aState.range(0)));
  for (auto _ : aState) benchmark::DoNotOptimize(bench.m_Font->CreateFontLists());
}

/// Opening a face and loading its 256 glyphs, each drawn to one bit a pixel or left as an outline.
void FreeTypeAlone(benchmark::State& aState) {
  const bool draws = aState.range(0) == kRaster;
  FT_Library library = nullptr;
  FT_Init_FreeType(&library);
  for (auto _ : aState) {
    const auto match = FontLibrary::Instance().Match({kFace, "sans-serif", 400, false, false});
    FT_Face face = nullptr;
    FT_New_Face(library, match->m_sFile.c_str(), match->m_iIndex, &face);
    FT_Set_Pixel_Sizes(face, 0, -kHeight);
    for (FT_ULong code = 0; code < 256; ++code) {
      FT_Load_Char(face, code, draws ? FT_LOAD_RENDER | FT_LOAD_TARGET_MONO : FT_LOAD_NO_SCALE);
    }
    FT_Done_Face(face);
  }
  FT_Done_FreeType(library);
}

BENCHMARK(Print)->ArgName("kind")->DenseRange(kSystem, kInternal);
BENCHMARK(BareCallLists)->ArgName("kind")->DenseRange(kSystem, kInternal);
BENCHMARK(Build)->ArgName("kind")->DenseRange(kSystem, kInternal)->Unit(benchmark::kMicrosecond);
BENCHMARK(FreeTypeAlone)->ArgName("kind")->Arg(kRaster)->Arg(kTrueType)->Unit(benchmark::kMicrosecond);

}  // namespace
