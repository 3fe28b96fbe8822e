/// @file
/// GLBitmap: a one-bit image with one colour, for markers that keep their size on the screen. Made by hosts.

#pragma once

#include <gllib/GLTypes.h>

struct IGLContext;

/// Set bits are painted in the bitmap's colour, clear bits leave the frame alone. Coordinates run from the
/// top left, y downward. A new one is empty and white.
///
/// Threads: any, one at a time: there is no lock. Draw belongs into a painter or gauge. No operation waits.
/// Results: S_OK; E_INVALIDARG when a pointer is null; what else stands at the operation.
struct IGLBitmap : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x8885BE1C, 0xF7D8, 0x4D87, {0x95, 0x64, 0x42, 0x01, 0x82, 0x4F, 0x20, 0xD3}};

  /// Gives the bitmap a size, and all bits one value. The colour stays.
  /// @param aWidth  pixels; a positive multiple of 8
  /// @param aHeight pixels; 1 or more
  /// @param aOpaque non-zero sets all bits, zero clears them
  /// @return S_OK; E_GL_BADVALUE for another size or one whose bytes don't fit 32 bits: nothing changed;
  ///         E_FAIL when there is no memory: the bitmap is empty
  virtual HRESULT Initialize(int aWidth, int aHeight, LONG aOpaque) noexcept = 0;
  /// Fills the bitmap from rows of width / 8 bytes without padding, top row first, the highest bit leftmost.
  /// A short array fills the top part, and what is too long isn't read.
  /// @param aSize  bytes; below 1 changes nothing
  /// @param aArray null changes nothing, which is S_OK
  /// @return S_OK; E_GL_BADSTATE when the bitmap is empty
  virtual HRESULT SetPixels(int aSize, unsigned char* aArray) noexcept = 0;
  /// Tells whether a bit is set.
  /// @param aX, aY  its place
  /// @param aOpaque receives 1 or 0
  /// @return S_OK; E_GL_BADSTATE when the bitmap is empty; E_GL_BADVALUE outside it
  virtual HRESULT GetPixel(int aX, int aY, LONG* aOpaque) noexcept = 0;
  /// Sets or clears a bit.
  /// @param aX, aY  its place
  /// @param aOpaque non-zero sets the bit, zero clears it
  /// @return as GetPixel
  virtual HRESULT SetPixel(int aX, int aY, LONG aOpaque) noexcept = 0;

  /// Gives the colour of set bits.
  virtual HRESULT GetColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Sets the colour of set bits, each component cut to 0 to 1; alpha below 1 blends.
  virtual HRESULT SetColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// @param aValue receives pixels; 0 when empty
  virtual HRESULT GetWidth(int* aValue) noexcept = 0;
  /// @param aValue receives pixels; 0 when empty
  virtual HRESULT GetHeight(int* aValue) noexcept = 0;

  /// Draws the bitmap so that one of its pixels lands on a model point. Nothing is drawn when that point is
  /// outside the view or the bitmap is empty. The current colour and GL's unpack parameters stay changed.
  /// @param aContext not used
  /// @param aOrigin  the model point, in the painter's present coordinates
  /// @param aOffsetX, aOffsetY the pixel that lands there, from the bitmap's lower left corner
  virtual HRESULT Draw(IGLContext* aContext, GLDATA_POINT* aOrigin, int aOffsetX, int aOffsetY) noexcept = 0;

 protected:
  ~IGLBitmap() = default;
};
