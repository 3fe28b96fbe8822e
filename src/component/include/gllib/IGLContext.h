/// @file
/// GLContext: a GL window, its draw thread, and all that is drawn with. The first object that a host makes.

#pragma once

#include <gllib/GLTypes.h>

struct IGLCanvas;
struct IGLCapture;
struct IGLCollection;
struct IGLFog;
struct IGLFont;
struct IGLLight;
struct IGLPainter;
struct IGLViewer;

/// A context draws without end: every cycle of its draw thread (40 ms) clears each visible viewer, sets up
/// its projection, fog, eye, clip planes and lights, calls the painter, and shows the whole. Nothing has to
/// be invalidated; what a host changes shows at the next frame.
///
/// A new one has no window, no thread and no viewer. Its depth test and lighting are on, the background is
/// opaque black, ambient light 0.2, the viewport 1 by 1. All settings but the draw thread's may be made
/// before Initialize, and survive another one.
///
/// The last Release ends the drawing and returns when it has ended: at most one running cycle, then the
/// tear-down. No callback comes after it. A last Release on a draw thread, this context's or another's, hands
/// this to a thread of its own and returns.
///
/// Threads: any, at any time, unless an operation says otherwise. "Waits for the frame" stands where an
/// operation takes the context's lock, which the draw thread holds for the length of a frame: such an
/// operation may be called from a painter, but not by a host thread that holds a lock that the painter wants.
/// A painter may call it on another context; if that one's painter waits for this one in turn, it is refused.
/// Results: S_OK; E_INVALIDARG when a pointer is null, with nothing changed or written; E_GL_BADSTATE if the
/// context's parts could not be made, or if the wait would close a circle of draw threads; other results are
/// documented at the operation.
struct IGLContext : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x1750378C, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Makes the GL window in a parent window and starts the draw thread; returns when GL is ready there. The
  /// window has size 0: SetViewport sizes it. A further call makes window, thread and rendering context anew,
  /// with the thread's settings at their defaults; viewers, lights, fonts and settings stay, compiled lists
  /// don't.
  /// @param aParentWnd the system's handle: an X11 window id, an HWND; 0 for a window of its own. The
  ///                   headless display takes 0 alone. The parent may go before the context: drawing then
  ///                   stops
  /// @return S_OK; E_FAIL when there is no display, no such parent, no fitting pixel format, or no rendering
  ///         context within 10 s: nothing is left behind and the call can be repeated; E_GL_BADSTATE on the
  ///         draw thread
  /// Threads: any on X11 and headless. On Windows the calling thread must pump messages: it owns the window.
  virtual HRESULT Initialize(ULONG_PTR aParentWnd) noexcept = 0;
  /// @param aHandle receives the GL window's handle, as wide as a pointer; 0 before Initialize
  virtual HRESULT GetWindow(ULONG_PTR* aHandle) noexcept = 0;

  /// Switches the depth test on (non-zero) or off, from the next frame on.
  virtual HRESULT EnableDepth(LONG aEnable) noexcept = 0;
  /// @param aEnable receives 1 or 0
  virtual HRESULT IsDepthEnabled(LONG* aEnable) noexcept = 0;
  /// Gives the colour that viewers are cleared to; on the draw thread during an off-screen capture the
  /// picture's.
  virtual HRESULT GetBackgroundColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Sets what viewers are cleared to, from the next frame on; each component cut to 0 to 1. One frame may
  /// see it half-changed.
  virtual HRESULT SetBackgroundColor(GLDATA_RGBA* aColor) noexcept = 0;

  /// Gives the draw thread's settings; 2, 40 and 10 after Initialize.
  /// @return S_OK; E_GL_BADSTATE before Initialize, with nothing written
  virtual HRESULT GetDrawThreadPars(int* aPriority, ULONG* aPreferredCycle,
                                    ULONG* aMustSleepCycle) noexcept = 0;
  /// Sets the draw thread's priority and pace. After a cycle the thread sleeps what is left of the preferred
  /// cycle, but no less than the must-sleep cycle. A value that differs waits for the running cycle and acts
  /// from the next on.
  /// @param aPriority       -15 idle, -2 lowest, -1, 0 normal, 1, 2 highest, 15 time-critical; any other
  ///                        counts as 0. What the system doesn't grant is left out
  /// @param aPreferredCycle ms; cut to 5 to 5000
  /// @param aMustSleepCycle ms; cut to 5 to 5000
  /// @return S_OK; E_GL_BADSTATE before Initialize
  virtual HRESULT SetDrawThreadPars(int aPriority, ULONG aPreferredCycle, ULONG aMustSleepCycle) noexcept = 0;

  /// Attaches the painter, in place of the one before, with a reference of its own. Waits for the frame: a
  /// painter is never exchanged during one. A draw thread that draws freely draws the next frame at once,
  /// unless this is called on the draw thread itself. The painter that is attached already changes nothing.
  virtual HRESULT AttachPainter(IGLPainter* aPainter) noexcept = 0;
  /// Releases the painter. Waits for the frame, a running selection and a capture: on return no call to the
  /// painter is running or will follow. On the draw thread it does not wait.
  virtual HRESULT DetachPainter() noexcept = 0;
  /// Attaches the capture, in place of the one before, with a reference of its own. Waits for the frame.
  virtual HRESULT AttachCapture(IGLCapture* aCapture) noexcept = 0;
  /// Releases the capture. Waits for the frame and for a capture in progress: on return no call to the object
  /// is running or will follow. On the draw thread it does not wait.
  virtual HRESULT DetachCapture() noexcept = 0;

  /// Gives the viewport's width.
  /// @param aValue receives pixels, 1 or more; on the draw thread during an off-screen capture the picture's
  /// size
  virtual HRESULT GetViewportWidth(int* aValue) noexcept = 0;
  /// As GetViewportWidth.
  virtual HRESULT GetViewportHeight(int* aValue) noexcept = 0;
  /// Places the GL window in its parent and sets the size that is drawn from the next viewer pass on. To be
  /// called after every change of the parent's size: the window doesn't follow by itself. Waits for the
  /// frame.
  /// @param aX, aY          the top left corner in the parent, pixels
  /// @param aWidth, aHeight pixels; below 1 becomes 1
  virtual HRESULT SetViewport(int aX, int aY, int aWidth, int aHeight) noexcept = 0;
  /// Converts window pixels (origin at the top left) to screen coordinates: origin in the middle, y upward,
  /// the shorter side from -1 to 1, the longer one further by the ratio of the sides.
  virtual HRESULT DeviceToSCS(int aWinX, int aWinY, double* aScsX, double* aScsY) noexcept = 0;
  /// Converts screen coordinates to window pixels, cut towards 0; the way back may lose one pixel.
  virtual HRESULT SCSToDevice(double aScsX, double aScsY, int* aWinX, int* aWinY) noexcept = 0;

  /// Adds a viewer, which is drawn from the next frame on. Viewers are drawn from the latest made to the
  /// earliest, in blocks of a collection (IGLCollection). Doesn't wait.
  /// @param aShow  non-zero: visible
  /// @param aOrtho non-zero: parallel projection, else perspective
  /// @param aI     receives a borrowed pointer, good until DestroyViewer or the context's end: no Release
  ///               without an AddRef
  /// @return S_OK; E_FAIL when it can't be made: aI receives null
  virtual HRESULT CreateViewer(LONG aShow, LONG aOrtho, IGLViewer** aI) noexcept = 0;
  /// Removes a viewer. Doesn't wait: a frame that is drawing it finishes it. One that isn't the context's
  /// does nothing.
  virtual HRESULT DestroyViewer(IGLViewer* aI) noexcept = 0;
  /// Replaces a collection's members by the viewers.
  virtual HRESULT EnumViewers(IGLCollection* aColl) noexcept = 0;

  /// Adds a clip plane through three points of the world, in force in all viewers from the next pass on. What
  /// lies on the side of the normal (B - A) x (C - A) stays. Planes beyond GL's number (6 or more) take the
  /// place of the earliest. Waits for the frame.
  /// @return S_OK; E_GL_BADVALUE when the points lie on one line: nothing changed
  virtual HRESULT ClipPlane(GLDATA_POINT* aPntA, GLDATA_POINT* aPntB, GLDATA_POINT* aPntC) noexcept = 0;
  /// Removes all clip planes. Waits for the frame; GL follows before the next one.
  virtual HRESULT ResetClipPlanes() noexcept = 0;

  /// Switches lighting on (non-zero) or off, from the next viewer pass on. While it is on, the current colour
  /// stands for the ambient and diffuse material (see IGLMaterial), and normals count.
  virtual HRESULT EnableLighting(LONG aEnable) noexcept = 0;
  /// @param aEnabled receives 1 or 0
  virtual HRESULT IsLightingEnabled(LONG* aEnabled) noexcept = 0;
  /// Switches the light that comes from everywhere on (non-zero) or off, from the next viewer pass on.
  virtual HRESULT EnableAmbientLight(LONG aEnable) noexcept = 0;
  /// @param aEnabled receives 1 or 0
  virtual HRESULT IsAmbientLightEnabled(LONG* aEnabled) noexcept = 0;
  /// Gives the light that comes from everywhere; alpha is always 1.
  virtual HRESULT GetAmbientLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Sets the light that comes from everywhere, each of red, green and blue cut to 0 to 1; alpha is ignored
  /// and stays 1.
  virtual HRESULT SetAmbientLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Adds a light, which is off. Doesn't wait.
  /// @param aLight receives a borrowed pointer, good until DestroyLight or the context's end: no Release
  ///               without an AddRef
  /// @return S_OK; E_FAIL when it can't be made: aLight receives null
  virtual HRESULT CreateLight(IGLLight** aLight) noexcept = 0;
  /// Removes a light, which shines no more from the next viewer pass on. Doesn't wait. One that isn't the
  /// context's does nothing.
  virtual HRESULT DestroyLight(IGLLight* aLight) noexcept = 0;
  /// Replaces a collection's members by the lights.
  virtual HRESULT EnumLights(IGLCollection* aColl) noexcept = 0;
  /// @param aFog receives the context's fog, counted: the caller releases it
  virtual HRESULT GetFog(IGLFog** aFog) noexcept = 0;

  // Fonts. A creator waits for the frame, not for the building: the draw thread does that as soon as no frame
  // is running, and a face that can't be had shows by E_FAIL at Print and GetStringWidth. Before Initialize
  // the first Print builds.

  /// Adds a font of the system's own bitmap characters.
  /// @param aFont receives a counted pointer: the caller releases it. The context holds another one until
  ///              DestroyFont
  /// @return S_OK; E_FAIL when it can't be made: aFont receives null
  virtual HRESULT CreateSystemFont(IGLFont** aFont) noexcept = 0;
  /// Adds a font of bitmap characters, whose size on the screen is fixed.
  /// @param aFace        face name in Unicode, of which 63 UTF-16 units count; one that isn't installed is
  ///                     substituted by the nearest
  /// @param aFontStyle   GLFS_ bits; others are ignored
  /// @param aWeight      0 to 1000, 400 is regular, 700 bold; cut to the range when the font is built
  /// @param aOrientation of each character, degrees counter-clockwise
  /// @param aHeight      pixels: above 0 the cell, below 0 the character; 0 chooses
  /// @param aWidth       mean character width in pixels; 0 goes by the height
  /// @param aFont        receives a borrowed pointer, good until DestroyFont or the context's end: no Release
  ///                     without an AddRef
  /// @return S_OK; E_FAIL when it can't be made: aFont receives null
  virtual HRESULT CreateRasterFont(BSTR aFace, int aFontStyle, int aWeight, float aOrientation, int aHeight,
                                   int aWidth, IGLFont** aFont) noexcept = 0;
  /// Adds a font of outlines, which stand in the model and scale with it; a new one's characters are about
  /// one unit high.
  /// @param aFace, aFontStyle, aWeight, aOrientation as at CreateRasterFont
  /// @param aExtrusionZ non-zero: characters with depth, one unit along -z
  /// @param aFont       receives a borrowed pointer. Good as at CreateRasterFont
  /// @return S_OK; E_FAIL when it can't be made: aFont receives null
  virtual HRESULT CreateTrueTypeFont(BSTR aFace, int aFontStyle, int aWeight, float aOrientation,
                                     LONG aExtrusionZ, IGLFont** aFont) noexcept = 0;
  /// Removes a font, and makes it the default no more. Waits for the frame. One that isn't the context's does
  /// nothing.
  virtual HRESULT DestroyFont(IGLFont* aFont) noexcept = 0;
  /// Waits for the frame.
  /// @param aFont receives the default font, counted; null when none is set
  virtual HRESULT GetDefaultFont(IGLFont** aFont) noexcept = 0;
  /// Names one of the context's fonts for painters that want one. The component itself doesn't use it. Waits
  /// for the frame.
  /// @return S_OK; E_FAIL when the font isn't the context's, which null isn't: the default stays
  virtual HRESULT SetDefaultFont(IGLFont* aFont) noexcept = 0;
  /// Replaces a collection's members by the fonts.
  virtual HRESULT EnumFonts(IGLCollection* aColl) noexcept = 0;

  /// Finds what the painter draws at a point or in a box of a viewer, by the identifiers that it gives by
  /// IGLCanvas::SetTestID. The painter is called once more, with nothing shown, for an enclosed selection up
  /// to five times. What has identifier 0 is not found; what is culled or clipped isn't either.
  ///
  /// Waits for the draw thread, at most for the frame or selection that is running: it is served between two
  /// frames, without waiting for the pace and without a frame of its own. Not to be called with a lock that
  /// the painter wants.
  /// Selections of one context are served one after the other.
  ///
  /// @param aViewer         one of this context's viewers; counted while it is used
  /// @param aPoint1, aPoint2 two corners, in any order, x and y from -1 to 1 over what the viewer shows: its
  ///                 clip rectangle when it is clipped, else the window. Equal points pick one pixel. z is
  ///                 ignored
  /// @param aSelectClosest  non-zero: only the one nearest to the eye, else all, in the order in which they
  ///                        were drawn; one that was drawn in several runs may come several times
  /// @param aSelectEnclosed non-zero: only what doesn't reach over the box's edges. The points may come back
  ///                        with their coordinates exchanged. With aSelectClosest the one nearest in the box
  ///                        is dropped only if it is also the nearest at an edge
  /// @param aArraySize      how many there is room for; receives how many were found. Below 1 is S_OK with
  ///                        nothing done. When more things are hit than there is room for, closest or not, 0
  ///                        are found: be generous
  /// @param aIDArray        receives the identifiers
  /// @return S_OK; E_INVALIDARG for null or another context's viewer; E_GL_BADSTATE before Initialize, on the
  ///         draw thread, on another context's that this one waits for in turn, and when the thread is
  ///         suspended, becomes so or is replaced meanwhile. Every failure but a null pointer sets aArraySize
  ///         to 0
  virtual HRESULT Select(IGLViewer* aViewer, GLDATA_POINT* aPoint1, GLDATA_POINT* aPoint2,
                         LONG aSelectClosest, LONG aSelectEnclosed, int* aArraySize,
                         ULONG* aIDArray) noexcept = 0;

 protected:
  ~IGLContext() = default;
};

/// Drawing on demand, and fonts of the component's own. Threads and results as at IGLContext.
struct IGLContext2 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x9A6C5A69, 0x5F0E, 0x4D23, {0xB7, 0xDC, 0x8B, 0xC1, 0xE6, 0x57, 0x2E, 0xBB}};

  /// Makes the draw thread draw on demand (non-zero) or freely at its pace. On demand a frame is drawn when
  /// TriggerDrawThread asks, the window needs it, or dwMaxWait has passed since the last frame. Selections,
  /// new fonts and ResetClipPlanes are served without a frame. Doesn't wait.
  /// @param bControlled non-zero: on demand
  /// @param dwMaxWait ms; 0 draws without a pause, 0xFFFFFFFF waits for ever
  /// @return S_OK; E_GL_BADSTATE before Initialize
  virtual HRESULT SetControlledDrawThread(LONG bControlled, ULONG dwMaxWait) noexcept = 0;
  /// Asks for a frame; at least one whole frame begins after the call. Several calls during one frame make
  /// one. Does nothing when the thread draws freely. Doesn't wait.
  /// @return S_OK; E_GL_BADSTATE before Initialize
  virtual HRESULT TriggerDrawThread() noexcept = 0;
  /// Adds a font from one of the component's own sheets of characters, 8 by 16 texels each, which needs no
  /// installed font.
  /// @param aFace "HAND" or "SANSSERIF", in any case. Another name makes a font that fails at Print
  /// @param aFont receives a counted pointer: the caller releases it. The context holds another one until
  ///              DestroyFont
  /// @return S_OK; E_INVALIDARG also for a name of 64 UTF-16 units or more; E_FAIL when it can't be made:
  ///         aFont receives null
  virtual HRESULT CreateInternalFont(BSTR aFace, IGLFont** aFont) noexcept = 0;

 protected:
  ~IGLContext2() = default;
};

/// Pausing. Threads and results as at IGLContext.
struct IGLContext12 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0xDE4AB195, 0xE238, 0x48A1, {0x9F, 0x8D, 0xDF, 0x00, 0x4F, 0xC1, 0xEE, 0x2A}};

  /// Stops drawing: waits for the running cycle, and at most 3 s for the thread to park. After that no frame
  /// begins, no font is built and no callback comes until ResumeDrawThread. On the draw thread it returns at
  /// once, and the thread parks after the running cycle.
  /// @return S_OK; E_GL_BADSTATE before Initialize
  virtual HRESULT SuspendDrawThread() noexcept = 0;
  /// Goes on drawing. One call ends any number of suspensions.
  /// @return S_OK; E_GL_BADSTATE before Initialize
  virtual HRESULT ResumeDrawThread() noexcept = 0;

 protected:
  ~IGLContext12() = default;
};

/// The canvas.
struct IGLContext14_2 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x0683A4F3, 0x1BD0, 0x4F66, {0x84, 0x00, 0xD2, 0xA8, 0x63, 0x1C, 0xE4, 0x9A}};

  /// @param ppICanvas receives the canvas that painters get, counted. It draws on the draw thread alone
  /// @return S_OK; E_INVALIDARG when ppICanvas is null
  virtual HRESULT GetCanvas(IGLCanvas** ppICanvas) noexcept = 0;

 protected:
  ~IGLContext14_2() = default;
};

/// Multisampling. What is asked for acts when a window is made: at the next Initialize. It isn't told what
/// was had, and the user's settings may overwrite it. A getter's null gives E_INVALIDARG.
struct IGLContext14_3 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0xC0BBA8A5, 0xCCEB, 0x4C15, {0xA8, 0x08, 0x34, 0xC8, 0x0F, 0x4A, 0xD3, 0x93}};

  /// Whether multisampling is asked for; 0 at first. The value is kept as it is.
  virtual HRESULT get_bFSAA(LONG* pVal) noexcept = 0;
  /// Asks for multisampling (non-zero) or none.
  virtual HRESULT put_bFSAA(LONG newVal) noexcept = 0;
  /// The highest number of samples to use; 4 at first, 0 is no limit.
  virtual HRESULT get_lFSAAMaxSamples(LONG* pVal) noexcept = 0;
  /// Sets the highest number of samples. Any value is kept.
  virtual HRESULT put_lFSAAMaxSamples(LONG newVal) noexcept = 0;

 protected:
  ~IGLContext14_3() = default;
};
