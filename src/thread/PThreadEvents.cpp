// PThread: the event queue. Any thread posts and removes events; the worker runs them in passes.
// Events run and are dropped without the queue's lock, so they may post events and take other locks.

#include "thread/PThread.h"

bool PThread::PostEvent(PEvent* aEvent) noexcept {
  if (aEvent == nullptr) return false;
  bool queued = false;
  {
    const PLock queue(m_QueueLock);
    queued = !m_bQueueClosed && (m_Events.Has(aEvent) || m_Events.Add(aEvent));
  }
  if (queued) {
    const std::lock_guard gate(m_WakeGate);
    m_bTaskPosted = true;
    m_Wake.notify_all();
  } else {
    aEvent->Drop();
  }
  return queued;
}

// Runs the events that were queued before this pass, in slot order.
void PThread::RunEvents() noexcept {
  if (!TakeEvents()) return;
  int position = -1;
  PEvent* event = nullptr;
  do {
    RunNextEvent(position, event);
  } while (event != nullptr);
}

// Copies the queue into the pass. Events of one run leave the queue, reusable events stay in it. Returns
// false if there is no event to run.
bool PThread::TakeEvents() noexcept {
  const PLock queue(m_QueueLock);
  int position = 0;
  for (PEvent* event = m_Events.GetFirst(position); event != nullptr; event = m_Events.GetNext(position)) {
    if (!m_Pass.Add(event)) break;  // insufficient memory: the other events wait for the next pass
    if (event->m_Lifetime == PEvent::Lifetime::kOneRun) m_Events.Remove(event);
  }
  GiveBack(m_Events);
  return m_Pass.GetCount() != 0;
}

// Frees unused slots. An array of the smallest size keeps its memory, so that occasional events allocate
// none.
void PThread::GiveBack(PPointerArray<PEvent>& aEvents) noexcept {
  if (aEvents.GetSlots() > PPointerArray<PEvent>::kGrowBy) aEvents.Pack();
}

// Runs the next event of the pass that was not removed in the meantime. aEvent is null at the end of the
// pass.
void PThread::RunNextEvent(int& aPosition, PEvent*& aEvent) noexcept {
  const PLock running(m_RunLock);
  {
    const PLock queue(m_QueueLock);
    aEvent = aPosition < 0 ? m_Pass.GetFirst(aPosition) : m_Pass.GetNext(aPosition);
    m_pRunning = aEvent;
    if (aEvent == nullptr) {
      GiveBack(m_Pass);
      return;
    }
    m_Pass.Remove(aEvent);
  }
  // Read before Run: the poster may delete a reusable event as soon as Run returns.
  bool drop = aEvent->m_Lifetime == PEvent::Lifetime::kOneRun;
  if (aEvent->m_bActive) aEvent->Run();
  {
    const PLock queue(m_QueueLock);
    drop = drop || m_bDropRunning;
    m_pRunning = nullptr;
    m_bDropRunning = false;
  }
  if (drop) aEvent->Drop();
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
  PEvent* first = nullptr;
  PEvent** last = &first;
  const auto takeFrom = [&](PPointerArray<PEvent>& aEvents) {
    int position = 0;
    for (PEvent* event = aEvents.GetFirst(position); event != nullptr; event = aEvents.GetNext(position)) {
      if (!aMatches(event)) continue;
      aEvents.Remove(event);
      if (event == m_pRunning || m_Events.Has(event))
        continue;  // a reusable event of the pass is in both arrays
      event->m_pNextRemoved = nullptr;
      *last = event;
      last = &event->m_pNextRemoved;
    }
  };
  bool runs = false;
  {
    const PLock queue(m_QueueLock);
    runs = m_pRunning != nullptr && aMatches(m_pRunning);
    takeFrom(m_Pass);
    takeFrom(m_Events);
    GiveBack(m_Events);
    // A reusable event that is running has no owner now. The worker drops it after Run, like an event of one
    // run.
    if (runs) m_bDropRunning = true;
  }
  if (runs && !IsWorker()) const PLock ended(m_RunLock);
  while (first != nullptr) {
    PEvent* const next = first->m_pNextRemoved;
    first->Drop();
    first = next;
  }
}

// Drops the remaining events without running them. Called after the worker's end.
void PThread::CloseQueue() noexcept {
  {
    const PLock queue(m_QueueLock);
    m_bQueueClosed = true;
  }
  // No event is added from here on. Dropping an event may still remove others.
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
    event->Drop();
  }
}
