// PThread: a worker thread that repeats one cycle until it is stopped, and its event queue.
// Each operation documents which threads may call it. The cycle function, events and pfnEnd run on the
// worker.

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

/// Sleep after a cycle, computed from the duration of its work. All times in milliseconds.
struct PPause {
  DWORD m_dwSleep;      ///< duration of the sleep of a free-running thread
  DWORD m_dwLastCycle;  ///< sum of the active time and that sleep

  /// @param aStart, aEnd ticks at the start and the end of the work; they may wrap around in between
  /// @param aPreferred preferred duration of a cycle
  /// @param aMustSleep shortest sleep
  static constexpr PPause After(DWORD aStart, DWORD aEnd, DWORD aPreferred, DWORD aMustSleep) noexcept {
    const DWORD elapsed = aEnd - aStart;
    const DWORD remaining = elapsed < aPreferred ? aPreferred - elapsed : 0;
    const DWORD sleep = remaining > aMustSleep ? remaining : aMustSleep;
    return {sleep, elapsed + sleep};
  }
};

/// A worker thread. In each cycle it parks if requested, runs the queued events, calls the cycle function,
/// and pauses. A free-running worker sleeps in the pause; a controlled worker waits for a trigger. An event
/// that is posted during the pause starts an extra cycle. The pause then continues and keeps its end time.
/// The cycle function receives the reasons for the cycle.
///
/// The worker holds the state lock during the active part of each cycle. Operations that take this lock wait
/// for the end of a running cycle; on the worker itself they do not wait. Owners hold the object by a shared
/// pointer. After Stop every operation returns at once.
class PThread {
 public:
  using Function = void (*)(void*);
  using CycleFunction = void (*)(void*, unsigned aWake);

  // Reasons for a cycle, as bits. Several may be set.
  static constexpr unsigned kTask = 1;       ///< an event was posted
  static constexpr unsigned kTrigger = 2;    ///< Trigger was called
  static constexpr unsigned kPauseOver = 4;  ///< the pause is over; also first cycle, and after a park
  static constexpr unsigned kStop = 8;       ///< a stop was requested; no further cycle

  // Bits of the flag word.
  static constexpr DWORD PTHREAD_STARTED = 2;
  static constexpr DWORD PTHREAD_STOP_REQUESTED = 4;
  static constexpr DWORD PTHREAD_STOPPED = 8;

  /// @param pfnCycle called once per cycle with pArg and the reasons for the cycle
  /// @param pfnEnd   called with pArg at the end of the worker
  PThread(CycleFunction pfnCycle, void* pArg, Function pfnEnd = nullptr,
          PClock& aClock = PClock::System()) noexcept;
  PThread(const PThread&) = delete;
  PThread& operator=(const PThread&) = delete;
  /// Stops the thread. Must not run on the worker.
  ~PThread();

  enum class FirstCycle { kAtOnce, kAfterResume };
  /// Creates the thread. Succeeds at most once per object.
  /// @return false if the system creates no thread, or after an earlier Start or Stop
  bool Start(DWORD aPreferredCycle, DWORD aMustSleepCycle, int aPriority,
             FirstCycle aFirstCycle = FirstCycle::kAtOnce) noexcept;
  /// Ends the thread at its next cycle, interrupts its waits, and waits for its end. Then drops the remaining
  /// events, reusable ones included. Any thread, any number of times. The caller must not hold a lock that
  /// the cycle may need. On the worker, Stop only requests the end.
  void Stop() noexcept;

  /// Defers parks until AllowParks: an earlier suspension takes effect then. Call before Start.
  void HoldParks() noexcept { m_bParksHeld = true; }
  /// Ends HoldParks. Any thread.
  void AllowParks() noexcept { m_bParksHeld = false; }
  /// Requests a park at the start of the next cycle. Any thread; waits for a running cycle.
  void RequestSuspend() noexcept;
  /// Returns whether the worker is parked. Any thread; waits for a running cycle.
  bool IsParked() noexcept;
  /// Like IsParked, but without waiting.
  bool IsParkedNow() const noexcept { return m_bParked; }
  /// Ends a park and cancels the request. Suspensions are not counted. Any thread; waits for a running cycle.
  void Resume() noexcept;

  /// Selects whether the worker sleeps (false) or waits for a trigger (true) in its pauses. Any thread,
  /// without waiting. Changing to false ends a wait for a trigger in progress.
  /// @param aMaxWait longest wait for a trigger in milliseconds; PClock::kForever for no limit. A wait in
  ///                 progress keeps its end time.
  void SetControlled(bool aControlled, DWORD aMaxWait) noexcept;
  /// Ends the wait of a controlled worker. During a cycle, it ends the wait after that cycle instead. Several
  /// calls during one cycle have the effect of one. Any thread.
  void Trigger() noexcept;
  /// Ends the sleep of a free-running worker. During a cycle, it ends the sleep after that cycle instead. A
  /// wait for a trigger continues. Any thread; no effect on the worker itself.
  void EndSleep() noexcept;

  // Each returns the old value. Any thread; waits for a running cycle.
  DWORD SetPreferredCycle(DWORD aValue) noexcept;
  DWORD SetMustSleepCycle(DWORD aValue) noexcept;
  int SetPriority(int aValue) noexcept;

  /// Queues an event and passes ownership to the worker. Any thread, at any time, without waiting.
  /// @return true if the event is in the queue now; false for null, after a stop, and if memory is
  /// insufficient. An event that is not queued is dropped.
  bool PostEvent(PEvent* aEvent) noexcept;
  /// Drops all events of an owner that have not run, and reusable events that have run. If one of them is
  /// running, waits for its end, except on the worker. The caller must not hold a lock that the event may
  /// need. Allocates no memory.
  void RemoveEvents(const void* aOwner) noexcept;
  /// Like RemoveEvents, for one event that has not been dropped yet.
  void RemoveEvent(PEvent* aEvent) noexcept;

  /// Returns whether the calling thread is this worker.
  bool IsWorker() const noexcept {
    return m_Worker.load(std::memory_order_relaxed) == std::this_thread::get_id();
  }
  /// Returns whether the worker no longer uses the object, or was stopped before it started.
  bool IsStopped() const noexcept { return (m_dwFlags & PTHREAD_STOPPED) != 0; }

  // Written under the state lock, read by any thread without it.
  Relaxed<int> m_iPriority{0};
  Relaxed<DWORD> m_dwPreferredCycle{0};
  Relaxed<DWORD> m_dwMustSleepCycle{0};
  Relaxed<DWORD> m_dwLastCycle{0};

 private:
  /// End times of the current pause in milliseconds of the clock. Events interrupt the pause but do not
  /// change them.
  struct PauseEnd {
    std::uint64_t m_uSleep = 0;
    std::optional<std::uint64_t> m_oWait;  // end of the wait for a trigger, which follows the sleep
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

  PCriticalSection m_StopLock;  // serialises Start and Stop
  std::thread m_Thread;
  std::atomic<std::thread::id> m_Worker{};
  std::atomic<DWORD> m_dwFlags{0};

  PCriticalSection m_StateLock;  // guards the parameters above and the members below; held in each cycle
  DWORD m_dwThreadNumber = 0;    // the system's thread number; 0 unless the worker runs
  bool m_bSuspendRequested = false;
  std::atomic<bool> m_bParked{false};
  std::atomic<bool> m_bParksHeld{false};

  std::atomic<bool> m_bControlled{false};
  std::atomic<DWORD> m_dwMaxWait{0};

  // Conditions that end or interrupt a wait: stop, trigger, event, resume. The innermost lock, held only to
  // read or set them.
  std::mutex m_WakeGate;
  std::condition_variable m_Wake;
  bool m_bTriggered = false;   // reset at the end of a pause, but not when an event interrupts it
  bool m_bTaskPosted = false;  // reset when a pause ends or is interrupted
  bool m_bSleepEnded = false;  // set by EndSleep; reset like m_bTriggered
  bool m_bHeldBack = false;    // started suspended, not yet resumed
  unsigned m_uResumes = 0;     // number of Resume calls; each change ends a park

  PCriticalSection m_RunLock;    // held while an event runs and is dropped; taken before m_QueueLock
  PCriticalSection m_QueueLock;  // guards the members below
  PPointerArray<PEvent> m_Events;
  PPointerArray<PEvent> m_Pass;  // events that the current pass has still to run
  PEvent* m_pRunning = nullptr;
  bool m_bDropRunning = false;  // the running event was removed: the worker drops it after Run
  bool m_bQueueClosed = false;
};
