// The file that holds the component, the type library in it, and its end. Any thread.

#pragma once

#include <string>

#include "platform/Types.h"

/// The full path of the module: UTF-8 on Windows, elsewhere the bytes of the file system. It is the path by
/// which the module was loaded, whatever the working folder is now. @return empty on failure
std::string ModulePath();

/// Enters the module's type library into the registry; off Windows there is none to enter.
HRESULT RegisterModuleTypeLib(const std::string& aPath) noexcept;
/// Takes the type library out of the registry.
HRESULT UnregisterModuleTypeLib(const std::string& aPath) noexcept;

/// Holds a reference of the module's own to its file, so that a host that unloads it with objects left does
/// not take the code from their threads. Once; on Windows the host's count alone decides.
void KeepModuleLoaded() noexcept;
/// Gives that reference back. The caller's code stays until the host gives back its own.
void ReleaseModule() noexcept;

/// Ends the layer's own threads and its display, with all their windows gone. They start again at their next
/// use. On Windows there are none.
void EndPlatform() noexcept;
/// Has a function run when the module is detached, on Windows; elsewhere a module that is kept by a reference
/// of its own can't be detached unasked.
void RunAtDetach(void (*aFunction)()) noexcept;
