/// @file
/// GLViewer: one view into a context. IGLContext::CreateViewer makes one.

#pragma once

#include <gllib/GLTypes.h>

struct IGLCollection;
struct IGLCoord;
struct IGLViewerGauge;

/// An eye with a parallel or perspective projection, an optional clip rectangle inside the window, a frame
/// around it and gauges over the scene. Several viewers of a context share its painter; each clears its own
/// rectangle before it is drawn.
///
/// A new one is not clipped and looks along -z from 0, 0, 1. Its parallel volume reaches from -50, -50, 0 to
/// 50, 50, 1000, z being the distance before the eye; its perspective has 27 degrees and planes at 0.1 and
/// 1000.
///
/// Threads: any, at any time; no operation waits. A change shows at the next pass over the viewer. Two values
/// that are set by two calls, or a point or colour, may be seen half-changed for that one pass.
/// Results: S_OK; E_INVALIDARG when a pointer is null; E_GL_BADVALUE where an operation refuses a value (one
/// that isn't a number is refused too): what was set before stays.
struct IGLViewer : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x17503798, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  // Switches: non-zero is on; the question gives 1 or 0.

  /// Whether the viewer is drawn.
  virtual HRESULT Show(LONG aShow) noexcept = 0;
  /// @param aVisible receives 1 or 0
  virtual HRESULT IsVisible(LONG* aVisible) noexcept = 0;
  /// Parallel projection when on, else perspective.
  virtual HRESULT SetOrtho(LONG aOrtho) noexcept = 0;
  /// @param aOrtho receives 1 or 0
  virtual HRESULT IsOrtho(LONG* aOrtho) noexcept = 0;
  /// Whether gauges are drawn; off in a new viewer.
  virtual HRESULT ShowGauges(LONG aShow) noexcept = 0;
  /// @param aVisible receives 1 or 0
  virtual HRESULT AreGaugesVisible(LONG* aVisible) noexcept = 0;
  /// Whether the clip rectangle is in force.
  virtual HRESULT Clip(LONG aClip) noexcept = 0;
  /// @param aClipped receives 1 or 0
  virtual HRESULT IsClipped(LONG* aClipped) noexcept = 0;
  /// Whether the picture shrinks into the clip rectangle (on in a new viewer), or is drawn as large as the
  /// window and cut out.
  virtual HRESULT ScaleClip(LONG aScale) noexcept = 0;
  /// @param aScaled receives 1 or 0
  virtual HRESULT IsClipScaled(LONG* aScaled) noexcept = 0;
  /// Whether a clipped viewer has a frame; on in a new viewer.
  virtual HRESULT ShowClipFrame(LONG aShow) noexcept = 0;
  /// @param aVisible receives 1 or 0
  virtual HRESULT IsClipFrameVisible(LONG* aVisible) noexcept = 0;

  // The perspective.

  /// Gives the vertical field of view in degrees.
  virtual HRESULT GetEyeFovy_DEG(double* aFovy) noexcept = 0;
  /// Sets the vertical field of view in degrees: 0 up to, but not including, 180.
  virtual HRESULT SetEyeFovy_DEG(double aFovy) noexcept = 0;
  /// Gives the distance of the near plane from the eye.
  virtual HRESULT GetEyeZNear(double* aValue) noexcept = 0;
  /// Gives the distance of the far plane from the eye.
  virtual HRESULT GetEyeZFar(double* aValue) noexcept = 0;
  /// Sets the distances of the near and far plane from the eye: near above 0, far above near.
  virtual HRESULT SetEyeZNearAndFar(double aNear, double aFar) noexcept = 0;
  /// Gives the factor to the window's own aspect.
  virtual HRESULT GetEyeAspect(double* aValue) noexcept = 0;
  /// Sets a factor to the window's own aspect; above 0. 1 keeps circles round.
  virtual HRESULT SetEyeAspect(double aValue) noexcept = 0;

  // The parallel projection.

  /// Gives the lower and the upper corner of the view volume, in the eye's system; z counts forward.
  virtual HRESULT GetOrthoExtents(GLDATA_POINT* aMin, GLDATA_POINT* aMax) noexcept = 0;
  /// Sets two opposite corners of the view volume, in either order, in the eye's system; z counts forward.
  /// The shorter side of the view shows these extents, the longer one more, by the ratio of the sides.
  /// @return S_OK; E_GL_BADVALUE when the corners are equal in x, y or z
  virtual HRESULT SetOrthoExtents(GLDATA_POINT* aMin, GLDATA_POINT* aMax) noexcept = 0;

  // The clip rectangle in window pixels. Its origin is the window's lower left corner, as GL counts.

  /// Gives the left edge.
  virtual HRESULT GetClipX(int* aValue) noexcept = 0;
  /// Gives the lower edge.
  virtual HRESULT GetClipY(int* aValue) noexcept = 0;
  /// Gives the width.
  virtual HRESULT GetClipWidth(int* aValue) noexcept = 0;
  /// Gives the height.
  virtual HRESULT GetClipHeight(int* aValue) noexcept = 0;
  /// Sets the rectangle; it may reach beyond the window.
  /// @return S_OK; E_GL_BADVALUE when a coordinate is below 0 or a size below 1
  virtual HRESULT SetClipRectangle(int aX, int aY, int aWidth, int aHeight) noexcept = 0;
  /// Gives the frame's colour.
  virtual HRESULT GetFrameColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Sets the frame's colour; it is kept as it is.
  virtual HRESULT SetFrameColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Gives the frame's width in pixels.
  virtual HRESULT GetFrameThickness(float* aValue) noexcept = 0;
  /// Sets the frame's width in pixels, cut to the limits of point sizes (IGLDrawAttr::GetPointSizeLimits): 0
  /// before the first rendering context of the process.
  virtual HRESULT SetFrameThickness(float aValue) noexcept = 0;
  /// Gives how far inside the edge the frame stands, as a share of half the rectangle.
  virtual HRESULT GetFrameOffset(float* aValue) noexcept = 0;
  /// Sets how far inside the edge the frame stands, as a share of half the rectangle: 0 up to, but not
  /// including, 1.
  virtual HRESULT SetFrameOffset(float aValue) noexcept = 0;

  /// Adds a gauge, with a reference of its own; one that is there already changes nothing.
  /// @return S_OK; E_FAIL when there is no memory: nothing changed
  virtual HRESULT AddGauge(IGLViewerGauge* aGauge) noexcept = 0;
  /// Removes a gauge. A pass that is drawing it finishes it.
  virtual HRESULT RemoveGauge(IGLViewerGauge* aGauge) noexcept = 0;
  /// Removes all gauges. As RemoveGauge.
  virtual HRESULT RemoveAllGauges() noexcept = 0;
  /// Replaces a collection's members by the gauges.
  /// @return S_OK; E_OUTOFMEMORY, with nothing changed
  virtual HRESULT EnumGauges(IGLCollection* aColl) noexcept = 0;

  /// Gives the eye's coordinate system, through which a host moves the eye.
  /// @param aCS receives a counted reference
  virtual HRESULT GetCoord(IGLCoord** aCS) noexcept = 0;
  /// Converts a point of the world to the viewer's screen coordinates, in place: x and y from -1 to 1 over
  /// the shorter side (the whole extents in parallel projection), z as in the eye's system. Uses the aspect
  /// of the last pass. A field of view of 0 gives 0, 0.
  ///
  /// The perspective form has a model of its own and does not match the picture: the eye's plane z = 0 is the
  /// screen, and the eye stands in front of it. GLViewGeometry (gllib/GLViewMath.h) gives the pixel that a
  /// point really has.
  virtual HRESULT PointWCStoSCS(GLDATA_POINT* aPntWCS) noexcept = 0;
  /// The way back: the point of the world at screen coordinates x, y and depth z of the eye's system. As
  /// PointWCStoSCS it does not match the perspective picture; GLViewGeometry gives the ray of a pixel.
  virtual HRESULT PointSCStoWCS(GLDATA_POINT* aPntSCS) noexcept = 0;

 protected:
  ~IGLViewer() = default;
};

/// The axes figure: x red, y green, z blue, turned like the world, in the window's lower left corner. It
/// comes with the overlay, that is when the viewer draws a clip frame or a gauge. Threads and results as at
/// IGLViewer.
struct IGLViewer2 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0xAD73F8A0, 0xC1B2, 0x409F, {0xAD, 0x01, 0x58, 0xFD, 0x29, 0x26, 0xFF, 0x02}};

  /// @param pbShowAxes receives 1 or 0
  virtual HRESULT GetShowAxes(LONG* pbShowAxes) noexcept = 0;
  /// Shows the figure (non-zero) or hides it; hidden in a new viewer.
  virtual HRESULT SetShowAxes(LONG bShowAxes) noexcept = 0;

 protected:
  ~IGLViewer2() = default;
};
