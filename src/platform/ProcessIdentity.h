// ProcessIdentity: distinguishes a process from forked children that inherit its memory. Any thread.

#pragma once

#include <atomic>

/// Guards the creation of process-wide objects. Unlocked in a forked child.
inline constinit std::atomic<bool> g_bMakingProcessObject{false};

#ifdef _WIN32

/// Windows processes do not fork.
constexpr unsigned ProcessGeneration() noexcept { return 1; }

#else

/// 1 in the process that loaded the module, one more in each forked child. Changes only in the child, before
/// fork returns there.
extern std::atomic<unsigned> g_uProcessGeneration;

/// Returns the generation of this process, never 0. Threads, connections and locks of another generation do
/// not work here.
inline unsigned ProcessGeneration() noexcept { return g_uProcessGeneration.load(std::memory_order_relaxed); }

/// Prevents a fork for the lifetime of the object. Used around code that holds a lock of the C library: in a
/// child the lock would stay held, since its thread does not exist there. Only for short code without
/// callbacks.
class ForkBlock {
 public:
  ForkBlock() noexcept;
  ~ForkBlock();
  ForkBlock(const ForkBlock&) = delete;
  ForkBlock& operator=(const ForkBlock&) = delete;
};

#endif
