// Operations of the COM runtime besides the object model. Any thread.

#pragma once

#include "platform/Types.h"

#ifdef _WIN32
#include <objbase.h>
#else

/// Prepares a thread for calls to client objects. Off Windows such calls are direct and need no preparation.
inline HRESULT CoInitialize(void*) noexcept { return S_OK; }

#endif
