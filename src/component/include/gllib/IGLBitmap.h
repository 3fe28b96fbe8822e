/// @file
/// GLBitmap: a one-bit image with one colour, for markers that keep their size on the screen. Hosts create
/// bitmaps.

#pragma once

#include <gllib/GLTypes.h>

struct IGLContext;

/// Set bits are drawn in the bitmap's colour; clear bits draw nothing. The origin of coordinates is the top
/// left, y points down. A new bitmap is empty and white.
///
/// Threads: any, but one at a time, because there is no lock. Call Draw in a painter or gauge only; painters
/// of several contexts may call it at the same time. No operation blocks.
/// Results: S_OK; E_INVALIDARG when a pointer is null; other results are documented at the operation.
struct IGLBitmap : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x8885BE1C, 0xF7D8, 0x4D87, {0x95, 0x64, 0x42, 0x01, 0x82, 0x4F, 0x20, 0xD3}};

  /// Sets the size, and all bits to one value. The colour does not change.
  /// @param aWidth  pixels; a positive multiple of 8
  /// @param aHeight pixels; at least 1
  /// @param aOpaque non-zero sets all bits, zero clears them
  /// @return S_OK; E_GL_BADVALUE for any other size, or if the bits of a row or all bytes do not fit 32 bits
  ///         (nothing changes); E_FAIL if memory is short (the bitmap is empty)
  virtual HRESULT Initialize(int aWidth, int aHeight, LONG aOpaque) noexcept = 0;
  /// Sets the bits from rows of width / 8 bytes without padding, top row first, the highest bit leftmost. A
  /// short array sets the top part; extra bytes are not read.
  /// @param aSize  bytes; below 1 changes nothing
  /// @param aArray null changes nothing and returns S_OK
  /// @return S_OK; E_GL_BADSTATE if the bitmap is empty
  virtual HRESULT SetPixels(int aSize, unsigned char* aArray) noexcept = 0;
  /// Returns whether a bit is set.
  /// @param aX, aY  its position
  /// @param aOpaque receives 1 or 0
  /// @return S_OK; E_GL_BADSTATE if the bitmap is empty; E_GL_BADVALUE outside it
  virtual HRESULT GetPixel(int aX, int aY, LONG* aOpaque) noexcept = 0;
  /// Sets or clears a bit.
  /// @param aX, aY  its position
  /// @param aOpaque non-zero sets the bit, zero clears it
  /// @return as GetPixel
  virtual HRESULT SetPixel(int aX, int aY, LONG aOpaque) noexcept = 0;

  /// Returns the colour of set bits.
  virtual HRESULT GetColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Sets the colour of set bits. Each component is clamped to 0 to 1; alpha below 1 blends.
  virtual HRESULT SetColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Returns the width.
  /// @param aValue receives pixels; 0 if the bitmap is empty
  virtual HRESULT GetWidth(int* aValue) noexcept = 0;
  /// Returns the height.
  /// @param aValue receives pixels; 0 if the bitmap is empty
  virtual HRESULT GetHeight(int* aValue) noexcept = 0;

  /// Draws the bitmap with one of its pixels at a model point. Draws nothing if that point is outside the
  /// view or the bitmap is empty. The current colour, GL's unpack parameters and, if alpha is below 1,
  /// blending remain changed.
  /// @param aContext not used
  /// @param aOrigin  the model point, in the painter's current coordinates
  /// @param aOffsetX, aOffsetY the pixel at that point, counted from the bitmap's lower left corner
  virtual HRESULT Draw(IGLContext* aContext, GLDATA_POINT* aOrigin, int aOffsetX, int aOffsetY) noexcept = 0;

 protected:
  ~IGLBitmap() = default;
};
