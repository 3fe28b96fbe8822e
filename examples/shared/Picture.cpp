#include "shared/Picture.h"

#include <png.h>

namespace {

constexpr int kBytesPerPixel = 4;

png_image Describe(const Picture& aPicture) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(aPicture.width);
  image.height = static_cast<png_uint_32>(aPicture.height);
  image.format = PNG_FORMAT_RGB;
  return image;
}

/// Reads the pixels once the header has been read.
bool Finish(png_image& aImage, Picture& aPicture) {
  aImage.format = PNG_FORMAT_RGBA;
  aPicture = Picture(static_cast<int>(aImage.width), static_cast<int>(aImage.height));
  return png_image_finish_read(&aImage, nullptr, aPicture.pixels.data(), -kBytesPerPixel * aPicture.width,
                               nullptr) != 0;
}

}  // namespace

bool WritePng(const Picture& aPicture, const std::string& aPath) {
  // What a window shows has no alpha, so the file has none either.
  std::vector<std::uint8_t> rows;
  rows.reserve(aPicture.pixels.size() / kBytesPerPixel * 3);
  for (std::size_t i = 0; i < aPicture.pixels.size(); i += kBytesPerPixel) {
    rows.insert(rows.end(), &aPicture.pixels[i], &aPicture.pixels[i] + 3);
  }
  png_image image = Describe(aPicture);
  // A negative stride tells that the first row in memory is the lowest.
  return png_image_write_to_file(&image, aPath.c_str(), 0, rows.data(), -3 * aPicture.width, nullptr) != 0;
}

bool ReadPng(const std::string& aPath, Picture& aPicture) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  return png_image_begin_read_from_file(&image, aPath.c_str()) != 0 && Finish(image, aPicture);
}

bool ReadPng(const void* aBytes, std::size_t aSize, Picture& aPicture) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  return png_image_begin_read_from_memory(&image, aBytes, aSize) != 0 && Finish(image, aPicture);
}
