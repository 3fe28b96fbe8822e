// Picture: reads and writes PNG files through stb, in memory.

#include "shared/Picture.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>

#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#include <stb/stb_image.h>
#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

namespace {

constexpr int kBytesPerPixel = 4;
// stb counts bytes in int, also those of the encoded file.
constexpr std::size_t kMostPixels = std::numeric_limits<int>::max() / 8;

}  // namespace

bool WritePng(const Picture& aPicture, const std::string& aPath) {
  const std::size_t count = aPicture.pixels.size() / kBytesPerPixel;
  if (count == 0 || count > kMostPixels) return false;
  // The alpha of a window's picture has no meaning, so the file has none.
  std::vector<std::uint8_t> rows;
  rows.reserve(count * 3);
  for (std::size_t i = 0; i < aPicture.pixels.size(); i += kBytesPerPixel) {
    rows.insert(rows.end(), &aPicture.pixels[i], &aPicture.pixels[i] + 3);
  }
  const int stride = 3 * aPicture.width;
  const std::uint8_t* top = &rows[rows.size() - static_cast<std::size_t>(stride)];
  std::ofstream file(aPath, std::ios::binary);
  const auto write = [](void* aFile, void* aBytes, int aSize) {
    static_cast<std::ofstream*>(aFile)->write(static_cast<const char*>(aBytes), aSize);
  };
  return stbi_write_png_to_func(write, &file, aPicture.width, aPicture.height, 3, top, -stride) != 0 &&
         file.flush().good();
}

bool ReadPng(const std::string& aPath, Picture& aPicture) {
  std::ifstream file(aPath, std::ios::binary);
  const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  return ReadPng(bytes.data(), bytes.size(), aPicture);
}

bool ReadPng(const void* aBytes, std::size_t aSize, Picture& aPicture) {
  if (aSize > static_cast<std::size_t>(std::numeric_limits<int>::max())) return false;
  stbi_set_flip_vertically_on_load_thread(1);
  int width = 0, height = 0, channels = 0;
  const std::unique_ptr<stbi_uc, void (*)(void*)> pixels(
      stbi_load_from_memory(static_cast<const stbi_uc*>(aBytes), static_cast<int>(aSize), &width, &height,
                            &channels, kBytesPerPixel),
      stbi_image_free);
  if (!pixels) return false;
  aPicture = Picture(width, height);
  std::copy_n(pixels.get(), aPicture.pixels.size(), aPicture.pixels.begin());
  return true;
}
