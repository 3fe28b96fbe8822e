// GLPass: one unit of GL work of a context: a frame, a capture, a selection, or a task that needs GL.
// Draw thread. The object is on the stack for the duration of the work.

#pragma once

#include <gllib/GLTypes.h>

#include "context/frame/GLRenderTarget.h"
#include "platform/RenderingTurn.h"
#include "thread/PCriticalSection.h"

/// Owns the global state of GL work: the current rendering context, the context's lock, and size and
/// background of a capture. Passes of one thread nest. The end of a nested pass makes the rendering context
/// of the outer pass current again.
class GLPass {
 public:
  /// Enters aLock, makes the target's rendering context current and deletes its stale lists.
  GLPass(PCriticalSection& aLock, GLRenderTarget& aTarget) noexcept;
  /// Leaves the lock, unless ReleaseLock has done so.
  ~GLPass();
  GLPass(const GLPass&) = delete;
  GLPass& operator=(const GLPass&) = delete;

  /// Returns the innermost pass on the calling thread; null outside of passes.
  static GLPass* Here() noexcept;

  /// Returns whether the target's rendering context is current. It may not be, if making it current failed.
  bool IsCurrent() const noexcept;
  GLRenderTarget& Target() const noexcept { return m_Target; }
  /// Leaves the lock for the rest of the pass. A selection draws without the lock.
  void ReleaseLock() noexcept { m_Lock.Release(); }

  /// Sets another size and background than the window's. Host settings do not change.
  void DrawPicture(int aWidth, int aHeight, const GLDATA_RGBA& aBackground) noexcept;
  /// Returns whether DrawPicture was called.
  bool DrawsPicture() const noexcept { return m_iWidth > 0; }
  int Width() const noexcept { return m_iWidth; }
  int Height() const noexcept { return m_iHeight; }
  const GLDATA_RGBA& Background() const noexcept { return m_sBackground; }

 private:
  void MakeCurrent() noexcept;

  const RenderingTurn m_Turn;  // taken before the lock: the fixed order prevents deadlocks
  GLRenderTarget& m_Target;
  GLPass* const m_pOuter;
  PLock m_Lock;
  int m_iWidth = 0, m_iHeight = 0;
  GLDATA_RGBA m_sBackground{};
};
