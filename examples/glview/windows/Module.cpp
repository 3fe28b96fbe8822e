// Module: the component's entry point for a program that does not link to the module. It loads GLLib.dll from
// the program's folder, so that no registration is needed. Any thread.

#include <gllib/GLEntryPoints.h>
#include <gllib/GLPlatform.h>

HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  static const auto get = [] {
    const HMODULE module = LoadLibraryA("GLLib.dll");
    const FARPROC found = module != nullptr ? GetProcAddress(module, "DllGetClassObject") : nullptr;
    return reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(found));
  }();
  return get != nullptr ? get(rclsid, riid, ppv) : CO_E_DLLNOTFOUND;
}
