// GLContext: frame capture, which runs on the draw thread between two frames.
// Clients are called under m_ClientCalls. m_Lock is held while the window is read back, or while the scene is
// drawn again off-screen.

#include <gllib/IGLPixmap.h>

#include <algorithm>
#include <cstdint>
#include <mutex>

#include "component/Module.h"
#include "component/Values.h"
#include "context/GLContext.h"
#include "context/capture/OffscreenSurface.h"
#include "platform/GL.h"
#include "platform/Log.h"
#include "platform/RenderingTurn.h"
#include "platform/SystemInfo.h"

OSVERSIONINFOA g_sVersion{};

namespace {

/// Returns whether the platform renders captures off-screen. Draw threads of several contexts may call it at
/// the same time.
bool RendersOffscreen() noexcept {
  static std::mutex lock;
  const std::scoped_lock hold(lock);
  if (g_sVersion.dwOSVersionInfoSize == 0) {
    g_sVersion.dwOSVersionInfoSize = sizeof(g_sVersion);
    GetVersionExA(&g_sVersion);
  }
  return g_sVersion.dwPlatformId != VER_PLATFORM_WIN32_WINDOWS;
}

/// Reads a rectangle into the pixels of a pixmap. Rows of pixmaps, like rows of GL, run from bottom to top.
/// @param aRect   rectangle, measured from the top left corner of the picture
/// @param aHeight height of the picture in pixels
/// @return false if the pixmap has no memory for the rectangle
bool ReadPixels(IGLPixmap& aTarget, GLenum aBuffer, const RECT& aRect, int aHeight) noexcept {
  int size = 0;
  GLDATA_RGBA4B* pixels = nullptr;
  aTarget.AccessPixmapData(&size, &pixels);
  const int width = aRect.right - aRect.left, height = aRect.bottom - aRect.top;
  if (pixels == nullptr || std::int64_t{width} * height > size) return false;
  glPixelStorei(GL_PACK_ALIGNMENT, 4);
  glPixelStorei(GL_PACK_ROW_LENGTH, 0);
  glPixelStorei(GL_PACK_SKIP_ROWS, 0);
  glPixelStorei(GL_PACK_SKIP_PIXELS, 0);
  glReadBuffer(aBuffer);
  glReadPixels(aRect.left, aHeight - aRect.bottom, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
  return true;
}

bool CaptureFails(const char* aReason) noexcept {
  LogWarning("a capture failed: %s", aReason);
  return false;
}

/// Returns aValue * aFactor. Returns 0 if the product does not fit. The rectangle is then empty or
/// reversed, and the pixmap rejects it.
LONG Scaled(LONG aValue, std::int64_t aFactor) noexcept {
  if (aFactor > INT32_MAX || aFactor < INT32_MIN) return 0;
  const std::int64_t product = aValue * aFactor;
  return product > INT32_MAX || product < INT32_MIN ? 0 : static_cast<LONG>(product);
}

/// Rounds towards zero. Returns 0 if the result does not fit in 32 bits, and for NaN.
std::int64_t Whole(float aValue) noexcept {
  constexpr float kLimit = 2147483648.0f;
  return aValue > -kLimit && aValue < kLimit ? static_cast<std::int64_t>(aValue) : 0;
}

}  // namespace

void GLContext::CaptureFrame() noexcept {
  if (m_Capture.IsEmpty()) return;
  GLPtr<IGLCapture> capture;  // released after the locks: a client's destructor may call any operation
  GLPtr<IGLPainter> painter;
  const PLock calls(m_ClientCalls);  // a detach on another thread waits for the whole capture
  {
    const PLock lock(m_Lock);
    capture = m_Capture.Get();
    painter = m_Painter.Get();
  }
  if (!capture) return;
  LONG enabled = 0;
  capture->IsEnabled(&enabled);
  if (enabled == 0) return;
  const bool success = RendersOffscreen() ? CaptureOffscreen(*capture) : CaptureFromScreen(*capture);
  capture->OnData(success ? 1 : 0);
}

// Reads the viewport's size once, because another thread may change it during the capture. Clips the client's
// rectangle at the right and bottom edge. Returns false if it is empty.
bool GLContext::ReadCaptureArea(IGLCapture& aCapture, CaptureArea* aArea) noexcept {
  int x = 0, y = 0, width = 0, height = 0;
  aCapture.GetRectangle(&x, &y, &width, &height);
  aArea->m_iWidth = m_Settings.m_iViewportWidth;
  aArea->m_iHeight = m_Settings.m_iViewportHeight;
  if (x < 0 || y < 0 || x >= aArea->m_iWidth || y >= aArea->m_iHeight) return false;
  width = std::min(width, aArea->m_iWidth - x);
  height = std::min(height, aArea->m_iHeight - y);
  aArea->m_Rect = {x, y, x + width, y + height};
  return width >= 1 && height >= 1;
}

bool GLContext::CaptureFromScreen(IGLCapture& aCapture) noexcept {
  GLPtr<IGLPixmap> target;
  aCapture.GetPixmap(target.Put());
  CaptureArea area{};
  if (!target) return CaptureFails("GetPixmap returned no pixmap");
  if (!ReadCaptureArea(aCapture, &area)) return CaptureFails("its rectangle lies outside the viewport");
  const RECT& rect = area.m_Rect;
  if (FAILED(target->Initialize(rect.right - rect.left, rect.bottom - rect.top, {0, 0, 0, 0})))
    return CaptureFails("not enough memory for the pixmap");
  const GLPass pass(m_Lock, m_Window.m_Target);
  if (!pass.IsCurrent()) return CaptureFails("the window's rendering context cannot be made current");
  return ReadPixels(*target, GL_BACK, rect, area.m_iHeight);
}

bool GLContext::CaptureOffscreen(IGLCapture& aCapture) noexcept {
  GLPtr<IGLPixmap> target;
  aCapture.GetPixmap(target.Put());
  CaptureArea area{};
  if (!target) return CaptureFails("GetPixmap returned no pixmap");
  if (!ReadCaptureArea(aCapture, &area)) return CaptureFails("its rectangle lies outside the viewport");
  float zoom = 0.0f;
  aCapture.GetPixelZoom(&zoom);
  const std::int64_t factor = Whole(zoom);
  RECT& rect = area.m_Rect;
  for (LONG* edge : {&rect.left, &rect.top, &rect.right, &rect.bottom}) *edge = Scaled(*edge, factor);
  const HRESULT initialized =
      target->Initialize(rect.right - rect.left, rect.bottom - rect.top, {255, 255, 255, 255});

  const auto width = static_cast<LONG>(Whole(static_cast<float>(area.m_iWidth) * zoom));
  const auto height = static_cast<LONG>(Whole(static_cast<float>(area.m_iHeight) * zoom));
  // The system may have memory for a larger picture than GL can draw.
  if (width > g_aiMaxViewport[0] || height > g_aiMaxViewport[1]) {
    LogWarning("a capture failed: a scene of %d x %d pixels exceeds GL's limit of %d x %d", int(width),
               int(height), int(g_aiMaxViewport[0]), int(g_aiMaxViewport[1]));
    return false;
  }
  const RenderingTurn turn;  // also held while the surface is created
  const bool needsPalette = (m_Window.m_PixelFormat.dwFlags & PFD_NEED_PALETTE) != 0;
  OffscreenSurface surface(width, height, needsPalette ? BYTE{24} : m_Window.m_PixelFormat.cColorBits,
                           m_Window.m_PixelFormat.cDepthBits);
  if (!surface.IsReady()) {
    LogWarning("a capture failed: cannot create a surface of %d x %d pixels", int(width), int(height));
    return false;
  }
  const GLPass window(m_Lock, m_Window.m_Target);
  m_Window.m_Target.m_Lists.DropAll("a capture draws in a separate rendering context");
  GLPass picture(m_Lock, surface.Target());
  if (!picture.IsCurrent()) return CaptureFails("its rendering context cannot be made current");
  DrawOffscreen(aCapture, picture, surface);
  // A zoom below 1 makes the rectangle empty. Nothing is read, and the capture succeeds.
  if (factor == 0) LogWarning("a capture reads nothing: its zoom is below 1");
  if (factor != 0 && FAILED(initialized)) CaptureFails("not enough memory for the pixmap");
  const bool success =
      factor == 0 || (SUCCEEDED(initialized) && ReadPixels(*target, GL_FRONT, rect, surface.Height()));
  surface.Target().m_Lists.DropAll("the capture that compiled them has ended");
  return success;
}

// Draws the scene with a viewport of the surface's size and the capture's background. Areas outside of all
// viewers show this background too.
void GLContext::DrawOffscreen(IGLCapture& aCapture, GLPass& aPass,
                              const OffscreenSurface& aSurface) noexcept {
  GLDATA_RGBA background{};
  aCapture.GetBackgroundColor(&background);
  aPass.DrawPicture(aSurface.Width(), aSurface.Height(),
                    {LimitColor(background.m_fRed), LimitColor(background.m_fGreen),
                     LimitColor(background.m_fBlue), m_Settings.m_sBackgroundColor.m_fAlpha});
  glClearColor(background.m_fRed, background.m_fGreen, background.m_fBlue, 1.0f);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glEnable(GL_NORMALIZE);
  SetDepthTestAndBlending();
  BuildFonts();
  DrawViewers();
}
