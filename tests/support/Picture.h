// Picture: what was drawn, as pixels that tests compare. Belongs to whoever holds it.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct IGLPixmap;

/// A picture of RGBA pixels, its first row the top one.
class Picture {
 public:
  Picture() = default;
  Picture(int aWidth, int aHeight);

  /// Reads the colours of the lower left part of the current read buffer, as opaque ones: windows have alpha
  /// or none, as their format has. On the thread where the rendering context is current.
  static Picture Read(int aWidth, int aHeight);

  int Width() const { return m_iWidth; }
  int Height() const { return m_iHeight; }
  /// Red in the highest byte, alpha in the lowest.
  std::uint32_t At(int aX, int aY) const { return m_aPixels[Index(aX, aY)]; }
  void Set(int aX, int aY, std::uint32_t aPixel) { m_aPixels[Index(aX, aY)] = aPixel; }
  /// How many pixels differ from this one.
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

/// Pixels in which two pictures differ, in any component by more than a bound; all when the sizes differ.
int Difference(const Picture& a, const Picture& b, int aMost = 0);

/// The image of a pixmap, as opaque pixels.
Picture PictureOf(IGLPixmap& aPixmap);
