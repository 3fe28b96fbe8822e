// MessageThread: the layer's own thread that runs window procedures and the message hook.
// Started at a message, ended with the module, and started again by a message that comes later. Posting is
// for any thread and never waits.

#pragma once

#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>

#include "platform/Window.h"

class MessageThread {
 public:
  /// The one thread's owner; lives as long as the process.
  static MessageThread& Get() noexcept;

  bool Post(HWND aWindow, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept;
  /// @return false when there is a hook already
  bool SetHook(HOOKPROC aHook) noexcept;
  void ClearHook() noexcept;
  /// Ends the thread after the message that it delivers; the others are dropped. Not on the thread itself.
  void End() noexcept;

 private:
  struct Message {
    HWND m_hWnd;
    std::uint64_t m_uRecord;  // the window's record at the time of posting; 0 for a window of another's
    UINT m_uMsg;
    WPARAM m_wParam;
    LPARAM m_lParam;
  };

  void Body() noexcept;
  void Deliver(const Message& aMessage) noexcept;

  std::mutex m_Lock;
  std::condition_variable m_Changed;
  std::list<Message> m_Queue;  // an empty one holds no memory, which an unloaded module would leave behind
  std::thread m_Thread;
  HOOKPROC m_pfnHook = nullptr;
  bool m_bStop = false;
};
