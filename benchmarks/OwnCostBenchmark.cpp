// OwnCostBenchmark: the component's own cost of a frame. It measures empty frames while every GL call returns
// at once, compared with the swap at the end of each frame.

#include <benchmark/benchmark.h>

#include "EmptyFrames.h"
#include "PlainContext.h"

// The executable defines GL functions, which the loader finds before the driver's.
#define GL_CALL(result, name, parameters, arguments) \
  extern "C" result APIENTRY name parameters { return result(); }
#include "support/GLCalls.inc"
#undef GL_CALL

namespace {

constexpr int kWidth = 800, kHeight = 600;

void FrameWithoutGL(benchmark::State& aState) {
  EmptyFrames frames(static_cast<int>(aState.range(0)), kWidth, kHeight);
  frames.MeasureProcessor(aState, 100);
}

void Swap(benchmark::State& aState) {
  const PlainContext plain(kWidth, kHeight);
  for (auto _ : aState) eglSwapBuffers(eglGetCurrentDisplay(), eglGetCurrentSurface(EGL_DRAW));
}

}  // namespace

BENCHMARK(FrameWithoutGL)
    ->Arg(1)
    ->Arg(16)
    ->Arg(64)
    ->Iterations(50)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(Swap)->UseRealTime()->Unit(benchmark::kMicrosecond);
