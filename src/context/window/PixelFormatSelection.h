// PixelFormatSelection: selects a pixel format without a context: switches of the machine, search by scores,
// palette entries. Runs on the thread that creates a context's window.

#pragma once

#include <vector>

#include "platform/Palette.h"
#include "platform/PixelFormat.h"
#include "platform/Registry.h"

/// False if the machine-wide switch AccelOff is not 0.
extern bool g_bAccel;
/// False if the machine-wide switch MultiAccelOff is not 0.
extern bool g_bMultiAccel;
/// Whether the machine-wide switches have been read, which happens once per process.
extern bool g_bAccelSwitchesRead;

/// Reads the machine-wide switches at the first call. Later calls do nothing.
void ReadMachineSwitches() noexcept;

/// Reads a REG_DWORD value.
/// @return false if the value is missing or has another type; aValue is then unchanged
bool ReadSwitch(HKEY aKey, const char* aName, DWORD* aValue) noexcept;

/// Returns the pixel format that every context requests.
PIXELFORMATDESCRIPTOR PixelFormatRequest() noexcept;

/// Returns the sum of 8 for an equal pixel type, 4 for equal colour bits and 2 for equal depth bits. Returns
/// 0 if the request has depth bits and the format has none.
int PixelFormatScore(const PIXELFORMATDESCRIPTOR& aFormat, const PIXELFORMATDESCRIPTOR& aRequest) noexcept;

/// Returns the format of a device context with the best score; the highest index among equal scores; 1 if no
/// format is suitable.
int FindPixelFormat(HDC hDC, const PIXELFORMATDESCRIPTOR& aRequest) noexcept;

/// Returns the colours of all indices of a format, from its shifts and bit counts, truncated to 8 bits.
/// Returns an empty vector if memory is insufficient or the format has more than 15 colour bits.
std::vector<PALETTEENTRY> PaletteEntries(const PIXELFORMATDESCRIPTOR& aFormat) noexcept;
