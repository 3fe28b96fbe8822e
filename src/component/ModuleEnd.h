// ModuleEnd: decides what ends when the module goes, and in which order. Any thread.
//
// At unload, DllCanUnloadNow ends everything that would outlive the module's code: see TryEnd. At process
// exit nothing is ended and nothing is joined: platform/ExitGate.h stops the drawing, and process-wide
// objects live as long as the process (platform/ProcessWide.h).

#pragma once

namespace ModuleEnd {

using Step = void (*)();

/// Has a part ended at each end of the module from now on; parts that came later end first. Several calls for
/// one step count once.
void Register(Step aStep) noexcept;

/// Keeps the module loaded from here to the next TryEnd that succeeds. For an object with a thread, in whose
/// constructor it waits for an end that is in progress.
void KeepLoaded() noexcept;

/// Ends the module's threads, its display and what its parts registered, if no object and no lock of the
/// module is left. Everything starts again at its next use.
/// @return whether the module can be unloaded
bool TryEnd() noexcept;

}  // namespace ModuleEnd
