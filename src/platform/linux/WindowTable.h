// WindowTable: the component's windows with their procedures and user data, and who runs a procedure right
// now. Any thread. Windows of others have no record.

#pragma once

#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/Window.h"

class DisplayServer;

/// One window of the component's.
struct WindowRecord {
  /// One call of the procedure, on the stack of its thread.
  struct Call {
    const std::thread::id m_Thread;
    Call* m_pNext;
  };

  HWND m_hWnd = nullptr;
  std::uint64_t m_uNumber = 0;  // never used twice, as handles may be
  WNDPROC m_pfnProc = nullptr;
  std::shared_ptr<DisplayServer> m_pDisplay;
  LONG_PTR m_UserData = 0;
  bool m_bDestroyed = false;   // WM_DESTROY has been delivered, or is
  Call* m_pRunning = nullptr;  // the calls that run right now
};
using WindowRecordPtr = std::shared_ptr<WindowRecord>;

class WindowTable {
 public:
  /// The one table; lives as long as the process.
  static WindowTable& Get() noexcept;

  /// @return 0 when the name is taken
  ATOM RegisterWindowClass(const char* aName, WNDPROC aProc);
  bool UnregisterWindowClass(const char* aName) noexcept;
  WNDPROC ProcOfClass(const char* aName) noexcept;

  void Add(const WindowRecordPtr& aRecord);
  void Remove(HWND aWindow) noexcept;
  /// @return null for a window that isn't the component's
  WindowRecordPtr Find(HWND aWindow) noexcept;
  /// The number of a window's record; 0 for a window that isn't the component's.
  std::uint64_t NumberOf(HWND aWindow) noexcept;
  std::vector<HWND> OnDisplay(const DisplayServer* aDisplay);
  /// The display that a window stands on: its own, else the process's.
  std::shared_ptr<DisplayServer> DisplayOf(HWND aWindow) noexcept;

  /// Runs the procedure of a window on the calling thread.
  LRESULT Call(const WindowRecordPtr& aRecord, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept;
  /// Marks a window as destroyed. @return false when it was before
  bool MarkDestroyed(const WindowRecordPtr& aRecord) noexcept;

  /// Waits for procedures of the window that run on other threads.
  LONG_PTR SetUserData(HWND aWindow, LONG_PTR aValue) noexcept;
  LONG_PTR GetUserData(HWND aWindow) noexcept;

 private:
  std::mutex m_Lock;
  std::condition_variable m_ProcEnded;
  std::uint64_t m_uLastNumber = 0;
  std::map<HWND, WindowRecordPtr> m_Windows;
  std::map<std::string, WNDPROC, std::less<>> m_Classes;
};
