// CaptureBenchmark: compares a capture at the window's size with its unavoidable work: a second rendering
// context with a surface of that size, drawing the scene, and reading the pixels. Both draw the scene by the
// same GL calls.

#include <benchmark/benchmark.h>
#include <gllib/GLLibHost.h>

#include <chrono>
#include <future>
#include <vector>

#include "PlainContext.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWidth = 800, kHeight = 600;

/// Draws strips of shaded triangles over the whole picture, in coordinates from -1 to 1.
void DrawScene() {
  constexpr int kStrips = 100, kSteps = 100;
  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  glLoadIdentity();
  for (int strip = 0; strip < kStrips; ++strip) {
    glBegin(GL_TRIANGLE_STRIP);
    for (int step = 0; step <= kSteps; ++step) {
      const float x = 2.0f * static_cast<float>(step) / kSteps - 1;
      for (int side = 0; side < 2; ++side) {
        const float y = 2.0f * static_cast<float>(strip + side) / kStrips - 1;
        glColor3f(x * x, y * y, 0.5f);
        glVertex3f(x, y, 0.5f * x * y);
      }
    }
    glEnd();
  }
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);
}

class ScenePainter : public GLPainterBase {
 public:
  HRESULT Draw(IGLCanvas*, IGLContext*, IGLViewer*) noexcept override {
    DrawScene();
    return S_OK;
  }
};

/// Measures on the draw thread, from IsEnabled to OnData.
class TimedCapture : public GLCaptureBase {
 public:
  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    GLCaptureBase::IsEnabled(aEnabled);
    m_Start = Clock::now();
    return S_OK;
  }
  HRESULT OnData(LONG aSuccess) noexcept override {
    const std::chrono::duration<double> took = Clock::now() - m_Start;
    m_Took.set_value(aSuccess != 0 ? took.count() : -1.0);
    return S_OK;
  }
  /// @return seconds; negative if the capture fails
  double Take(IGLPixmap* aTarget) {
    m_Took = {};
    auto took = m_Took.get_future();
    Request(aTarget);
    return took.get();
  }

 private:
  Clock::time_point m_Start;
  std::promise<double> m_Took;
};

void CaptureOfContext(benchmark::State& aState) {
  setenv("GLLIB_DISPLAY", "headless", 1);
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  if (context->Initialize(0) != S_OK) return aState.SkipWithError("no context");
  context->SetViewport(0, 0, kWidth, kHeight);
  context->EnableLighting(0);
  IGLViewer* viewer = nullptr;
  context->CreateViewer(1, 1, &viewer);
  context->AttachPainter(GLMake<ScenePainter>().Get());
  const auto capture = GLMake<TimedCapture>();
  context->AttachCapture(capture.Get());
  const auto pixmap = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  capture->Take(pixmap.Get());
  for (auto _ : aState) aState.SetIterationTime(capture->Take(pixmap.Get()));
  context->DetachCapture();
}

void SecondContextByPlainGL(benchmark::State& aState) {
  const PlainContext window(kWidth, kHeight);
  std::vector<GLDATA_RGBA4B> pixels(std::size_t{kWidth} * kHeight);
  for (auto _ : aState) {
    DrawScene();  // the window's frame
    glFinish();
    const auto start = Clock::now();
    {
      const PlainContext picture(kWidth, kHeight);
      glEnable(GL_DEPTH_TEST);
      glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
      DrawScene();
      glReadPixels(0, 0, kWidth, kHeight, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    }
    const std::chrono::duration<double> took = Clock::now() - start;
    aState.SetIterationTime(took.count());
    window.MakeCurrent();
  }
}

}  // namespace

BENCHMARK(SecondContextByPlainGL)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(CaptureOfContext)->UseManualTime()->Unit(benchmark::kMillisecond);
