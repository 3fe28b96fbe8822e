// GLRenderTarget: a rendering context of a GLContext, its surface, and the component's state in it. A context
// has one target for its window, and creates one for each off-screen capture. Draw thread, except where
// noted.

#pragma once

#include <atomic>

#include "context/lists/DisplayLists.h"
#include "platform/DeviceContext.h"
#include "platform/RenderingContext.h"
#include "thread/Relaxed.h"

struct GLRenderTarget {
  /// Largest number of buffers of a window. After as many frames each buffer has been drawn on.
  static constexpr int kBuffers = 4;

  // Any thread may read these.
  Relaxed<HDC> m_hDC = nullptr;
  std::atomic<HGLRC> m_hRC{nullptr};

  // Used only on the draw thread.
  ULONG m_uNumber = NextNumber();   ///< identifies the rendering context
  unsigned m_uLitNumbers = 0;       ///< GL lights used by the last viewer pass, as bits
  int m_iUncleared = kBuffers;      ///< frames that still clear the whole surface
  int m_iWidth = 0, m_iHeight = 0;  ///< size of the viewport in the last frame, in pixels
  bool m_bRefused = false;          ///< the last attempt to make it current failed
  ULONG m_uFontsGeneration = ~0u;   ///< list generation at the last visit of all fonts; initially none
  DisplayLists m_Lists;

  /// Resets the state for a new rendering context.
  void Restart() noexcept {
    m_uNumber = NextNumber();
    m_uLitNumbers = 0;
    NoteNewBuffers();
    m_uFontsGeneration = ~0u;
    m_Lists.Forget();
  }

  /// The surface has new buffers: their content is undefined.
  void NoteNewBuffers() noexcept { m_iUncleared = kBuffers; }

  /// Stores the size of the viewport. A window of another size has new buffers.
  void NoteSize(int aWidth, int aHeight) noexcept {
    if (aWidth == m_iWidth && aHeight == m_iHeight) return;
    m_iWidth = aWidth;
    m_iHeight = aHeight;
    NoteNewBuffers();
  }

  /// Returns a number above 0 that is unique in the process.
  static ULONG NextNumber() noexcept {
    static std::atomic<ULONG> last{0};
    return ++last;
  }
};
