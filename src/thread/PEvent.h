// PEvent: a task that a thread posts to a worker thread, which runs it between two cycles.
// Any thread may create an event. Only the worker calls Run. The lifetime decides which thread drops it.

#pragma once

#include <atomic>

/// Base class of all tasks.
class PEvent {
 public:
  virtual ~PEvent() = default;
  PEvent(const PEvent&) = delete;
  PEvent& operator=(const PEvent&) = delete;

  /// Who drops an event.
  enum class Lifetime {
    kOneRun,    ///< the worker drops the event after its turn, also if it was not active
    kReusable,  ///< the event stays in the queue until its poster removes it. It starts inactive. Its Run
                ///< deactivates it, so that later passes skip it.
  };

  void Activate() noexcept { m_bActive = true; }
  void Deactivate() noexcept { m_bActive = false; }
  /// Does the work. Called on the worker. It may post further events, which run in the next cycle. It must
  /// not wait for a lock or result of a thread that is waiting for the worker. Throws nothing.
  virtual void Run() = 0;
  /// Called once when the queue no longer uses the event, also if the event never ran. Any thread. Deletes
  /// the event; reusable events override this.
  virtual void Drop() noexcept { delete this; }

  /// Identifies the owner in PThread::RemoveEvents. Not counted and never dereferenced.
  const void* const m_pOwner;
  /// Whether the event still has to run.
  std::atomic<bool> m_bActive;
  const Lifetime m_Lifetime;

 protected:
  PEvent(const void* aOwner, Lifetime aLifetime) noexcept
      : m_pOwner(aOwner), m_bActive(aLifetime == Lifetime::kOneRun), m_Lifetime(aLifetime) {}

 private:
  friend class PThread;
  PEvent* m_pNextRemoved = nullptr;  // links the events that one call removes from the queue
};
