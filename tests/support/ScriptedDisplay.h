// ScriptedDisplay: a display whose formats, windows, drivers and failures a test sets. The
// headless display draws underneath, so that pictures are real. Set makes it the display of the process,
// until the end of a DisplayGuard or another call of Set.

#pragma once

#include "platform/linux/display/headless/HeadlessDisplay.h"
#include "support/Test.h"

class ScriptedDisplay : public DisplayServer {
 public:
  struct Move {
    HWND m_hWnd;
    int x, y, m_iWidth, m_iHeight;
    friend bool operator==(const Move&, const Move&) = default;
  };

  /// Creates a display and sets it for the process.
  static std::shared_ptr<ScriptedDisplay> Set();

  // Settings of the test.
  std::vector<DisplayFormat> m_vWindowFormats;  ///< empty: the headless display's
  std::map<HWND, RECT> m_Parents;  ///< windows of other programs, with their positions on the screen
  std::map<HWND, HWND> m_ParentOf;
  std::string m_szExtensions;            ///< in the form of a driver's list
  std::vector<std::string> m_vMissing;   ///< entry points that the driver lacks
  int m_iChosen = -1;                    ///< result of ChooseFormat; -1: that of the headless display
  std::map<int, int> m_FormatOfSamples;  ///< multisample formats by count
  bool m_bMakesWindows = true;
  std::atomic<int> m_iRefusedContexts{0};      ///< number of next creations of rendering contexts that fail
  std::atomic<bool> m_bRefusesCurrent{false};  ///< no rendering context can be made current
  int m_iFault = -1;                           ///< number of the one operation that fails, from 0; -1: none

  // Observations.
  std::vector<Move> m_vMoves;
  std::vector<int> m_vSamplesAsked;
  std::atomic<HWND> m_hMade{nullptr};  ///< the last window
  std::atomic<int> m_iMade{0}, m_iRealized{0};
  bool HasFailed() const noexcept { return m_iOperations > m_iFault; }

  bool IsBroken() const noexcept override { return false; }
  HWND MakeWindow(HWND aParent, const RECT& aPlace) noexcept override;
  bool Show(HWND aWindow) noexcept override { return !Fails() && m_pReal->Show(aWindow); }
  void EndWindow(HWND aWindow) noexcept override { m_pReal->EndWindow(aWindow); }
  bool Place(HWND aWindow, int x, int y, int aWidth, int aHeight) noexcept override;
  bool ScreenRectangle(HWND aWindow, RECT* aRect) noexcept override;
  HWND ParentOf(HWND aWindow) noexcept override;
  HWND Desktop() noexcept override { return m_pReal->Desktop(); }
  bool WorkArea(HWND aWindow, RECT* aRect) noexcept override;
  const std::vector<DisplayFormat>& Formats(SurfaceKind aKind) noexcept override;
  int ChooseFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest) noexcept override;
  int ChooseMultisampleFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest,
                              int aSamples) noexcept override;
  const char* ExtensionString() noexcept override { return Fails() ? nullptr : m_szExtensions.c_str(); }
  PROC EntryPoint(const char* aName) noexcept override;
  std::unique_ptr<DrawSurface> MakeWindowSurface(HWND aWindow,
                                                 const DisplayFormat& aFormat) noexcept override;
  std::unique_ptr<DrawSurface> MakeMemorySurface(int aWidth, int aHeight,
                                                 const DisplayFormat& aFormat) noexcept override;
  std::unique_ptr<DrawContext> MakeContext(const DisplayFormat& aFormat) noexcept override;
  bool MakeCurrent(DrawSurface* aSurface, DrawContext* aContext) noexcept override;
  bool Swap(HWND aWindow, DrawSurface& aSurface) noexcept override;
  int LargestSurface() noexcept override { return Fails() ? 0 : m_pReal->LargestSurface(); }
  bool RealizePalette() noexcept override {
    ++m_iRealized;
    return true;
  }
  DWORD PlatformId() noexcept override { return 2; }

 private:
  bool Fails() noexcept { return m_iOperations++ == m_iFault; }

  std::atomic<int> m_iOperations{0};
  std::shared_ptr<DisplayServer> m_pReal = HeadlessDisplay::Open();
};

/// Removes the scripted display at the end of a test.
struct DisplayGuard {
  ~DisplayGuard() { SetDisplay(nullptr); }
};
