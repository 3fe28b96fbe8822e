// Thread priorities, as the documented Win32 values. Threads are identified by the number of the operating
// system. Any thread.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32
inline constexpr int THREAD_PRIORITY_IDLE = -15, THREAD_PRIORITY_LOWEST = -2,
                     THREAD_PRIORITY_BELOW_NORMAL = -1, THREAD_PRIORITY_NORMAL = 0,
                     THREAD_PRIORITY_ABOVE_NORMAL = 1, THREAD_PRIORITY_HIGHEST = 2,
                     THREAD_PRIORITY_TIME_CRITICAL = 15;
#endif

/// Returns the operating system's number of the calling thread.
DWORD ThisThreadNumber() noexcept;

/// Sets the priority of a running thread of this process to the nearest one that the system supports and
/// permits.
/// @return false if the system permits no priority nearer than the current one
bool SetPriorityOfThread(DWORD aThread, int aPriority) noexcept;
