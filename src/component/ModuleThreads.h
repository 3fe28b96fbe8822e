// Module threads: they end objects whose last reference was released on a thread that must not wait for the
// end.
// Any thread may start a job. Each job has a separate thread and keeps the module loaded while it runs.

#pragma once

#include <functional>

/// Runs aJob on a new thread. Nothing waits for this thread while the process exits. If no thread can be
/// created, the job does not run and its object is not ended.
void RunOnModuleThread(std::function<void()> aJob) noexcept;

/// Joins the threads whose jobs have ended. These are all threads if no object and no lock of the module is
/// left.
void JoinEndedModuleThreads() noexcept;
