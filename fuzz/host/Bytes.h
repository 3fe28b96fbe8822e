// Bytes: reads choices and values from the input of a run. Used by one thread at a time.

#pragma once

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

class Bytes {
 public:
  explicit Bytes(std::span<const std::uint8_t> aData) noexcept : m_Data(aData) {}

  bool IsEmpty() const noexcept { return m_Data.empty(); }
  std::size_t Left() const noexcept { return m_Data.size(); }
  /// Returns the next byte; 0 at the end of the input.
  std::uint8_t Byte() noexcept {
    if (m_Data.empty()) return 0;
    const std::uint8_t byte = m_Data.front();
    m_Data = m_Data.subspan(1);
    return byte;
  }
  /// Removes up to aSize bytes from the front and returns them.
  std::span<const std::uint8_t> Take(std::size_t aSize) noexcept {
    const auto part = m_Data.first(aSize < m_Data.size() ? aSize : m_Data.size());
    m_Data = m_Data.subspan(part.size());
    return part;
  }
  bool OneIn(unsigned aCount) noexcept { return Byte() % aCount == 1; }
  /// Returns one of the values of a table.
  template <class T, std::size_t N>
  T OneOf(const T (&aValues)[N]) noexcept {
    return aValues[Byte() % N];
  }

  std::uint32_t Word() noexcept {
    std::uint32_t word = 0;
    for (int i = 0; i < 4; ++i) word = word << 8 | Byte();
    return word;
  }
  /// Returns mostly small numbers, sometimes limits of integer types, rarely an arbitrary number.
  std::int32_t Int() noexcept {
    const std::uint8_t kind = Byte();
    if (kind < 200) return kind % 100 - 10;
    constexpr std::int32_t kEdges[] = {INT32_MIN, INT32_MIN + 1, -65536, -32768, 255,           256,
                                       257,       32767,         65535,  65536,  INT32_MAX - 1, INT32_MAX};
    return kind < 240 ? kEdges[kind % std::size(kEdges)] : static_cast<std::int32_t>(Word());
  }
  /// Returns mostly numbers near 0, sometimes special values (NaN, infinities, limits), rarely arbitrary
  /// bits.
  double Real() noexcept {
    const std::uint8_t kind = Byte();
    if (kind < 200) return (kind - 100) / 20.0;
    constexpr double kEdges[] = {NAN,          INFINITY,     -INFINITY,  DBL_MAX, -DBL_MAX, DBL_MIN,
                                 DBL_TRUE_MIN, -0.0,         1e30,       -1e30,   1e-30,    180.0,
                                 90.0,         2147483648.0, 16777217.0, 1000.0};
    if (kind < 240) return kEdges[kind % std::size(kEdges)];
    const std::uint64_t bits = std::uint64_t{Word()} << 32 | Word();
    double value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
  }
  float Float() noexcept {
    const double value = Real();
    if (value > FLT_MAX) return INFINITY;
    if (value < -FLT_MAX) return -INFINITY;
    return static_cast<float>(value);
  }
  /// Returns a size in pixels: small, invalid, or too large for any memory. A valid large size would only be
  /// slow.
  int Size() noexcept {
    constexpr int kEdges[] = {0, -1, 1, 7, 8, 16, 24, 64, 255, 256, INT32_MIN, INT32_MAX};
    const std::uint8_t kind = Byte();
    return kind < 128 ? kind % 64 : kEdges[kind % std::size(kEdges)];
  }

 private:
  std::span<const std::uint8_t> m_Data;
};
