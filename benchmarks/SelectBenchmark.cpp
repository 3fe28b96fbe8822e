// SelectBenchmark: compares a selection through a context with the same pass in GL's selection mode. The
// model has 100,000 triangles under 1,000 identifiers, in immediate mode and in a list. It also measures how
// the cost grows with the capacity of the host's array.

#include <benchmark/benchmark.h>
#include <gllib/GLLibHost.h>

#include <vector>

#include "PlainContext.h"

namespace {

constexpr int kIdentifiers = 1000, kTrianglesEach = 100, kSide = 512;

template <class SetName, class Begin, class Vertex, class End>
void DrawScene(SetName aSetName, Begin aBegin, Vertex aVertex, End aEnd) {
  for (unsigned id = 1; id <= kIdentifiers; ++id) {
    aSetName(id);
    aBegin();
    const float x = -1.0f + 2.0f * static_cast<float>(id % 32) / 32.0f;
    for (int i = 0; i < kTrianglesEach; ++i) {
      const float y = -1.0f + 2.0f * static_cast<float>(i) / kTrianglesEach;
      aVertex(x, y);
      aVertex(x + 0.05f, y);
      aVertex(x, y + 0.05f);
    }
    aEnd();
  }
}

void DrawThrough(IGLCanvas& aCanvas) {
  DrawScene([&](unsigned aId) { aCanvas.SetTestID(aId); }, [&] { aCanvas.BeginDrawTriangles(); },
            [&](float aX, float aY) { aCanvas.Vertex3f(aX, aY, 0); }, [&] { aCanvas.EndDrawVertices(); });
}

void DrawPlain() {
  DrawScene([](unsigned aId) { glLoadName(aId); }, [] { glBegin(GL_TRIANGLES); },
            [](float aX, float aY) { glVertex3f(aX, aY, 0); }, [] { glEnd(); });
}

/// The source of the painter's geometry.
enum class Source { kImmediate, kList };
/// How the draw thread begins its cycles: in a fixed period, or when it is triggered.
enum class Cycle { kFree, kControlled };

class ScenePainter : public GLPainterBase {
 public:
  explicit ScenePainter(Source aSource) : m_Source(aSource) {}
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    if (m_Source == Source::kImmediate) {
      DrawThrough(*aCanvas);
      return S_OK;
    }
    LONG valid = 0;
    aCanvas->IsCompiledList(m_iList, &valid);
    if (valid == 0) {
      aCanvas->BeginCompileList(&m_iList);
      DrawThrough(*aCanvas);
      aCanvas->EndCompileList();
    }
    return aCanvas->DrawCompiledList(m_iList);
  }

 private:
  Source m_Source;
  int m_iList = 0;
};

void SelectThroughContext(benchmark::State& aState, Source aSource, int aCapacity, Cycle aCycle) {
  setenv("GLLIB_DISPLAY", "headless", 1);
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  if (context->Initialize(0) != S_OK) return aState.SkipWithError("no context");
  context->SetViewport(0, 0, kSide, kSide);
  IGLViewer* viewer = nullptr;
  context->CreateViewer(1, 1, &viewer);
  GLDATA_POINT low{-1, -1, -10}, high{1, 1, 10};
  viewer->SetOrthoExtents(&low, &high);
  const auto painter = GLMake<ScenePainter>(aSource);
  if (aCycle == Cycle::kControlled) context.As<IGLContext2>()->SetControlledDrawThread(1, 0xFFFFFFFF);
  context->AttachPainter(painter.Get());
  viewer->Show(0);  // hidden: the time must not contain frames
  std::vector<ULONG> ids(static_cast<std::size_t>(aCapacity));
  const auto select = [&] {
    GLDATA_POINT first{-0.5, -0.5, 0}, second{0.5, 0.5, 0};
    int size = aCapacity;
    benchmark::DoNotOptimize(context->Select(viewer, &first, &second, 0, 0, &size, ids.data()));
  };
  for (int i = 0; i < 3; ++i) select();  // warms up the driver
  for (auto _ : aState) select();
}

void SelectImmediate(benchmark::State& aState) {
  SelectThroughContext(aState, Source::kImmediate, 2048, Cycle::kControlled);
}
void SelectFromList(benchmark::State& aState) {
  SelectThroughContext(aState, Source::kList, 2048, Cycle::kControlled);
}
void SelectFreeRunning(benchmark::State& aState) {
  SelectThroughContext(aState, Source::kList, 2048, Cycle::kFree);
}
void SelectByCapacity(benchmark::State& aState) {
  SelectThroughContext(aState, Source::kList, static_cast<int>(aState.range(0)), Cycle::kControlled);
}

void BarePass(benchmark::State& aState, Source aSource) {
  const PlainContext plain(kSide, kSide);
  std::vector<GLuint> buffer(4 * 2048);
  const GLuint list = glGenLists(1);
  glNewList(list, GL_COMPILE);
  DrawPlain();
  glEndList();
  const GLint viewport[] = {0, 0, kSide, kSide};
  for (auto _ : aState) {
    glSelectBuffer(static_cast<GLsizei>(buffer.size()), buffer.data());
    glRenderMode(GL_SELECT);
    glInitNames();
    glPushName(0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    gluPickMatrix(kSide / 2, kSide / 2, kSide / 2, kSide / 2, const_cast<GLint*>(viewport));
    glOrtho(-1, 1, -1, 1, -10, 10);
    if (aSource == Source::kList) {
      glCallList(list);
    } else {
      DrawPlain();
    }
    glFlush();
    benchmark::DoNotOptimize(glRenderMode(GL_RENDER));
  }
}

void BareImmediate(benchmark::State& aState) { BarePass(aState, Source::kImmediate); }
void BareFromList(benchmark::State& aState) { BarePass(aState, Source::kList); }

}  // namespace

BENCHMARK(BareImmediate)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(SelectImmediate)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BareFromList)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(SelectFromList)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(SelectFreeRunning)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(SelectByCapacity)
    ->RangeMultiplier(16)
    ->Range(2048, 1 << 20)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
