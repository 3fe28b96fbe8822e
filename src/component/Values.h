// Values: the range checks of setters that clamp their argument. NaN becomes the lower limit.
// Pure functions; any thread.

#pragma once

#include <gllib/GLTypes.h>

/// Clamps aValue to the range from aLow to aHigh.
constexpr float Limit(float aValue, float aLow, float aHigh) noexcept {
  return aValue > aHigh ? aHigh : aValue > aLow ? aValue : aLow;  // this order maps NaN to aLow
}

/// Clamps a colour component to the range from 0 to 1.
constexpr float LimitColor(float aValue) noexcept { return Limit(aValue, 0.0f, 1.0f); }

/// Clamps all four components to the range from 0 to 1.
constexpr GLDATA_RGBA LimitColor(const GLDATA_RGBA& aColor) noexcept {
  return {LimitColor(aColor.m_fRed), LimitColor(aColor.m_fGreen), LimitColor(aColor.m_fBlue),
          LimitColor(aColor.m_fAlpha)};
}
