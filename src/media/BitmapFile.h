// BitmapFile: reads device-independent bitmap files. Files are untrusted: every size is compared with the
// size of the file before memory is allocated. No GL. Any thread; one thread per reader.

#pragma once

#include <gllib/GLTypes.h>

#include <array>
#include <cstdio>

/// A bitmap file while it is read. Call ReadHeader first, and ReadPixels if it succeeds.
class BitmapFile {
 public:
  /// @param aFile open for reading; borrowed
  explicit BitmapFile(std::FILE* aFile) noexcept : m_pFile(aFile) {}

  /// Reads everything before the pixels and checks that the file is long enough to hold them.
  /// @return false if the file is no such bitmap, or its image is empty or needs more bytes than 32 bits
  ///         count
  bool ReadHeader() noexcept;

  // Size of the image in pixels, both at least 1.
  int Width() const noexcept { return m_iWidth; }
  int Height() const noexcept { return m_iHeight; }

  /// Reads the pixels as opaque colours in GL's order: the bottom row first. An unsupported depth yields
  /// black.
  /// @param aPixels receives Width * Height pixels; undefined after a failure
  /// @return null; else the reason why the pixels cannot be read, for the log
  const char* ReadPixels(GLDATA_RGBA4B* aPixels) noexcept;

 private:
  bool ReadColorTable(std::uint64_t aOffset) noexcept;

  std::FILE* m_pFile;
  int m_iWidth = 0;
  int m_iHeight = 0;
  bool m_bTopDown = false;
  unsigned m_uBitCount = 0;
  std::size_t m_uRowBytes = 0;
  /// Colours as pixels. 0 marks an index without an entry, since no opaque pixel is 0.
  std::array<std::uint32_t, 256> m_auColors{};
};
