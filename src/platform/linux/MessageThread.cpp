// MessageThread: runs window procedures and the message hook, one message at a time.

#include "platform/linux/MessageThread.h"

#include "platform/ProcessWide.h"
#include "platform/Thread.h"
#include "platform/linux/WindowTable.h"

MessageThread& MessageThread::Get() noexcept {
  static constinit ProcessWide<MessageThread> thread;
  return thread.Get();
}

bool MessageThread::Post(HWND aWindow, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept {
  const std::uint64_t record = WindowTable::Get().NumberOf(aWindow);
  const std::scoped_lock lock(m_Lock);
  if (m_bStop) return false;
  try {
    if (!m_Thread.joinable()) m_Thread = StartThread([this] { Body(); });
    m_Queue.push_back({aWindow, record, uMsg, wParam, lParam});
  } catch (...) {
    return false;
  }
  m_Changed.notify_all();
  return true;
}

bool MessageThread::SetHook(HOOKPROC aHook) noexcept {
  const std::scoped_lock lock(m_Lock);
  if (m_pfnHook != nullptr) return false;
  m_pfnHook = aHook;
  return true;
}

void MessageThread::ClearHook() noexcept {
  const std::scoped_lock lock(m_Lock);
  m_pfnHook = nullptr;
}

void MessageThread::End() noexcept {
  {
    const std::scoped_lock lock(m_Lock);
    if (!m_Thread.joinable()) return;
    m_bStop = true;
    m_Changed.notify_all();
  }
  m_Thread.join();
  const std::scoped_lock lock(m_Lock);
  m_Thread = std::thread();
  m_Queue.clear();
  m_bStop = false;
}

void MessageThread::Body() noexcept {
  std::unique_lock lock(m_Lock);
  for (;;) {
    m_Changed.wait(lock, [this] { return m_bStop || !m_Queue.empty(); });
    if (m_bStop) return;
    const Message message = m_Queue.front();
    m_Queue.pop_front();
    lock.unlock();
    Deliver(message);
    lock.lock();
  }
}

// The hook runs after the window procedure. For a window of another program it receives the posted message.
// Messages for a destroyed window are dropped, also if a new window has the same handle.
void MessageThread::Deliver(const Message& aMessage) noexcept {
  WindowTable& table = WindowTable::Get();
  const WindowRecordPtr record = table.Find(aMessage.m_hWnd);
  if (aMessage.m_uRecord != (record != nullptr ? record->m_uNumber : 0)) return;
  CWPRETSTRUCT seen{0, aMessage.m_lParam, aMessage.m_wParam, aMessage.m_uMsg, aMessage.m_hWnd};
  if (record != nullptr) {
    if (aMessage.m_uMsg == WM_DESTROY && !table.MarkDestroyed(record)) return;
    seen.lResult = table.Call(record, aMessage.m_uMsg, aMessage.m_wParam, aMessage.m_lParam);
  }
  HOOKPROC hook = nullptr;
  {
    const std::scoped_lock lock(m_Lock);
    hook = m_pfnHook;
  }
  if (hook != nullptr) hook(HC_ACTION, 0, reinterpret_cast<LPARAM>(&seen));
}
