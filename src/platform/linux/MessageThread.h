// MessageThread: the platform layer's thread that runs window procedures and the message hook. A message
// starts it; it ends with the module, and a later message starts it again. Any thread may post; posting never
// blocks.

#pragma once

#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>

#include "platform/Window.h"

class MessageThread {
 public:
  /// Returns the one instance, which exists until the process ends.
  static MessageThread& Get() noexcept;

  bool Post(HWND aWindow, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept;
  /// @return false if a hook is already set
  bool SetHook(HOOKPROC aHook) noexcept;
  void ClearHook() noexcept;
  /// Ends the thread after the current message and drops the others. Must not run on that thread.
  void End() noexcept;

 private:
  struct Message {
    HWND m_hWnd;
    std::uint64_t m_uRecord;  // number of the window's record when posted; 0 for a window of another program
    UINT m_uMsg;
    WPARAM m_wParam;
    LPARAM m_lParam;
  };

  void Body() noexcept;
  void Deliver(const Message& aMessage) noexcept;

  std::mutex m_Lock;
  std::condition_variable m_Changed;
  // a list, since an empty one holds no memory that an unloaded module would leak
  std::list<Message> m_Queue;
  std::thread m_Thread;
  HOOKPROC m_pfnHook = nullptr;
  bool m_bStop = false;
};
