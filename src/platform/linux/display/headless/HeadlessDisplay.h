// HeadlessDisplay: a display without a screen. A window is a record with a single-buffered pbuffer, so both
// read buffers contain the last frame. The only valid parent is 0. Any thread.

#pragma once

#include <map>
#include <mutex>

#include "platform/linux/display/EglDriver.h"

class HeadlessDisplay : public DisplayServer {
 public:
  /// Opens the EGL display of the first device, else the surfaceless one. Hosts that use EGL often use the
  /// surfaceless display, and terminate it.
  /// @return null if neither is available
  static std::shared_ptr<DisplayServer> Open() noexcept;

  /// Returns whether the host has terminated the EGL display.
  bool IsBroken() const noexcept override { return !m_Egl.IsUsable(); }
  HWND MakeWindow(HWND aParent, const RECT& aPlace) noexcept override;
  bool Show(HWND) noexcept override { return true; };
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

 protected:
  bool Start() noexcept;

 private:
  EglDriver m_Egl;
  std::mutex m_Lock;
  std::map<HWND, RECT> m_Windows;
  std::uintptr_t m_uNextWindow = 0x100;
};
