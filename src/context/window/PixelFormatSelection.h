// The choice of a pixel format apart from any context: the machine's switches, the scan with its scores, the
// entries of a palette. Runs on the thread that initialises.

#pragma once

#include <vector>

#include "platform/Palette.h"
#include "platform/PixelFormat.h"
#include "platform/Registry.h"

/// 0 after the machine-wide switch AccelOff was found non-zero.
extern bool g_bAccel;
/// 0 after the machine-wide switch MultiAccelOff was found non-zero.
extern bool g_bMultiAccel;
/// Set once the machine-wide switches have been looked at, which happens once a process.
extern bool g_bAccelSwitchesRead;

/// Reads the machine-wide switches, at the first call alone.
void ReadMachineSwitches() noexcept;

/// Reads a 4-byte number. @return false, aValue untouched, for a value that is missing or of another type
bool ReadSwitch(HKEY aKey, const char* aName, DWORD* aValue) noexcept;

/// What every context asks for.
PIXELFORMATDESCRIPTOR PixelFormatRequest() noexcept;

/// 8 for the pixel type of the request, 4 for its colour depth, 2 for its depth; 0 without a depth buffer
/// that it asks for.
int PixelFormatScore(const PIXELFORMATDESCRIPTOR& aFormat, const PIXELFORMATDESCRIPTOR& aRequest) noexcept;

/// Scans the formats of a device context from the highest index down and gives the one with the best score.
/// @return 1 when none passes
int FindPixelFormat(HDC hDC, const PIXELFORMATDESCRIPTOR& aRequest) noexcept;

/// The colours of a format's indices, after its own shifts and widths; cut, not rounded, to 8 bits.
/// @return empty when there is no memory, or the format has no palette's worth of colours
std::vector<PALETTEENTRY> PaletteEntries(const PIXELFORMATDESCRIPTOR& aFormat) noexcept;
