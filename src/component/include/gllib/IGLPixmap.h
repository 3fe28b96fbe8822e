/// @file
/// GLPixmap: a true-colour image in memory, for drawing, texturing and captures. Hosts create pixmaps.

#pragma once

#include <gllib/GLTypes.h>

struct IGLContext;

/// A rectangle of pixels of red, green, blue and alpha, one byte each. The origin of coordinates is the top
/// left, y points down. Only AccessPixmapData returns the rows from the bottom up, as they are in memory. A
/// new pixmap is empty and has the zoom 1, 1.
///
/// Threads: any, but one at a time, because there is no lock. The draw thread writes into the pixmap of a
/// running capture. Call Draw in a painter or gauge only; painters of several contexts may call it, or draw
/// textures of the pixmap, at the same time. No operation blocks.
/// Results: S_OK; E_INVALIDARG when a pointer is null; other results are documented at the operation. Colour
/// operations change all pixels and ignore the clip.
struct IGLPixmap : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x4EE20F33, 0x2F46, 0x43B4, {0x83, 0x44, 0x4C, 0x25, 0x22, 0xAD, 0x59, 0x01}};

  /// Sets the size, and all pixels to one colour. The zoom becomes 1, 1 and the clip the whole image. The
  /// memory block is kept if the number of pixels is the same.
  /// @param aWidth, aHeight pixels; at least 1
  /// @param aRGBA the colour of all pixels
  /// @return S_OK; E_GL_BADVALUE if a size is below 1, or the number of pixels or bytes does not fit 32 bits
  ///         (nothing changes); E_FAIL if memory is short (the pixmap is empty)
  virtual HRESULT Initialize(int aWidth, int aHeight, GLDATA_RGBA4B aRGBA) noexcept = 0;
  /// Reads an uncompressed Windows bitmap file of 1, 4, 8, 16, 24 or 32 bits per pixel, with rows in either
  /// direction. Alpha becomes 255. Channels of 16-bit files keep their 5-bit values, 0 to 31. Zoom and clip
  /// as at Initialize; the pixels get a new memory block. Other depths make all pixels black. Compression is
  /// not detected: the bytes are read as uncompressed pixels, and too few bytes are a failure.
  /// @param aFilename the file name in Unicode, on every platform
  /// @return S_OK; E_FAIL if the name is null, or the file cannot be read, is not a bitmap file, is truncated
  ///         or has invalid sizes or colour indexes (the image does not change); E_FAIL if memory for the
  ///         image is short (the pixmap is empty)
  virtual HRESULT LoadImageFile(BSTR aFilename) noexcept = 0;
  /// Sets the pixels row by row, top row first. Only whole rows are copied, and no more than the height; the
  /// other rows do not change.
  /// @param aSize  pixels in aArray; below one row changes nothing
  /// @param aArray the pixels
  /// @return S_OK; E_GL_BADVALUE if the pixmap is empty
  virtual HRESULT SetPixels(int aSize, GLDATA_RGBA4B* aArray) noexcept = 0;
  /// Returns the pixel memory itself, for reading and writing: rows from the bottom up, left to right,
  /// without gaps.
  /// @param aSize  receives the number of pixels; 0 if the pixmap is empty
  /// @param aArray receives the first pixel, borrowed: valid until the next Initialize or LoadImageFile, or
  ///               the end of the pixmap; null if the pixmap is empty
  /// @return S_OK; E_GL_BADVALUE if the pixmap is empty
  virtual HRESULT AccessPixmapData(int* aSize, GLDATA_RGBA4B** aArray) noexcept = 0;
  /// Returns the width.
  /// @param aValue receives pixels; 0 if the pixmap is empty
  virtual HRESULT GetWidth(int* aValue) noexcept = 0;
  /// Returns the height.
  /// @param aValue receives pixels; 0 if the pixmap is empty
  virtual HRESULT GetHeight(int* aValue) noexcept = 0;
  /// Returns the colour of a pixel.
  /// @return S_OK; E_GL_BADSTATE if the pixmap is empty; E_GL_BADVALUE outside it
  virtual HRESULT GetPixel(int aX, int aY, GLDATA_RGBA4B* aRGBA) noexcept = 0;
  /// Sets the colour of a pixel.
  /// @return as GetPixel
  virtual HRESULT SetPixel(int aX, int aY, GLDATA_RGBA4B aRGBA) noexcept = 0;

  /// Multiplies each of the four channels by its factor and clamps it to 255.
  /// @return S_OK; E_GL_BADSTATE if the pixmap is empty; E_GL_BADVALUE if a factor is below 0 or NaN (nothing
  ///         changes)
  virtual HRESULT ScaleColor(GLDATA_RGBA* aScale) noexcept = 0;
  /// Multiplies red, green and blue by a factor that depends on their value. The pixel keeps the low 8 bits
  /// of the product.
  /// @param aSize  at least 256
  /// @param aArray 256 factors; the factor for value v is at index v
  /// @return S_OK; E_GL_BADSTATE if the pixmap is empty or aSize is below 256
  virtual HRESULT ScaleColor256(int aSize, float* aArray) noexcept = 0;
  /// Subtracts red, green and blue from 255, and alpha too if aInvertAlpha is non-zero.
  /// @return S_OK; E_GL_BADSTATE if the pixmap is empty
  virtual HRESULT MakeNegative(LONG aInvertAlpha) noexcept = 0;
  /// Sets each channel to the pixel's mean of red, green and blue, multiplied by the share of that channel in
  /// aRGBA. For black each share is a third (0.333). Alpha does not change.
  /// @return S_OK; E_GL_BADSTATE if the pixmap is empty
  virtual HRESULT MakeMonochrome(GLDATA_RGBA4B aRGBA) noexcept = 0;

  /// Returns the size that Draw gives to one pixel of the image, in pixels of the frame.
  virtual HRESULT GetZoom(float* aFactorX, float* aFactorY) noexcept = 0;
  /// Sets the size that Draw gives to one pixel of the image, in pixels of the frame. Negative factors
  /// mirror; any value is accepted.
  virtual HRESULT SetZoom(float aFactorX, float aFactorY) noexcept = 0;
  /// Returns the part that Draw draws.
  /// @return S_OK; E_GL_BADSTATE if the pixmap is empty (nothing is written)
  virtual HRESULT GetClip(int* aX, int* aY, int* aWidth, int* aHeight) noexcept = 0;
  /// Sets the part that Draw draws. It must be inside the image.
  /// @return S_OK; E_GL_BADSTATE if the pixmap is empty; E_GL_BADVALUE if the part is not inside (nothing
  ///         changes)
  virtual HRESULT SetClip(int aX, int aY, int aWidth, int aHeight) noexcept = 0;
  /// Draws the clipped image with its lower left corner at a model point, blended by alpha. Draws nothing if
  /// that point is outside the view or the pixmap is empty. Blending, pixel zoom and GL's unpack parameters
  /// remain changed.
  /// @param aContext not used
  /// @param aOrigin  the model point, in the painter's current coordinates
  virtual HRESULT Draw(IGLContext* aContext, GLDATA_POINT* aOrigin) noexcept = 0;

 protected:
  ~IGLPixmap() = default;
};
