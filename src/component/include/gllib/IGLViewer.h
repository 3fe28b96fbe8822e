/// @file
/// GLViewer: one view of a context. IGLContext::CreateViewer creates it.

#pragma once

#include <gllib/GLTypes.h>

struct IGLCollection;
struct IGLCoord;
struct IGLViewerGauge;

/// An eye with a parallel or perspective projection, an optional clip rectangle in the window with a frame,
/// and gauges over the scene. All viewers of a context use its painter. The draw thread clears a viewer's
/// rectangle before it draws the viewer.
///
/// A new viewer is not clipped and looks along -z from 0, 0, 1. Its parallel view volume is -50, -50, 0 to
/// 50, 50, 1000; z is the distance in front of the eye. Its perspective has a field of view of 27 degrees and
/// planes at 0.1 and 1000. Its clip rectangle is at 10, 10, with 100 by 100 pixels. The frame is white, one
/// pixel wide, at the edge.
///
/// Threads: any, at any time; no operation blocks. A change takes effect at the next pass of the viewer.
/// Values that are set by two calls, and a colour, may be seen half changed during one pass.
/// Results: S_OK; E_INVALIDARG when a pointer is null; E_GL_BADVALUE if a value is out of range or NaN
/// (nothing changes).
struct IGLViewer : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x17503798, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  // Switches. Setters take non-zero for on.

  /// Sets whether the viewer is drawn.
  virtual HRESULT Show(LONG aShow) noexcept = 0;
  /// Returns whether the viewer is drawn.
  /// @param aVisible receives 1 or 0
  virtual HRESULT IsVisible(LONG* aVisible) noexcept = 0;
  /// Selects parallel projection if on, else perspective.
  virtual HRESULT SetOrtho(LONG aOrtho) noexcept = 0;
  /// Returns whether the projection is parallel.
  /// @param aOrtho receives 1 or 0
  virtual HRESULT IsOrtho(LONG* aOrtho) noexcept = 0;
  /// Sets whether gauges are drawn; off in a new viewer.
  virtual HRESULT ShowGauges(LONG aShow) noexcept = 0;
  /// Returns whether gauges are drawn.
  /// @param aVisible receives 1 or 0
  virtual HRESULT AreGaugesVisible(LONG* aVisible) noexcept = 0;
  /// Sets whether the viewer is limited to the clip rectangle.
  virtual HRESULT Clip(LONG aClip) noexcept = 0;
  /// Returns whether the viewer is limited to the clip rectangle.
  /// @param aClipped receives 1 or 0
  virtual HRESULT IsClipped(LONG* aClipped) noexcept = 0;
  /// Sets whether the picture is scaled into the clip rectangle (on in a new viewer), or drawn at window size
  /// and clipped.
  virtual HRESULT ScaleClip(LONG aScale) noexcept = 0;
  /// Returns whether the picture is scaled into the clip rectangle.
  /// @param aScaled receives 1 or 0
  virtual HRESULT IsClipScaled(LONG* aScaled) noexcept = 0;
  /// Sets whether a clipped viewer has a frame around the picture; on in a new viewer. If the picture is not
  /// scaled into the clip rectangle, the frame runs around the window and is clipped.
  virtual HRESULT ShowClipFrame(LONG aShow) noexcept = 0;
  /// Returns whether a clipped viewer has a frame.
  /// @param aVisible receives 1 or 0
  virtual HRESULT IsClipFrameVisible(LONG* aVisible) noexcept = 0;

  // The perspective.

  /// Returns the vertical field of view in degrees.
  virtual HRESULT GetEyeFovy_DEG(double* aFovy) noexcept = 0;
  /// Sets the vertical field of view in degrees: at least 0 and less than 180.
  virtual HRESULT SetEyeFovy_DEG(double aFovy) noexcept = 0;
  /// Returns the distance of the near plane from the eye.
  virtual HRESULT GetEyeZNear(double* aValue) noexcept = 0;
  /// Returns the distance of the far plane from the eye.
  virtual HRESULT GetEyeZFar(double* aValue) noexcept = 0;
  /// Sets the distances of the near and far plane from the eye: near greater than 0, far greater than near.
  virtual HRESULT SetEyeZNearAndFar(double aNear, double aFar) noexcept = 0;
  /// Returns the factor that multiplies the aspect ratio of the clip rectangle or the window.
  virtual HRESULT GetEyeAspect(double* aValue) noexcept = 0;
  /// Sets the factor that multiplies the aspect ratio of the clip rectangle, or of the window if the viewer
  /// is not clipped; greater than 0. 1 keeps circles round.
  virtual HRESULT SetEyeAspect(double aValue) noexcept = 0;

  // The parallel projection.

  /// Returns the lower and the upper corner of the view volume, in the eye's system; z points forward.
  virtual HRESULT GetOrthoExtents(GLDATA_POINT* aMin, GLDATA_POINT* aMax) noexcept = 0;
  /// Sets two opposite corners of the view volume, in any order, in the eye's system; z points forward. The
  /// shorter side of the view shows these extents. The longer side shows more, by the ratio of the sides.
  /// @return S_OK; E_GL_BADVALUE if the corners are equal in x, y or z
  virtual HRESULT SetOrthoExtents(GLDATA_POINT* aMin, GLDATA_POINT* aMax) noexcept = 0;

  // The clip rectangle in window pixels, from the window's lower left corner as in GL.

  /// Returns the left edge.
  virtual HRESULT GetClipX(int* aValue) noexcept = 0;
  /// Returns the lower edge.
  virtual HRESULT GetClipY(int* aValue) noexcept = 0;
  /// Returns the width.
  virtual HRESULT GetClipWidth(int* aValue) noexcept = 0;
  /// Returns the height.
  virtual HRESULT GetClipHeight(int* aValue) noexcept = 0;
  /// Sets the rectangle. It may extend beyond the window.
  /// @return S_OK; E_GL_BADVALUE if a coordinate is below 0 or a size below 1
  virtual HRESULT SetClipRectangle(int aX, int aY, int aWidth, int aHeight) noexcept = 0;
  /// Returns the frame's colour.
  virtual HRESULT GetFrameColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Sets the frame's colour. The components are not clamped.
  virtual HRESULT SetFrameColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Returns the frame's width in pixels.
  virtual HRESULT GetFrameThickness(float* aValue) noexcept = 0;
  /// Sets the frame's width in pixels, clamped to the limits of point sizes
  /// (IGLDrawAttr::GetPointSizeLimits). The result is 0 before the first rendering context of the process.
  virtual HRESULT SetFrameThickness(float aValue) noexcept = 0;
  /// Returns the distance of the frame from the edge, as a share of half the picture.
  virtual HRESULT GetFrameOffset(float* aValue) noexcept = 0;
  /// Sets the distance of the frame from the edge, inward, as a share of half the picture: at least 0 and
  /// less than 1.
  virtual HRESULT SetFrameOffset(float aValue) noexcept = 0;

  /// Adds a gauge and takes a reference. Does nothing if the viewer already has this gauge.
  /// @return S_OK; E_FAIL if memory is short (nothing changes)
  virtual HRESULT AddGauge(IGLViewerGauge* aGauge) noexcept = 0;
  /// Removes a gauge and releases it. A pass that is already drawing it completes.
  virtual HRESULT RemoveGauge(IGLViewerGauge* aGauge) noexcept = 0;
  /// Removes all gauges, as RemoveGauge.
  virtual HRESULT RemoveAllGauges() noexcept = 0;
  /// Replaces the members of a collection by the gauges.
  /// @return S_OK; E_OUTOFMEMORY (nothing changes)
  virtual HRESULT EnumGauges(IGLCollection* aColl) noexcept = 0;

  /// Returns the eye's coordinate system. Hosts use it to move the eye.
  /// @param aCS receives a counted reference
  virtual HRESULT GetCoord(IGLCoord** aCS) noexcept = 0;
  /// Converts a world point to the viewer's screen coordinates, in place. x and y run from -1 to 1 over the
  /// shorter side (over the extents in parallel projection); z is that of the eye's system. Uses the aspect
  /// ratio of the last pass. With a field of view of 0, x and y become 0.
  ///
  /// In perspective the result does not match the picture: the conversion places the screen in the plane z =
  /// 0 of the eye's system, and the centre of projection in front of it. Use GLViewGeometry
  /// (gllib/GLViewMath.h) to get the pixel of a point.
  virtual HRESULT PointWCStoSCS(GLDATA_POINT* aPntWCS) noexcept = 0;
  /// Converts screen coordinates x, y and depth z of the eye's system to a world point, in place. Like
  /// PointWCStoSCS it does not match the picture in perspective; use GLViewGeometry to get the ray of a
  /// pixel.
  virtual HRESULT PointSCStoWCS(GLDATA_POINT* aPntSCS) noexcept = 0;

 protected:
  ~IGLViewer() = default;
};

/// The axes figure in the lower left corner of the picture: x red, y green, z blue, with the orientation of
/// the world. If the picture is scaled into the clip rectangle, so is the figure. It is part of the overlay:
/// it is drawn only if the viewer draws a clip frame, or shows gauges and has at least one. Threads and
/// results as at IGLViewer.
struct IGLViewer2 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0xAD73F8A0, 0xC1B2, 0x409F, {0xAD, 0x01, 0x58, 0xFD, 0x29, 0x26, 0xFF, 0x02}};

  /// Returns whether the figure is shown.
  /// @param pbShowAxes receives 1 or 0
  virtual HRESULT GetShowAxes(LONG* pbShowAxes) noexcept = 0;
  /// Shows the figure (non-zero) or hides it; hidden in a new viewer.
  virtual HRESULT SetShowAxes(LONG bShowAxes) noexcept = 0;

 protected:
  ~IGLViewer2() = default;
};
