// FrameReader: reads pixels in the pass of the viewer drawn last.

#include "shared/FrameReader.h"

#include <GL/gl.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace {

// Frames before the one that is read. Some objects, such as fonts, are created in one frame and appear in the
// next one.
constexpr int kFramesToSettle = 2;
constexpr auto kPatience = std::chrono::seconds(120);
constexpr int kOffTheWindow = 1 << 14;  // pixels; larger than the window of any example

}  // namespace

/// Runs at the end of the last viewer's pass, when the frame is complete.
class FrameReader::Gauge final : public GLViewerGaugeBase {
 public:
  HRESULT Draw(IGLCanvas*, IGLContext* aContext) noexcept override {
    const std::lock_guard lock(m_lock);
    if (m_picture == nullptr || m_toSettle-- > 0) return S_OK;
    int width = 0;
    int height = 0;
    aContext->GetViewportWidth(&width);
    aContext->GetViewportHeight(&height);
    *m_picture = Picture(width, height);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, m_picture->pixels.data());
    m_picture = nullptr;
    m_done.notify_all();
    return S_OK;
  }

  bool Wait(Picture& aPicture) {
    std::unique_lock lock(m_lock);
    m_picture = &aPicture;
    m_toSettle = kFramesToSettle;
    const bool done = m_done.wait_for(lock, kPatience, [&] { return m_picture == nullptr; });
    m_picture = nullptr;
    return done;
  }

 private:
  std::mutex m_lock;
  std::condition_variable m_done;
  Picture* m_picture = nullptr;  // destination; null if no picture is requested
  int m_toSettle = 0;
};

FrameReader::FrameReader(IGLContext& aContext) : m_context(aContext), m_gauge(GLMake<Gauge>()) {
  if (FAILED(m_context.CreateViewer(0, 1, &m_viewer))) return;
  // The viewer clears and draws only inside its rectangle, which lies outside the window.
  m_viewer->SetClipRectangle(kOffTheWindow, kOffTheWindow, 1, 1);
  m_viewer->Clip(1);
  m_viewer->ShowClipFrame(0);
  m_viewer->AddGauge(m_gauge.Get());
  m_viewer->ShowGauges(1);
}

FrameReader::~FrameReader() {
  if (m_viewer != nullptr) m_context.DestroyViewer(m_viewer);
}

bool FrameReader::Read(Picture& aPicture) {
  if (m_viewer == nullptr) return false;
  m_viewer->Show(1);
  const bool read = m_gauge->Wait(aPicture);
  m_viewer->Show(0);
  return read;
}
