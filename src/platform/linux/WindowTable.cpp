// WindowTable: the component's windows. Any thread; no lock is held while a procedure runs.

#include "platform/linux/WindowTable.h"

#include <utility>

#include "platform/ProcessWide.h"
#include "platform/linux/display/DisplayServer.h"

WindowTable& WindowTable::Get() noexcept {
  static constinit ProcessWide<WindowTable> table;
  return table.Get();
}

ATOM WindowTable::RegisterWindowClass(const char* aName, WNDPROC aProc) {
  const std::scoped_lock lock(m_Lock);
  if (!m_Classes.emplace(aName, aProc).second) return 0;
  return static_cast<ATOM>(0xC000 + m_Classes.size());
}

bool WindowTable::UnregisterWindowClass(const char* aName) noexcept {
  const std::scoped_lock lock(m_Lock);
  const auto found = m_Classes.find(aName);
  if (found == m_Classes.end()) return false;
  m_Classes.erase(found);
  return true;
}

WNDPROC WindowTable::ProcOfClass(const char* aName) noexcept {
  const std::scoped_lock lock(m_Lock);
  const auto found = m_Classes.find(aName);
  return found != m_Classes.end() ? found->second : nullptr;
}

void WindowTable::Add(const WindowRecordPtr& aRecord) {
  const std::scoped_lock lock(m_Lock);
  aRecord->m_uNumber = ++m_uLastNumber;
  m_Windows[aRecord->m_hWnd] = aRecord;
}

void WindowTable::Remove(HWND aWindow) noexcept {
  const std::scoped_lock lock(m_Lock);
  m_Windows.erase(aWindow);
}

WindowRecordPtr WindowTable::Find(HWND aWindow) noexcept {
  const std::scoped_lock lock(m_Lock);
  const auto found = m_Windows.find(aWindow);
  return found != m_Windows.end() ? found->second : nullptr;
}

std::uint64_t WindowTable::NumberOf(HWND aWindow) noexcept {
  const std::scoped_lock lock(m_Lock);
  const auto found = m_Windows.find(aWindow);
  return found != m_Windows.end() ? found->second->m_uNumber : 0;
}

std::vector<HWND> WindowTable::OnDisplay(const DisplayServer* aDisplay) {
  const std::scoped_lock lock(m_Lock);
  std::vector<HWND> windows;
  for (const auto& [window, record] : m_Windows) {
    if (record->m_pDisplay.get() == aDisplay) windows.push_back(window);
  }
  return windows;
}

// Uses the display of the record: after a change of server the same number may name another program's window
// on the new display.
std::shared_ptr<DisplayServer> WindowTable::DisplayOf(HWND aWindow) noexcept {
  const WindowRecordPtr record = Find(aWindow);
  return record != nullptr ? record->m_pDisplay : TheDisplay();
}

LRESULT WindowTable::Call(const WindowRecordPtr& aRecord, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept {
  WindowRecord::Call here{std::this_thread::get_id(), nullptr};
  {
    const std::scoped_lock lock(m_Lock);
    here.m_pNext = std::exchange(aRecord->m_pRunning, &here);
  }
  const LRESULT result = aRecord->m_pfnProc(aRecord->m_hWnd, uMsg, wParam, lParam);
  const std::scoped_lock lock(m_Lock);
  WindowRecord::Call** link = &aRecord->m_pRunning;
  while (*link != &here) link = &(*link)->m_pNext;
  *link = here.m_pNext;
  m_ProcEnded.notify_all();
  return result;
}

bool WindowTable::MarkDestroyed(const WindowRecordPtr& aRecord) noexcept {
  const std::scoped_lock lock(m_Lock);
  return !std::exchange(aRecord->m_bDestroyed, true);
}

LONG_PTR WindowTable::SetUserData(HWND aWindow, LONG_PTR aValue) noexcept {
  std::unique_lock lock(m_Lock);
  const auto found = m_Windows.find(aWindow);
  if (found == m_Windows.end()) return 0;
  const WindowRecordPtr record = found->second;
  const LONG_PTR old = std::exchange(record->m_UserData, aValue);
  const auto here = std::this_thread::get_id();
  m_ProcEnded.wait(lock, [&] {
    const WindowRecord::Call* call = record->m_pRunning;
    while (call != nullptr && call->m_Thread == here) call = call->m_pNext;
    return call == nullptr;
  });
  return old;
}

LONG_PTR WindowTable::GetUserData(HWND aWindow) noexcept {
  const std::scoped_lock lock(m_Lock);
  const auto found = m_Windows.find(aWindow);
  return found != m_Windows.end() ? found->second->m_UserData : 0;
}
