// Picture: an image in memory, and its way to and from PNG files. Owns its pixels; any thread.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Pixels from the bottom row up, which is GL's order; each is red, green, blue, alpha.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;

  Picture() = default;
  Picture(int aWidth, int aHeight)
      : width(aWidth), height(aHeight), pixels(std::size_t{4} * static_cast<unsigned>(aWidth * aHeight)) {}

  /// The first byte of a pixel, counted from the top left.
  const std::uint8_t* At(int aX, int aY) const {
    return pixels.data() + std::size_t{4} * static_cast<unsigned>((height - 1 - aY) * width + aX);
  }
};

/// Writes a picture without its alpha. @return false when the file can't be written
bool WritePng(const Picture& aPicture, const std::string& aPath);

/// Reads a picture. @return false when the file can't be read
bool ReadPng(const std::string& aPath, Picture& aPicture);
/// Reads a picture from a file's bytes.
bool ReadPng(const void* aBytes, std::size_t aSize, Picture& aPicture);
