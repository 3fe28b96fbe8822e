/// @file
/// The module's four entry points, by their documented names. Any thread.

#pragma once

#include <gllib/GLPlatform.h>

#ifdef _WIN32
#include <olectl.h>  // declares all four; the module definition file exports them
#else
extern "C" {

/// Returns the class factory of one of the module's classes.
/// @param rclsid one of the 14 (GLClasses.h)
/// @param riid IID_IClassFactory or IID_IUnknown
/// @param ppv receives a counted reference, or null
/// @return S_OK; CLASS_E_CLASSNOTAVAILABLE; E_NOINTERFACE; E_POINTER; E_OUTOFMEMORY
[[gnu::visibility("default")]] HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) noexcept;
/// Returns whether the module may be unloaded. If so, ends the module's threads and connections first; the
/// next use starts them again. @return S_OK if no object and no lock exists, else S_FALSE
[[gnu::visibility("default")]] HRESULT DllCanUnloadNow() noexcept;
/// Registers all classes. @return S_OK, or the first failure
[[gnu::visibility("default")]] HRESULT DllRegisterServer() noexcept;
/// Removes the entries of DllRegisterServer. @return S_OK, or the first failure
[[gnu::visibility("default")]] HRESULT DllUnregisterServer() noexcept;
}
#endif
