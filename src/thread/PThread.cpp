// PThread: start, cycle, pause, park and stop. The body runs on the worker, the operations on any thread.
// A park and every pause are waits on one condition, which a stop ends at once.

#include "thread/PThread.h"

#include "platform/ExitGate.h"
#include "platform/Thread.h"
#include "platform/ThreadPriority.h"

PThread::PThread(Function pfnCycle, void* pArg, Function pfnEnd, PClock& aClock) noexcept
    : m_pfnCycle(pfnCycle), m_pCycleArg(pArg), m_pfnEnd(pfnEnd), m_Clock(aClock) {}

PThread::~PThread() { Stop(); }

bool PThread::Start(DWORD aPreferredCycle, DWORD aMustSleepCycle, int aPriority, bool aSuspended) noexcept {
  const PLock one(m_StopLock);
  if (m_Thread.joinable() || m_dwFlags != 0) return false;
  m_iPriority = aPriority;
  m_dwPreferredCycle = aPreferredCycle;
  m_dwMustSleepCycle = aMustSleepCycle;
  m_bHeldBack = aSuspended;
  try {
    m_Thread = StartThread([this] { Body(); });
  } catch (...) {  // no thread, or no memory for one
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
      m_Thread.detach();  // a worker that the gate keeps never ends
    } else {
      m_Thread.join();
    }
  }
  m_dwFlags |= PTHREAD_STOPPED;  // also of a thread that was never started
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
  for (;;) {
    const auto start = static_cast<DWORD>(m_Clock.Now());
    PPause pause{};
    bool exits = false;
    {
      const PLock state(m_StateLock);
      ParkIfRequested();
      if (IsStopRequested()) {
        m_dwThreadNumber = 0;
        break;
      }
      const ExitGate::Pass pass;
      if (pass) {
        RunEvents();
        m_pfnCycle(m_pCycleArg);
      }
      exits = !pass;
      pause = PPause::After(start, static_cast<DWORD>(m_Clock.Now()), m_dwPreferredCycle, m_dwMustSleepCycle);
      m_dwLastCycle = pause.m_dwLastCycle;
    }
    if (exits) {
      NoteStopped();
      ExitGate::ParkForEver();
    }
    Pause(pause.m_dwSleep);
  }
  if (m_pfnEnd != nullptr) m_pfnEnd(m_pCycleArg);
  NoteStopped();
}

/// The worker's last use of the object.
void PThread::NoteStopped() noexcept {
  const std::lock_guard gate(m_WakeGate);
  m_Worker = std::thread::id();  // the system may give this id to another thread
  m_dwFlags |= PTHREAD_STOPPED;
  m_Wake.notify_all();
}

/// Leaves the state lock for the length of a park. The count of resumes is noted under that lock, which every
/// resume takes, so that none can fall between the look and the wait.
void PThread::ParkIfRequested() noexcept {
  if (!m_bSuspendRequested || m_bParksHeld) return;
  std::unique_lock gate(m_WakeGate);
  const unsigned resumes = m_uResumes;
  m_bParked = true;
  m_StateLock.Leave();
  m_Wake.wait(gate, [&] { return m_uResumes != resumes || IsStopRequested(); });
  gate.unlock();
  m_StateLock.Enter();
  m_bParked = false;
}

/// A sleep is ended by a stop alone; a controlled worker then waits for a trigger, as long as it is one.
void PThread::Pause(DWORD aSleep) noexcept {
  std::unique_lock gate(m_WakeGate);
  if (aSleep != 0 && !m_bControlled) {
    m_Clock.Wait(gate, m_Wake, aSleep, [this] { return IsStopRequested(); });
  }
  if (m_bControlled) {
    m_Clock.Wait(gate, m_Wake, m_dwMaxWait,
                 [this] { return m_bTriggered || !m_bControlled || IsStopRequested(); });
  }
  m_bTriggered = false;
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
  m_bParked = false;  // at once: a suspension that follows waits for the next park, not for this one
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

void PThread::Trigger() noexcept {
  if (m_bControlled) Wake();
}

/// A wait for a trigger that begins later, before the next cycle, ends at once too.
void PThread::Wake() noexcept {
  const std::lock_guard gate(m_WakeGate);
  m_bTriggered = true;
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
