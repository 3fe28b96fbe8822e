// Threads that tear a context down whose last reference went on its own draw thread.
// Any thread; each job runs on a thread of its own, and the module waits for them at its end.

#pragma once

#include <functional>

/// Runs aJob on a thread of its own. Where no thread can be made the job is dropped: the context stays,
/// parked.
void RunOnTeardownThread(std::function<void()> aJob) noexcept;
