// GLRenderTarget: a rendering context of a GLContext, its surface, and what the component has left in its GL
// state. A context has one for its window and makes one for each off-screen capture.

#pragma once

#include <atomic>

#include "context/lists/DisplayLists.h"
#include "platform/DeviceContext.h"
#include "platform/RenderingContext.h"
#include "thread/Relaxed.h"

struct GLRenderTarget {
  // Read by any thread.
  Relaxed<HDC> m_hDC = nullptr;
  std::atomic<HGLRC> m_hRC{nullptr};

  // Draw thread.
  ULONG m_uNumber = NextNumber();  ///< tells rendering contexts apart
  unsigned m_uLitNumbers = 0;      ///< GL lights that the last viewer pass used, one bit each
  bool m_bIsNew = true;            ///< the surface holds the driver's memory: no frame has cleared it
  bool m_bRefused = false;         ///< it could not be made current last time
  ULONG m_uFontsGeneration = ~0u;  ///< of lists, when all fonts were last looked at; no generation at first
  DisplayLists m_Lists;

  /// A new rendering context was made: nothing of the one before is left.
  void Restart() noexcept {
    m_uNumber = NextNumber();
    m_uLitNumbers = 0;
    m_bIsNew = true;
    m_uFontsGeneration = ~0u;
    m_Lists.Forget();
  }

  /// A number above 0 that no other rendering context of the process has.
  static ULONG NextNumber() noexcept {
    static std::atomic<ULONG> last{0};
    return ++last;
  }
};
