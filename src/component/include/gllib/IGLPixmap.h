/// @file
/// GLPixmap: a true-colour image in memory, for drawing, texturing and captures. Made by hosts.

#pragma once

#include <gllib/GLTypes.h>

struct IGLContext;

/// A rectangle of pixels of red, green, blue and alpha, a byte each. Coordinates run from the top left, y
/// downward; only AccessPixmapData shows the store, whose rows run from the bottom up. A new one is empty,
/// zoom 1, 1.
///
/// Threads: any, one at a time: there is no lock. The draw thread writes into the pixmap of a running
/// capture. Draw belongs into a painter or gauge. No operation waits.
/// Results: S_OK; E_INVALIDARG when a pointer is null; what else stands at the operation. Colour operations
/// run over all pixels, whatever the clip.
struct IGLPixmap : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x4EE20F33, 0x2F46, 0x43B4, {0x83, 0x44, 0x4C, 0x25, 0x22, 0xAD, 0x59, 0x01}};

  /// Gives the pixmap a size and one colour; zoom becomes 1, 1 and the clip the whole image. The block is
  /// kept when the number of pixels is the same.
  /// @param aWidth, aHeight pixels; 1 or more
  /// @param aRGBA the colour of all pixels
  /// @return S_OK; E_GL_BADVALUE for another size, or a number of pixels or bytes that doesn't fit 32 bits:
  ///         nothing changed; E_FAIL when there is no memory: the pixmap is empty
  virtual HRESULT Initialize(int aWidth, int aHeight, GLDATA_RGBA4B aRGBA) noexcept = 0;
  /// Reads an uncompressed Windows bitmap file of 1, 4, 8, 16, 24 or 32 bits a pixel, rows in either
  /// direction. Alpha becomes 255. Channels of 16-bit files keep their 5 bits: 0 to 31. As Initialize
  /// otherwise.
  /// @param aFilename the whole Unicode name, on every platform
  /// @return S_OK; E_FAIL when the name is null, or the file can't be read, is cut short, isn't such a file
  ///         or tells impossible sizes: the image stays as it was; E_FAIL when there is no memory for the
  ///         image: the pixmap is empty
  virtual HRESULT LoadImageFile(BSTR aFilename) noexcept = 0;
  /// Fills the pixmap row by row, top row first. Only whole rows are taken, at most all; the others keep
  /// their pixels.
  /// @param aSize  pixels in aArray; below one row changes nothing
  /// @param aArray the pixels
  /// @return S_OK; E_GL_BADVALUE when the pixmap is empty
  virtual HRESULT SetPixels(int aSize, GLDATA_RGBA4B* aArray) noexcept = 0;
  /// Gives the store itself, for reading and writing: rows from the bottom up, left to right, without gaps.
  /// @param aSize  receives the number of pixels; 0 when empty
  /// @param aArray receives the first one, borrowed: good until the next Initialize or LoadImageFile, or the
  ///               pixmap's end; null when empty
  /// @return S_OK; E_GL_BADVALUE when the pixmap is empty
  virtual HRESULT AccessPixmapData(int* aSize, GLDATA_RGBA4B** aArray) noexcept = 0;
  /// @param aValue receives pixels; 0 when empty
  virtual HRESULT GetWidth(int* aValue) noexcept = 0;
  /// @param aValue receives pixels; 0 when empty
  virtual HRESULT GetHeight(int* aValue) noexcept = 0;
  /// Gives the colour of a pixel.
  /// @return S_OK; E_GL_BADSTATE when the pixmap is empty; E_GL_BADVALUE outside it
  virtual HRESULT GetPixel(int aX, int aY, GLDATA_RGBA4B* aRGBA) noexcept = 0;
  /// Sets the colour of a pixel.
  /// @return as GetPixel
  virtual HRESULT SetPixel(int aX, int aY, GLDATA_RGBA4B aRGBA) noexcept = 0;

  /// Multiplies all four channels by a factor each, cut at 255.
  /// @return S_OK; E_GL_BADSTATE when the pixmap is empty; E_GL_BADVALUE when a factor is below 0 or no
  ///         number: nothing changed
  virtual HRESULT ScaleColor(GLDATA_RGBA* aScale) noexcept = 0;
  /// Multiplies red, green and blue by a factor that depends on their value. The low 8 bits of the product
  /// are kept.
  /// @param aSize  256 or more
  /// @param aArray 256 factors, the one for value v at index v
  /// @return S_OK; E_GL_BADSTATE when the pixmap is empty or aSize is below 256
  virtual HRESULT ScaleColor256(int aSize, float* aArray) noexcept = 0;
  /// Takes red, green and blue from 255; alpha too when aInvertAlpha is non-zero.
  /// @return S_OK; E_GL_BADSTATE when the pixmap is empty
  virtual HRESULT MakeNegative(LONG aInvertAlpha) noexcept = 0;
  /// Makes each channel the pixel's mean of red, green and blue, times the share that the channel has in
  /// aRGBA. Black counts as a third each (0.333). Alpha stays.
  /// @return S_OK; E_GL_BADSTATE when the pixmap is empty
  virtual HRESULT MakeMonochrome(GLDATA_RGBA4B aRGBA) noexcept = 0;

  /// Gives how many pixels of the frame one pixel of the image takes at Draw.
  virtual HRESULT GetZoom(float* aFactorX, float* aFactorY) noexcept = 0;
  /// Sets how many pixels of the frame one pixel of the image takes at Draw. Negative factors mirror; any
  /// value is kept.
  virtual HRESULT SetZoom(float aFactorX, float aFactorY) noexcept = 0;
  /// Gives the part that Draw draws.
  /// @return S_OK; E_GL_BADSTATE when the pixmap is empty, with nothing written
  virtual HRESULT GetClip(int* aX, int* aY, int* aWidth, int* aHeight) noexcept = 0;
  /// Chooses the part that Draw draws, which must lie inside the image.
  /// @return S_OK; E_GL_BADSTATE when the pixmap is empty; E_GL_BADVALUE when it doesn't lie inside: the clip
  ///         stays as it was
  virtual HRESULT SetClip(int aX, int aY, int aWidth, int aHeight) noexcept = 0;
  /// Draws the clipped image with its lower left corner at a model point, blended by alpha. Nothing is drawn
  /// when that point is outside the view or the pixmap is empty. Blending, pixel zoom and GL's unpack
  /// parameters stay changed.
  /// @param aContext not used
  /// @param aOrigin  the model point, in the painter's present coordinates
  virtual HRESULT Draw(IGLContext* aContext, GLDATA_POINT* aOrigin) noexcept = 0;

 protected:
  ~IGLPixmap() = default;
};
