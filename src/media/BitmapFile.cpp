// BitmapFile: headers, colour table and decoding of rows. Any thread; one thread per reader.

#include "media/BitmapFile.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <cstdlib>
#include <memory>

#include "media/PixelBlock.h"
#include "platform/File.h"

// Rows are decoded in 32-bit words whose bytes are red, green, blue and alpha, in this order.
static_assert(std::endian::native == std::endian::little && sizeof(GLDATA_RGBA4B) == 4);

namespace {

using Colors = std::array<std::uint32_t, 256>;

constexpr std::size_t kHeaderBytes = 54;         // both headers; the colour table follows
constexpr std::size_t kBlockBytes = 256 * 1024;  // bytes per read; fits the second-level cache
constexpr std::uint32_t kOpaque = 0xFF000000;

std::uint32_t Word16(const std::uint8_t* aBytes) noexcept {
  return aBytes[0] | std::uint32_t{aBytes[1]} << 8;
}

std::uint32_t Word32(const std::uint8_t* aBytes) noexcept {
  std::uint32_t word = 0;
  std::memcpy(&word, aBytes, sizeof(word));
  return word;
}

GLDATA_RGBA4B Pixel(std::uint32_t aWord) noexcept { return std::bit_cast<GLDATA_RGBA4B>(aWord); }

/// Returns an opaque pixel from blue, green and red in the low three bytes of a word.
constexpr std::uint32_t OpaqueFromBGR(std::uint32_t aWord) noexcept {
  const std::uint32_t turned =  // compiles to one instruction, unlike a mask per byte
      aWord >> 24 | (aWord >> 8 & 0xFF00) | (aWord << 8 & 0xFF0000) | aWord << 24;
  return turned >> 8 | kOpaque;
}

// Row decoders, one per depth. They return false if a pixel's colour is not in the colour table.

bool DecodeRow1(const std::uint8_t* aSource, int aWidth, const Colors& aColors,
                GLDATA_RGBA4B* aRow) noexcept {
  std::uint32_t all = kOpaque;
  for (int x = 0; x < aWidth; ++x) {
    const std::uint32_t color = aColors[aSource[x >> 3] >> (7 - (x & 7)) & 1];
    all &= color;
    aRow[x] = Pixel(color);
  }
  return all >= kOpaque;
}

bool DecodeRow4(const std::uint8_t* aSource, int aWidth, const Colors& aColors,
                GLDATA_RGBA4B* aRow) noexcept {
  std::uint32_t all = kOpaque;
  for (int x = 0; x < aWidth; ++x) {
    const std::uint32_t color = aColors[aSource[x >> 1] >> ((x & 1) != 0 ? 0 : 4) & 15];
    all &= color;
    aRow[x] = Pixel(color);
  }
  return all >= kOpaque;
}

bool DecodeRow8(const std::uint8_t* aSource, int aWidth, const Colors& aColors,
                GLDATA_RGBA4B* aRow) noexcept {
  std::uint32_t all = kOpaque;
  for (int x = 0; x < aWidth; ++x) {
    const std::uint32_t color = aColors[aSource[x]];
    all &= color;
    aRow[x] = Pixel(color);
  }
  return all >= kOpaque;
}

bool DecodeRow16(const std::uint8_t* aSource, int aWidth, const Colors&, GLDATA_RGBA4B* aRow) noexcept {
  for (int x = 0; x < aWidth; ++x) {
    const std::uint32_t word = Word16(aSource + 2 * std::size_t(x));
    aRow[x] = Pixel((word >> 10 & 31) | (word >> 5 & 31) << 8 | (word & 31) << 16 | kOpaque);
  }
  return true;
}

bool DecodeRow24(const std::uint8_t* aSource, int aWidth, const Colors&, GLDATA_RGBA4B* aRow) noexcept {
  for (int x = 0; x < aWidth; ++x, aSource += 3) aRow[x] = {aSource[2], aSource[1], aSource[0], 255};
  return true;
}

bool DecodeRow32(const std::uint8_t* aSource, int aWidth, const Colors&, GLDATA_RGBA4B* aRow) noexcept {
  for (int x = 0; x < aWidth; ++x) aRow[x] = Pixel(OpaqueFromBGR(Word32(aSource + 4 * std::size_t(x))));
  return true;
}

using RowDecoder = bool (*)(const std::uint8_t*, int, const Colors&, GLDATA_RGBA4B*) noexcept;

/// @return null for an unsupported depth
RowDecoder DecoderOf(unsigned aBitCount) noexcept {
  switch (aBitCount) {
    case 1:
      return DecodeRow1;
    case 4:
      return DecodeRow4;
    case 8:
      return DecodeRow8;
    case 16:
      return DecodeRow16;
    case 24:
      return DecodeRow24;
    case 32:
      return DecodeRow32;
    default:
      return nullptr;
  }
}

}  // namespace

bool BitmapFile::ReadHeader() noexcept {
  const std::uint64_t fileBytes = FileSize(m_pFile);
  std::uint8_t header[kHeaderBytes];
  if (!SeekFile(m_pFile, 0) || std::fread(header, kHeaderBytes, 1, m_pFile) != 1) return false;
  if (header[0] != 'B' || header[1] != 'M') return false;
  const std::uint64_t offset = Word32(header + 10);
  if (offset < kHeaderBytes || offset > fileBytes) return false;

  m_iWidth = static_cast<std::int32_t>(Word32(header + 18));
  const auto height = static_cast<std::int32_t>(Word32(header + 22));
  m_uBitCount = Word16(header + 28);
  if (m_iWidth < 1 || height == 0 || height == INT_MIN || m_uBitCount == 0) return false;
  m_bTopDown = height < 0;
  m_iHeight = m_bTopDown ? -height : height;
  if (std::int64_t{m_iWidth} * m_iHeight > kMostPixels) return false;

  const std::uint64_t rowBytes = (std::uint64_t{m_uBitCount} * static_cast<unsigned>(m_iWidth) + 31) / 32 * 4;
  // Divides, since the product of rows and bytes may overflow.
  const std::uint64_t mostRows = std::min<std::uint64_t>(fileBytes - offset, UINT32_MAX) / rowBytes;
  if (mostRows < static_cast<unsigned>(m_iHeight)) return false;
  m_uRowBytes = static_cast<std::size_t>(rowBytes);
  return ReadColorTable(offset) && SeekFile(m_pFile, offset);
}

bool BitmapFile::ReadColorTable(std::uint64_t aOffset) noexcept {
  std::uint8_t table[4 * 256] = {};
  const auto bytes = static_cast<std::size_t>(std::min<std::uint64_t>(aOffset - kHeaderBytes, 4 * 256));
  if (bytes != 0 && std::fread(table, bytes, 1, m_pFile) != 1) return false;
  const std::size_t count = (bytes + 1) / 4;  // the fourth byte of an entry is unused and may be missing
  for (std::size_t i = 0; i < count; ++i) m_auColors[i] = OpaqueFromBGR(Word32(table + 4 * i));
  return true;
}

const char* BitmapFile::ReadPixels(GLDATA_RGBA4B* aPixels) noexcept {
  const auto width = static_cast<std::size_t>(m_iWidth);
  const auto height = static_cast<std::size_t>(m_iHeight);
  const RowDecoder decode = DecoderOf(m_uBitCount);
  if (decode == nullptr) {
    std::fill_n(aPixels, width * height, Pixel(kOpaque));
    return nullptr;
  }
  const std::size_t blockRows = std::min(height, std::max<std::size_t>(1, kBlockBytes / m_uRowBytes));
  const HeapBlock<std::uint8_t> block(static_cast<std::uint8_t*>(std::malloc(blockRows * m_uRowBytes)));
  if (block == nullptr) return "not enough memory for its rows";
  for (std::size_t row = 0; row < height;) {
    const std::size_t rows = std::min(blockRows, height - row);
    if (std::fread(block.get(), m_uRowBytes, rows, m_pFile) != rows) return "its pixels cannot be read";
    for (const std::uint8_t* source = block.get(); source != block.get() + rows * m_uRowBytes;
         source += m_uRowBytes, ++row) {
      const std::size_t target = m_bTopDown ? height - 1 - row : row;
      if (!decode(source, m_iWidth, m_auColors, aPixels + target * width))
        return "a pixel indexes past the colour table";
    }
  }
  return nullptr;
}
