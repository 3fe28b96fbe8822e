/// @file
/// GLContext: a GL window, its draw thread, and the objects to draw with. The first object that a host
/// creates.

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

/// A context draws continuously. In each cycle (40 ms) its draw thread clears each visible viewer, sets up
/// its projection, fog, eye, clip planes and lights, and calls the painter. Then it shows the frame. Hosts
/// need not invalidate anything: changes take effect at the next frame.
///
/// A new context has no window, no thread and no viewer. Depth test and lighting are on, the background is
/// opaque black, ambient light is 0.2, the viewport 1 by 1. All settings except the draw thread's may be set
/// before Initialize, and further calls of Initialize keep them.
///
/// The last Release stops the drawing: it waits for the running cycle, destroys the window and returns. No
/// callback follows. If the last Release runs on a draw thread of any context, a separate thread does this
/// and Release returns at once.
///
/// Threads: any, at any time, unless an operation documents otherwise. "Waits for the frame" means that the
/// operation takes the context's lock, which the draw thread holds during a frame. A painter may call such an
/// operation; a host thread must not call it while it holds a lock that the painter needs. A painter may call
/// it on another context; the call fails if that context's painter waits for this context.
/// Results: S_OK; E_INVALIDARG if a pointer is null (nothing changes); E_GL_BADSTATE if the parts of the
/// context could not be created, or if the wait would deadlock draw threads; other results are documented at
/// the operation.
struct IGLContext : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x1750378C, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Creates the GL window in a parent window, starts the draw thread, and returns when the rendering context
  /// is ready. The window has size 0: call SetViewport. A further call creates window, thread and rendering
  /// context again and resets the thread's settings. Viewers, lights, fonts and other settings are kept;
  /// compiled lists are lost.
  /// @param aParentWnd the parent's handle: an X11 window id or an HWND; 0 creates a top-level window. The
  ///                   headless display accepts only 0. If the parent is destroyed before the context,
  ///                   drawing stops
  /// @return S_OK; E_FAIL if there is no display, no such parent, no suitable pixel format, or no rendering
  ///         context within 10 s (everything is released and the call can be repeated); E_GL_BADSTATE on the
  ///         draw thread
  /// Threads: any on X11 and headless. On Windows the calling thread owns the window and must pump messages.
  virtual HRESULT Initialize(ULONG_PTR aParentWnd) noexcept = 0;
  /// Returns the GL window.
  /// @param aHandle receives the GL window's handle, as wide as a pointer; 0 before Initialize
  virtual HRESULT GetWindow(ULONG_PTR* aHandle) noexcept = 0;

  /// Switches the depth test on (non-zero) or off. Takes effect at the next frame.
  virtual HRESULT EnableDepth(LONG aEnable) noexcept = 0;
  /// Returns whether the depth test is on.
  /// @param aEnable receives 1 or 0
  virtual HRESULT IsDepthEnabled(LONG* aEnable) noexcept = 0;
  /// Returns the colour to which viewers are cleared; on the draw thread during an off-screen capture, the
  /// picture's background.
  virtual HRESULT GetBackgroundColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Sets the colour to which viewers are cleared. Each component is clamped to 0 to 1. Takes effect at the
  /// next frame; one frame may see it half changed.
  virtual HRESULT SetBackgroundColor(GLDATA_RGBA* aColor) noexcept = 0;

  /// Returns the draw thread's settings; 2, 40 and 10 after Initialize.
  /// @return S_OK; E_GL_BADSTATE before Initialize (nothing is written)
  virtual HRESULT GetDrawThreadPars(int* aPriority, ULONG* aPreferredCycle,
                                    ULONG* aMustSleepCycle) noexcept = 0;
  /// Sets the draw thread's priority and cycle. After the work of a cycle a thread that draws freely sleeps
  /// for the rest of the preferred cycle, but at least for the must-sleep cycle. If a value changes, the call
  /// waits for the running cycle; the value takes effect at the next one.
  /// @param aPriority       -15 idle, -2 lowest, -1, 0 normal, 1, 2 highest, 15 time-critical; any other
  ///                        value is treated as 0. A priority that the system refuses has no effect
  /// @param aPreferredCycle ms; clamped to 5 to 5000
  /// @param aMustSleepCycle ms; clamped to 5 to 5000
  /// @return S_OK; E_GL_BADSTATE before Initialize
  virtual HRESULT SetDrawThreadPars(int aPriority, ULONG aPreferredCycle, ULONG aMustSleepCycle) noexcept = 0;

  /// Attaches a painter, takes a reference to it, and releases the previous one. Waits for the frame, so that
  /// the painter never changes during one. If the draw thread draws freely, it begins the next frame at once,
  /// unless the draw thread itself is the caller. Does nothing if this painter is already attached.
  virtual HRESULT AttachPainter(IGLPainter* aPainter) noexcept = 0;
  /// Releases the painter. Waits for the frame, a running selection and a capture: after the return no call
  /// to the painter runs or follows. On the draw thread it does not wait.
  virtual HRESULT DetachPainter() noexcept = 0;
  /// Attaches a capture, takes a reference to it, and releases the previous one. Waits for the frame.
  virtual HRESULT AttachCapture(IGLCapture* aCapture) noexcept = 0;
  /// Releases the capture. Waits for the frame and for a capture in progress: after the return no call to the
  /// object runs or follows. On the draw thread it does not wait.
  virtual HRESULT DetachCapture() noexcept = 0;

  /// Returns the viewport's width.
  /// @param aValue receives pixels, at least 1; on the draw thread during an off-screen capture, the
  ///               picture's size
  virtual HRESULT GetViewportWidth(int* aValue) noexcept = 0;
  /// Returns the viewport's height, as GetViewportWidth.
  virtual HRESULT GetViewportHeight(int* aValue) noexcept = 0;
  /// Sets position and size of the GL window in its parent. Takes effect at the next viewer pass. Hosts must
  /// call it after each change of the parent's size: the window is not resized automatically. Waits for the
  /// frame.
  /// @param aX, aY          the top left corner in the parent, pixels
  /// @param aWidth, aHeight pixels; below 1 becomes 1
  virtual HRESULT SetViewport(int aX, int aY, int aWidth, int aHeight) noexcept = 0;
  /// Converts window pixels (origin at the top left) to screen coordinates. Their origin is the middle of the
  /// window and y points up. The shorter side runs from -1 to 1, the longer side further by the ratio of the
  /// sides.
  virtual HRESULT DeviceToSCS(int aWinX, int aWinY, double* aScsX, double* aScsY) noexcept = 0;
  /// Converts screen coordinates to window pixels, truncated towards 0. A pixel converted to screen
  /// coordinates and back may change by 1.
  virtual HRESULT SCSToDevice(double aScsX, double aScsY, int* aWinX, int* aWinY) noexcept = 0;

  /// Creates a viewer and draws it from the next frame on. Viewers are drawn in the order of a collection, up
  /// to ten from the latest to the earliest (see IGLCollection). Does not wait.
  /// @param aShow  non-zero: visible
  /// @param aOrtho non-zero: parallel projection, else perspective
  /// @param aI     receives a borrowed pointer, valid until DestroyViewer or the end of the context: do not
  ///               call Release without AddRef
  /// @return S_OK; E_FAIL if it cannot be created (aI receives null)
  virtual HRESULT CreateViewer(LONG aShow, LONG aOrtho, IGLViewer** aI) noexcept = 0;
  /// Removes a viewer. Does not wait: a frame that is already drawing it completes. Does nothing if the
  /// viewer is not the context's.
  virtual HRESULT DestroyViewer(IGLViewer* aI) noexcept = 0;
  /// Replaces the members of a collection by the viewers.
  /// @return S_OK; E_OUTOFMEMORY (nothing changes)
  virtual HRESULT EnumViewers(IGLCollection* aColl) noexcept = 0;

  /// Adds a clip plane through three world points. It clips all viewers from the next pass on. The side of
  /// the normal (B - A) x (C - A) remains visible. If the number of planes exceeds GL's limit (at least 6),
  /// the earliest plane is replaced. Waits for the frame.
  /// @return S_OK; E_GL_BADVALUE if the points are collinear or the plane is not finite; E_OUTOFMEMORY.
  ///         After a failure nothing is changed
  virtual HRESULT ClipPlane(GLDATA_POINT* aPntA, GLDATA_POINT* aPntB, GLDATA_POINT* aPntC) noexcept = 0;
  /// Removes all clip planes. Waits for the frame. The draw thread disables them in GL before the next one.
  virtual HRESULT ResetClipPlanes() noexcept = 0;

  /// Switches lighting on (non-zero) or off. Takes effect at the next viewer pass. While it is on, GL uses
  /// normals, and the current colour replaces the ambient and diffuse material (see IGLMaterial).
  virtual HRESULT EnableLighting(LONG aEnable) noexcept = 0;
  /// Returns whether lighting is on.
  /// @param aEnabled receives 1 or 0
  virtual HRESULT IsLightingEnabled(LONG* aEnabled) noexcept = 0;
  /// Switches the ambient light of the scene on (non-zero) or off. Takes effect at the next viewer pass.
  virtual HRESULT EnableAmbientLight(LONG aEnable) noexcept = 0;
  /// Returns whether the ambient light of the scene is on.
  /// @param aEnabled receives 1 or 0
  virtual HRESULT IsAmbientLightEnabled(LONG* aEnabled) noexcept = 0;
  /// Returns the ambient light of the scene; alpha is always 1.
  virtual HRESULT GetAmbientLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Sets the ambient light of the scene. Red, green and blue are clamped to 0 to 1; alpha is ignored and is
  /// always 1.
  virtual HRESULT SetAmbientLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Creates a light that is off. Does not wait.
  /// @param aLight receives a borrowed pointer, valid until DestroyLight or the end of the context: do not
  ///               call Release without AddRef
  /// @return S_OK; E_FAIL if it cannot be created (aLight receives null)
  virtual HRESULT CreateLight(IGLLight** aLight) noexcept = 0;
  /// Removes a light. It has no effect from the next viewer pass on. Does not wait. Does nothing if the light
  /// is not the context's.
  virtual HRESULT DestroyLight(IGLLight* aLight) noexcept = 0;
  /// Replaces the members of a collection by the lights.
  /// @return S_OK; E_OUTOFMEMORY (nothing changes)
  virtual HRESULT EnumLights(IGLCollection* aColl) noexcept = 0;
  /// Returns the context's fog.
  /// @param aFog receives a counted reference: the caller releases it
  virtual HRESULT GetFog(IGLFog** aFog) noexcept = 0;

  // Fonts. A creator waits for the frame, but not until the font is built: the draw thread builds it as soon
  // as no frame runs. It builds a font that is created before Initialize at the start of the first frame or
  // selection. If no face is available, Print and GetStringWidth return E_FAIL.

  /// Creates a font from the system's bitmap font.
  /// @param aFont receives a counted reference: the caller releases it. The context holds another reference
  ///              until DestroyFont
  /// @return S_OK; E_FAIL if it cannot be created (aFont receives null)
  virtual HRESULT CreateSystemFont(IGLFont** aFont) noexcept = 0;
  /// Creates a font of bitmap characters with a fixed size on the screen.
  /// @param aFace        face name in Unicode, at most 63 UTF-16 units are used; if it is not installed, the
  ///                     nearest face replaces it
  /// @param aFontStyle   GLFS_ bits; others are ignored
  /// @param aWeight      0 to 1000, 400 is regular, 700 bold; clamped to this range when the font is built
  /// @param aOrientation rotation of each character, degrees counter-clockwise
  /// @param aHeight      pixels: above 0 the cell height, below 0 the character height; 0 selects a default
  /// @param aWidth       mean character width in pixels; 0 selects it from the height
  /// @param aFont        receives a borrowed pointer, valid until DestroyFont or the end of the context: do
  ///                     not call Release without AddRef
  /// @return S_OK; E_FAIL if it cannot be created (aFont receives null)
  virtual HRESULT CreateRasterFont(BSTR aFace, int aFontStyle, int aWeight, float aOrientation, int aHeight,
                                   int aWidth, IGLFont** aFont) noexcept = 0;
  /// Creates a font of outlines in model coordinates. The characters of a new font are about one unit high.
  /// @param aFace, aFontStyle, aWeight, aOrientation as at CreateRasterFont
  /// @param aExtrusionZ non-zero: characters with depth, one unit along -z
  /// @param aFont       receives a borrowed pointer, valid as at CreateRasterFont
  /// @return S_OK; E_FAIL if it cannot be created (aFont receives null)
  virtual HRESULT CreateTrueTypeFont(BSTR aFace, int aFontStyle, int aWeight, float aOrientation,
                                     LONG aExtrusionZ, IGLFont** aFont) noexcept = 0;
  /// Removes a font, also as the default font. Waits for the frame. Does nothing if the font is not the
  /// context's.
  virtual HRESULT DestroyFont(IGLFont* aFont) noexcept = 0;
  /// Returns the default font. Waits for the frame.
  /// @param aFont receives a counted reference; null if none is set
  virtual HRESULT GetDefaultFont(IGLFont** aFont) noexcept = 0;
  /// Sets one of the context's fonts as default for painters. The component itself does not use it. Waits for
  /// the frame.
  /// @return S_OK; E_FAIL if the font is null or not the context's (nothing changes)
  virtual HRESULT SetDefaultFont(IGLFont* aFont) noexcept = 0;
  /// Replaces the members of a collection by the fonts.
  /// @return S_OK; E_OUTOFMEMORY (nothing changes)
  virtual HRESULT EnumFonts(IGLCollection* aColl) noexcept = 0;

  /// Returns the identifiers (IGLCanvas::SetTestID) of primitives that the painter draws at a point or in a
  /// box of a viewer. The draw thread calls the painter once without showing a picture; for an enclosed
  /// selection up to five times. Primitives with identifier 0, and culled or clipped ones, are not found.
  ///
  /// Waits for the draw thread, which serves the selection between two frames: at once after the running
  /// frame or selection, and without an additional frame. Do not call it while holding a lock that the
  /// painter needs. Selections of one context are served one after the other.
  ///
  /// @param aViewer         one of this context's viewers; Select holds a reference while it runs
  /// @param aPoint1, aPoint2 two corners, in any order; x and y run from -1 to 1 over the viewer: its clip
  ///                         rectangle if it is clipped, else the window. Equal points select one pixel. z is
  ///                         ignored
  /// @param aSelectClosest  non-zero: only the hit nearest to the eye; 0: all hits, in the order of drawing
  ///                        unless aSelectEnclosed is set. An identifier that is set several times may be
  ///                        returned several times
  /// @param aSelectEnclosed non-zero: only those that do not cross the edges of the box. The call may
  ///                        exchange coordinates of the two points. With aSelectClosest the nearest hit in
  ///                        the box is dropped only if it is also the nearest hit at an edge
  /// @param aArraySize      capacity of aIDArray; receives the number of identifiers found. Below 1 the call
  ///                        does nothing and returns S_OK. If there are more hits than capacity, no
  ///                        identifier is returned, also with aSelectClosest: pass a large array
  /// @param aIDArray        receives the identifiers
  /// @return S_OK; E_INVALIDARG if a pointer is null or the viewer is another context's; E_GL_BADSTATE before
  ///         Initialize, on the draw thread, on another context's draw thread for which this one waits, if
  ///         the draw thread is suspended or replaced before it has served the call, and if the rendering
  ///         context cannot be made current; E_OUTOFMEMORY. Every failure except a null pointer sets
  ///         aArraySize to 0
  virtual HRESULT Select(IGLViewer* aViewer, GLDATA_POINT* aPoint1, GLDATA_POINT* aPoint2,
                         LONG aSelectClosest, LONG aSelectEnclosed, int* aArraySize,
                         ULONG* aIDArray) noexcept = 0;

 protected:
  ~IGLContext() = default;
};

/// Drawing on demand, and built-in fonts. Threads and results as at IGLContext.
struct IGLContext2 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x9A6C5A69, 0x5F0E, 0x4D23, {0xB7, 0xDC, 0x8B, 0xC1, 0xE6, 0x57, 0x2E, 0xBB}};

  /// Makes the draw thread draw on demand (non-zero) or freely in each cycle. On demand it draws a frame
  /// after TriggerDrawThread, when the window must be redrawn, or when dwMaxWait ms have passed since the
  /// last frame. It serves selections, new fonts and ResetClipPlanes without a frame. Does not wait.
  /// @param bControlled non-zero: on demand
  /// @param dwMaxWait ms; 0 draws without a pause, 0xFFFFFFFF means no limit
  /// @return S_OK; E_GL_BADSTATE before Initialize
  virtual HRESULT SetControlledDrawThread(LONG bControlled, ULONG dwMaxWait) noexcept = 0;
  /// Requests a frame. At least one whole frame begins after the call. Several calls during one frame cause
  /// one frame. Does nothing if the thread draws freely. Does not wait.
  /// @return S_OK; E_GL_BADSTATE before Initialize
  virtual HRESULT TriggerDrawThread() noexcept = 0;
  /// Creates a font from a built-in sheet of characters of 8 by 16 texels. It needs no installed font.
  /// @param aFace "HAND" or "SANSSERIF", upper or lower case. With another name the font is created, but
  ///              Print fails
  /// @param aFont receives a counted reference: the caller releases it. The context holds another reference
  ///              until DestroyFont
  /// @return S_OK; E_INVALIDARG also for a name of at least 64 UTF-16 units; E_FAIL if it cannot be created
  ///         (aFont receives null)
  virtual HRESULT CreateInternalFont(BSTR aFace, IGLFont** aFont) noexcept = 0;

 protected:
  ~IGLContext2() = default;
};

/// Suspending and resuming the draw thread. Threads and results as at IGLContext.
struct IGLContext12 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0xDE4AB195, 0xE238, 0x48A1, {0x9F, 0x8D, 0xDF, 0x00, 0x4F, 0xC1, 0xEE, 0x2A}};

  /// Suspends the draw thread. Waits until the running cycle ends and the thread is suspended, at most 3 s.
  /// After that no frame begins, no font is built and no callback is made until ResumeDrawThread. On the draw
  /// thread it returns at once, and the thread is suspended after the running cycle.
  /// @return S_OK; E_GL_BADSTATE before Initialize
  virtual HRESULT SuspendDrawThread() noexcept = 0;
  /// Resumes the draw thread. One call ends any number of suspensions.
  /// @return S_OK; E_GL_BADSTATE before Initialize
  virtual HRESULT ResumeDrawThread() noexcept = 0;

 protected:
  ~IGLContext12() = default;
};

/// Access to the canvas. Threads as at IGLContext.
struct IGLContext14_2 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x0683A4F3, 0x1BD0, 0x4F66, {0x84, 0x00, 0xD2, 0xA8, 0x63, 0x1C, 0xE4, 0x9A}};

  /// Returns the canvas that painters receive. It draws on the draw thread only.
  /// @param ppICanvas receives a counted reference: the caller releases it
  /// @return S_OK; E_INVALIDARG if ppICanvas is null; E_GL_BADSTATE if the canvas could not be created
  virtual HRESULT GetCanvas(IGLCanvas** ppICanvas) noexcept = 0;

 protected:
  ~IGLContext14_2() = default;
};

/// Multisampling. The settings take effect when a window is created: at the next Initialize. There,
/// registry settings of the user that request multisampling replace these values. Getters return the
/// requested values, not the actual ones. A getter returns E_INVALIDARG if its pointer is null.
struct IGLContext14_3 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0xC0BBA8A5, 0xCCEB, 0x4C15, {0xA8, 0x08, 0x34, 0xC8, 0x0F, 0x4A, 0xD3, 0x93}};

  /// Returns whether multisampling is requested, as the value that was set; initially 0.
  virtual HRESULT get_bFSAA(LONG* pVal) noexcept = 0;
  /// Requests multisampling (non-zero) or none.
  virtual HRESULT put_bFSAA(LONG newVal) noexcept = 0;
  /// Returns the maximum number of samples; initially 4. 0 means no limit.
  virtual HRESULT get_lFSAAMaxSamples(LONG* pVal) noexcept = 0;
  /// Sets the maximum number of samples. Any value is accepted.
  virtual HRESULT put_lFSAAMaxSamples(LONG newVal) noexcept = 0;

 protected:
  ~IGLContext14_3() = default;
};
