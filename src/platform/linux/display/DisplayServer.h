// DisplayServer: abstract class for windows, pixel formats, rendering contexts and off-screen surfaces. The
// process uses one display at a time. Any thread; drawing functions are called on the thread that draws.

#pragma once

#include <memory>
#include <vector>

#include "platform/PixelFormat.h"
#include "platform/RenderingContext.h"
#include "platform/Window.h"

/// The drawable of a device context: of a window or in memory.
class DrawSurface {
 public:
  virtual ~DrawSurface() = default;
  /// Returns whether the window has outgrown the drawable, so that it must be made current again.
  virtual bool IsOutgrown() const noexcept { return false; }
};

/// A GL rendering context.
class DrawContext {
 public:
  virtual ~DrawContext() = default;
  /// Returns whether the context is current on the calling thread in the driver. A host may have made another
  /// one current.
  virtual bool IsCurrent() const noexcept { return true; }
};

/// Use of a pixel format. Each kind has its own numbers.
enum class SurfaceKind { kWindow, kMemory };

/// A pixel format, with values that the description does not contain.
struct DisplayFormat {
  PIXELFORMATDESCRIPTOR m_Description;
  int m_iSamples;   ///< 0 without a multisample buffer
  void* m_pConfig;  ///< the driver's configuration
};

class DisplayServer {
 public:
  virtual ~DisplayServer() = default;

  /// Returns whether the display is unusable because its server has ended.
  virtual bool IsBroken() const noexcept = 0;

  // Windows. For a window that does not exist, functions return null or false.
  virtual HWND MakeWindow(HWND aParent, const RECT& aPlace) noexcept = 0;
  /// Maps a window. Called once its messages can be delivered.
  /// @return false if the window no longer exists
  virtual bool Show(HWND aWindow) noexcept = 0;
  virtual void EndWindow(HWND aWindow) noexcept = 0;
  virtual bool Place(HWND aWindow, int x, int y, int aWidth, int aHeight) noexcept = 0;
  virtual bool ScreenRectangle(HWND aWindow, RECT* aRect) noexcept = 0;
  virtual HWND ParentOf(HWND aWindow) noexcept = 0;
  virtual HWND Desktop() noexcept = 0;
  /// Returns the part of the screen that windows should not leave. The default is unlimited, so that no
  /// window is moved.
  virtual bool WorkArea(HWND aWindow, RECT* aRect) noexcept;

  // Pixel formats, numbered from 1.
  virtual const std::vector<DisplayFormat>& Formats(SurfaceKind aKind) noexcept = 0;
  virtual int ChooseFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest) noexcept;
  /// Chooses the format with the smallest sufficient number of samples.
  /// @return 0 for none
  virtual int ChooseMultisampleFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest,
                                      int aSamples) noexcept;
  /// Returns the names of the extensions, each followed by a space.
  virtual const char* ExtensionString() noexcept;
  virtual PROC EntryPoint(const char* aName) noexcept;

  // Drawing.
  virtual std::unique_ptr<DrawSurface> MakeWindowSurface(HWND aWindow,
                                                         const DisplayFormat& aFormat) noexcept = 0;
  virtual std::unique_ptr<DrawSurface> MakeMemorySurface(int aWidth, int aHeight,
                                                         const DisplayFormat& aFormat) noexcept = 0;
  virtual std::unique_ptr<DrawContext> MakeContext(const DisplayFormat& aFormat) noexcept = 0;
  /// Makes a context current. Null for both releases the current one.
  virtual bool MakeCurrent(DrawSurface* aSurface, DrawContext* aContext) noexcept = 0;
  virtual bool Swap(HWND aWindow, DrawSurface& aSurface) noexcept = 0;
  /// Returns the longest side of a surface that can be drawn on.
  virtual int LargestSurface() noexcept = 0;

  /// Maps the colours of a palette.
  /// @return false on failure
  virtual bool RealizePalette() noexcept { return true; }
  /// Returns 2 if captures are rendered off-screen, 1 if they are read back.
  virtual DWORD PlatformId() noexcept { return 2; }
};

/// Returns the display: the one set by a test, else the one named by GLLIB_DISPLAY (x11, headless), else X11
/// if a server responds, else headless. Replaces a broken display. If no display can be opened, returns the
/// broken one, or null before the first.
std::shared_ptr<DisplayServer> TheDisplay() noexcept;

/// Replaces the display if it is broken. Also replaces a headless display that was chosen for lack of an X
/// server, if one responds now. Existing windows and contexts keep the old display.
void DecideDisplay() noexcept;
/// Releases the display. The next use opens one.
void EndDisplay() noexcept;

/// Overrides the display; null removes the override. For tests, while no window exists.
void SetDisplay(std::shared_ptr<DisplayServer> aDisplay) noexcept;
