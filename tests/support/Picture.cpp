// Picture: reading, comparing and writing of pixels.

#include "support/Picture.h"

#include <gllib/IGLPixmap.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/GL.h"

namespace {

int Component(std::uint32_t aPixel, int aIndex) {
  return static_cast<int>(aPixel >> (24 - 8 * aIndex) & 0xFF);
}

}  // namespace

Picture::Picture(int aWidth, int aHeight) : m_iWidth(aWidth), m_iHeight(aHeight) {
  m_aPixels.resize(static_cast<std::size_t>(aWidth) * static_cast<std::size_t>(aHeight));
}

Picture Picture::Read(int aWidth, int aHeight) {
  Picture result(aWidth, aHeight);
  std::vector<std::uint8_t> bytes(result.m_aPixels.size() * 4);
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glPixelStorei(GL_PACK_ROW_LENGTH, 0);
  glPixelStorei(GL_PACK_SKIP_ROWS, 0);
  glPixelStorei(GL_PACK_SKIP_PIXELS, 0);
  glReadPixels(0, 0, aWidth, aHeight, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
  glPopClientAttrib();
  const std::uint8_t* next = bytes.data();
  for (int y = aHeight - 1; y >= 0; --y) {
    for (int x = 0; x < aWidth; ++x, next += 4) {
      result.Set(
          x, y,
          std::uint32_t{next[0]} << 24 | std::uint32_t{next[1]} << 16 | std::uint32_t{next[2]} << 8 | 0xFF);
    }
  }
  return result;
}

int Picture::CountOther(std::uint32_t aPixel) const {
  return static_cast<int>(
      std::ranges::count_if(m_aPixels, [&](std::uint32_t pixel) { return pixel != aPixel; }));
}

int Difference(const Picture& a, const Picture& b, int aMost) {
  if (a.Width() != b.Width() || a.Height() != b.Height())
    return std::max(a.Width() * a.Height(), b.Width() * b.Height());
  int count = 0;
  for (int y = 0; y < a.Height(); ++y) {
    for (int x = 0; x < a.Width(); ++x) {
      const auto differs = [&](int i) {
        return std::abs(Component(a.At(x, y), i) - Component(b.At(x, y), i)) > aMost;
      };
      count += differs(0) || differs(1) || differs(2) || differs(3) ? 1 : 0;
    }
  }
  return count;
}

Picture PictureOf(IGLPixmap& aPixmap) {
  int width = 0, height = 0;
  aPixmap.GetWidth(&width);
  aPixmap.GetHeight(&height);
  Picture picture(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      GLDATA_RGBA4B p{};
      aPixmap.GetPixel(x, y, &p);
      picture.Set(x, y, std::uint32_t{p.m_bRed} << 24 | p.m_bGreen << 16 | p.m_bBlue << 8 | 0xFF);
    }
  }
  return picture;
}
