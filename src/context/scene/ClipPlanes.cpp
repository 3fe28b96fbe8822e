// ClipPlanes: the planes and their GL names. Called under the context's lock.

#include "context/scene/ClipPlanes.h"

#include <new>

#include "component/Module.h"
#include "platform/Log.h"

bool ClipPlanes::Add(const GPlane& aPlane) noexcept {
  try {
    m_Planes.push_back({aPlane, m_iNextName});
  } catch (const std::bad_alloc&) {
    return false;
  }
  if (const int most = g_iMaxClipPlanes; m_Planes.size() > static_cast<std::size_t>(most))
    LogWarning("GL has %d clip planes: another one replaces an earlier one", most);
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
