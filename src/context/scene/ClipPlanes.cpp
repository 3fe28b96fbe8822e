// ClipPlanes: the planes and their GL names. Under the context's lock.

#include "context/scene/ClipPlanes.h"

#include <new>

#include "component/Module.h"

bool ClipPlanes::Add(const GPlane& aPlane) noexcept {
  try {
    m_Planes.push_back({aPlane, m_iNextName});
  } catch (const std::bad_alloc&) {
    return false;
  }
  if (++m_iNextName >= GL_CLIP_PLANE0 + g_iMaxClipPlanes) m_iNextName = GL_CLIP_PLANE0;
  m_bEmpty = false;
  return true;
}

void ClipPlanes::Clear() noexcept {
  m_Planes.clear();
  m_iNextName = GL_CLIP_PLANE0;
  m_bEmpty = true;
  m_bResetDue = true;
}
