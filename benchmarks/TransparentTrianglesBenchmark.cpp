// TransparentTrianglesBenchmark: adds to the store of transparent triangles and fetches in portions of 100,
// compared with a vector of the same records. The time per triangle must not grow with their number.

#include <benchmark/benchmark.h>
#include <gllib/GLClasses.h>
#include <gllib/IGLCanvas.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>
#include <vector>

#include "component/CreateObject.h"

namespace {
std::atomic<std::int64_t> g_iHeapBytes{0};  // allocated and not yet freed
}

// Not inlined: the compiler would report malloc and free as mismatched in the callers.
[[gnu::noinline]] void* operator new(std::size_t aSize) {
  g_iHeapBytes += static_cast<std::int64_t>(aSize);
  if (void* block = std::malloc(aSize)) return block;
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* aBlock) noexcept { std::free(aBlock); }
[[gnu::noinline]] void operator delete(void* aBlock, std::size_t aSize) noexcept {
  g_iHeapBytes -= static_cast<std::int64_t>(aSize);
  std::free(aBlock);
}

namespace {

constexpr LONG kPortion = 100;

struct Triangle {
  GLDATA_POINT m_Points[3];
  GLDATA_RGBA m_Color;
};

Triangle TriangleAt(int aIndex) {
  const double x = aIndex % 1000, y = aIndex / 1000;
  return {{{x, y, 0.0}, {x + 1.0, y, 0.0}, {x, y + 1.0, 0.0}}, {1.0f, 0.5f, 0.25f, 0.5f}};
}

GLPtr<IGLCanvas13_1> FilledCanvas(int aTriangles) {
  auto canvas = CreateObject<IGLCanvas13_1>(CLSID_GLCanvas);
  for (int i = 0; i < aTriangles; ++i) {
    Triangle triangle = TriangleAt(i);
    canvas->AddTransparentTriangle(triangle.m_Points, &triangle.m_Color);
  }
  return canvas;
}

std::vector<GLDATA_TRANS_TRIANGLE> FilledVector(int aTriangles) {
  std::vector<GLDATA_TRANS_TRIANGLE> records;
  for (int i = 0; i < aTriangles; ++i) {
    const Triangle t = TriangleAt(i);
    records.push_back({{t.m_Points[0], t.m_Points[1], t.m_Points[2]},
                       {{0, 0, 1}, {0, 0, 1}, {0, 0, 1}},
                       {t.m_Color, t.m_Color, t.m_Color},
                       {t.m_Points[0].x + 1.0 / 3.0, t.m_Points[0].y + 1.0 / 3.0, 0.0},
                       0.0});
  }
  return records;
}

void PerTriangle(benchmark::State& aState) {
  aState.SetItemsProcessed(aState.iterations() * aState.range(0));
  aState.SetComplexityN(aState.range(0));
}

void AddThroughCanvas(benchmark::State& aState) {
  const int count = static_cast<int>(aState.range(0));
  std::int64_t bytes = 0;
  for (auto _ : aState) {
    const std::int64_t before = g_iHeapBytes;
    const auto canvas = FilledCanvas(count);
    bytes = g_iHeapBytes - before;
    aState.PauseTiming();
    canvas->ClearTransparentTriangles();
    aState.ResumeTiming();
  }
  PerTriangle(aState);
  aState.counters["bytes_per_triangle"] = static_cast<double>(bytes) / count;
}

void AddToVector(benchmark::State& aState) {
  const int count = static_cast<int>(aState.range(0));
  std::int64_t bytes = 0;
  for (auto _ : aState) {
    const std::int64_t before = g_iHeapBytes;
    const auto records = FilledVector(count);
    bytes = g_iHeapBytes - before;
    benchmark::DoNotOptimize(records.data());
  }
  PerTriangle(aState);
  aState.counters["bytes_per_triangle"] = static_cast<double>(bytes) / count;
}

void FetchFromCanvas(benchmark::State& aState) {
  const auto count = static_cast<LONG>(aState.range(0));
  const auto canvas = FilledCanvas(count);
  std::vector<GLDATA_TRANS_TRIANGLE> portion(kPortion);
  for (auto _ : aState) {
    for (LONG offset = 0; offset < count; offset += kPortion) {
      if (canvas->GetTransparentTriangles(offset, kPortion, portion.data()) != S_OK) {
        aState.SkipWithError("a call returned an error");
        return;
      }
      benchmark::DoNotOptimize(portion.data());
      benchmark::ClobberMemory();
    }
  }
  PerTriangle(aState);
}

void FetchFromVector(benchmark::State& aState) {
  const auto count = static_cast<LONG>(aState.range(0));
  const auto records = FilledVector(count);
  std::vector<GLDATA_TRANS_TRIANGLE> portion(kPortion);
  for (auto _ : aState) {
    for (LONG offset = 0; offset < count; offset += kPortion) {
      std::copy_n(records.begin() + offset, kPortion, portion.begin());
      benchmark::DoNotOptimize(portion.data());
      benchmark::ClobberMemory();
    }
  }
  PerTriangle(aState);
}

void Sizes(benchmark::internal::Benchmark* aBenchmark) {
  aBenchmark->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Complexity();
}

BENCHMARK(AddThroughCanvas)->Apply(Sizes);
BENCHMARK(AddToVector)->Apply(Sizes);
BENCHMARK(FetchFromCanvas)->Apply(Sizes);
BENCHMARK(FetchFromVector)->Apply(Sizes);

}  // namespace
