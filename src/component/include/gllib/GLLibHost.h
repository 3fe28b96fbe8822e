/// @file
/// Helpers for hosts in C++, header only: GLPtr, GLString, creation of objects, and the bases of painters,
/// gauges and captures. Includes GLLib.h.

#pragma once

#include <gllib/GLAllocator.h>
#include <gllib/GLByProgID.h>
#include <gllib/GLClient.h>
#include <gllib/GLLib.h>
#include <gllib/GLPtr.h>
#include <gllib/GLString.h>

/// Creates an object of one of the 14 classes of the linked module. Any thread.
/// @param rclsid the class
/// @param riid   the wanted interface
/// @param ppv    receives a counted reference, or null
/// @return S_OK; E_POINTER; CLASS_E_CLASSNOTAVAILABLE; E_NOINTERFACE; E_OUTOFMEMORY
inline HRESULT GLCreateObject(REFCLSID rclsid, REFIID riid, void** ppv) noexcept {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  GLPtr<IClassFactory> factory;
  const HRESULT got = DllGetClassObject(rclsid, IID_IClassFactory, factory.PutVoid());
  return FAILED(got) ? got : factory->CreateInstance(nullptr, riid, ppv);
}

/// Creates an object of the linked module: auto context = GLCreate<IGLContext>(CLSID_GLContext);
/// @return a counted pointer; null if the object cannot be created or does not have the interface
template <class Interface>
GLPtr<Interface> GLCreate(REFCLSID rclsid) noexcept {
  GLPtr<Interface> object;
  GLCreateObject(rclsid, GLIdentifierOf<Interface>(), object.PutVoid());
  return object;
}

/// Creates an object of a registered class: auto context = GLCreate<IGLContext>("Gl.GLContext.1");
/// @return a counted pointer; null if the class is not registered, or the object cannot be created or does
///         not have the interface
template <class Interface>
GLPtr<Interface> GLCreate(const char* aProgID) noexcept {
  GLPtr<Interface> object;
  GLCreateObjectByProgID(aProgID, GLIdentifierOf<Interface>(), object.PutVoid());
  return object;
}
