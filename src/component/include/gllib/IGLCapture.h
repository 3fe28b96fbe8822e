/// @file
/// The interface that a host implements to get pictures of a context, at the window's resolution or a
/// multiple of it. GLCaptureBase (gllib/GLClient.h) implements all of it but OnData from one request.

#pragma once

#include <gllib/GLTypes.h>

struct IGLPixmap;

/// Requests and receives pictures. IGLContext::AttachCapture attaches it and takes one reference.
///
/// For a picture the draw thread draws the scene again, off-screen, in another rendering context. That
/// context does not have the window's display lists, and the window's lists are lost after the capture.
/// Painters must check with IsCompiledList and compile again; fonts rebuild their lists themselves.
///
/// Threads: the draw thread calls all operations between two frames. It holds the context's lock during
/// GetBackgroundColor only. It ignores the results.
struct IGLCapture : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0xF8BF68B8, 0x3816, 0x4F53, {0xA9, 0xE7, 0x04, 0x9A, 0x6F, 0xEB, 0x42, 0x2E}};

  /// Returns whether a picture is wanted. Called once after each frame; the value applies to this frame only.
  /// @param aEnabled the capture sets this: non-zero for a picture now
  virtual HRESULT IsEnabled(LONG* aEnabled) noexcept = 0;
  /// Returns the pixmap that receives the picture. The component initialises it to the picture's size. The
  /// pixel at the top left of the rectangle becomes its pixel 0, 0.
  /// @param aPixmap the capture sets this, with a reference that the component releases; null makes the
  ///                capture fail
  virtual HRESULT GetPixmap(IGLPixmap** aPixmap) noexcept = 0;
  /// Returns the resolution factor. The scene is drawn for a window larger by this factor: lines keep their
  /// width in pixels, everything else has a higher resolution. A viewer's clip rectangle keeps its size in
  /// pixels.
  /// @param aZoom the capture sets this. The rectangle is multiplied by the integer part of the factor: use
  ///              integer factors. Below 1 the rectangle is empty and the pixmap does not change; 0 makes the
  ///              capture fail
  virtual HRESULT GetPixelZoom(float* aZoom) noexcept = 0;
  /// Returns the wanted part of the window, in window pixels before the zoom, from the window's top left.
  /// Parts beyond the right or bottom edge are cut off. If the corner is outside the window, or a size is
  /// below 1, the capture fails.
  virtual HRESULT GetRectangle(int* aX, int* aY, int* aWidth, int* aHeight) noexcept = 0;
  /// Returns the colour to which the picture is cleared, instead of the context's background; alpha is
  /// ignored.
  virtual HRESULT GetBackgroundColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Reports the end of an attempt. Called once per attempt.
  /// @param aSuccess 1 if the pixmap holds the picture, or is unchanged because the zoom is below 1. 0 if the
  ///                 capture failed: there was no pixmap or no memory for it, the rectangle was not valid, or
  ///                 the surface was too large or could not be created
  virtual HRESULT OnData(LONG aSuccess) noexcept = 0;

 protected:
  ~IGLCapture() = default;
};
