// Picture: drawn pixels that tests compare. One thread at a time.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct IGLPixmap;

/// A picture of RGBA pixels. The first row is the top row.
class Picture {
 public:
  Picture() = default;
  Picture(int aWidth, int aHeight);

  /// Reads the lower left part of the current read buffer. Pixels become opaque, because the alpha of a
  /// window depends on its format. Requires a current rendering context.
  static Picture Read(int aWidth, int aHeight);

  int Width() const { return m_iWidth; }
  int Height() const { return m_iHeight; }
  /// 0xRRGGBBAA
  std::uint32_t At(int aX, int aY) const { return m_aPixels[Index(aX, aY)]; }
  void Set(int aX, int aY, std::uint32_t aPixel) { m_aPixels[Index(aX, aY)] = aPixel; }
  /// Returns the number of pixels that differ from a colour.
  int CountOther(std::uint32_t aPixel) const;

  friend bool operator==(const Picture&, const Picture&) = default;

 private:
  std::size_t Index(int aX, int aY) const {
    return static_cast<std::size_t>(aY) * static_cast<std::size_t>(m_iWidth) + static_cast<std::size_t>(aX);
  }

  int m_iWidth = 0;
  int m_iHeight = 0;
  std::vector<std::uint32_t> m_aPixels;
};

/// Returns the number of pixels in which a component differs by more than a bound; all pixels if the sizes
/// differ.
int Difference(const Picture& a, const Picture& b, int aMost = 0);

/// Returns the image of a pixmap, as opaque pixels.
Picture PictureOf(IGLPixmap& aPixmap);
