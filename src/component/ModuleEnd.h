// ModuleEnd: ends the module's parts in a fixed order. Any thread.
//
// At unload, DllCanUnloadNow ends everything that would outlive the module's code; see TryEnd. At process
// exit, nothing is ended and no thread is joined: platform/ExitGate.h stops the drawing, and process-wide
// objects live as long as the process (platform/ProcessWide.h).

#pragma once

namespace ModuleEnd {

using Step = void (*)();

/// Registers a step that ends a part at each end of the module. Steps that were registered later run first. A
/// step that is registered again runs once.
void Register(Step aStep) noexcept;

/// Keeps the module loaded until the next TryEnd that succeeds. Objects with a thread call it in their
/// constructor. Waits for an end that is in progress.
void KeepLoaded() noexcept;

/// Ends the module's threads, runs the registered steps and closes the display. Does nothing if an object or
/// a lock of the module is left. Everything starts again at its next use.
/// @return whether the module can be unloaded
bool TryEnd() noexcept;

}  // namespace ModuleEnd
