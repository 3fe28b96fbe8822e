// BitmapFile: the reader of device-independent bitmap files. It believes nothing that a file says: every size
// is checked against the file's own before memory is asked for. No objects, no GL; any thread, each on its
// own.

#pragma once

#include <gllib/GLTypes.h>

#include <array>
#include <cstdio>

/// A bitmap file that is being read. First ReadHeader, then, if that went well, ReadPixels.
class BitmapFile {
 public:
  /// @param aFile open for reading, borrowed
  explicit BitmapFile(std::FILE* aFile) noexcept : m_pFile(aFile) {}

  /// Reads all that stands before the pixels, and sees that the file is long enough to hold them.
  /// @return false for a file that isn't such a bitmap, or whose image isn't one: empty, or past 32 bits in
  /// bytes
  bool ReadHeader() noexcept;

  // The image's sides in pixels, both positive.
  int Width() const noexcept { return m_iWidth; }
  int Height() const noexcept { return m_iHeight; }

  /// Reads the pixels, opaque, in GL's order: from the bottom row up. A depth that isn't known gives black.
  /// @param aPixels receives Width * Height of them; of no use after a failure
  /// @return false when the file can't be read to the end of its pixels, or a pixel has no colour in its
  /// table
  bool ReadPixels(GLDATA_RGBA4B* aPixels) noexcept;

 private:
  bool ReadColorTable(std::uint64_t aOffset) noexcept;

  std::FILE* m_pFile;
  int m_iWidth = 0;
  int m_iHeight = 0;
  bool m_bTopDown = false;
  unsigned m_uBitCount = 0;
  std::size_t m_uRowBytes = 0;
  /// Colours as pixels; 0, which no opaque pixel is, where the file's table has no entry.
  std::array<std::uint32_t, 256> m_auColors{};
};
