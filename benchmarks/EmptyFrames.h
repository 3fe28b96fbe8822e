// EmptyFrames: a context with empty viewers that share its surface, and a counter of its frames.

#pragma once

#include <benchmark/benchmark.h>
#include <gllib/GLLibHost.h>

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <stdexcept>

/// Counts the frames of a context. Other threads can wait for a number of frames.
class FrameCounter : public GLCaptureBase {
 public:
  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    *aEnabled = 0;
    const std::scoped_lock lock(m_Lock);
    if (++m_iFrames == m_iAwaited) {
      timespec used{};
      clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
      m_dProcessor = static_cast<double>(used.tv_sec) + 1e-9 * static_cast<double>(used.tv_nsec);
      m_Reached.notify_all();
    }
    return S_OK;
  }
  HRESULT GetPixmap(IGLPixmap**) noexcept override { return E_FAIL; }
  HRESULT GetRectangle(int*, int*, int*, int*) noexcept override { return E_FAIL; }
  HRESULT OnData(LONG) noexcept override { return S_OK; }

  /// Waits for aFrames further frames.
  /// @param aBring called after the count has started; requests the frames
  /// @return CPU time of the draw thread from its start to the last of them, in seconds
  template <class Bring>
  double Await(int aFrames, Bring aBring) {
    std::unique_lock lock(m_Lock);
    m_iAwaited = m_iFrames + aFrames;
    lock.unlock();
    aBring();
    lock.lock();
    m_Reached.wait(lock, [&] { return m_iFrames >= m_iAwaited; });
    return m_dProcessor;
  }
  double Await(int aFrames) {
    return Await(aFrames, [] {});
  }

 private:
  std::mutex m_Lock;
  std::condition_variable m_Reached;
  int m_iFrames = 0, m_iAwaited = 0;
  double m_dProcessor = 0;
};

/// Viewers without light, axes and frames. They share the surface, so that the cleared area does not depend
/// on their number. The draw thread cycles without a pause.
class EmptyFrames {
 public:
  EmptyFrames(int aViewers, int aWidth, int aHeight) {
    setenv("GLLIB_DISPLAY", "headless", 1);
    if (!m_Context || FAILED(m_Context->Initialize(0))) throw std::runtime_error("no context");
    m_Context->SetViewport(0, 0, aWidth, aHeight);
    m_Context->EnableLighting(0);
    const int share = aWidth / aViewers;
    for (int i = 0; i < aViewers; ++i) {
      IGLViewer* viewer = nullptr;
      m_Context->CreateViewer(1, 1, &viewer);
      viewer->Clip(1);
      viewer->ShowClipFrame(0);
      viewer->SetClipRectangle(i * share, 0, share, aHeight);
    }
    m_Context->AttachCapture(m_Counter.Get());
    m_Context.As<IGLContext2>()->SetControlledDrawThread(1, 0);
    m_Counter->Await(10);
  }
  ~EmptyFrames() { m_Context->DetachCapture(); }

  /// Measures the wall-clock time per frame, over aFrames frames in each iteration.
  void Measure(benchmark::State& aState, int aFrames) {
    for (auto _ : aState) {
      const auto start = std::chrono::steady_clock::now();
      m_Counter->Await(aFrames);
      const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
      aState.SetIterationTime(took.count() / aFrames);
    }
  }
  /// Measures the draw thread's CPU time per frame, which excludes its pauses.
  void MeasureProcessor(benchmark::State& aState, int aFrames) {
    double before = m_Counter->Await(1);
    for (auto _ : aState) {
      const double after = m_Counter->Await(aFrames);
      aState.SetIterationTime((after - before) / aFrames);
      before = m_Counter->Await(1);
    }
  }

 private:
  GLPtr<IGLContext> m_Context = GLCreate<IGLContext>(CLSID_GLContext);
  GLPtr<FrameCounter> m_Counter = GLMake<FrameCounter>();
};
