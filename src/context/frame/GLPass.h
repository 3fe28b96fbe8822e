// GLPass: one stretch of GL work of a context: a frame, a capture, a selection, or a task that needs GL.
// Draw thread. Exists from the moment the work begins to its end, on the stack.

#pragma once

#include <gllib/GLTypes.h>

#include "context/frame/GLRenderTarget.h"
#include "platform/RenderingTurn.h"
#include "thread/PCriticalSection.h"

/// Owns what is global while GL work is in progress: which rendering context is current, whether the
/// context's lock is held, and the size and background that a capture draws with. Passes of one thread nest;
/// the end of one makes the rendering context of the outer one current again.
class GLPass {
 public:
  /// Enters aLock, makes the target's rendering context current and drops its stale lists.
  GLPass(PCriticalSection& aLock, GLRenderTarget& aTarget) noexcept;
  /// Leaves the lock, unless ReleaseLock did.
  ~GLPass();
  GLPass(const GLPass&) = delete;
  GLPass& operator=(const GLPass&) = delete;

  /// The innermost pass on the calling thread; null outside of any.
  static GLPass* Here() noexcept;

  /// Whether the target's rendering context could be made current, and still is.
  bool IsCurrent() const noexcept;
  GLRenderTarget& Target() const noexcept { return m_Target; }
  /// Leaves the lock for the rest of the pass: a selection draws without it.
  void ReleaseLock() noexcept;

  /// Draws a picture of another size and background than the window's. Host settings are not touched.
  void DrawPicture(int aWidth, int aHeight, const GLDATA_RGBA& aBackground) noexcept;
  /// Whether the pass draws such a picture.
  bool DrawsPicture() const noexcept { return m_iWidth > 0; }
  int Width() const noexcept { return m_iWidth; }
  int Height() const noexcept { return m_iHeight; }
  const GLDATA_RGBA& Background() const noexcept { return m_sBackground; }

 private:
  void MakeCurrent() noexcept;

  const RenderingTurn m_Turn;  // taken before the lock, so that nobody waits for both at once
  PCriticalSection& m_Lock;
  GLRenderTarget& m_Target;
  GLPass* const m_pOuter;
  bool m_bLocked = true;
  int m_iWidth = 0, m_iHeight = 0;
  GLDATA_RGBA m_sBackground{};
};
