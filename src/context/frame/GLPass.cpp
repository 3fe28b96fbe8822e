// GLPass: makes rendering contexts current at the start and the end of GL work. Draw thread.

#include "context/frame/GLPass.h"

#include <utility>

#include "platform/Log.h"

namespace {

thread_local GLPass* t_pInnermost = nullptr;

}  // namespace

GLPass* GLPass::Here() noexcept { return t_pInnermost; }

GLPass::GLPass(PCriticalSection& aLock, GLRenderTarget& aTarget) noexcept
    : m_Target(aTarget), m_pOuter(std::exchange(t_pInnermost, this)), m_Lock(aLock) {
  MakeCurrent();
  if (IsCurrent()) m_Target.m_Lists.DropStale();
}

GLPass::~GLPass() {
  t_pInnermost = m_pOuter;
  if (m_pOuter != nullptr) m_pOuter->MakeCurrent();
}

bool GLPass::IsCurrent() const noexcept {
  return m_Target.m_hRC != nullptr && IsCurrentContext(m_Target.m_hRC);
}

void GLPass::DrawPicture(int aWidth, int aHeight, const GLDATA_RGBA& aBackground) noexcept {
  m_iWidth = aWidth;
  m_iHeight = aHeight;
  m_sBackground = aBackground;
}

// After a change of its size, a window may need a new surface. Its rendering context is then not current.
void GLPass::MakeCurrent() noexcept {
  const HGLRC context = m_Target.m_hRC;
  if (context == nullptr || context == wglGetCurrentContext()) return;
  // A context of another driver must be released first. Otherwise that driver does not notice that its
  // context is no longer current.
  if (m_pOuter != nullptr) wglMakeCurrent(nullptr, nullptr);
  const bool made = wglMakeCurrent(m_Target.m_hDC, context) != FALSE;
  if (made) m_Target.NoteNewBuffers();
  if (!made && !m_Target.m_bRefused)
    LogWarning("the rendering context cannot be made current: nothing is drawn");
  m_Target.m_bRefused = !made;
}
