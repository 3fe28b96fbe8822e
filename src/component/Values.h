// Values: the range checks of setters that clamp their argument. NaN becomes the lower limit.
// Any thread.

#pragma once

#include "thread/Relaxed.h"

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

/// Sets red, green and blue, clamped to 0 to 1. The alpha is ignored: lights, materials and fog keep theirs.
inline HRESULT TakeOpaque(RelaxedColor& aTo, const GLDATA_RGBA* aColor) noexcept {
  if (aColor == nullptr) return E_INVALIDARG;
  aTo.m_fRed = LimitColor(aColor->m_fRed);
  aTo.m_fGreen = LimitColor(aColor->m_fGreen);
  aTo.m_fBlue = LimitColor(aColor->m_fBlue);
  return S_OK;
}
