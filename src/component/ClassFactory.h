// Class factories of the module, one per class. Each is created at the first request and kept until the
// module's end. Any thread.

#pragma once

#include <gllib/GLPlatform.h>

/// Returns the class factory of a class, the same object at every request.
/// @return S_OK; E_POINTER; CLASS_E_CLASSNOTAVAILABLE for a class that is not in the module; E_NOINTERFACE;
///         E_OUTOFMEMORY
HRESULT GetClassFactory(REFCLSID aClassId, REFIID riid, void** ppv) noexcept;
