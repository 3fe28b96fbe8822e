// Threads of the module's own that end an object whose last reference went where its end can't be waited for.
// Any thread; each job runs on a thread of its own and keeps the module loaded for its length.

#pragma once

#include <functional>

/// Runs aJob on a thread of its own, which nothing waits for while the process exits. Where no thread can be
/// made the job is dropped: what it was to end stays.
void RunOnModuleThread(std::function<void()> aJob) noexcept;

/// Joins the threads whose jobs have ended. With no object and no lock of the module left those are all.
void JoinEndedModuleThreads() noexcept;
