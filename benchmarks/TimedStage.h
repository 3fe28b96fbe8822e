// TimedStage: a context whose painter measures pieces of drawing on its draw thread. Used by one thread at a
// time.

#pragma once

#include <benchmark/benchmark.h>
#include <gllib/GLLibHost.h>

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <functional>
#include <mutex>
#include <stdexcept>

#include "platform/GL.h"

/// Runs a piece of drawing inside a painter, on the draw thread, and measures its time.
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

/// A context without a window, with a painter and a light that is off. Its draw thread cycles without a
/// pause.
class TimedStage {
 public:
  TimedStage() {
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
  ~TimedStage() { m_Context->DetachPainter(); }

  void Measure(benchmark::State& aState, const TimedPainter::Work& aWork) {
    m_Painter->Run(aWork);
    for (auto _ : aState) aState.SetIterationTime(m_Painter->Run(aWork));
  }
  IGLContext& Context() { return *m_Context.Get(); }
  TimedPainter& Painter() { return *m_Painter.Get(); }

 private:
  GLPtr<IGLContext> m_Context = GLCreate<IGLContext>(CLSID_GLContext);
  GLPtr<TimedPainter> m_Painter = GLMake<TimedPainter>();
};
