// PaceBenchmark: measures how long a host waits for its draw thread. Picks run without frames, beside frames
// that the host triggers, and beside a free-running thread. It also measures the time from the attachment of
// a painter to the end of its first frame, compared with that frame.

#include <benchmark/benchmark.h>
#include <gllib/GLLibHost.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <future>
#include <stdexcept>
#include <thread>
#include <vector>

#include "platform/GL.h"

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

double SecondsSince(Clock::time_point aStart) {
  return std::chrono::duration<double>(Clock::now() - aStart).count();
}

double Median(std::vector<double>& aTimes) {
  const auto middle = aTimes.begin() + static_cast<std::ptrdiff_t>(aTimes.size() / 2);
  std::nth_element(aTimes.begin(), middle, aTimes.end());
  return *middle;
}

/// Draws a hundred squares with identifiers. Its call in a frame takes at least a given time.
class SquaresPainter : public GLPainterBase {
 public:
  explicit SquaresPainter(Clock::duration aFrame) : m_Frame(aFrame) {}
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    const auto start = Clock::now();
    if (!m_bDrawn) m_FirstDraw = start;
    m_bDrawn = true;
    for (int i = 0; i < 100; ++i) {
      const double x = -50 + 10 * (i % 10), y = -50 + 10 * (i / 10);
      aCanvas->SetTestID(static_cast<ULONG>(i) + 1);
      aCanvas->BeginDrawQuads();
      aCanvas->Vertex2d(x, y);
      aCanvas->Vertex2d(x + 8, y);
      aCanvas->Vertex2d(x + 8, y + 8);
      aCanvas->Vertex2d(x, y + 8);
      aCanvas->EndDrawVertices();
    }
    GLint mode = 0;
    glGetIntegerv(GL_RENDER_MODE, &mode);
    if (mode != GL_RENDER) return S_OK;
    while (Clock::now() - start < m_Frame) {
    }
    ++m_iFrames;
    return S_OK;
  }

  const Clock::duration m_Frame;
  std::atomic<int> m_iFrames{0};
  std::atomic<bool> m_bDrawn{false};
  Clock::time_point m_FirstDraw;  // written by the draw thread before m_bDrawn
};

/// A context without a window at its default pace.
struct PacedContext {
  PacedContext() {
    setenv("GLLIB_DISPLAY", "headless", 1);
    if (!m_Context || FAILED(m_Context->Initialize(0))) throw std::runtime_error("no context");
    m_Context->SetViewport(0, 0, 512, 512);
    m_Context->EnableLighting(0);
    m_Context->CreateViewer(1, 1, &m_pViewer);
  }
  ~PacedContext() { m_Context->DetachPainter(); }

  /// @return seconds
  double Pick() {
    GLDATA_POINT first{0.05, 0.05, 0}, second = first;
    int size = 16;
    ULONG ids[16];
    const auto start = Clock::now();
    if (m_Context->Select(m_pViewer, &first, &second, 1, 0, &size, ids) != S_OK || size != 1)
      throw std::runtime_error("nothing was picked");
    return SecondsSince(start);
  }

  GLPtr<IGLContext> m_Context = GLCreate<IGLContext>(CLSID_GLContext);
  IGLViewer* m_pViewer = nullptr;
};

/// Picks at a fixed rate. Reports rate and median besides the mean.
void PickEvery(benchmark::State& aState, PacedContext& aContext, Clock::duration aStep) {
  for (int i = 0; i < 3; ++i) aContext.Pick();
  std::vector<double> times;
  const auto start = Clock::now();
  auto next = start;
  for (auto _ : aState) {
    std::this_thread::sleep_until(next += aStep);
    times.push_back(aContext.Pick());
    aState.SetIterationTime(times.back());
  }
  aState.counters["picks_per_s"] = static_cast<double>(times.size()) / SecondsSince(start);
  aState.counters["median_ms"] = 1e3 * Median(times);
}

void PickAlone(benchmark::State& aState) {
  PacedContext context;
  context.m_Context.As<IGLContext2>()->SetControlledDrawThread(1, 0xFFFFFFFF);
  context.m_Context->AttachPainter(GLMake<SquaresPainter>(0ms).Get());
  PickEvery(aState, context, 5ms);
}

void PickFreeRunning(benchmark::State& aState) {
  PacedContext context;
  context.m_Context->AttachPainter(GLMake<SquaresPainter>(0ms).Get());
  PickEvery(aState, context, 7ms);  // covers all phases of a cycle of 40 ms
}

/// 200 picks per second, while frames of 4 ms are triggered 60 times per second.
void HoverPick(benchmark::State& aState) {
  PacedContext context;
  const auto control = context.m_Context.As<IGLContext2>();
  control->SetControlledDrawThread(1, 0xFFFFFFFF);
  const auto painter = GLMake<SquaresPainter>(4ms);
  context.m_Context->AttachPainter(painter.Get());
  std::atomic<bool> stop{false};
  const auto start = Clock::now();
  std::thread triggers([&] {
    for (auto next = start; !stop; std::this_thread::sleep_until(next += 16'667us))
      control->TriggerDrawThread();
  });
  PickEvery(aState, context, 5ms);
  aState.counters["frames_per_s"] = painter->m_iFrames / SecondsSince(start);
  stop = true;
  triggers.join();
}

/// Reports the end of the first frame in which a painter has drawn.
class FirstFrameEnd : public GLCaptureBase {
 public:
  explicit FirstFrameEnd(GLPtr<SquaresPainter> aPainter) : m_Painter(std::move(aPainter)) {}
  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    *aEnabled = 0;
    if (m_Painter->m_bDrawn && !std::exchange(m_bEnded, true)) m_End.set_value(Clock::now());
    return S_OK;
  }
  HRESULT GetPixmap(IGLPixmap**) noexcept override { return E_FAIL; }
  HRESULT OnData(LONG) noexcept override { return S_OK; }
  std::promise<Clock::time_point> m_End;

 private:
  const GLPtr<SquaresPainter> m_Painter;
  bool m_bEnded = false;
};

/// Start of the measured time.
enum class From { kAttach, kFirstDraw };

/// Also reports the delay until the first call of the painter.
void MeasureFirstFrame(benchmark::State& aState, From aFrom) {
  std::vector<double> waits;
  for (auto _ : aState) {
    PacedContext context;
    const auto painter = GLMake<SquaresPainter>(0ms);
    const auto capture = GLMake<FirstFrameEnd>(painter);
    context.m_Context->AttachCapture(capture.Get());
    const auto attached = Clock::now();
    context.m_Context->AttachPainter(painter.Get());
    const auto end = capture->m_End.get_future().get();
    const auto start = aFrom == From::kAttach ? attached : painter->m_FirstDraw;
    aState.SetIterationTime(std::chrono::duration<double>(end - start).count());
    waits.push_back(std::chrono::duration<double>(painter->m_FirstDraw - attached).count());
    context.m_Context->DetachCapture();
  }
  aState.counters["median_wait_ms"] = 1e3 * Median(waits);
}

void FirstPicture(benchmark::State& aState) { MeasureFirstFrame(aState, From::kAttach); }
void FirstFrameItself(benchmark::State& aState) { MeasureFirstFrame(aState, From::kFirstDraw); }

}  // namespace

BENCHMARK(PickAlone)->Iterations(200)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(PickFreeRunning)->Iterations(200)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(HoverPick)->Iterations(400)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(FirstPicture)->Iterations(20)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(FirstFrameItself)->Iterations(20)->UseManualTime()->Unit(benchmark::kMillisecond);
