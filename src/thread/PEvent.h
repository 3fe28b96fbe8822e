// PEvent: a task that a thread posts to a worker thread, which runs it between two cycles.
// Any thread may create an event. Only the worker calls Run. m_bKeep decides which thread drops the event.

#pragma once

#include <atomic>

/// Base class of all tasks.
class PEvent {
 public:
  virtual ~PEvent() = default;
  PEvent(const PEvent&) = delete;
  PEvent& operator=(const PEvent&) = delete;

  virtual void SetActive(bool aActive) { m_bActive = aActive; }
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
  /// False: the worker drops the event after its turn, also if it was not active. True: the event stays in
  /// the queue until its poster removes it. Its Run then clears m_bActive, so that later passes skip it.
  const bool m_bKeep;

 protected:
  PEvent(const void* aOwner, bool aActive, bool aKeep) noexcept
      : m_pOwner(aOwner), m_bActive(aActive), m_bKeep(aKeep) {}

 private:
  friend class PThread;
  PEvent* m_pNextRemoved = nullptr;  // links the events that one call removes from the queue
};
