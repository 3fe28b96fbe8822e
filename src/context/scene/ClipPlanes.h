// ClipPlanes: the clip planes of one context. Changed under the context's lock; IsEmpty and TakeReset on any
// thread.

#pragma once

#include <atomic>
#include <vector>

#include "context/scene/GLClipPlane.h"
#include "platform/GL.h"

class ClipPlanes {
 public:
  /// Adds a plane. Once GL has no free plane, a further one takes the GL name of the earliest and replaces it
  /// in GL.
  /// @return false if memory is insufficient; nothing changes
  bool Add(const GPlane& aPlane) noexcept;
  /// Removes all planes. They stay enabled in the window's GL state until the caller of TakeReset disables
  /// them.
  void Clear() noexcept;
  bool IsEmpty() const noexcept { return m_bEmpty; }
  const std::vector<GLClipPlane>& All() const noexcept { return m_Planes; }

  /// Returns whether the caller must disable the planes in the window's GL state, and clears this flag. Any
  /// thread.
  bool TakeReset() noexcept { return m_bResetDue.exchange(false); }

 private:
  std::vector<GLClipPlane> m_Planes;
  int m_iNextName = GL_CLIP_PLANE0;
  std::atomic<bool> m_bEmpty{true};
  std::atomic<bool> m_bResetDue{false};
};
