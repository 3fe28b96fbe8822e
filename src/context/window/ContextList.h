// ContextList: the list of live contexts and the message hook of the process. The hook passes palette and
// colour messages from the top-level window to the GL windows.
// Any thread. The hook runs on the thread that receives the messages.

#pragma once

class GLContext;

/// Adds a context, in its constructor, and keeps the module loaded.
void AddToContextList(GLContext& aContext) noexcept;
/// Removes a context, and the hook with the last context. Waits for a walk over the list.
void RemoveFromContextList(GLContext& aContext) noexcept;
/// Installs the hook for messages of the calling thread, unless there is a hook.
void InstallMessageHook() noexcept;
/// Returns the number of context objects in the process, initialised or not.
int CountContexts() noexcept;
