/// @file
/// What a host implements to get pictures of what a context draws, at the window's resolution or a multiple
/// of it. GLCaptureBase (gllib/GLClient.h) answers all of the questions from one request.

#pragma once

#include <gllib/GLTypes.h>

struct IGLPixmap;

/// Asked after every frame whether a picture is wanted; attached by IGLContext::AttachCapture, which holds
/// one reference.
///
/// The scene is drawn once more, off-screen, for the picture. The rendering context of that pass knows no
/// display list of the window's, and the window's are gone after it: painters find out by IsCompiledList and
/// compile again, fonts do so by themselves.
///
/// Threads: all operations are called on the draw thread, between two frames. GetBackgroundColor is called
/// with the context's lock held, the others without. Results are ignored.
struct IGLCapture : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0xF8BF68B8, 0x3816, 0x4F53, {0xA9, 0xE7, 0x04, 0x9A, 0x6F, 0xEB, 0x42, 0x2E}};

  /// Asked once after every frame. The answer holds for this frame alone.
  /// @param aEnabled to be set: non-zero for a picture now
  virtual HRESULT IsEnabled(LONG* aEnabled) noexcept = 0;
  /// Names the pixmap that takes the picture. It is initialised to the picture's size, and the pixel at the
  /// top left of the rectangle becomes its pixel 0, 0.
  /// @param aPixmap to be set, with a reference that the component releases; null makes the capture fail
  virtual HRESULT GetPixmap(IGLPixmap** aPixmap) noexcept = 0;
  /// Gives the resolution factor: the scene is drawn for a window that is that much larger, so lines keep
  /// their width in pixels and everything else gets sharper. A viewer's clip rectangle stays as it is, in
  /// pixels.
  /// @param aZoom to be set. The rectangle is multiplied by its whole part: use whole factors. Below 1 the
  ///              rectangle is empty and the pixmap stays as it was; 0 makes the capture fail
  virtual HRESULT GetPixelZoom(float* aZoom) noexcept = 0;
  /// Gives the part of the window that is wanted, in window pixels before the zoom, from the window's top
  /// left. What reaches beyond the right or bottom edge is cut off. A corner outside the window, or a size
  /// below 1, makes the capture fail.
  virtual HRESULT GetRectangle(int* aX, int* aY, int* aWidth, int* aHeight) noexcept = 0;
  /// Gives the colour that the picture is cleared to in place of the context's background; alpha plays no
  /// part.
  virtual HRESULT GetBackgroundColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Called once after each attempt.
  /// @param aSuccess 1 when the pixmap holds the picture. 0 when it doesn't: there was no pixmap or no memory
  ///                 behind it, the rectangle was empty, or the surface was too large or couldn't be made
  virtual HRESULT OnData(LONG aSuccess) noexcept = 0;

 protected:
  ~IGLCapture() = default;
};
