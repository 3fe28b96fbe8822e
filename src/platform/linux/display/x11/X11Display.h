// X11Display: windows of an X server by XCB, and contexts by EGL on the same connection, which belongs to the
// component. Any thread. The display's own thread receives events and forwards them to the message thread.

#pragma once

#include <xcb/xcb.h>

#include <atomic>
#include <map>
#include <mutex>
#include <thread>

#include "platform/linux/display/EglDriver.h"

struct _XDisplay;

class X11Display final : public DisplayServer {
 public:
  /// Opens the display named by DISPLAY.
  /// @return null if no server responds or EGL cannot draw there
  static std::shared_ptr<DisplayServer> Open() noexcept;
  /// Returns the value of DISPLAY, never null.
  static const char* ServerName() noexcept;
  ~X11Display() override;

  bool IsBroken() const noexcept override;
  HWND MakeWindow(HWND aParent, const RECT& aPlace) noexcept override;
  bool Show(HWND aWindow) noexcept override;
  void EndWindow(HWND aWindow) noexcept override;
  bool Place(HWND aWindow, int x, int y, int aWidth, int aHeight) noexcept override;
  bool ScreenRectangle(HWND aWindow, RECT* aRect) noexcept override;
  HWND ParentOf(HWND aWindow) noexcept override;
  HWND Desktop() noexcept override;
  const std::vector<DisplayFormat>& Formats(SurfaceKind aKind) noexcept override {
    return m_Egl.Formats(aKind);
  }
  std::unique_ptr<DrawSurface> MakeWindowSurface(HWND aWindow,
                                                 const DisplayFormat& aFormat) noexcept override;
  std::unique_ptr<DrawSurface> MakeMemorySurface(int aWidth, int aHeight,
                                                 const DisplayFormat& aFormat) noexcept override;
  std::unique_ptr<DrawContext> MakeContext(const DisplayFormat& aFormat) noexcept override;
  bool MakeCurrent(DrawSurface* aSurface, DrawContext* aContext) noexcept override;
  bool Swap(HWND aWindow, DrawSurface& aSurface) noexcept override;
  int LargestSurface() noexcept override { return m_Egl.LargestSurface(); }

 private:
  bool Connect() noexcept;
  bool StartEgl() noexcept;
  void ReadEvents() noexcept;
  void OnBroken() noexcept;
  bool IsAlive(HWND aWindow) noexcept;

  _XDisplay* m_pXlib = nullptr;  // only if EGL lacks the XCB platform
  xcb_connection_t* m_pConnection = nullptr;
  xcb_screen_t* m_pScreen = nullptr;
  int m_iScreen = 0;
  xcb_colormap_t m_Colormap = 0;
  EglDriver m_Egl;
  bool m_bXcbPlatform = false;
  std::thread m_EventThread;
  std::atomic<bool> m_bBroken{false};
  std::atomic<bool> m_bStop{false};
  std::mutex m_Lock;
  std::map<HWND, bool> m_Alive;  // false once the server has destroyed the window
};
