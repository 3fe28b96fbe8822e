// ContextList: the list of live contexts and the message hook of the process.
// Any thread. The lock is held during a whole walk, so that no context is destroyed meanwhile. Posting a
// message does not wait.

#include "context/window/ContextList.h"

#include <utility>

#include "component/ModuleEnd.h"
#include "context/GLContext.h"
#include "platform/ProcessWide.h"
#include "thread/PPointerArray.h"

namespace {

struct List {
  PCriticalSection m_Lock;
  PPointerArray<GLContext> m_Contexts{&m_Lock};
  HHOOK m_hHook = nullptr;  // guarded by m_Lock
};

constinit ProcessWide<List> g_List;

HHOOK CurrentHook() noexcept {
  List& list = g_List.Get();
  const PLock lock(list.m_Lock);
  return list.m_hHook;
}

bool IsForGLWindows(UINT aMessage) noexcept {
  return aMessage == WM_QUERYNEWPALETTE || aMessage == WM_PALETTECHANGED || aMessage == WM_SYSCOLORCHANGE;
}

HWND TopLevelOf(HWND aWindow) noexcept {
  while (const HWND parent = GetParent(aWindow)) aWindow = parent;
  return aWindow;
}

// Compares only the top-level window of the first context. If it matches, posts to the windows of all
// contexts. A window without a parent is the top-level window itself and has already received the message.
void PassDown(const CWPRETSTRUCT& aMessage) noexcept {
  List& list = g_List.Get();
  const PLock lock(list.m_Lock);
  int position = 0;
  GLContext* context = list.m_Contexts.GetFirst(position);
  if (context == nullptr || TopLevelOf(context->Window()) != aMessage.hwnd) return;
  for (; context != nullptr; context = list.m_Contexts.GetNext(position)) {
    const HWND window = context->Window();
    if (window != nullptr && window != aMessage.hwnd)
      PostMessageA(window, aMessage.message, aMessage.wParam, aMessage.lParam);
  }
}

LRESULT MessageHookProc(int nCode, WPARAM wParam, LPARAM lParam) noexcept {
  const auto* message = reinterpret_cast<const CWPRETSTRUCT*>(lParam);
  if (nCode == HC_ACTION && message != nullptr && IsForGLWindows(message->message)) PassDown(*message);
  return CallNextHookEx(CurrentHook(), nCode, wParam, lParam);
}

}  // namespace

void AddToContextList(GLContext& aContext) noexcept {
  ModuleEnd::KeepLoaded();
  g_List.Get().m_Contexts.Add(&aContext);
}

void RemoveFromContextList(GLContext& aContext) noexcept {
  List& list = g_List.Get();
  HHOOK hook = nullptr;
  {
    const PLock lock(list.m_Lock);
    list.m_Contexts.Remove(&aContext);
    list.m_Contexts.Pack();  // the list outlives the module, so its slots are freed here
    if (list.m_Contexts.GetCount() == 0) hook = std::exchange(list.m_hHook, nullptr);
  }
  if (hook != nullptr) UnhookWindowsHookEx(hook);
}

void InstallMessageHook() noexcept {
  if (CurrentHook() != nullptr) return;
  // Called without the lock, because a hook that runs now takes it.
  HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROCRET, MessageHookProc, nullptr, GetCurrentThreadId());
  List& list = g_List.Get();
  {
    const PLock lock(list.m_Lock);
    if (list.m_hHook == nullptr) std::swap(list.m_hHook, hook);
  }
  if (hook != nullptr) UnhookWindowsHookEx(hook);  // another thread has installed a hook
}

int CountContexts() noexcept { return g_List.Get().m_Contexts.GetCount(); }
