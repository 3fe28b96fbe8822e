// GLContext: the viewport, its conversions to and from screen coordinates, and the clip planes.
// Any thread; SetViewport, ClipPlane and ResetClipPlanes wait for a running frame.

#include <limits>
#include <new>

#include "component/Output.h"
#include "context/GLContext.h"
#include "context/control/ContextHold.h"
#include "context/control/PResetClipPlanesEvent.h"
#include "view/AspectFit.h"

namespace {

/// Converts a coordinate to a pixel number: rounds towards zero and clamps to the range of int. Returns 0 for
/// NaN.
int ToPixel(double aValue) noexcept {
  using Limits = std::numeric_limits<int>;
  if (!(aValue == aValue)) return 0;
  if (aValue >= Limits::max()) return Limits::max();
  if (aValue <= Limits::min()) return Limits::min();
  return static_cast<int>(aValue);
}

GPoint ToPoint(const GLDATA_POINT& aPoint) noexcept { return {aPoint.x, aPoint.y, aPoint.z}; }

}  // namespace

HRESULT GLContext::GetViewportWidth(int* aValue) noexcept { return Output(aValue, ViewportWidth()); }

HRESULT GLContext::GetViewportHeight(int* aValue) noexcept { return Output(aValue, ViewportHeight()); }

HRESULT GLContext::SetViewport(int aX, int aY, int aWidth, int aHeight) noexcept {
  const int widthBefore = m_Settings.m_iViewportWidth, heightBefore = m_Settings.m_iViewportHeight;
  m_Settings.m_iViewportWidth = aWidth > 0 ? aWidth : 1;
  m_Settings.m_iViewportHeight = aHeight > 0 ? aHeight : 1;
  const ContextHold hold(*this, m_Lock);
  if (!hold) {
    m_Settings.m_iViewportWidth = widthBefore;
    m_Settings.m_iViewportHeight = heightBefore;
    return E_GL_BADSTATE;
  }
  SetWindowPos(
      m_Window.m_hWnd, nullptr, aX, aY, m_Settings.m_iViewportWidth, m_Settings.m_iViewportHeight,
      SWP_NOZORDER | SWP_NOREDRAW | SWP_NOACTIVATE | SWP_NOOWNERZORDER | SWP_DEFERERASE | SWP_ASYNCWINDOWPOS);
  return S_OK;
}

HRESULT GLContext::DeviceToSCS(int aWinX, int aWinY, double* aScsX, double* aScsY) noexcept {
  const double w = ViewportWidth(), h = ViewportHeight();
  const AspectFit fit(w / h);
  const double winX = aWinX, winY = aWinY;
  const double x = (winX + winX) / w - 1.0, y = 1.0 - (winY + winY) / h;
  return Output(aScsX, x * fit.m_dWidth, aScsY, y / fit.m_dHeight);
}

HRESULT GLContext::SCSToDevice(double aScsX, double aScsY, int* aWinX, int* aWinY) noexcept {
  const double w = ViewportWidth(), h = ViewportHeight();
  const AspectFit fit(w / h);
  const double x = aScsX / fit.m_dWidth, y = aScsY * fit.m_dHeight;
  return Output(aWinX, ToPixel(((x + 1.0) * 0.5) * w), aWinY, ToPixel(((y - 1.0) * -0.5) * h));
}

HRESULT GLContext::ClipPlane(GLDATA_POINT* aPntA, GLDATA_POINT* aPntB, GLDATA_POINT* aPntC) noexcept {
  if (aPntA == nullptr || aPntB == nullptr || aPntC == nullptr) return E_INVALIDARG;
  const GPlane plane(ToPoint(*aPntA), ToPoint(*aPntB), ToPoint(*aPntC));
  if (!plane.IsValid()) return E_GL_BADVALUE;
  const ContextHold hold(*this, m_Lock);
  if (!hold) return E_GL_BADSTATE;
  return m_ClipPlanes.Add(plane) ? S_OK : E_OUTOFMEMORY;
}

HRESULT GLContext::ResetClipPlanes() noexcept {
  const ContextHold hold(*this, m_Lock);
  if (!hold) return E_GL_BADSTATE;
  m_ClipPlanes.Clear();
  PostTask(new (std::nothrow) PResetClipPlanesEvent(*this));
  return S_OK;
}
