// The list of live contexts and the process's one message hook, which passes palette and colour messages from
// the top-level window down to the GL windows. Any thread; the hook runs on the thread of the messages.

#pragma once

class GLContext;

/// Enters a context, from its constructor, and keeps the module loaded for it.
void AddToContextList(GLContext& aContext) noexcept;
/// Takes a context out, and the hook with the last one. Waits for a walk over the list.
void RemoveFromContextList(GLContext& aContext) noexcept;
/// Installs the hook on the calling thread's messages, unless there is one.
void InstallMessageHook() noexcept;
/// Number of context objects in the process, initialised or not.
int CountContexts() noexcept;
