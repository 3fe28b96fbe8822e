// Destruction of windows from other threads. Any thread.

#include "platform/Window.h"

BOOL EndWindow(HWND hWnd) noexcept {
  constexpr UINT kPatience = 3000;
  if (DestroyWindow(hWnd) != FALSE) return TRUE;
  if (IsWindow(hWnd) == FALSE) return FALSE;
  DWORD_PTR result = 0;
  return SendMessageTimeoutA(hWnd, WM_CLOSE, 0, 0, SMTO_NORMAL, kPatience, &result) != 0 ? TRUE : FALSE;
}

bool CanDestroyHere(HWND hWnd) noexcept {
  return IsWindow(hWnd) == FALSE || GetWindowThreadProcessId(hWnd, nullptr) == GetCurrentThreadId();
}
