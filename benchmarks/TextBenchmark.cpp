// TextBenchmark: compares Print of 20 characters with glCallLists of the same lists, and the build of a font
// with FreeType's rendering of its 256 glyphs.

#include <benchmark/benchmark.h>

#include <string>

#include "PlainContext.h"
#include "media/FontBench.h"
#include "platform/linux/fonts/FontLibrary.h"

namespace {

constexpr char kFace[] = "DejaVu Sans";
constexpr char16_t kWideFace[] = u"DejaVu Sans";
constexpr char kText[] = "twenty characters OK";
constexpr int kLength = sizeof kText - 1;
constexpr int kHeight = -16;

/// A context of 512 by 512 model units with a font of one kind.
struct Bench {
  explicit Bench(FontKind aKind) {
    ModelInPixels(512, 512);
    m_Font = m_Fonts.Make({.m_Kind = aKind, .m_szFace = kWideFace, .m_iHeight = kHeight});
    m_Font->SetWidth(16);
    m_Font->SetHeight(16);
    m_Font->CreateFontLists();
  }

  PlainContext m_Context;
  FontBench m_Fonts;
  GLPtr<GLFont> m_Font;
};

FontKind KindOf(const benchmark::State& aState) { return static_cast<FontKind>(aState.range(0)); }

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
  const Bench bench(KindOf(aState));
  std::u16string text(kText, kText + kLength);
  GLDATA_POINT start{20, 200, 0};
  Measure(aState, [&] { bench.m_Font->Print(text.data(), &start); });
}

/// Makes the calls of a program that owns the lists, with the state of each kind set once.
void BareCallLists(benchmark::State& aState) {
  const auto kind = KindOf(aState);
  const Bench bench(kind);
  std::u16string text(kText, kText + kLength);
  GLDATA_POINT start{20, 200, 0};
  bench.m_Font->Print(text.data(), &start);
  GLuint base = 1;
  while (glIsList(base) == GL_FALSE) ++base;
  if (kind == FontKind::kInternal) {
    GLuint texture = 1;
    while (glIsTexture(texture) == GL_FALSE) ++texture;
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBindTexture(GL_TEXTURE_2D, texture);
  }
  glListBase(base);
  Measure(aState, [&] {
    if (kind == FontKind::kSystem || kind == FontKind::kRaster) {
      glRasterPos3d(start.x, start.y, start.z);
      glCallLists(kLength, GL_UNSIGNED_BYTE, kText);
      return;
    }
    glPushMatrix();
    glTranslated(start.x, start.y, start.z);
    if (kind == FontKind::kTrueType) glScalef(16, 16, 0);
    glCallLists(kLength, GL_UNSIGNED_BYTE, kText);
    glPopMatrix();
  });
}

void Build(benchmark::State& aState) {
  const Bench bench(KindOf(aState));
  for (auto _ : aState) benchmark::DoNotOptimize(bench.m_Font->CreateFontLists());
}

/// Opens a face and loads its 256 glyphs, each as a bitmap of one bit per pixel or as an outline.
void FreeTypeAlone(benchmark::State& aState) {
  const bool draws = KindOf(aState) == FontKind::kRaster;
  FT_Library library = nullptr;
  FT_Init_FreeType(&library);
  for (auto _ : aState) {
    const auto match = FontLibrary::Instance().Match({kFace, "sans-serif", 400});
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

// Kinds: 0 system, 1 raster, 2 TrueType, 3 internal.
BENCHMARK(Print)->ArgName("kind")->DenseRange(0, 3);
BENCHMARK(BareCallLists)->ArgName("kind")->DenseRange(0, 3);
BENCHMARK(Build)->ArgName("kind")->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);
BENCHMARK(FreeTypeAlone)->ArgName("kind")->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

}  // namespace
