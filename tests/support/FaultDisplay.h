// FaultDisplay: a scripted display of which one operation fails, the n-th of all that can. It serves as any
// other before and after. Any thread.

#pragma once

#include <atomic>

#include "support/ScriptedDisplay.h"

class FaultDisplay final : public ScriptedDisplay {
 public:
  /// Makes a display and sets it for the process. @param aFault the number of the one that fails, from 0
  static std::shared_ptr<FaultDisplay> Set(int aFault);

  /// Whether the fault has come.
  bool HasFailed() const noexcept { return m_iOperations > m_iFault; }

  HWND MakeWindow(HWND aParent, const RECT& aPlace) noexcept override;
  bool Show(HWND aWindow) noexcept override;
  bool Place(HWND aWindow, int x, int y, int aWidth, int aHeight) noexcept override;
  bool ScreenRectangle(HWND aWindow, RECT* aRect) noexcept override;
  bool WorkArea(HWND aWindow, RECT* aRect) noexcept override;
  const std::vector<DisplayFormat>& Formats(SurfaceKind aKind) noexcept override;
  int ChooseFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest) noexcept override;
  int ChooseMultisampleFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest,
                              int aSamples) noexcept override;
  const char* ExtensionString() noexcept override;
  PROC EntryPoint(const char* aName) noexcept override;
  std::unique_ptr<DrawSurface> MakeWindowSurface(HWND aWindow,
                                                 const DisplayFormat& aFormat) noexcept override;
  std::unique_ptr<DrawSurface> MakeMemorySurface(int aWidth, int aHeight,
                                                 const DisplayFormat& aFormat) noexcept override;
  std::unique_ptr<DrawContext> MakeContext(const DisplayFormat& aFormat) noexcept override;
  bool MakeCurrent(DrawSurface* aSurface, DrawContext* aContext) noexcept override;
  bool Swap(HWND aWindow, DrawSurface& aSurface) noexcept override;
  int LargestSurface() noexcept override;

 private:
  bool Fails() noexcept { return m_iOperations++ == m_iFault; }

  int m_iFault = 0;
  std::atomic<int> m_iOperations{0};
};
