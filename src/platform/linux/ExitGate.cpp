// ExitGate: counts the threads inside; an exit handler closes the gate. Any thread.
// Exit handlers run in the reverse order of registration. A driver registers some of its handlers as late as
// in a frame, and the gate must close before they run. Therefore the gate's handler is registered repeatedly:
// after each of the first passes, and after passes that created a rendering context. Later registrations have
// growing intervals. The latest registration runs first.

#include "platform/ExitGate.h"

#include <bit>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <utility>

#include "platform/ProcessIdentity.h"
#include "platform/ProcessWide.h"

namespace {

constexpr auto kLongestWait = std::chrono::seconds(2);

struct Gate {
  std::mutex m_Lock;
  std::condition_variable m_Left, m_Never;
  int m_iInside = 0;
  bool m_bClosed = false;
  std::uint64_t m_uPasses = 0, m_uNewWork = 0;
};

constinit ProcessWide<Gate> g_Gate;
thread_local int t_iDepth = 0;  // nested passes of this thread
thread_local bool t_bNewWork = false;

/// True for each of the first counts, then for powers of two: the C library stores every registration.
bool IsDue(std::uint64_t aCount) noexcept { return aCount <= 256 || std::has_single_bit(aCount); }

void Close() noexcept {
  Gate& gate = g_Gate.Get();
  std::unique_lock lock(gate.m_Lock);
  if (gate.m_bClosed) return;
  gate.m_bClosed = true;
  const int own = t_iDepth > 0 ? 1 : 0;  // a painter may call exit
  gate.m_Left.wait_for(lock, kLongestWait, [&] { return gate.m_iInside <= own; });
}

}  // namespace

ExitGate::Pass::Pass() noexcept : m_uProcess(ProcessGeneration()) {
  if (t_iDepth == 0) {
    Gate& gate = g_Gate.Get();
    const std::scoped_lock lock(gate.m_Lock);
    m_bInside = !gate.m_bClosed;
    if (m_bInside) ++gate.m_iInside;
  }
  if (m_bInside) ++t_iDepth;
}

ExitGate::Pass::~Pass() {
  if (!m_bInside || --t_iDepth > 0 || m_uProcess != ProcessGeneration()) return;
  Gate& gate = g_Gate.Get();
  bool enrol = false;
  {
    const std::scoped_lock lock(gate.m_Lock);
    --gate.m_iInside;
    enrol = IsDue(++gate.m_uPasses);
    if (std::exchange(t_bNewWork, false)) enrol |= IsDue(++gate.m_uNewWork);
    enrol &= !gate.m_bClosed;
    if (gate.m_bClosed) gate.m_Left.notify_all();
  }
  if (!enrol) return;
  const ForkBlock whole;
  std::atexit(Close);
}

void ExitGate::NoteNewWork() noexcept { t_bNewWork = true; }

bool ExitGate::IsClosed() noexcept {
  Gate& gate = g_Gate.Get();
  const std::scoped_lock lock(gate.m_Lock);
  return gate.m_bClosed;
}

void ExitGate::ParkForEver() noexcept {
  Gate& gate = g_Gate.Get();
  std::unique_lock lock(gate.m_Lock);
  for (;;) gate.m_Never.wait(lock);
}
