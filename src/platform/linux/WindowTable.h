// WindowTable: the component's windows with their procedures and user data, and the procedures that run now.
// Any thread. Windows of other programs have no record.

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

/// One window of the component.
struct WindowRecord {
  /// One running call of the procedure, on the stack of its thread.
  struct Call {
    const std::thread::id m_Thread;
    Call* m_pNext;
  };

  HWND m_hWnd = nullptr;
  std::uint64_t m_uNumber = 0;  // unique, unlike handles, which may be reused
  WNDPROC m_pfnProc = nullptr;
  std::shared_ptr<DisplayServer> m_pDisplay;
  LONG_PTR m_UserData = 0;
  bool m_bDestroyed = false;   // WM_DESTROY has been delivered or is being delivered
  Call* m_pRunning = nullptr;  // the calls that run now
};
using WindowRecordPtr = std::shared_ptr<WindowRecord>;

class WindowTable {
 public:
  /// Returns the one table, which exists until the process ends.
  static WindowTable& Get() noexcept;

  /// @return 0 if the name is taken
  ATOM RegisterWindowClass(const char* aName, WNDPROC aProc);
  bool UnregisterWindowClass(const char* aName) noexcept;
  WNDPROC ProcOfClass(const char* aName) noexcept;

  void Add(const WindowRecordPtr& aRecord);
  void Remove(HWND aWindow) noexcept;
  /// @return null if the window is not the component's
  WindowRecordPtr Find(HWND aWindow) noexcept;
  /// Returns the number of a window's record; 0 if the window is not the component's.
  std::uint64_t NumberOf(HWND aWindow) noexcept;
  std::vector<HWND> OnDisplay(const DisplayServer* aDisplay);
  /// Returns the display of a window: the one in its record, else the process's current display.
  std::shared_ptr<DisplayServer> DisplayOf(HWND aWindow) noexcept;

  /// Runs the procedure of a window on the calling thread.
  LRESULT Call(const WindowRecordPtr& aRecord, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept;
  /// Marks a window as destroyed.
  /// @return false if it already was
  bool MarkDestroyed(const WindowRecordPtr& aRecord) noexcept;

  /// Sets the user data and waits for procedures of the window that run on other threads.
  LONG_PTR SetUserData(HWND aWindow, LONG_PTR aValue) noexcept;
  LONG_PTR GetUserData(HWND aWindow) noexcept;

 private:
  std::mutex m_Lock;
  std::condition_variable m_ProcEnded;
  std::uint64_t m_uLastNumber = 0;
  std::map<HWND, WindowRecordPtr> m_Windows;
  std::map<std::string, WNDPROC, std::less<>> m_Classes;
};
