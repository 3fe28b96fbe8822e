// Picture: writing of PNG files, by libpng.

#include <png.h>

#include "support/Picture.h"

bool Picture::WritePng(const std::string& aPath) const {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(m_aPixels.size() * 4);
  for (const std::uint32_t pixel : m_aPixels) {
    for (const int shift : {24, 16, 8, 0}) bytes.push_back(static_cast<std::uint8_t>(pixel >> shift));
  }
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(m_iWidth);
  image.height = static_cast<png_uint_32>(m_iHeight);
  image.format = PNG_FORMAT_RGBA;
  return png_image_write_to_file(&image, aPath.c_str(), 0, bytes.data(), 0, nullptr) != 0;
}
