// The module's own entries in the registry. Any thread.

#pragma once

#include <gllib/GLPlatform.h>

/// Enters all classes, in the catalogue's order; stops at the first failure. @return S_OK, or that failure
HRESULT RegisterModule() noexcept;
/// Removes them. @return S_OK, or the first failure
HRESULT UnregisterModule() noexcept;
