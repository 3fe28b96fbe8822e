// FrameStream: the pixels of the newest frame of a context without a display. A host thread creates it. The
// context's draw thread reads the frames; any other thread takes them.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <functional>
#include <mutex>

#include "shared/Picture.h"

class FrameStream final : public GLViewerGaugeBase {
 public:
  /// @param aArrived called on the draw thread for each new frame
  explicit FrameStream(std::function<void()> aArrived) : m_arrived(std::move(aArrived)) {}

  /// Takes the newest frame. The memory of the picture passed in is used for a later frame.
  /// @return false if there is no new frame since the last call
  bool Take(Picture& aFrame);

  /// Reads the frame. The host adds the gauge to the viewer that is drawn last, so the frame is complete.
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext) noexcept override;

 private:
  const std::function<void()> m_arrived;
  std::mutex m_lock;  // guards the members below
  Picture m_newest;
  bool m_fresh = false;
};
