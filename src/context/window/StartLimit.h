// StartLimit: the bound of the wait in Initialize.

#pragma once

#include <chrono>

/// Longest wait for the draw thread to create a rendering context. Only tests change it.
inline constinit std::chrono::milliseconds g_LongestStart{10'000};
