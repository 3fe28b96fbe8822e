// Thread priorities by the documented Win32 values. A thread is known by the system's own number for it.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32
inline constexpr int THREAD_PRIORITY_IDLE = -15, THREAD_PRIORITY_LOWEST = -2,
                     THREAD_PRIORITY_BELOW_NORMAL = -1, THREAD_PRIORITY_NORMAL = 0,
                     THREAD_PRIORITY_ABOVE_NORMAL = 1, THREAD_PRIORITY_HIGHEST = 2,
                     THREAD_PRIORITY_TIME_CRITICAL = 15;
#endif

/// The system's number of the calling thread.
DWORD ThisThreadNumber() noexcept;

/// Gives a living thread of this process the nearest priority that the system has and grants.
/// @return false when nothing nearer than the present one is granted
bool SetPriorityOfThread(DWORD aThread, int aPriority) noexcept;
