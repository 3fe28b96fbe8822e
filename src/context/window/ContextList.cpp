// The list of live contexts and the process's one message hook.
// g_ContextsLock is held through a whole walk, so that no context goes away during it; posting doesn't wait.

#include "context/window/ContextList.h"

#include <utility>

#include "context/GLContext.h"
#include "thread/PPointerArray.h"

namespace {

PCriticalSection g_ContextsLock;
PPointerArray<GLContext> g_Contexts(&g_ContextsLock);
HHOOK g_hMessageHook = nullptr;  // guarded by g_ContextsLock

HHOOK CurrentHook() noexcept {
  const PLock lock(g_ContextsLock);
  return g_hMessageHook;
}

bool IsForGLWindows(UINT aMessage) noexcept {
  return aMessage == WM_QUERYNEWPALETTE || aMessage == WM_PALETTECHANGED || aMessage == WM_SYSCOLORCHANGE;
}

HWND TopLevelOf(HWND aWindow) noexcept {
  while (const HWND parent = GetParent(aWindow)) aWindow = parent;
  return aWindow;
}

// Only the first context's top-level window counts; on a match every context is served. One without a parent
// is its own top-level window and has had the message.
void PassDown(const CWPRETSTRUCT& aMessage) noexcept {
  const PLock lock(g_ContextsLock);
  int position = 0;
  GLContext* context = g_Contexts.GetFirst(position);
  if (context == nullptr || TopLevelOf(context->Window()) != aMessage.hwnd) return;
  for (; context != nullptr; context = g_Contexts.GetNext(position)) {
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

void AddToContextList(GLContext& aContext) noexcept { g_Contexts.Add(&aContext); }

void RemoveFromContextList(GLContext& aContext) noexcept {
  HHOOK hook = nullptr;
  {
    const PLock lock(g_ContextsLock);
    g_Contexts.Remove(&aContext);
    if (g_Contexts.GetCount() == 0) hook = std::exchange(g_hMessageHook, nullptr);
  }
  if (hook != nullptr) UnhookWindowsHookEx(hook);
}

void InstallMessageHook() noexcept {
  if (CurrentHook() != nullptr) return;
  // Installed with no lock held, since a hook that runs at the time wants it.
  HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROCRET, MessageHookProc, nullptr, GetCurrentThreadId());
  {
    const PLock lock(g_ContextsLock);
    if (g_hMessageHook == nullptr) std::swap(g_hMessageHook, hook);
  }
  if (hook != nullptr) UnhookWindowsHookEx(hook);  // another thread was first
}

int CountContexts() noexcept { return g_Contexts.GetCount(); }
