// What the component asks of the COM runtime beside the object model. Any thread.

#pragma once

#include "platform/Types.h"

#ifdef _WIN32
#include <objbase.h>
#else

/// Prepares a thread for calling client objects; off Windows these are called directly and nothing is needed.
inline HRESULT CoInitialize(void*) noexcept { return S_OK; }

#endif
