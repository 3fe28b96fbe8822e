// Output parameters: how the operations of the interfaces return values and objects. Any thread.

#pragma once

#include <gllib/GLPtr.h>

/// Stores values in output parameters, given in pairs: Output(aX, x, aY, y).
/// @return S_OK; E_INVALIDARG if a parameter is null (nothing is stored)
template <class Out, class Value, class... More>
HRESULT Output(Out* aOut, const Value& aValue, const More&... aMore) noexcept {
  if (aOut == nullptr) return E_INVALIDARG;
  if constexpr (sizeof...(aMore) > 0) {
    if (const HRESULT result = Output(aMore...); FAILED(result)) return result;
  }
  *aOut = static_cast<Out>(aValue);
  return S_OK;
}

/// Stores a reference to an object in an output parameter.
/// @param aNone result for a null object, which is stored too
/// @return S_OK; E_INVALIDARG if the parameter is null
template <class Interface>
HRESULT OutputObject(Interface** aOut, GLPtr<Interface> aObject, HRESULT aNone = S_OK) noexcept {
  if (aOut == nullptr) return E_INVALIDARG;
  *aOut = aObject.Detach();
  return *aOut != nullptr ? S_OK : aNone;
}
