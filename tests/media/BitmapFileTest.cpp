// The reader of bitmap files. The tests build files field by field; PixmapTest loads the files of
// fuzz/corpus. No display.

#include "media/BitmapFile.h"

#include <optional>

#include "support/BitmapBytes.h"
#include "support/Test.h"

namespace {

using Pixels = std::vector<std::uint32_t>;  // 0xRRGGBBAA

/// Returns the reader's result: nothing if it refuses the file.
std::optional<Pixels> Read(const Bytes& aFile) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), std::fclose);
  std::fwrite(aFile.data(), 1, aFile.size(), file.get());
  std::rewind(file.get());
  BitmapFile image(file.get());
  if (!image.ReadHeader()) return std::nullopt;
  std::vector<GLDATA_RGBA4B> store(static_cast<std::size_t>(image.Width() * image.Height()));
  if (image.ReadPixels(store.data()) != nullptr) return std::nullopt;
  Pixels pixels;
  for (const auto& [red, green, blue, alpha] : store)
    pixels.push_back(static_cast<std::uint32_t>(red << 24 | green << 16 | blue << 8 | alpha));
  return pixels;
}

const Bytes kTable = {0, 0, 0, 7, 3, 2, 1, 7, 6, 5, 4, 7, 9, 8, 7, 7};
constexpr std::uint32_t k0 = 0x000000FF, k1 = 0x010203FF, k2 = 0x040506FF, k3 = 0x070809FF;

struct Depth {
  BitmapBytes m_File;
  Pixels m_Expected;
};

// Two rows each, of odd width. Padding that is read by mistake is a colour, or an index past the table.
const Depth kDepths[] = {
    {{10, 2, 1, kTable, {0xA0, 0x7F, 9, 9, 0x01, 0xBF, 9, 9}},
     {k1, k0, k1, k0, k0, k0, k0, k0, k0, k1, k0, k0, k0, k0, k0, k0, k0, k1, k1, k0}},
    {{3, 2, 4, kTable, {0x12, 0x3F, 255, 255, 0x01, 0x2F, 255, 255}}, {k1, k2, k3, k0, k1, k2}},
    {{3, 2, 8, kTable, {3, 0, 1, 255, 2, 2, 0, 4}}, {k3, k0, k1, k2, k2, k0}},
    {{1, 2, 16, {}, {0xFF, 0x83, 9, 9, 0x00, 0x7C, 9, 9}}, {0x001F1FFF, 0x1F0000FF}},
    {{5, 2, 24, {}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 77,
                     0, 0, 9, 0, 9, 0, 9, 0, 0, 0,  1,  1,  2,  2,  2,  77}},
     {0x030201FF, 0x060504FF, 0x090807FF, 0x0C0B0AFF, 0x0F0E0DFF, 0x090000FF, 0x000900FF, 0x000009FF,
      0x010100FF, 0x020202FF}},
    {{1, 2, 32, {}, {1, 2, 3, 0, 4, 5, 6, 128}}, {0x030201FF, 0x060504FF}},
    {{2, 2, 2, {}, {255, 9, 9, 9, 255, 9, 9, 9}}, {k0, k0, k0, k0}},
};

}  // namespace

TEST(BitmapFile, ReadsEachDepthInBothDirections) {
  for (auto [file, expected] : kDepths) {
    EXPECT_EQ(Read(file.File()), expected) << file.m_uBitCount << " bits";
    file.m_iHeight = -2;
    std::rotate(expected.begin(), expected.begin() + file.m_iWidth, expected.end());
    EXPECT_EQ(Read(file.File()), expected) << file.m_uBitCount << " bits, top down";
  }
}

TEST(BitmapFile, RefusesATruncatedFile) {
  for (const Depth& depth : kDepths) {
    Bytes file = depth.m_File.File();
    while (file.size() > 1) {
      file.pop_back();
      EXPECT_EQ(Read(file), std::nullopt) << depth.m_File.m_uBitCount << " bits, " << file.size() << " bytes";
    }
  }
}

TEST(BitmapFile, RefusesIndicesPastItsColorTable) {
  const auto read = [](std::uint16_t aBits, std::uint8_t aByte, int aTableBytes) {
    return Read(
        BitmapBytes{1, 1, aBits, {kTable.begin(), kTable.begin() + aTableBytes}, {aByte, 0, 0, 0}}.File());
  };
  EXPECT_EQ(read(8, 3, 16), Pixels{k3});
  EXPECT_EQ(read(8, 3, 15), Pixels{k3}) << "the missing byte of the table is not used";
  EXPECT_EQ(read(8, 3, 14), std::nullopt);
  EXPECT_EQ(read(8, 4, 16), std::nullopt);
  EXPECT_EQ(read(4, 0x40, 16), std::nullopt);
  EXPECT_EQ(read(1, 0x80, 4), std::nullopt);
}

TEST(BitmapFile, ReadsAcrossManyBlocks) {
  constexpr unsigned kWidth = 1001, kHeight = 999;  // the blocks that the reader reads end within rows
  BitmapBytes bytes{kWidth, -int{kHeight}, 24, {}, Bytes(3004 * kHeight)};
  const auto value = [](std::size_t i) { return static_cast<std::uint8_t>(i * 2654435761u >> 24); };
  for (std::size_t i = 0; i < bytes.m_Pixels.size(); ++i) bytes.m_Pixels[i] = value(i);
  const Pixels pixels = Read(bytes.File()).value();
  for (unsigned i = 0; i < kWidth * kHeight; ++i) {
    const std::size_t source = 3004 * (kHeight - 1 - i / kWidth) + 3 * (i % kWidth);
    const unsigned blue = value(source), green = value(source + 1), red = value(source + 2);
    ASSERT_EQ(pixels[i], red << 24 | green << 16 | blue << 8 | 255) << "pixel " << i;
  }
}
