// The module's four entry points, all that it exports. Any thread.

#include <gllib/GLEntryPoints.h>

#include "component/ClassFactory.h"
#include "component/Module.h"
#include "component/ModuleThreads.h"
#include "component/Registration.h"

HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) noexcept {
  return GetClassFactory(rclsid, riid, ppv);
}

// The last code of the module's threads has run, too, before a host is told that the module may go.
HRESULT DllCanUnloadNow() noexcept {
  if (g_iModuleLocks != 0) return S_FALSE;
  JoinEndedModuleThreads();
  return S_OK;
}

HRESULT DllRegisterServer() noexcept { return RegisterModule(); }

HRESULT DllUnregisterServer() noexcept { return UnregisterModule(); }
