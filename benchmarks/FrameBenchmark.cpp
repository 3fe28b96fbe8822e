// FrameBenchmark: compares an empty frame of a context with a clear and swap on a surface of the same kind
// and size, and with the GL calls of the viewers' passes. It also compares the time from a trigger to the
// complete picture with the drawing itself, on the same thread and on a thread that is woken.

#include <benchmark/benchmark.h>
#include <gllib/GLLibHost.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "EmptyFrames.h"
#include "PlainContext.h"

namespace {

constexpr int kWidth = 800, kHeight = 600;

void EmptyFrameOfContext(benchmark::State& aState) {
  EmptyFrames frames(static_cast<int>(aState.range(0)), kWidth, kHeight);
  frames.Measure(aState, 20);
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

/// Makes the GL calls of viewer passes without lighting, fog, axes and frame.
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

/// Draws triangles in coordinates from -1 to 1, for the painter and for plain GL.
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

/// Counts frames when GL has finished them. Without the wait, the next frame would wait for the pixels of the
/// frame before.
class FinishedFrameCounter : public FrameCounter {
 public:
  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    glFinish();
    return FrameCounter::IsEnabled(aEnabled);
  }
};

/// Measures from the host's trigger, in controlled mode, to the complete picture.
void TriggerToPicture(benchmark::State& aState) {
  setenv("GLLIB_DISPLAY", "headless", 1);
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  if (context->Initialize(0) != S_OK) return aState.SkipWithError("no context");
  context->SetViewport(0, 0, kWidth, kHeight);
  context->EnableLighting(0);
  IGLViewer* viewer = nullptr;
  context->CreateViewer(1, 1, &viewer);
  context->AttachPainter(GLMake<TrianglePainter>().Get());
  const auto counter = GLMake<FinishedFrameCounter>();
  context->AttachCapture(counter.Get());
  const auto controlled = context.As<IGLContext2>();
  controlled->SetControlledDrawThread(1, 0xFFFFFFFF);
  const auto draw = [&] { counter->Await(1, [&] { controlled->TriggerDrawThread(); }); };
  for (int i = 0; i < 5; ++i) draw();
  for (auto _ : aState) draw();
  context->DetachCapture();
  context->DetachPainter();
}

/// Draws with the state that the component sets for painters: the fragments are tested and blended.
void DrawPlainFrame() {
  glEnable(GL_DEPTH_TEST);
  glDepthFunc(GL_LEQUAL);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  DrawTriangles();
  eglSwapBuffers(eglGetCurrentDisplay(), eglGetCurrentSurface(EGL_DRAW));
  glFinish();
}

void BareDraw(benchmark::State& aState) {
  const PlainContext plain(kWidth, kHeight);
  for (auto _ : aState) DrawPlainFrame();
}

/// Measures from the wake-up of a plain draw thread to its complete picture.
void BareDrawOnWokenThread(benchmark::State& aState) {
  std::mutex lock;
  std::condition_variable_any changed;
  bool wanted = false;
  std::jthread drawing([&](const std::stop_token& aStop) {
    const PlainContext plain(kWidth, kHeight);
    for (std::unique_lock hold(lock); changed.wait(hold, aStop, [&] { return wanted; });) {
      hold.unlock();
      DrawPlainFrame();
      hold.lock();
      wanted = false;
      changed.notify_all();
    }
  });
  const auto draw = [&] {
    std::unique_lock hold(lock);
    wanted = true;
    changed.notify_all();
    changed.wait(hold, [&] { return !wanted; });
  };
  for (int i = 0; i < 5; ++i) draw();
  for (auto _ : aState) draw();
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
BENCHMARK(BareDrawOnWokenThread)->UseRealTime()->Unit(benchmark::kMicrosecond);
