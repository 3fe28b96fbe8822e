// MemoryBenchmark: page faults and time of frames with and without GLKeepFreedMemory, and the memory of a
// large list that the canvas divides into runs, beside one plain list. Each measurement runs in a child
// process, because the allocator keeps its settings and its free memory until the process ends.

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cmath>
#include <fstream>

#include "TimedStage.h"

namespace {

constexpr int kFrames = 40;

using Results = std::array<double, 3>;

/// Runs aWork in a child process. This process must not have initialised GL before. @return its results
template <class Work>
Results InChild(const Work& aWork) {
  Results results{};
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child == 0) {
    results = aWork();
    _exit(write(ends[1], results.data(), sizeof results) == sizeof results ? 0 : 1);
  }
  close(ends[1]);
  const bool complete = read(ends[0], results.data(), sizeof results) == sizeof results;
  close(ends[0]);
  waitpid(child, nullptr, 0);
  if (!complete) throw std::runtime_error("the child process failed");
  return results;
}

/// Draws small triangles in rows that fill the view. Calls aName before each group of aGroup triangles.
template <class Name, class Begin, class Vertex, class End>
void DrawField(int aTriangles, int aGroup, Name aName, Begin aBegin, Vertex aVertex, End aEnd) {
  const auto side = static_cast<int>(std::sqrt(aTriangles));
  const float step = 2.0f / static_cast<float>(side);
  for (int first = 0; first < aTriangles; first += aGroup) {
    aName(static_cast<unsigned>(first / aGroup + 1));
    aBegin();
    for (int i = first; i < std::min(first + aGroup, aTriangles); ++i) {
      const float x = -1.0f + step * static_cast<float>(i % side);
      const float y = -1.0f + step * static_cast<float>(i / side);
      aVertex(x, y);
      aVertex(x + step, y);
      aVertex(x, y + step);
    }
    aEnd();
  }
}

void CompileThroughCanvas(IGLCanvas& aCanvas, int aTriangles, int aGroup, int& aList) {
  aCanvas.BeginCompileList(&aList);
  DrawField(
      aTriangles, aGroup, [&](unsigned id) { aGroup < aTriangles ? (void)aCanvas.SetTestID(id) : void(); },
      [&] { aCanvas.BeginDrawTriangles(); },
      [&](float x, float y) { aCanvas.SetVertexNormal3f(0, 0, 1), aCanvas.Vertex3f(x, y, 0); },
      [&] { aCanvas.EndDrawVertices(); });
  aCanvas.EndCompileList();
}

void CompilePlain(int aTriangles, int aGroup) {
  glNewList(1, GL_COMPILE);
  DrawField(
      aTriangles, aGroup, [&](unsigned id) { aGroup < aTriangles ? glLoadName(id) : void(); },
      [] { glBegin(GL_TRIANGLES); }, [](float x, float y) { glNormal3f(0, 0, 1), glVertex3f(x, y, 0); },
      [] { glEnd(); });
  glEndList();
}

double ResidentMiB() {
  malloc_trim(0);
  long size = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

/// Draws frames of 69,000 triangles from a list.
/// @return per frame: seconds, page faults, seconds of CPU time inside the system
Results DrawFrames(bool aKeep) {
  if (aKeep) GLKeepFreedMemory();
  TimedStage stage;
  int list = 0;
  const auto frame = [&] { stage.Painter().Run([&](IGLCanvas& c) { c.DrawCompiledList(list); }); };
  stage.Painter().Run([&](IGLCanvas& c) { CompileThroughCanvas(c, 69'000, 69'000, list); });
  for (int i = 0; i < 10; ++i) frame();
  const auto usage = [] {
    rusage now{};
    getrusage(RUSAGE_SELF, &now);
    return now;
  };
  const rusage before = usage();
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < kFrames; ++i) frame();
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  const rusage after = usage();
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_usec);
  };
  return {elapsed.count() / kFrames, static_cast<double>(after.ru_minflt - before.ru_minflt) / kFrames,
          (seconds(after.ru_stime) - seconds(before.ru_stime)) / kFrames};
}

void MeasureFrames(benchmark::State& aState, bool aKeep) {
  Results frame{};
  for (auto _ : aState) {
    frame = InChild([aKeep] { return DrawFrames(aKeep); });
    aState.SetIterationTime(frame[0]);
  }
  aState.counters["page_faults"] = frame[1];
  aState.counters["system_ms"] = 1000 * frame[2];
}

void FrameWithDefaultAllocator(benchmark::State& aState) { MeasureFrames(aState, false); }
void FrameWithKeptMemory(benchmark::State& aState) { MeasureFrames(aState, true); }

/// Compiles and draws a list of 10^6 triangles.
/// @return MiB of resident memory that this adds: after compilation, and after the first drawing
Results ListMemory(bool aPlain, int aGroup) {
  constexpr int kTriangles = 1'000'000;
  TimedStage stage;
  int list = 0;
  stage.Painter().Run([](IGLCanvas&) { CompilePlain(100, 100), glCallList(1); });
  const double before = ResidentMiB();
  stage.Painter().Run([&](IGLCanvas& c) {
    aPlain ? CompilePlain(kTriangles, aGroup) : CompileThroughCanvas(c, kTriangles, aGroup, list);
  });
  const double compiled = ResidentMiB() - before;
  stage.Painter().Run([&](IGLCanvas& c) { aPlain ? glCallList(1) : (void)c.DrawCompiledList(list); });
  return {compiled, ResidentMiB() - before};
}

void MeasureList(benchmark::State& aState, bool aPlain) {
  Results memory{};
  for (auto _ : aState) {
    memory = InChild([&] { return ListMemory(aPlain, static_cast<int>(aState.range(0))); });
    aState.SetIterationTime(1);
  }
  aState.counters["MiB_compiled"] = memory[0];
  aState.counters["MiB_drawn"] = memory[1];
}

void MemoryOfPlainList(benchmark::State& aState) { MeasureList(aState, true); }
void MemoryOfDividedList(benchmark::State& aState) { MeasureList(aState, false); }

BENCHMARK(FrameWithDefaultAllocator)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(FrameWithKeptMemory)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
// Argument: triangles per identifier; 1,000,000 triangles have no identifier. The time has no meaning.
BENCHMARK(MemoryOfPlainList)->Arg(100)->Arg(1'000'000)->Iterations(1)->UseManualTime();
BENCHMARK(MemoryOfDividedList)->Arg(100)->Arg(1'000'000)->Iterations(1)->UseManualTime();

}  // namespace
