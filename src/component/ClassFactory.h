// The class factories of the module, one a class, made at the first request and kept in the class table.
// Any thread.

#pragma once

#include <gllib/GLPlatform.h>

/// Gives the class factory of a class, the same one at every request.
/// @return S_OK; E_POINTER; CLASS_E_CLASSNOTAVAILABLE for a class that isn't the module's; E_NOINTERFACE
HRESULT GetClassFactory(REFCLSID aClassId, REFIID riid, void** ppv) noexcept;
