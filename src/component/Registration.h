// Registration: enters the module's classes into the registry and removes them. Any thread.

#pragma once

#include <gllib/GLPlatform.h>

/// Enters all classes, in the order of the catalogue, by one change of the registry. Then registers the type
/// library.
/// @return S_OK, or the error of the registry or the type library
HRESULT RegisterModule() noexcept;
/// Removes all classes, and the registration of the type library.
/// @return S_OK, or the error of the registry or the type library
HRESULT UnregisterModule() noexcept;
