// The module's four entry points, its only exports. Any thread.

#include <gllib/GLEntryPoints.h>

#include "component/ClassFactory.h"
#include "component/ModuleEnd.h"
#include "component/Registration.h"

HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) noexcept {
  return GetClassFactory(rclsid, riid, ppv);
}

HRESULT DllCanUnloadNow() noexcept { return ModuleEnd::TryEnd() ? S_OK : S_FALSE; }

HRESULT DllRegisterServer() noexcept { return RegisterModule(); }

HRESULT DllUnregisterServer() noexcept { return UnregisterModule(); }
