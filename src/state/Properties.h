// Property access of the state objects: output of values, input of colours. Any thread.

#pragma once

#include "component/Values.h"
#include "thread/Relaxed.h"

/// Stores a value in an output parameter.
template <class Out, class Value>
HRESULT Give(Out* aTo, const Value& aValue) noexcept {
  if (aTo == nullptr) return E_INVALIDARG;
  *aTo = aValue;
  return S_OK;
}

/// Sets red, green and blue, clamped to 0 to 1. The alpha is ignored: lights, materials and fog keep theirs.
inline HRESULT TakeOpaque(RelaxedColor& aTo, const GLDATA_RGBA* aColor) noexcept {
  if (aColor == nullptr) return E_INVALIDARG;
  aTo.m_fRed = LimitColor(aColor->m_fRed);
  aTo.m_fGreen = LimitColor(aColor->m_fGreen);
  aTo.m_fBlue = LimitColor(aColor->m_fBlue);
  return S_OK;
}
