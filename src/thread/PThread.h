// PThread: a worker thread that repeats one cycle until it is stopped, and the queue of events that it runs.
// Each operation tells who may call; the cycle function, events and pfnEnd run on the worker.

#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <thread>

#include "thread/PClock.h"
#include "thread/PCriticalSection.h"
#include "thread/PEvent.h"
#include "thread/PPointerArray.h"
#include "thread/Relaxed.h"

/// What a cycle of known length does after its work.
struct PPause {
  DWORD m_dwSleep;      ///< the milliseconds to sleep, if the thread is free-running
  DWORD m_dwLastCycle;  ///< the active time and that sleep together

  /// @param aStart, aEnd ticks at the start and the end of the work; they may wrap between the two
  /// @param aPreferred the length that a cycle should have; @param aMustSleep the shortest sleep
  static constexpr PPause After(DWORD aStart, DWORD aEnd, DWORD aPreferred, DWORD aMustSleep) noexcept {
    const DWORD elapsed = aEnd - aStart;
    const DWORD remaining = elapsed < aPreferred ? aPreferred - elapsed : 0;
    const DWORD sleep = remaining > aMustSleep ? remaining : aMustSleep;
    return {sleep, elapsed + sleep};
  }
};

/// A worker. In each cycle it parks if it is asked to, runs the queued events, calls the cycle function, and
/// pauses: it sleeps (free-running) or waits for a trigger (controlled). Events that are posted meanwhile
/// make a cycle of their own within the pause, which then continues to the end that it had before. The cycle
/// function is told why the cycle runs and decides what to do.
///
/// The worker holds the state lock for the active part of each cycle: operations that take it wait for the
/// end of a running cycle, and on the worker itself go right in. An owner holds the object by a shared
/// pointer; after Stop every operation returns at once.
class PThread {
 public:
  using Function = void (*)(void*);
  using CycleFunction = void (*)(void*, unsigned aWake);

  // Why a cycle runs. Bits; several reasons may come together.
  static constexpr unsigned kTask = 1;     ///< an event was posted
  static constexpr unsigned kTrigger = 2;  ///< Trigger was called
  static constexpr unsigned kPauseOver =
      4;                                ///< the pause has ended, or there was none: first cycle, after a park
  static constexpr unsigned kStop = 8;  ///< a stop was requested; no cycle follows

  // Bits of the flag word.
  static constexpr DWORD PTHREAD_STARTED = 2;
  static constexpr DWORD PTHREAD_STOP_REQUESTED = 4;
  static constexpr DWORD PTHREAD_STOPPED = 8;

  /// @param pfnCycle called once per cycle with pArg and the reasons for the cycle
  /// @param pfnEnd   called with pArg as the worker's last act
  PThread(CycleFunction pfnCycle, void* pArg, Function pfnEnd = nullptr,
          PClock& aClock = PClock::System()) noexcept;
  PThread(const PThread&) = delete;
  PThread& operator=(const PThread&) = delete;
  /// Stops the thread. Not on the worker.
  ~PThread();

  /// Makes the thread. Once. @param aSuspended holds it back until Resume
  /// @return false when it can't be made, or was made or stopped before
  bool Start(DWORD aPreferredCycle, DWORD aMustSleepCycle, int aPriority, bool aSuspended) noexcept;
  /// Ends the thread at its next cycle, whatever it waits for, and waits for its end; then deletes the events
  /// that are left, kept ones too. Any thread, any number of times, with nothing held that the cycle may
  /// want. On the worker it only requests the end.
  void Stop() noexcept;

  /// Puts parks off until AllowParks: a suspension that comes before takes effect then. Before Start.
  void HoldParks() noexcept { m_bParksHeld = true; }
  /// Ends HoldParks. Any thread.
  void AllowParks() noexcept { m_bParksHeld = false; }
  /// Asks the worker to park at the start of its next cycle. Any thread; waits for a running cycle.
  void RequestSuspend() noexcept;
  /// Whether the worker has parked. Any thread; waits for a running cycle.
  bool IsParked() noexcept;
  /// As IsParked, without waiting.
  bool IsParkedNow() const noexcept { return m_bParked; }
  /// Ends a park and takes the request back; suspensions aren't counted. Any thread; waits for a running
  /// cycle.
  void Resume() noexcept;

  /// Chooses between sleeping and waiting for a trigger at most aMaxWait ms (PClock::kForever: no limit).
  /// Any thread, without a wait. A wait for a trigger ends when there is to be none; else it goes on as it
  /// began.
  void SetControlled(bool aControlled, DWORD aMaxWait) noexcept;
  /// Ends the wait of a controlled worker, or its next one if it is in a cycle; several make one. Any thread.
  void Trigger() noexcept;
  /// Ends the sleep of a free-running worker, or its next one if it is in a cycle. A wait for a trigger goes
  /// on. Any thread; nothing happens on the worker itself.
  void EndSleep() noexcept;

  // Each returns the old value. Any thread; wait for a running cycle.
  DWORD SetPreferredCycle(DWORD aValue) noexcept;
  DWORD SetMustSleepCycle(DWORD aValue) noexcept;
  int SetPriority(int aValue) noexcept;

  /// Queues an event, which is the worker's from then on. Any thread, at any time: no wait.
  /// @return true when it is queued, or was already; false for null, and after a stop: it is then dropped
  bool PostEvent(PEvent* aEvent) noexcept;
  /// Drops all events of an owner that haven't run, and the kept ones that have. One that is running ends
  /// first when the caller isn't the worker: not with a lock held that the event may want. Needs no memory.
  void RemoveEvents(const void* aOwner) noexcept;
  /// The same for one event, which must not be dropped yet.
  void RemoveEvent(PEvent* aEvent) noexcept;

  /// Whether the calling thread is this worker.
  bool IsWorker() const noexcept {
    return m_Worker.load(std::memory_order_relaxed) == std::this_thread::get_id();
  }
  /// Whether the worker is past its last use of the object, or was stopped before it began.
  bool IsStopped() const noexcept { return (m_dwFlags & PTHREAD_STOPPED) != 0; }

  // Written under the state lock, to be read by anybody.
  Relaxed<int> m_iPriority{0};
  Relaxed<DWORD> m_dwPreferredCycle{0};
  Relaxed<DWORD> m_dwMustSleepCycle{0};
  Relaxed<DWORD> m_dwLastCycle{0};

 private:
  /// The rest of a pause. Events interrupt it and do not move its end. Milliseconds of the clock.
  struct PauseEnd {
    std::uint64_t m_uSleep = 0;
    std::optional<std::uint64_t> m_oWait;  // of the wait for a trigger, which begins after the sleep
  };

  void Body() noexcept;
  void NoteStopped() noexcept;
  bool ParkIfRequested() noexcept;
  PauseEnd EndCycle(std::uint64_t aStart) noexcept;
  unsigned Pause(PauseEnd& aEnd) noexcept;
  bool Sleep(std::unique_lock<std::mutex>& aGate, PauseEnd& aEnd) noexcept;
  bool WaitForTrigger(std::unique_lock<std::mutex>& aGate, PauseEnd& aEnd) noexcept;
  DWORD Remaining(std::uint64_t aEnd) noexcept;
  void RequestStop() noexcept;
  bool IsStopRequested() const noexcept { return (m_dwFlags & PTHREAD_STOP_REQUESTED) != 0; }
  void RunEvents() noexcept;
  bool TakeEvents() noexcept;
  static void GiveBack(PPointerArray<PEvent>& aEvents) noexcept;
  void RunNextEvent(int& aPosition, PEvent*& aEvent) noexcept;
  void CloseQueue() noexcept;
  template <class Predicate>
  void RemoveEventsIf(Predicate aMatches) noexcept;

  const CycleFunction m_pfnCycle;
  void* const m_pCycleArg;
  const Function m_pfnEnd;
  PClock& m_Clock;

  PCriticalSection m_StopLock;  // Start and Stop, one at a time
  std::thread m_Thread;
  std::atomic<std::thread::id> m_Worker{};
  std::atomic<DWORD> m_dwFlags{0};

  PCriticalSection m_StateLock;  // the parameters above, the members below, and the active part of each cycle
  DWORD m_dwThreadNumber = 0;    // the system's, while the worker lives
  bool m_bSuspendRequested = false;
  std::atomic<bool> m_bParked{false};
  std::atomic<bool> m_bParksHeld{false};

  std::atomic<bool> m_bControlled{false};
  std::atomic<DWORD> m_dwMaxWait{0};

  // What ends or interrupts a wait: a stop, a trigger, an event, a resume. Innermost lock, held for a look.
  std::mutex m_WakeGate;
  std::condition_variable m_Wake;
  bool m_bTriggered = false;   // auto-reset, as the next two
  bool m_bTaskPosted = false;  // since the last wait
  bool m_bSleepEnded = false;  // by EndSleep
  bool m_bHeldBack = false;    // started suspended
  unsigned m_uResumes = 0;     // a park ends at the next one

  PCriticalSection m_RunLock;      // held while one event runs and is dropped; taken before m_QueueLock
  PCriticalSection m_QueueLock;    // the members below, briefly
  PPointerArray<PEvent> m_Events;  // the queue
  PPointerArray<PEvent> m_Pass;    // what the pass in progress has yet to run
  PEvent* m_pRunning = nullptr;
  bool m_bDropRunning = false;  // the running event was removed: drop it after Run
  bool m_bQueueClosed = false;
};
