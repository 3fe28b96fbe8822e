// DisplayServer: what stands behind windows, pixel formats, rendering contexts and off-screen surfaces.
// One a process at a time. Any thread may call; what draws is called on the thread that draws.

#pragma once

#include <memory>
#include <vector>

#include "platform/PixelFormat.h"
#include "platform/RenderingContext.h"
#include "platform/Window.h"

/// A drawable of a device context: a window's own or one in memory.
class DrawSurface {
 public:
  virtual ~DrawSurface() = default;
  /// Whether the drawable has been outgrown by its window, so that it must be made current anew.
  virtual bool IsOutgrown() const noexcept { return false; }
};

/// A GL rendering context.
class DrawContext {
 public:
  virtual ~DrawContext() = default;
  /// Whether the driver has it current on the calling thread: a host may have made its own current meanwhile.
  virtual bool IsCurrent() const noexcept { return true; }
};

/// Where a pixel format is for; each kind has its own numbers.
enum class SurfaceKind { kWindow, kMemory };

/// A pixel format and what its description can't tell.
struct DisplayFormat {
  PIXELFORMATDESCRIPTOR m_Description;
  int m_iSamples;   ///< 0 without a multisample buffer
  void* m_pConfig;  ///< the driver's own
};

class DisplayServer {
 public:
  virtual ~DisplayServer() = default;

  /// Whether nothing can be done on this display any more: its server has gone.
  virtual bool IsBroken() const noexcept = 0;

  // Windows. A window that isn't there gives null or false.
  virtual HWND MakeWindow(HWND aParent, const RECT& aPlace) noexcept = 0;
  /// Puts a window on the screen, once its messages can be delivered. @return false when it has gone by then
  virtual bool Show(HWND aWindow) noexcept = 0;
  virtual void EndWindow(HWND aWindow) noexcept = 0;
  virtual bool Place(HWND aWindow, int x, int y, int aWidth, int aHeight) noexcept = 0;
  virtual bool ScreenRectangle(HWND aWindow, RECT* aRect) noexcept = 0;
  virtual HWND ParentOf(HWND aWindow) noexcept = 0;
  virtual HWND Desktop() noexcept = 0;
  /// The part of the screen that windows should stay in; by default the whole plane, as nothing is clipped.
  virtual bool WorkArea(HWND aWindow, RECT* aRect) noexcept;

  // Pixel formats, numbered from 1.
  virtual const std::vector<DisplayFormat>& Formats(SurfaceKind aKind) noexcept = 0;
  virtual int ChooseFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest) noexcept;
  /// The format with the fewest samples that are enough. @return 0 for none
  virtual int ChooseMultisampleFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest,
                                      int aSamples) noexcept;
  /// Names of extensions, each with a blank behind it.
  virtual const char* ExtensionString() noexcept;
  virtual PROC EntryPoint(const char* aName) noexcept;

  // Drawing.
  virtual std::unique_ptr<DrawSurface> MakeWindowSurface(HWND aWindow,
                                                         const DisplayFormat& aFormat) noexcept = 0;
  virtual std::unique_ptr<DrawSurface> MakeMemorySurface(int aWidth, int aHeight,
                                                         const DisplayFormat& aFormat) noexcept = 0;
  virtual std::unique_ptr<DrawContext> MakeContext(const DisplayFormat& aFormat) noexcept = 0;
  /// Null for both lets go.
  virtual bool MakeCurrent(DrawSurface* aSurface, DrawContext* aContext) noexcept = 0;
  virtual bool Swap(HWND aWindow, DrawSurface& aSurface) noexcept = 0;
  /// The longest side of a surface that can be drawn on.
  virtual int LargestSurface() noexcept = 0;

  /// Maps a palette's colours. @return false on failure
  virtual bool RealizePalette() noexcept { return true; }
  /// 2 where captures are rendered off-screen, 1 where they are read back.
  virtual DWORD PlatformId() noexcept { return 2; }
};

/// The display: the one that a test has set, else the one that GLLIB_DISPLAY names (x11, headless), else X11
/// where a server answers, else headless. A broken one is replaced by a fresh one.
std::shared_ptr<DisplayServer> TheDisplay() noexcept;

/// Replaces a broken display, and one without a screen that was only taken because no X server answered, if
/// one answers now. What stands on the old display keeps it.
void DecideDisplay() noexcept;
/// Gives the display up; the next use opens one.
void EndDisplay() noexcept;

/// Puts a display in place of all others; null takes it back. For tests, with no window about.
void SetDisplay(std::shared_ptr<DisplayServer> aDisplay) noexcept;
