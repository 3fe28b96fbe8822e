// PEvent: a task that a poster hands to a worker thread, which runs it between two cycles.
// Made by any thread; Run on the worker alone; who drops it is told at m_bKeep.

#pragma once

#include <atomic>

/// The base of all tasks.
class PEvent {
 public:
  virtual ~PEvent() = default;
  PEvent(const PEvent&) = delete;
  PEvent& operator=(const PEvent&) = delete;

  virtual void SetActive(bool aActive) { m_bActive = aActive; }
  /// Does the work, on the worker. It may post further events, which run in the next cycle. It must not wait
  /// for anything that a thread holds while it calls the worker. Lets no exception out.
  virtual void Run() = 0;
  /// The queue's last use of the event, also of one that never ran. Any thread. Deletes it, unless an event
  /// that is used again does something else.
  virtual void Drop() noexcept { delete this; }

  /// In whose name the event is posted, the key of PThread::RemoveEvents. Not counted, never followed.
  const void* const m_pOwner;
  /// The event still has to run.
  std::atomic<bool> m_bActive;
  /// False: the worker drops the event after it has had its turn. True: the event stays in the queue, and
  /// its poster takes it out; its Run then clears m_bActive, so that later passes skip it.
  const bool m_bKeep;

 protected:
  PEvent(const void* aOwner, bool aActive, bool aKeep) noexcept
      : m_pOwner(aOwner), m_bActive(aActive), m_bKeep(aKeep) {}

 private:
  friend class PThread;
  PEvent* m_pNextRemoved = nullptr;  // of those that one call takes out of the queue
};
