// PixelFormatSelection: switches, scores and palette entries. Runs on the thread that creates a context's
// window.

#include "context/window/PixelFormatSelection.h"

#include <mutex>

bool g_bAccel = true;
bool g_bMultiAccel = true;
bool g_bAccelSwitchesRead = false;

namespace {

constexpr char kMachineKey[] = "SOFTWARE\\Ostrel\\GL";
constexpr DWORD kTested = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER | PFD_GENERIC_FORMAT;

bool Passes(const PIXELFORMATDESCRIPTOR& aFormat, const PIXELFORMATDESCRIPTOR& aRequest) noexcept {
  const DWORD wanted = aRequest.dwFlags & kTested;
  return (aFormat.dwFlags & wanted) == wanted && aFormat.iLayerType == aRequest.iLayerType;
}

BYTE Component(unsigned aIndex, BYTE aShift, BYTE aBits) noexcept {
  const unsigned mask = ((1u << aBits) - 1) & 0xFF;
  return mask == 0 ? BYTE{0} : static_cast<BYTE>(((aIndex >> aShift) & mask) * 255.0 / mask);
}

}  // namespace

bool ReadSwitch(HKEY aKey, const char* aName, DWORD* aValue) noexcept {
  DWORD type = 0, value = 0, size = sizeof(value);
  const LSTATUS status =
      RegQueryValueExA(aKey, aName, nullptr, &type, reinterpret_cast<BYTE*>(&value), &size);
  if (status != ERROR_SUCCESS || type != REG_DWORD || size != sizeof(value)) return false;
  *aValue = value;
  return true;
}

void ReadMachineSwitches() noexcept {
  static std::mutex lock;
  const std::scoped_lock hold(lock);
  if (g_bAccelSwitchesRead) return;
  g_bAccelSwitchesRead = true;
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kMachineKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return;
  DWORD value = 0;
  if (ReadSwitch(key, "MultiAccelOff", &value)) g_bMultiAccel = value == 0;
  if (ReadSwitch(key, "AccelOff", &value)) g_bAccel = value == 0;
  RegCloseKey(key);
}

PIXELFORMATDESCRIPTOR PixelFormatRequest() noexcept {
  PIXELFORMATDESCRIPTOR request{};
  request.nSize = sizeof(request);
  request.nVersion = 1;
  request.dwFlags = PFD_DOUBLEBUFFER | PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
  request.iPixelType = PFD_TYPE_RGBA;
  request.cColorBits = 32;
  request.cDepthBits = 32;
  request.iLayerType = PFD_MAIN_PLANE;
  return request;
}

int PixelFormatScore(const PIXELFORMATDESCRIPTOR& aFormat, const PIXELFORMATDESCRIPTOR& aRequest) noexcept {
  const bool sameDepth = aFormat.cDepthBits == aRequest.cDepthBits;
  if (!sameDepth && aRequest.cDepthBits != 0 && aFormat.cDepthBits == 0) return 0;
  return (aFormat.iPixelType == aRequest.iPixelType ? 8 : 0) +
         (aFormat.cColorBits == aRequest.cColorBits ? 4 : 0) + (sameDepth ? 2 : 0);
}

int FindPixelFormat(HDC hDC, const PIXELFORMATDESCRIPTOR& aRequest) noexcept {
  PIXELFORMATDESCRIPTOR candidate{};
  const int count = DescribePixelFormat(hDC, 1, sizeof(candidate), &candidate);
  int best = 1, bestScore = 0;
  for (int i = count; i >= 1; --i) {
    if (DescribePixelFormat(hDC, i, sizeof(candidate), &candidate) == 0) continue;
    if (!Passes(candidate, aRequest)) continue;
    const int score = PixelFormatScore(candidate, aRequest);
    if (score <= bestScore) continue;  // the highest index wins among equal scores
    best = i;
    bestScore = score;
  }
  return best;
}

std::vector<PALETTEENTRY> PaletteEntries(const PIXELFORMATDESCRIPTOR& aFormat) noexcept {
  std::vector<PALETTEENTRY> entries;
  if (aFormat.cColorBits > 15) return entries;  // the number of entries of a palette has 16 bits
  try {
    entries.resize(std::size_t{1} << aFormat.cColorBits);
  } catch (...) {
    return {};
  }
  for (unsigned i = 0; i < entries.size(); ++i) {
    entries[i] = {Component(i, aFormat.cRedShift, aFormat.cRedBits),
                  Component(i, aFormat.cGreenShift, aFormat.cGreenBits),
                  Component(i, aFormat.cBlueShift, aFormat.cBlueBits), 0};
  }
  return entries;
}
