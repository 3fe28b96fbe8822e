// CanvasBenchmark: draws vertices through the canvas and by plain GL. Both draw the same 100,000 triangles,
// in immediate mode and from a list, and the same strips from a list. Both run inside a painter on the draw
// thread of a context.

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "TimedStage.h"

namespace {

constexpr int kTriangles = 100'000;

struct Corner {
  float m_fNormal[3];
  float m_fVertex[3];
};

/// Returns small triangles of a rippled surface that fills the view.
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

void ImmediateThroughCanvas(benchmark::State& aState) { TimedStage().Measure(aState, DrawThroughCanvas); }

void ImmediatePlainGL(benchmark::State& aState) {
  TimedStage().Measure(aState, [](IGLCanvas&) { DrawPlain(); });
}

/// Draws strips of aVertices vertices each, with 160,000 vertices in total.
template <class Begin, class Vertex, class End>
void DrawStrips(int aVertices, Begin aBegin, Vertex aVertex, End aEnd) {
  constexpr int kVertices = 160'000;
  const int strips = kVertices / aVertices, side = static_cast<int>(std::sqrt(strips));
  const float step = 2.0f / static_cast<float>(side);
  for (int i = 0; i < strips; ++i) {
    const float x = -1.0f + step * static_cast<float>(i % side), width = step / static_cast<float>(aVertices);
    const float y = -1.0f + step * static_cast<float>(i / side);
    aBegin();
    for (int j = 0; j < aVertices; ++j) {
      aVertex(x + width * static_cast<float>(j), y + (j % 2 == 0 ? 0.0f : step / 2));
    }
    aEnd();
  }
}

void MeasureThroughCanvas(benchmark::State& aState, const TimedPainter::Work& aContent) {
  TimedStage stage;
  int list = 0;
  stage.Painter().Run([&](IGLCanvas& aCanvas) {
    aCanvas.BeginCompileList(&list);
    aContent(aCanvas);
    aCanvas.EndCompileList();
  });
  stage.Measure(aState, [&](IGLCanvas& aCanvas) { aCanvas.DrawCompiledList(list); });
}

template <class Content>
void MeasurePlainGL(benchmark::State& aState, const Content& aContent) {
  TimedStage stage;
  GLuint list = 0;
  stage.Painter().Run([&](IGLCanvas&) {
    glNewList(list = glGenLists(1), GL_COMPILE);
    aContent();
    glEndList();
  });
  stage.Measure(aState, [&](IGLCanvas&) { glCallList(list); });
}

void ListThroughCanvas(benchmark::State& aState) { MeasureThroughCanvas(aState, DrawThroughCanvas); }
void ListPlainGL(benchmark::State& aState) { MeasurePlainGL(aState, DrawPlain); }

void StripsThroughCanvas(benchmark::State& aState) {
  MeasureThroughCanvas(aState, [&](IGLCanvas& c) {
    DrawStrips(
        static_cast<int>(aState.range(0)), [&] { c.BeginDrawTriangleStrip(), c.SetVertexNormal3f(0, 0, 1); },
        [&](float x, float y) { c.Vertex3f(x, y, 0); }, [&] { c.EndDrawVertices(); });
  });
}

void StripsPlainGL(benchmark::State& aState) {
  MeasurePlainGL(aState, [&] {
    DrawStrips(
        static_cast<int>(aState.range(0)), [] { glBegin(GL_TRIANGLE_STRIP), glNormal3f(0, 0, 1); },
        [](float x, float y) { glVertex3f(x, y, 0); }, [] { glEnd(); });
  });
}

BENCHMARK(ImmediateThroughCanvas)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ImmediatePlainGL)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ListThroughCanvas)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ListPlainGL)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(StripsThroughCanvas)->Arg(4)->Arg(16)->Arg(64)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(StripsPlainGL)->Arg(4)->Arg(16)->Arg(64)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
