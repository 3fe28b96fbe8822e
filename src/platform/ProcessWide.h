// ProcessWide: one object per process, created at its first use. Any thread.

#pragma once

#include <atomic>
#include <cstddef>
#include <new>
#include <thread>

#include "platform/ProcessIdentity.h"

/// Holds a T that is created at its first use and never destroyed, since threads may use it while the process
/// exits. A forked child creates its own T: the inherited one may be half changed, and its locks may be held
/// by threads that do not exist there.
template <class T>
class ProcessWide {
 public:
  constexpr ProcessWide() noexcept = default;
  ProcessWide(const ProcessWide&) = delete;
  ProcessWide& operator=(const ProcessWide&) = delete;

  T& Get() noexcept {
    if (m_uMadeIn.load(std::memory_order_acquire) != ProcessGeneration()) Make();
    return *std::launder(reinterpret_cast<T*>(m_aStorage));
  }

 private:
  void Make() noexcept {
    while (g_bMakingProcessObject.exchange(true, std::memory_order_acquire)) std::this_thread::yield();
    if (m_uMadeIn.load(std::memory_order_relaxed) != ProcessGeneration()) {
      ::new (static_cast<void*>(m_aStorage)) T;
      m_uMadeIn.store(ProcessGeneration(), std::memory_order_release);
    }
    g_bMakingProcessObject.store(false, std::memory_order_release);
  }

  alignas(T) std::byte m_aStorage[sizeof(T)]{};
  std::atomic<unsigned> m_uMadeIn{0};
};
