// FrameStream: the pixels of every frame of a context that draws without a display. Made by a host thread;
// frames are read by the context's draw thread, and taken by any other.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <functional>
#include <memory>
#include <mutex>

#include "shared/Picture.h"

class FrameStream final : public GLViewerGaugeBase {
 public:
  /// @param aArrived called on the draw thread, when there is a new frame
  explicit FrameStream(std::function<void()> aArrived) : m_arrived(std::move(aArrived)) {}

  /// Takes the newest frame in exchange for one whose memory is used again.
  /// @return false when none came since the last call
  bool Take(Picture& aFrame);

  /// Reads the frame. This is the gauge of the viewer that is drawn last, so all of the frame is there.
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext) noexcept override;

 private:
  const std::function<void()> m_arrived;
  std::mutex m_lock;  // guards what follows
  Picture m_newest;
  bool m_fresh = false;
};
