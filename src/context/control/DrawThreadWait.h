// DrawThreadWait: what an operation needs around every wait for a context's draw thread.
// Any thread; on a thread that draws for no context it does nothing.

#pragma once

#include "platform/RenderingTurn.h"

class GLContext;

/// Marks for its length that the calling draw thread waits for another context, and gives its rendering turn
/// to others. A wait that would close a circle of draw threads is not allowed: nobody in it would ever be
/// served.
class DrawThreadWait {
 public:
  explicit DrawThreadWait(GLContext& aAwaited) noexcept;
  ~DrawThreadWait();
  DrawThreadWait(const DrawThreadWait&) = delete;
  DrawThreadWait& operator=(const DrawThreadWait&) = delete;

  bool IsAllowed() const noexcept { return !m_bClosesCircle; }

 private:
  const RenderingBreak m_Others;
  GLContext* const m_pWaiting;  // null where there is nothing to mark
  const GLContext* m_pBefore = nullptr;
  bool m_bClosesCircle = false;
};
