// ProcessIdentity: tells a process from the forked children that inherit its memory. Any thread.

#pragma once

#include <atomic>

/// Guards the creation of process-wide objects. A forked child finds it open.
inline constinit std::atomic<bool> g_bMakingProcessObject{false};

#ifdef _WIN32

/// Processes here do not fork.
constexpr unsigned ProcessGeneration() noexcept { return 1; }

#else

/// 1 in the process that loaded the module, one more in each forked child of it. Changed in the child alone,
/// before fork returns there.
extern std::atomic<unsigned> g_uProcessGeneration;

/// Number of this process among its ancestors since the module was loaded; never 0. Threads, connections and
/// locks that were made under another number are dead here.
inline unsigned ProcessGeneration() noexcept { return g_uProcessGeneration.load(std::memory_order_relaxed); }

/// Keeps the process from forking for its length. Around work that holds a lock of the C library which a
/// child needs: the child would find it taken by a thread that does not exist there. Short work without
/// callbacks.
class ForkBlock {
 public:
  ForkBlock() noexcept;
  ~ForkBlock();
  ForkBlock(const ForkBlock&) = delete;
  ForkBlock& operator=(const ForkBlock&) = delete;
};

#endif
