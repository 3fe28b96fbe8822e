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
  // Any thread may read these.
  Relaxed<HDC> m_hDC = nullptr;
  std::atomic<HGLRC> m_hRC{nullptr};

  // Used only on the draw thread.
  ULONG m_uNumber = NextNumber();  ///< identifies the rendering context
  unsigned m_uLitNumbers = 0;      ///< GL lights used by the last viewer pass, as bits
  bool m_bIsNew = true;            ///< no frame has cleared the surface yet
  bool m_bRefused = false;         ///< the last attempt to make it current failed
  ULONG m_uFontsGeneration = ~0u;  ///< list generation at the last visit of all fonts; initially none
  DisplayLists m_Lists;

  /// Resets the state for a new rendering context.
  void Restart() noexcept {
    m_uNumber = NextNumber();
    m_uLitNumbers = 0;
    m_bIsNew = true;
    m_uFontsGeneration = ~0u;
    m_Lists.Forget();
  }

  /// Returns a number above 0 that is unique in the process.
  static ULONG NextNumber() noexcept {
    static std::atomic<ULONG> last{0};
    return ++last;
  }
};
