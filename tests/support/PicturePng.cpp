// Picture: writing of PNG files, by stb.

#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

#include "support/Picture.h"

bool Picture::WritePng(const std::string& aPath) const {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(m_aPixels.size() * 4);
  for (const std::uint32_t pixel : m_aPixels) {
    for (const int shift : {24, 16, 8, 0}) bytes.push_back(static_cast<std::uint8_t>(pixel >> shift));
  }
  return stbi_write_png(aPath.c_str(), m_iWidth, m_iHeight, 4, bytes.data(), 4 * m_iWidth) != 0;
}
