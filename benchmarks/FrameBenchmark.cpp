// An empty frame of a context beside a bare clear and swap on a surface of the same kind and size, and how
// its cost grows with the viewers. The context's draw thread cycles without a pause.

#include <benchmark/benchmark.h>
#include <gllib/GLLibHost.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include "PlainContext.h"
#include "platform/PixelFormat.h"

namespace {

constexpr int kWidth = 800, kHeight = 600;

/// Counts the frames that a context has drawn; wakes whoever waits for a number of them.
class FrameCounter : public GLCaptureBase {
 public:
  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    *aEnabled = 0;
    const std::scoped_lock lock(m_Lock);
    if (++m_iFrames == m_iAwaited) m_Reached.notify_all();
    return S_OK;
  }
  HRESULT GetPixmap(IGLPixmap**) noexcept override { return E_FAIL; }
  HRESULT GetRectangle(int*, int*, int*, int*) noexcept override { return E_FAIL; }
  HRESULT OnData(LONG) noexcept override { return S_OK; }

  void Await(int aFrames) {
    std::unique_lock lock(m_Lock);
    m_iAwaited = m_iFrames + aFrames;
    m_Reached.wait(lock, [&] { return m_iFrames >= m_iAwaited; });
  }

 private:
  std::mutex m_Lock;
  std::condition_variable m_Reached;
  int m_iFrames = 0, m_iAwaited = 0;
};

void EmptyFrameOfContext(benchmark::State& aState) {
  setenv("GLLIB_DISPLAY", "headless", 1);
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  if (context->Initialize(0) != S_OK) return aState.SkipWithError("no context");
  context->SetViewport(0, 0, kWidth, kHeight);
  context->EnableLighting(0);
  for (int i = 0; i < aState.range(0); ++i) {
    IGLViewer* viewer = nullptr;
    context->CreateViewer(1, 1, &viewer);
    // The views share the window, so that what is cleared stays the same.
    viewer->Clip(1);
    viewer->ShowClipFrame(0);
    const int share = kWidth / static_cast<int>(aState.range(0));
    viewer->SetClipRectangle(i * share, 0, share, kHeight);
  }
  const auto counter = GLMake<FrameCounter>();
  context->AttachCapture(counter.Get());
  context.As<IGLContext2>()->SetControlledDrawThread(1, 0);
  counter->Await(10);
  constexpr int kFrames = 20;
  for (auto _ : aState) {
    const auto start = std::chrono::steady_clock::now();
    counter->Await(kFrames);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    aState.SetIterationTime(took.count() / kFrames);
  }
  context->DetachCapture();
}

void BareClearAndSwap(benchmark::State& aState) {
  const PlainContext plain(kWidth, kHeight);
  for (auto _ : aState) {
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glFlush();
    eglSwapBuffers(eglGetCurrentDisplay(), eglGetCurrentSurface(EGL_DRAW));
  }
}

}  // namespace

BENCHMARK(BareClearAndSwap)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(EmptyFrameOfContext)->Arg(1)->Arg(16)->Arg(64)->UseManualTime()->Unit(benchmark::kMicrosecond);
