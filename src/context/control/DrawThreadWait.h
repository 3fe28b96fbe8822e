// DrawThreadWait: surrounds every wait of an operation for a context's draw thread.
// Any thread. Does nothing if the calling thread is not a draw thread.

#pragma once

#include "platform/RenderingTurn.h"

class GLContext;

/// Records during its lifetime that the calling draw thread waits for another context. Other contexts can use
/// its rendering turn meanwhile. A wait that would close a circle of waiting draw threads is not allowed,
/// because it would never end.
class DrawThreadWait {
 public:
  explicit DrawThreadWait(GLContext& aAwaited) noexcept;
  ~DrawThreadWait();
  DrawThreadWait(const DrawThreadWait&) = delete;
  DrawThreadWait& operator=(const DrawThreadWait&) = delete;

  bool IsAllowed() const noexcept { return !m_bClosesCircle; }

 private:
  const RenderingBreak m_Others;
  GLContext* const m_pWaiting;  // null if there is nothing to record
  const GLContext* m_pBefore = nullptr;
  bool m_bClosesCircle = false;
};
