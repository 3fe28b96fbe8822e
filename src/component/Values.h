// The two ways in which setters limit what they are given. A value that isn't a number takes the lower limit.
// Pure functions; any thread.

#pragma once

#include <gllib/GLTypes.h>

/// aValue cut to the range from aLow to aHigh.
constexpr float Limit(float aValue, float aLow, float aHigh) noexcept {
  return aValue > aHigh ? aHigh : aValue > aLow ? aValue : aLow;  // this way round cuts NaN to aLow
}

/// A colour component cut to 0 to 1.
constexpr float LimitColor(float aValue) noexcept { return Limit(aValue, 0.0f, 1.0f); }

/// All four components cut to 0 to 1.
constexpr GLDATA_RGBA LimitColor(const GLDATA_RGBA& aColor) noexcept {
  return {LimitColor(aColor.m_fRed), LimitColor(aColor.m_fGreen), LimitColor(aColor.m_fBlue),
          LimitColor(aColor.m_fAlpha)};
}
