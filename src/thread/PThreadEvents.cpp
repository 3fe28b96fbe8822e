// PThread's event queue: posting and removal from any thread, the passes on the worker.
// Events run and are deleted outside the queue's lock, so that they may post and take locks of their own.

#include "thread/PThread.h"

bool PThread::PostEvent(PEvent* aEvent) noexcept {
  if (aEvent == nullptr) return false;
  bool queued = false;
  {
    const PLock queue(m_QueueLock);
    queued = !m_bQueueClosed && (m_Events.Has(aEvent) || m_Events.Add(aEvent));
  }
  if (queued) {
    Wake();  // also one that sleeps as yet: it may be controlled by the end of its sleep
  } else {
    delete aEvent;
  }
  return queued;
}

/// One pass over what was queued before it, in slot order.
void PThread::RunEvents() noexcept {
  if (!TakeEvents()) return;
  int position = -1;
  PEvent* event = nullptr;
  do {
    RunNextEvent(position, event);
  } while (event != nullptr);
}

/// Copies the queue into the pass, and takes out what isn't kept. @return false when there is nothing to run
bool PThread::TakeEvents() noexcept {
  const PLock queue(m_QueueLock);
  int position = 0;
  for (PEvent* event = m_Events.GetFirst(position); event != nullptr; event = m_Events.GetNext(position)) {
    if (!m_Pass.Add(event)) break;  // no memory: the rest waits for the next pass
    if (!event->m_bKeep) m_Events.Remove(event);
  }
  m_Events.Pack();
  return m_Pass.GetSlots() != 0;
}

/// Runs the next event of the pass that nobody has removed meanwhile; gives null at its end.
void PThread::RunNextEvent(int& aPosition, PEvent*& aEvent) noexcept {
  const PLock running(m_RunLock);
  {
    const PLock queue(m_QueueLock);
    aEvent = aPosition < 0 ? m_Pass.GetFirst(aPosition) : m_Pass.GetNext(aPosition);
    m_pRunning = aEvent;
    if (aEvent == nullptr) {
      m_Pass.Pack();
      return;
    }
    m_Pass.Remove(aEvent);
  }
  bool drop = !aEvent->m_bKeep;  // a kept event is its poster's as soon as Run is over
  if (aEvent->m_bActive) aEvent->Run();
  {
    const PLock queue(m_QueueLock);
    drop = drop || m_bDropRunning;
    m_pRunning = nullptr;
    m_bDropRunning = false;
  }
  if (drop) delete aEvent;
}

void PThread::RemoveEvents(const void* aOwner) noexcept {
  RemoveEventsIf([&](const PEvent* aEvent) { return aEvent->m_pOwner == aOwner; });
}

void PThread::RemoveEvent(PEvent* aEvent) noexcept {
  if (aEvent == nullptr) return;
  RemoveEventsIf([&](const PEvent* aCandidate) { return aCandidate == aEvent; });
}

template <class Predicate>
void PThread::RemoveEventsIf(Predicate aMatches) noexcept {
  PPointerArray<PEvent> removed;
  const auto takeFrom = [&](PPointerArray<PEvent>& aEvents) {
    int position = 0;
    for (PEvent* event = aEvents.GetFirst(position); event != nullptr; event = aEvents.GetNext(position)) {
      if (!aMatches(event)) continue;
      if (event != m_pRunning && !removed.Has(event) && !removed.Add(event)) continue;  // no memory: it stays
      aEvents.Remove(event);
    }
  };
  bool runs = false;
  {
    const PLock queue(m_QueueLock);
    runs = m_pRunning != nullptr && aMatches(m_pRunning);
    takeFrom(m_Pass);
    takeFrom(m_Events);
    m_Events.Pack();
    // A kept event that runs belongs to nobody now; the worker deletes it, as it does one that isn't kept.
    if (runs) m_bDropRunning = true;
  }
  if (runs && !IsWorker()) const PLock ended(m_RunLock);
  int position = 0;
  for (PEvent* event = removed.GetFirst(position); event != nullptr; event = removed.GetNext(position)) {
    delete event;
  }
}

/// The end of the queue, after the worker's: what is left doesn't run.
void PThread::CloseQueue() noexcept {
  {
    const PLock queue(m_QueueLock);
    m_bQueueClosed = true;
  }
  // Nobody adds from here on; an event's end may still remove others.
  for (;;) {
    PEvent* event = nullptr;
    {
      const PLock queue(m_QueueLock);
      int position = 0;
      event = m_Events.GetFirst(position);
      if (event == nullptr) {
        m_Events.Pack();
        return;
      }
      m_Events.Remove(event);
    }
    delete event;
  }
}
