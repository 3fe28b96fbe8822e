// PThread: start, cycle, pause, park and stop. The body runs on the worker, the operations on any thread.
// Parks and pauses wait on one condition variable, so a stop ends each of them at once.

#include "thread/PThread.h"

#include <algorithm>

#include "platform/ExitGate.h"
#include "platform/Thread.h"
#include "platform/ThreadPriority.h"

PThread::PThread(CycleFunction pfnCycle, void* pArg, Function pfnEnd, PClock& aClock) noexcept
    : m_pfnCycle(pfnCycle), m_pCycleArg(pArg), m_pfnEnd(pfnEnd), m_Clock(aClock) {}

PThread::~PThread() { Stop(); }

bool PThread::Start(DWORD aPreferredCycle, DWORD aMustSleepCycle, int aPriority,
                    FirstCycle aFirstCycle) noexcept {
  const PLock one(m_StopLock);
  if (m_Thread.joinable() || m_dwFlags != 0) return false;
  m_iPriority = aPriority;
  m_dwPreferredCycle = aPreferredCycle;
  m_dwMustSleepCycle = aMustSleepCycle;
  m_bHeldBack = aFirstCycle == FirstCycle::kAfterResume;
  try {
    m_Thread = StartThread([this] { Body(); });
  } catch (...) {  // no thread could be created, or memory is insufficient
    return false;
  }
  return true;
}

void PThread::Stop() noexcept {
  RequestStop();
  if (IsWorker()) return;
  const PLock one(m_StopLock);
  if (m_Thread.joinable()) {
    std::unique_lock gate(m_WakeGate);
    m_Wake.wait(gate, [this] { return IsStopped(); });
    gate.unlock();
    if (ExitGate::IsClosed()) {
      m_Thread.detach();  // a worker that waits at the gate never ends
    } else {
      m_Thread.join();
    }
  }
  m_dwFlags |= PTHREAD_STOPPED;  // also set if the thread was never started
  CloseQueue();
}

void PThread::RequestStop() noexcept {
  const std::lock_guard gate(m_WakeGate);
  m_dwFlags |= PTHREAD_STOP_REQUESTED;
  m_Wake.notify_all();
}

void PThread::Body() noexcept {
  m_Worker = std::this_thread::get_id();
  {
    const PLock state(m_StateLock);
    m_dwFlags |= PTHREAD_STARTED;
    m_dwThreadNumber = ThisThreadNumber();
    SetPriorityOfThread(m_dwThreadNumber, m_iPriority);
  }
  {
    std::unique_lock gate(m_WakeGate);
    m_Wake.wait(gate, [this] { return !m_bHeldBack || IsStopRequested(); });
  }
  PauseEnd end;
  for (unsigned wake = kPauseOver;; wake = Pause(end)) {  // the first cycle follows no pause
    const std::uint64_t start = m_Clock.Now();
    bool exits = false;
    {
      const PLock state(m_StateLock);
      if (ParkIfRequested()) wake |= kPauseOver;
      if (IsStopRequested()) {
        m_dwThreadNumber = 0;
        break;
      }
      const ExitGate::Pass pass;
      if (pass) {
        RunEvents();
        m_pfnCycle(m_pCycleArg, wake);
      }
      exits = !pass;
      if (wake != kTask) end = EndCycle(start);
    }
    if (exits) {
      NoteStopped();
      ExitGate::ParkForEver();
    }
  }
  if (m_pfnEnd != nullptr) m_pfnEnd(m_pCycleArg);
  NoteStopped();
}

// The worker does not use the object after this.
void PThread::NoteStopped() noexcept {
  const std::lock_guard gate(m_WakeGate);
  m_Worker = std::thread::id();  // the system may reuse this id
  m_dwFlags |= PTHREAD_STOPPED;
  m_Wake.notify_all();
}

// Leaves the state lock during a park. Resume takes that lock. m_uResumes is read under it, so no resume is
// missed between the read and the wait. Returns whether the worker parked.
bool PThread::ParkIfRequested() noexcept {
  if (!m_bSuspendRequested || m_bParksHeld) return false;
  std::unique_lock gate(m_WakeGate);
  const unsigned resumes = m_uResumes;
  m_bParked = true;
  m_StateLock.Leave();
  m_Wake.wait(gate, [&] { return m_uResumes != resumes || IsStopRequested(); });
  gate.unlock();
  m_StateLock.Enter();
  m_bParked = false;
  return true;
}

// Computes the pause after a cycle that began at aStart. Called under the state lock.
PThread::PauseEnd PThread::EndCycle(std::uint64_t aStart) noexcept {
  const std::uint64_t now = m_Clock.Now();
  const PPause pause = PPause::After(static_cast<DWORD>(aStart), static_cast<DWORD>(now), m_dwPreferredCycle,
                                     m_dwMustSleepCycle);
  m_dwLastCycle = pause.m_dwLastCycle;
  return {now + (m_bControlled ? 0 : pause.m_dwSleep), std::nullopt};
}

// Pauses until the end or the next interruption. Returns the reasons for the next cycle.
unsigned PThread::Pause(PauseEnd& aEnd) noexcept {
  std::unique_lock gate(m_WakeGate);
  const bool slept = Sleep(gate, aEnd);
  const bool over = slept && (!m_bControlled || WaitForTrigger(gate, aEnd));
  const unsigned wake = (m_bTaskPosted ? kTask : 0) |
                        (slept && m_bTriggered && m_bControlled ? kTrigger : 0) | (over ? kPauseOver : 0) |
                        (IsStopRequested() ? kStop : 0);
  m_bTaskPosted = false;
  if (wake != kTask) m_bTriggered = m_bSleepEnded = false;
  return wake;
}

// Returns whether the sleep is over. Events interrupt it.
bool PThread::Sleep(std::unique_lock<std::mutex>& aGate, PauseEnd& aEnd) noexcept {
  const auto ends = [this] { return m_bSleepEnded || IsStopRequested(); };
  if (const DWORD sleep = Remaining(aEnd.m_uSleep); sleep != 0) {
    m_Clock.Wait(aGate, m_Wake, sleep, [&] { return m_bTaskPosted || ends(); });
    if (!ends() && Remaining(aEnd.m_uSleep) != 0) return false;
  }
  aEnd.m_uSleep = 0;
  return true;
}

// Returns whether the longest wait has passed, or the worker is no longer controlled.
bool PThread::WaitForTrigger(std::unique_lock<std::mutex>& aGate, PauseEnd& aEnd) noexcept {
  if (!aEnd.m_oWait)
    aEnd.m_oWait = m_dwMaxWait == PClock::kForever ? UINT64_MAX : m_Clock.Now() + m_dwMaxWait;
  if (const DWORD wait = Remaining(*aEnd.m_oWait); wait != 0) {
    m_Clock.Wait(aGate, m_Wake, wait,
                 [this] { return m_bTriggered || m_bTaskPosted || !m_bControlled || IsStopRequested(); });
  }
  return !m_bControlled || Remaining(*aEnd.m_oWait) == 0;
}

// Returns the milliseconds until aEnd, at most PClock::kForever.
DWORD PThread::Remaining(std::uint64_t aEnd) noexcept {
  const std::uint64_t now = m_Clock.Now();
  return aEnd > now ? static_cast<DWORD>(std::min<std::uint64_t>(aEnd - now, PClock::kForever)) : 0;
}

void PThread::RequestSuspend() noexcept {
  const PLock state(m_StateLock);
  m_bSuspendRequested = true;
}

bool PThread::IsParked() noexcept {
  const PLock state(m_StateLock);
  return m_bParked;
}

void PThread::Resume() noexcept {
  const PLock state(m_StateLock);
  m_bSuspendRequested = false;
  m_bParked = false;  // at once, so that a later suspension waits for a new park, not for this one
  const std::lock_guard gate(m_WakeGate);
  m_bHeldBack = false;
  ++m_uResumes;
  m_Wake.notify_all();
}

void PThread::SetControlled(bool aControlled, DWORD aMaxWait) noexcept {
  const std::lock_guard gate(m_WakeGate);
  m_dwMaxWait = aMaxWait;
  m_bControlled = aControlled;
  if (!aControlled) m_Wake.notify_all();
}

// Also ends a wait for a trigger that begins after this call and before the next cycle.
void PThread::Trigger() noexcept {
  if (!m_bControlled) return;
  const std::lock_guard gate(m_WakeGate);
  m_bTriggered = true;
  m_Wake.notify_all();
}

void PThread::EndSleep() noexcept {
  if (IsWorker()) return;
  const std::lock_guard gate(m_WakeGate);
  m_bSleepEnded = true;
  m_Wake.notify_all();
}

DWORD PThread::SetPreferredCycle(DWORD aValue) noexcept {
  const PLock state(m_StateLock);
  const DWORD old = m_dwPreferredCycle;
  m_dwPreferredCycle = aValue;
  return old;
}

DWORD PThread::SetMustSleepCycle(DWORD aValue) noexcept {
  const PLock state(m_StateLock);
  const DWORD old = m_dwMustSleepCycle;
  m_dwMustSleepCycle = aValue;
  return old;
}

int PThread::SetPriority(int aValue) noexcept {
  const PLock state(m_StateLock);
  const int old = m_iPriority;
  m_iPriority = aValue;
  if (m_dwThreadNumber != 0) SetPriorityOfThread(m_dwThreadNumber, aValue);
  return old;
}
