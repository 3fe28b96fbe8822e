// ClipPlanes: the clip planes of one context. Changed under the context's lock; questions on any thread.

#pragma once

#include <atomic>
#include <vector>

#include "context/scene/GLClipPlane.h"
#include "platform/GL.h"

class ClipPlanes {
 public:
  /// Adds a plane. Planes beyond GL's number take the name, and so the place, of the earliest.
  /// @return false without memory: nothing has changed
  bool Add(const GPlane& aPlane) noexcept;
  /// Removes all planes. They stay enabled in the window's GL state until TakeReset.
  void Clear() noexcept;
  bool IsEmpty() const noexcept { return m_bEmpty; }
  const std::vector<GLClipPlane>& All() const noexcept { return m_Planes; }

  /// Whether planes are still to be disabled in the window's GL state; the caller does it. Any thread.
  bool TakeReset() noexcept { return m_bResetDue.exchange(false); }

 private:
  std::vector<GLClipPlane> m_Planes;
  int m_iNextName = GL_CLIP_PLANE0;
  std::atomic<bool> m_bEmpty{true};
  std::atomic<bool> m_bResetDue{false};
};
