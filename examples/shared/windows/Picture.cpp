// Pictures by the system's own coder of PNG files.

#include "shared/Picture.h"

#include <gllib/GLPlatform.h>
#include <gllib/GLPtr.h>
#include <objidl.h>
#include <shlwapi.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

// The header of the coder wants these by their bare names.
using std::max;
using std::min;
#include <gdiplus.h>

namespace {

constexpr CLSID kPngCoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0, 0, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr unsigned char kSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

/// The system's imaging from the first use to the program's end.
bool StartImaging() {
  static const bool started = [] {
    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    return Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok;
  }();
  return started;
}

/// Copies rows of four bytes, the last of which goes first, with red and blue exchanged.
void CopyRows(const std::uint8_t* aFrom, std::uint8_t* aTo, int aWidth, int aHeight) {
  const std::size_t row = std::size_t{4} * static_cast<unsigned>(aWidth);
  for (int y = 0; y < aHeight; ++y) {
    const std::uint8_t* from = aFrom + row * static_cast<unsigned>(aHeight - 1 - y);
    std::uint8_t* to = aTo + row * static_cast<unsigned>(y);
    for (std::size_t i = 0; i < row; i += 4) {
      to[i] = from[i + 2];
      to[i + 1] = from[i + 1];
      to[i + 2] = from[i];
      to[i + 3] = from[i + 3];
    }
  }
}

}  // namespace

bool WritePng(const Picture& aPicture, const std::string& aPath) {
  if (!StartImaging()) return false;
  std::vector<std::uint8_t> rows(aPicture.pixels.size());
  CopyRows(aPicture.pixels.data(), rows.data(), aPicture.width, aPicture.height);
  // What a window shows has no alpha, so the file has none either.
  Gdiplus::Bitmap bitmap(aPicture.width, aPicture.height, 4 * aPicture.width, PixelFormat32bppRGB,
                         rows.data());
  return bitmap.Save(std::filesystem::path(aPath).c_str(), &kPngCoder, nullptr) == Gdiplus::Ok;
}

bool ReadPng(const std::string& aPath, Picture& aPicture) {
  std::ifstream file(aPath, std::ios::binary);
  const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  return ReadPng(bytes.data(), bytes.size(), aPicture);
}

bool ReadPng(const void* aBytes, std::size_t aSize, Picture& aPicture) {
  const auto* bytes = static_cast<const unsigned char*>(aBytes);
  if (aSize < sizeof(kSignature) || !std::equal(kSignature, std::end(kSignature), bytes)) return false;
  const auto stream = GLPtr<IStream>::FromCounted(SHCreateMemStream(bytes, static_cast<UINT>(aSize)));
  if (!stream || !StartImaging()) return false;
  Gdiplus::Bitmap bitmap(stream.Get());
  const int width = static_cast<int>(bitmap.GetWidth()), height = static_cast<int>(bitmap.GetHeight());
  if (bitmap.GetLastStatus() != Gdiplus::Ok || width < 1 || height < 1) return false;
  aPicture = Picture(width, height);
  std::vector<std::uint8_t> rows(aPicture.pixels.size());
  Gdiplus::BitmapData data{};
  data.Width = static_cast<UINT>(width);
  data.Height = static_cast<UINT>(height);
  data.Stride = 4 * width;
  data.PixelFormat = PixelFormat32bppARGB;
  data.Scan0 = rows.data();
  const Gdiplus::Rect all(0, 0, width, height);
  constexpr UINT kMode = Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf;
  if (bitmap.LockBits(&all, kMode, PixelFormat32bppARGB, &data) != Gdiplus::Ok) return false;
  bitmap.UnlockBits(&data);
  CopyRows(rows.data(), aPicture.pixels.data(), width, height);
  return true;
}
