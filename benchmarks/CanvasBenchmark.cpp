// Vertices through the canvas beside plain GL: the same 100,000 triangles, in immediate mode and from a list.
// Both draw inside a painter, on the draw thread of one context.

#include <benchmark/benchmark.h>
#include <gllib/GLLibHost.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <vector>

#include "platform/GL.h"

namespace {

constexpr int kTriangles = 100'000;

struct Corner {
  float m_fNormal[3];
  float m_fVertex[3];
};

/// A rippled field of small triangles over the whole view.
const std::vector<Corner>& Field() {
  static const std::vector<Corner> field = [] {
    std::vector<Corner> corners;
    corners.reserve(3 * kTriangles);
    const auto side = static_cast<int>(std::sqrt(kTriangles));
    const float step = 2.0f / static_cast<float>(side);
    for (int i = 0; i < kTriangles; ++i) {
      const float x = -1.0f + step * static_cast<float>(i % side);
      const float y = -1.0f + step * static_cast<float>(i / side);
      const float nx = std::sin(10.0f * x) * 0.5f, nz = std::sqrt(1.0f - nx * nx);
      corners.push_back({{nx, 0.0f, nz}, {x, y, 0.0f}});
      corners.push_back({{nx, 0.0f, nz}, {x + step, y, 0.0f}});
      corners.push_back({{nx, 0.0f, nz}, {x, y + step, 0.0f}});
    }
    return corners;
  }();
  return field;
}

void DrawThroughCanvas(IGLCanvas& aCanvas) {
  aCanvas.BeginDrawTriangles();
  for (const Corner& c : Field()) {
    aCanvas.SetVertexNormal3f(c.m_fNormal[0], c.m_fNormal[1], c.m_fNormal[2]);
    aCanvas.Vertex3f(c.m_fVertex[0], c.m_fVertex[1], c.m_fVertex[2]);
  }
  aCanvas.EndDrawVertices();
}

void DrawPlain() {
  glBegin(GL_TRIANGLES);
  for (const Corner& c : Field()) {
    glNormal3f(c.m_fNormal[0], c.m_fNormal[1], c.m_fNormal[2]);
    glVertex3f(c.m_fVertex[0], c.m_fVertex[1], c.m_fVertex[2]);
  }
  glEnd();
}

/// Runs a piece of drawing inside a painter, on the draw thread, and tells how long it took.
class TimedPainter : public GLPainterBase {
 public:
  using Work = std::function<void(IGLCanvas&)>;

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    const std::scoped_lock lock(m_Lock);
    if (!m_Work) return S_OK;
    const auto start = std::chrono::steady_clock::now();
    m_Work(*aCanvas);
    glFinish();
    m_dSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    m_Work = nullptr;
    m_Done.notify_all();
    return S_OK;
  }

  /// @return seconds
  double Run(const Work& aWork) {
    std::unique_lock lock(m_Lock);
    m_Work = aWork;
    m_Done.wait(lock, [this] { return !m_Work; });
    return m_dSeconds;
  }

 private:
  std::mutex m_Lock;
  std::condition_variable m_Done;
  Work m_Work;
  double m_dSeconds = 0;
};

/// A context without a window that draws for a painter, lit by one light.
class Stage {
 public:
  Stage() {
    setenv("GLLIB_DISPLAY", "headless", 1);
    if (!m_Context || FAILED(m_Context->Initialize(0))) throw std::runtime_error("no context");
    m_Context->SetViewport(0, 0, 512, 512);
    IGLLight* light = nullptr;
    m_Context->CreateLight(&light);
    IGLViewer* viewer = nullptr;
    m_Context->CreateViewer(1, 1, &viewer);
    GLDATA_POINT low{-1, -1, 0}, high{1, 1, 1000};
    viewer->SetOrthoExtents(&low, &high);
    m_Context->AttachPainter(m_Painter.Get());
    m_Context.As<IGLContext2>()->SetControlledDrawThread(1, 0);
  }
  ~Stage() { m_Context->DetachPainter(); }

  void Measure(benchmark::State& aState, const TimedPainter::Work& aWork) {
    m_Painter->Run(aWork);
    for (auto _ : aState) aState.SetIterationTime(m_Painter->Run(aWork));
    aState.SetItemsProcessed(aState.iterations() * 3 * kTriangles);  // vertices
  }
  TimedPainter& Painter() { return *m_Painter.Get(); }

 private:
  GLPtr<IGLContext> m_Context = GLCreate<IGLContext>(CLSID_GLContext);
  GLPtr<TimedPainter> m_Painter = GLMake<TimedPainter>();
};

void ImmediateThroughCanvas(benchmark::State& aState) { Stage().Measure(aState, DrawThroughCanvas); }

void ImmediatePlainGL(benchmark::State& aState) {
  Stage().Measure(aState, [](IGLCanvas&) { DrawPlain(); });
}

void ListThroughCanvas(benchmark::State& aState) {
  Stage stage;
  int list = 0;
  stage.Painter().Run([&](IGLCanvas& aCanvas) {
    aCanvas.BeginCompileList(&list);
    DrawThroughCanvas(aCanvas);
    aCanvas.EndCompileList();
  });
  stage.Measure(aState, [&](IGLCanvas& aCanvas) { aCanvas.DrawCompiledList(list); });
}

void ListPlainGL(benchmark::State& aState) {
  Stage stage;
  GLuint list = 0;
  stage.Painter().Run([&](IGLCanvas&) {
    glNewList(list = glGenLists(1), GL_COMPILE);
    DrawPlain();
    glEndList();
  });
  stage.Measure(aState, [&](IGLCanvas&) { glCallList(list); });
}

/// The shortest of several runs stands for each: what else the machine does only ever adds.
void Shortest(benchmark::internal::Benchmark* aBenchmark) {
  aBenchmark->Unit(benchmark::kMillisecond)->UseManualTime()->Repetitions(7)->ReportAggregatesOnly(true);
  aBenchmark->ComputeStatistics("min", [](const std::vector<double>& aTimes) {
    return *std::min_element(aTimes.begin(), aTimes.end());
  });
}

BENCHMARK(ImmediateThroughCanvas)->Apply(Shortest);
BENCHMARK(ImmediatePlainGL)->Apply(Shortest);
BENCHMARK(ListThroughCanvas)->Apply(Shortest);
BENCHMARK(ListPlainGL)->Apply(Shortest);

}  // namespace
