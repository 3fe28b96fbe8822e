// ListSelectBenchmark: selects from compiled lists by a point, a box and an enclosed box, in models of 10^4
// to 10^7 triangles. The limit is a plain selection pass over the whole list. It also compares the
// compilation of a list with plain GL.

#include <benchmark/benchmark.h>
#include <gllib/GLLibHost.h>

#include <cmath>
#include <map>
#include <memory>
#include <random>
#include <vector>

#include "PlainContext.h"
#include "TimedStage.h"

namespace {

constexpr int kSide = 512;
constexpr int kCapacity = 1 << 17;

/// Adjacent patches of small triangles that fill the view, one identifier per patch.
struct Model {
  int m_nTriangles, m_nIdentifiers;
  auto operator<=>(const Model&) const = default;

  template <class Name, class Begin, class Vertex, class End>
  void Draw(Name aName, Begin aBegin, Vertex aVertex, End aEnd) const {
    const int side = static_cast<int>(std::ceil(std::sqrt(m_nIdentifiers)));
    const float cell = 2.0f / static_cast<float>(side);
    std::minstd_rand random(1);
    const auto place = [&] { return static_cast<float>(random() % 1024) / 1100.0f * cell; };
    for (int id = 0; id < m_nIdentifiers; ++id) {
      aName(static_cast<unsigned>(id + 1));
      aBegin();
      const float x = -1.0f + cell * static_cast<float>(id % side);
      const float y = -1.0f + cell * static_cast<float>(id / side);
      // The triangles of a patch run from bottom to top, because neighbours follow each other in real models.
      const int count = m_nTriangles / m_nIdentifiers;
      for (int i = 0; i < count; ++i) {
        const float up = y + cell * static_cast<float>(i) / static_cast<float>(count);
        const float left = x + place(), size = cell * 0.02f;
        aVertex(left, up, 0.0f);
        aVertex(left + size, up, 0.5f);
        aVertex(left, up + size, 0.0f);
      }
      aEnd();
    }
  }

  void DrawThrough(IGLCanvas& aCanvas) const {
    Draw([&](unsigned aId) { aCanvas.SetTestID(aId); }, [&] { aCanvas.BeginDrawTriangles(); },
         [&](float aX, float aY, float aZ) { aCanvas.Vertex3f(aX, aY, aZ); },
         [&] { aCanvas.EndDrawVertices(); });
  }
  void DrawPlain() const {
    Draw([](unsigned aId) { glLoadName(aId); }, [] { glBegin(GL_TRIANGLES); },
         [](float aX, float aY, float aZ) { glVertex3f(aX, aY, aZ); }, [] { glEnd(); });
  }
};

/// The identifiers that a selection returns.
enum class Hits { kAll, kEnclosed };

/// A context that draws a model from one list, only for selections.
class Listed {
 public:
  explicit Listed(Model aModel) : m_pPainter(GLMake<Painter>(aModel)), m_aIds(kCapacity) {
    setenv("GLLIB_DISPLAY", "headless", 1);
    if (m_pContext->Initialize(0) != S_OK) throw std::runtime_error("no context");
    m_pContext->SetViewport(0, 0, kSide, kSide);
    m_pContext->CreateViewer(0, 1, &m_pViewer);
    GLDATA_POINT low{-1, -1, -100}, high{1, 1, 100};
    m_pViewer->SetOrthoExtents(&low, &high);
    m_pContext.As<IGLContext2>()->SetControlledDrawThread(1, 0xFFFFFFFF);
    m_pContext->AttachPainter(m_pPainter.Get());
    for (int i = 0; i < 12; ++i) Select(0.0, Hits::kAll);  // compiles and checks the list
  }
  ~Listed() { m_pContext->DetachPainter(); }

  /// Selects in a square around the middle; width 0 selects at a point. @return the number of hits
  int Select(double aWidth, Hits aHits) {
    GLDATA_POINT first{0.001 - aWidth / 2, 0.001 - aWidth / 2, 0};
    GLDATA_POINT second{0.001 + aWidth / 2, 0.001 + aWidth / 2, 0};
    int size = aWidth == 0.0 ? 64 : kCapacity;
    m_pContext->Select(m_pViewer, &first, &second, 0, aHits == Hits::kEnclosed ? 1 : 0, &size, m_aIds.data());
    return size;
  }

 private:
  class Painter : public GLPainterBase {
   public:
    explicit Painter(Model aModel) : m_Model(aModel) {}
    HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
      LONG valid = 0;
      aCanvas->IsCompiledList(m_iList, &valid);
      if (valid == 0) {
        aCanvas->BeginCompileList(&m_iList);
        m_Model.DrawThrough(*aCanvas);
        aCanvas->EndCompileList();
      }
      return aCanvas->DrawCompiledList(m_iList);
    }

   private:
    const Model m_Model;
    int m_iList = 0;
  };

  const GLPtr<IGLContext> m_pContext = GLCreate<IGLContext>(CLSID_GLContext);
  const GLPtr<Painter> m_pPainter;
  IGLViewer* m_pViewer = nullptr;
  std::vector<ULONG> m_aIds;
};

/// The same model in one plain GL list.
class Plain {
 public:
  explicit Plain(Model aModel) : m_Context(kSide, kSide), m_aBuffer(4 * kCapacity) {
    glNewList(1, GL_COMPILE);
    aModel.DrawPlain();
    glEndList();
    Select();
  }
  void MakeCurrent() const { m_Context.MakeCurrent(); }
  int Select() {
    GLint viewport[] = {0, 0, kSide, kSide};
    glSelectBuffer(static_cast<GLsizei>(m_aBuffer.size()), m_aBuffer.data());
    glRenderMode(GL_SELECT);
    glInitNames();
    glPushName(0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    gluPickMatrix(kSide / 2 + 0.25, kSide / 2 + 0.25, 1, 1, viewport);
    glOrtho(-1, 1, -1, 1, -100, 100);
    glCallList(1);
    glFlush();
    return glRenderMode(GL_RENDER);
  }

 private:
  const PlainContext m_Context;
  std::vector<GLuint> m_aBuffer;
};

/// Caches large models for the run of the program; repetitions share them.
template <class Kept>
Kept& Keep(Model aModel) {
  static std::map<Model, std::unique_ptr<Kept>> kept;
  auto& place = kept[aModel];
  if (place == nullptr) place = std::make_unique<Kept>(aModel);
  return *place;
}

Model ModelOf(const benchmark::State& aState) {
  const auto triangles = static_cast<int>(aState.range(0));
  return {triangles, aState.range(1) != 0 ? static_cast<int>(aState.range(1)) : triangles / 100};
}

void Measure(benchmark::State& aState, double aWidth, Hits aHits) {
  Listed& listed = Keep<Listed>(ModelOf(aState));
  int found = 0;
  for (auto _ : aState) found = listed.Select(aWidth, aHits);
  aState.counters["found"] = found;
}

void PointPick(benchmark::State& aState) { Measure(aState, 0.0, Hits::kAll); }
void PointPickBySize(benchmark::State& aState) { Measure(aState, 0.0, Hits::kAll); }
void BoxPick1Percent(benchmark::State& aState) { Measure(aState, 0.2, Hits::kAll); }
void BoxPick10Percent(benchmark::State& aState) { Measure(aState, 0.632, Hits::kAll); }
void EnclosedPick1Percent(benchmark::State& aState) { Measure(aState, 0.2, Hits::kEnclosed); }

void BarePass(benchmark::State& aState) {
  Plain& plain = Keep<Plain>(ModelOf(aState));
  plain.MakeCurrent();  // repetitions of other sizes run in between
  for (auto _ : aState) benchmark::DoNotOptimize(plain.Select());
}

void CompileThroughCanvas(benchmark::State& aState) {
  TimedStage().Measure(aState, [model = ModelOf(aState)](IGLCanvas& aCanvas) {
    int list = 0;
    aCanvas.BeginCompileList(&list);
    model.DrawThrough(aCanvas);
    aCanvas.EndCompileList();
    aCanvas.DeleteCompiledList(list);
  });
}

void CompilePlain(benchmark::State& aState) {
  TimedStage().Measure(aState, [model = ModelOf(aState)](IGLCanvas&) {
    const GLuint list = glGenLists(1);
    glNewList(list, GL_COMPILE);
    model.DrawPlain();
    glEndList();
    glDeleteLists(list, 1);
  });
}

void Sizes(benchmark::internal::Benchmark* aBenchmark) {
  aBenchmark->ArgsProduct({{10'000, 100'000, 1'000'000}, {10}})
      ->Args({10'000, 100})
      ->Args({69'000, 690})
      ->Args({100'000, 1'000})
      ->Args({1'000'000, 10'000})
      ->Args({10'000'000, 100'000})
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK(PointPick)->Apply(Sizes);
BENCHMARK(PointPickBySize)
    ->ArgsProduct({{10'000, 100'000, 1'000'000, 10'000'000}, {0}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BoxPick1Percent)->Apply(Sizes);
BENCHMARK(BoxPick10Percent)->Apply(Sizes);
BENCHMARK(EnclosedPick1Percent)->Apply(Sizes);
BENCHMARK(BarePass)->Apply(Sizes);
BENCHMARK(CompileThroughCanvas)
    ->Args({69'000, 690})
    ->Args({100'000, 10})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(CompilePlain)
    ->Args({69'000, 690})
    ->Args({100'000, 10})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
