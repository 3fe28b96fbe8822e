// BitmapBytes: a bitmap file, built field by field, so that a test can damage each field.

#pragma once

#include <cstdint>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

/// The fields of a file that readers use, and the data after them.
struct BitmapBytes {
  std::int32_t m_iWidth = 1;
  std::int32_t m_iHeight = 1;
  std::uint16_t m_uBitCount = 24;
  Bytes m_Table;  ///< four bytes per colour: blue, green, red, unused
  Bytes m_Pixels;

  Bytes File() const {
    Bytes file;
    file.reserve(54 + m_Table.size() + m_Pixels.size());
    file.resize(54);
    const auto put = [&file](std::size_t aPlace, std::size_t aValue, int aCount) {
      for (int i = 0; i < aCount; ++i) file[aPlace++] = static_cast<std::uint8_t>(aValue >> 8 * i);
    };
    put(0, 0x4D42, 2);
    put(2, 54 + m_Table.size() + m_Pixels.size(), 4);
    put(10, 54 + m_Table.size(), 4);
    put(14, 40, 4);
    put(18, static_cast<std::uint32_t>(m_iWidth), 4);
    put(22, static_cast<std::uint32_t>(m_iHeight), 4);
    put(26, 1, 2);
    put(28, m_uBitCount, 2);
    file.insert(file.end(), m_Table.begin(), m_Table.end());
    file.insert(file.end(), m_Pixels.begin(), m_Pixels.end());
    return file;
  }
};
