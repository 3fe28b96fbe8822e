// Picture: an image in memory, read from and written to PNG files. Owns its pixels; any thread.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Pixels in GL's order, bottom row first. Each has four bytes: red, green, blue, alpha.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;

  Picture() = default;
  Picture(int aWidth, int aHeight)
      : width(aWidth), height(aHeight), pixels(std::size_t{4} * static_cast<unsigned>(aWidth * aHeight)) {}

  /// Returns the first byte of a pixel. Coordinates count from the top left.
  std::uint8_t* At(int aX, int aY) { return pixels.data() + OffsetOf(aX, aY); }
  const std::uint8_t* At(int aX, int aY) const { return pixels.data() + OffsetOf(aX, aY); }

 private:
  std::size_t OffsetOf(int aX, int aY) const {
    return std::size_t{4} * static_cast<unsigned>((height - 1 - aY) * width + aX);
  }
};

/// Writes a picture without its alpha. @return false if the file cannot be written
bool WritePng(const Picture& aPicture, const std::string& aPath);

/// Reads a PNG file. @return false if it cannot be read or is no PNG file
bool ReadPng(const std::string& aPath, Picture& aPicture);
/// Reads a PNG file from memory. @return false if the bytes are no PNG file
bool ReadPng(const void* aBytes, std::size_t aSize, Picture& aPicture);
