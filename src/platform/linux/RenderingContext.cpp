// GL rendering contexts. Each thread stores which of the component's contexts is current. Contexts of the
// host are not inspected.

#include "platform/RenderingContext.h"

#include <new>
#include <utility>

#include "platform/GL.h"
#include "platform/RenderingTurn.h"
#include "platform/linux/DeviceContextRecord.h"

namespace {

thread_local HGLRC t_hCurrent = nullptr;
thread_local HDC t_hCurrentDC = nullptr;

// Returns the surface of a device context, or a new one if the window has outgrown it. Mesa 22.3 recognises a
// destroyed surface by its address, when the context becomes current again. It keeps the buffers if a new
// surface has that address. So the new surface is created before the old one is destroyed. Its software
// renderer also keeps the buffers of frames that it has not finished.
DrawSurface* CurrentSurface(HDC__& aDC) noexcept {
  if (aDC.m_pSurface == nullptr || !aDC.m_pSurface->IsOutgrown()) return aDC.Surface();
  const auto outgrown = std::move(aDC.m_pSurface);
  DrawSurface* const surface = aDC.Surface();
  if (t_hCurrentDC == &aDC) {
    glFinish();
    wglMakeCurrent(nullptr, nullptr);
  }
  return surface;
}

}  // namespace

HGLRC wglCreateContext(HDC hDC) noexcept {
  if (hDC == nullptr) return nullptr;
  const DisplayFormat* format = hDC->FindFormat(hDC->m_iFormat);
  if (format == nullptr || hDC->Surface() == nullptr) return nullptr;
  auto context = hDC->m_pDisplay->MakeContext(*format);
  if (context == nullptr) return nullptr;
  return new (std::nothrow) HGLRC__{hDC->m_pDisplay, std::move(context)};
}

BOOL wglDeleteContext(HGLRC hRC) noexcept {
  if (hRC == nullptr) return FALSE;
  if (hRC == t_hCurrent) wglMakeCurrent(nullptr, nullptr);
  delete hRC;
  return TRUE;
}

BOOL wglMakeCurrent(HDC hDC, HGLRC hRC) noexcept {
  if (hRC == nullptr) {
    if (IsCurrentContext(t_hCurrent)) t_hCurrent->m_pDisplay->MakeCurrent(nullptr, nullptr);
    t_hCurrent = nullptr;
    t_hCurrentDC = nullptr;
    return TRUE;
  }
  if (hDC == nullptr) return FALSE;
  DrawSurface* surface = CurrentSurface(*hDC);
  if (surface == nullptr || !hDC->m_pDisplay->MakeCurrent(surface, hRC->m_pContext.get())) return FALSE;
  t_hCurrent = hRC;
  t_hCurrentDC = hDC;
  NoteRenderingDriver();
  return TRUE;
}

// Returns null if the window has outgrown its drawable: the context must be made current again before use.
HGLRC wglGetCurrentContext() noexcept {
  const bool outgrown = t_hCurrentDC != nullptr && t_hCurrentDC->m_pSurface->IsOutgrown();
  return !outgrown && IsCurrentContext(t_hCurrent) ? t_hCurrent : nullptr;
}

bool IsCurrentContext(HGLRC hRC) noexcept {
  return hRC != nullptr && hRC == t_hCurrent && hRC->m_pContext->IsCurrent();
}

PROC wglGetProcAddress(const char* szName) noexcept {
  const auto display = TheDisplay();
  return display != nullptr && szName != nullptr ? display->EntryPoint(szName) : nullptr;
}
