// Fuzz target for the bitmap file reader. An accepted file must yield an image in which every pixel is
// written and opaque. One thread.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "media/BitmapFile.h"
#include "media/PixelBlock.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* aData, std::size_t aSize) {
  if (aSize == 0) return 0;  // fmemopen rejects an empty buffer
  std::vector<std::uint8_t> bytes(aData, aData + aSize);
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(fmemopen(bytes.data(), aSize, "rb"),
                                                             std::fclose);
  BitmapFile image(file.get());
  if (!image.ReadHeader()) return 0;
  const auto count = static_cast<std::size_t>(image.Width()) * static_cast<std::size_t>(image.Height());
  if (count > 8 * aSize) std::abort();  // every depth has at least one bit per pixel
  const PixelBlock pixels = NewPixels(count);
  std::fill_n(pixels.get(), count, GLDATA_RGBA4B{});
  if (image.ReadPixels(pixels.get()) != nullptr) return 0;
  const auto opaque = [](const GLDATA_RGBA4B& aPixel) { return aPixel.m_bAlpha == 255; };
  if (!std::all_of(pixels.get(), pixels.get() + count, opaque)) std::abort();
  return 0;
}
