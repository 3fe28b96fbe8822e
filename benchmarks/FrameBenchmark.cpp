// An empty frame of a context beside a bare clear and swap on a surface of the same kind and size, and, with
// more viewers, beside the bare GL calls of their passes; from a trigger to the end of the swap beside the
// bare draw.

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

  /// Waits for so many frames from here on. @param aBring called once the count has begun
  template <class Bring>
  void Await(int aFrames, Bring aBring) {
    std::unique_lock lock(m_Lock);
    m_iAwaited = m_iFrames + aFrames;
    lock.unlock();
    aBring();
    lock.lock();
    m_Reached.wait(lock, [&] { return m_iFrames >= m_iAwaited; });
  }
  void Await(int aFrames) {
    Await(aFrames, [] {});
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

/// What the passes of viewers send to GL, with no lighting, fog, axes and frame.
void BareViewers(benchmark::State& aState) {
  const PlainContext plain(kWidth, kHeight);
  const auto viewers = static_cast<int>(aState.range(0));
  const int share = kWidth / viewers;
  GLdouble matrix[16];
  GLint viewport[4];
  for (auto _ : aState) {
    glClearColor(0, 0, 0, 1);
    glEnable(GL_DEPTH_TEST);
    for (int i = 0; i < viewers; ++i) {
      glMatrixMode(GL_PROJECTION);
      glLoadIdentity();
      glEnable(GL_SCISSOR_TEST);
      glScissor(i * share, 0, share, kHeight);
      glViewport(0, 0, kWidth, kHeight);
      glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
      glOrtho(-50, 50, -50, 50, 0, 1000);
      glMatrixMode(GL_MODELVIEW);
      glLoadIdentity();
      glDisable(GL_FOG);
      glDisable(GL_LIGHTING);
      glGetDoublev(GL_MODELVIEW_MATRIX, matrix);
      glGetDoublev(GL_PROJECTION_MATRIX, matrix);
      glGetIntegerv(GL_VIEWPORT, viewport);
      glFlush();
    }
    eglSwapBuffers(eglGetCurrentDisplay(), eglGetCurrentSurface(EGL_DRAW));
  }
}

constexpr int kTriangles = 10'000;

/// The same triangles for a painter and for the bare draw, in coordinates from -1 to 1.
void DrawTriangles() {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glMatrixMode(GL_MODELVIEW);
  glBegin(GL_TRIANGLES);
  for (int i = 0; i < kTriangles; ++i) {
    const float x = -1.0f + 2.0f * static_cast<float>(i % 100) / 100.0f;
    const float y = -1.0f + 2.0f * static_cast<float>(i / 100) / 100.0f;
    glVertex2f(x, y);
    glVertex2f(x + 0.02f, y);
    glVertex2f(x, y + 0.02f);
  }
  glEnd();
}

class TrianglePainter : public GLPainterBase {
 public:
  HRESULT Draw(IGLCanvas*, IGLContext*, IGLViewer*) noexcept override {
    DrawTriangles();
    return S_OK;
  }
};

/// From the host's trigger, in controlled mode, to the end of the swap.
void TriggerToPicture(benchmark::State& aState) {
  setenv("GLLIB_DISPLAY", "headless", 1);
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  if (context->Initialize(0) != S_OK) return aState.SkipWithError("no context");
  context->SetViewport(0, 0, kWidth, kHeight);
  context->EnableLighting(0);
  IGLViewer* viewer = nullptr;
  context->CreateViewer(1, 1, &viewer);
  context->AttachPainter(GLMake<TrianglePainter>().Get());
  const auto counter = GLMake<FrameCounter>();
  context->AttachCapture(counter.Get());
  const auto controlled = context.As<IGLContext2>();
  controlled->SetControlledDrawThread(1, 0xFFFFFFFF);
  const auto draw = [&] { counter->Await(1, [&] { controlled->TriggerDrawThread(); }); };
  for (int i = 0; i < 5; ++i) draw();
  for (auto _ : aState) draw();
  context->DetachCapture();
  context->DetachPainter();
}

void BareDraw(benchmark::State& aState) {
  const PlainContext plain(kWidth, kHeight);
  for (auto _ : aState) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    DrawTriangles();
    glFlush();
    eglSwapBuffers(eglGetCurrentDisplay(), eglGetCurrentSurface(EGL_DRAW));
  }
}

}  // namespace

BENCHMARK(BareClearAndSwap)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(EmptyFrameOfContext)
    ->Arg(1)
    ->Arg(4)
    ->Arg(16)
    ->Arg(64)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BareViewers)->Arg(1)->Arg(16)->Arg(64)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(TriggerToPicture)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BareDraw)->UseRealTime()->Unit(benchmark::kMicrosecond);
