// The module's file, its type library, and its unloading. Any thread.

#pragma once

#include <string>

#include "platform/Types.h"

/// Returns the full path that the module was loaded from, also if the working directory has changed since.
/// UTF-8 on Windows, elsewhere the bytes of the file system.
/// @return empty on failure
std::string ModulePath();

/// Registers the module's type library. Off Windows there is none.
HRESULT RegisterModuleTypeLib(const std::string& aPath) noexcept;
/// Unregisters the type library.
HRESULT UnregisterModuleTypeLib(const std::string& aPath) noexcept;

/// Keeps the module loaded if the host unloads it while objects exist, since their threads run its code.
/// Takes at most one reference to the file. On Windows it does nothing: only the host's references count.
void KeepModuleLoaded() noexcept;
/// Releases that reference. The code stays loaded until the host releases its own.
void ReleaseModule() noexcept;

/// Ends the threads of the platform layer and its display with all windows. They start again at the next use.
/// On Windows there are none.
void EndPlatform() noexcept;
/// On Windows, calls a function when a host unloads the module, not when the process ends. Elsewhere
/// KeepModuleLoaded prevents an unexpected detach.
void RunAtDetach(void (*aFunction)()) noexcept;
