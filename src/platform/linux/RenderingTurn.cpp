// RenderingTurn on Linux. Draw threads; NoteRenderingDriver on any thread.
// Mesa's software renderer (seen with 22.3.6) reads freed memory when two threads draw with contexts of one
// display. docs/driver/ContextRace.cpp reproduces it with plain EGL and GL. On this driver draw
// threads take turns.

#include "platform/RenderingTurn.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <utility>

#include "platform/GL.h"
#include "platform/ProcessWide.h"

namespace {

constexpr auto kLongestWait = std::chrono::seconds(2);

enum class Driver { kUnknown, kBearsThreads, kNeedsTurns };
std::atomic<Driver> g_Driver{Driver::kUnknown};

/// A lock that waiting threads get in FIFO order.
class Queue {
 public:
  /// @return false if the wait has timed out
  bool Take() noexcept {
    std::unique_lock lock(m_Lock);
    if (!std::exchange(m_bTaken, true)) return true;
    Waiter own;
    Waiter** end = &m_pFirst;
    while (*end != nullptr) end = &(*end)->m_pNext;
    *end = &own;
    if (m_Served.wait_for(lock, kLongestWait, [&] { return own.m_bServed; })) return true;
    for (Waiter** link = &m_pFirst; *link != nullptr; link = &(*link)->m_pNext) {
      if (*link != &own) continue;
      *link = own.m_pNext;
      break;
    }
    return false;
  }

  void Give() noexcept {
    const std::scoped_lock lock(m_Lock);
    if (m_pFirst == nullptr) {
      m_bTaken = false;
      return;
    }
    m_pFirst->m_bServed = true;
    m_pFirst = m_pFirst->m_pNext;
    m_Served.notify_all();
  }

 private:
  struct Waiter {
    bool m_bServed = false;
    Waiter* m_pNext = nullptr;
  };

  std::mutex m_Lock;
  std::condition_variable m_Served;
  bool m_bTaken = false;
  Waiter* m_pFirst = nullptr;
};

// Never destroyed, since a draw thread may wait in it while the process exits. A forked child gets its own
// queue: the holder of the turn may be a thread that does not exist there.
constinit ProcessWide<Queue> g_Turns;

thread_local int t_iDepth = 0;
thread_local bool t_bHasTurn = false;

void Take() noexcept {
  if (g_Driver == Driver::kNeedsTurns) t_bHasTurn = g_Turns.Get().Take();
}

void Give() noexcept {
  if (std::exchange(t_bHasTurn, false)) g_Turns.Get().Give();
}

}  // namespace

RenderingTurn::RenderingTurn() noexcept {
  if (t_iDepth++ == 0) Take();
}

RenderingTurn::~RenderingTurn() {
  if (--t_iDepth == 0) Give();
}

RenderingBreak::RenderingBreak() noexcept : m_iDepth(std::exchange(t_iDepth, 0)) { Give(); }

RenderingBreak::~RenderingBreak() {
  t_iDepth = m_iDepth;
  if (m_iDepth > 0) Take();
}

void NoteRenderingDriver() noexcept {
  if (g_Driver != Driver::kUnknown) return;
  const auto* name = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
  if (name == nullptr) return;
  const bool software = std::strstr(name, "llvmpipe") != nullptr || std::strstr(name, "softpipe") != nullptr;
  g_Driver = software ? Driver::kNeedsTurns : Driver::kBearsThreads;
}
