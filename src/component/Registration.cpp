// The module's own entries in the registry. Any thread.

#include "component/Registration.h"

HRESULT RegisterModule() noexcept { return E_FAIL; }

HRESULT UnregisterModule() noexcept { return E_FAIL; }
