// Windows: the documented operations, based on the display's windows and the window table. Any thread.

#include "platform/Window.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>

#include "platform/Thread.h"
#include "platform/linux/MessageThread.h"
#include "platform/linux/WindowTable.h"
#include "platform/linux/display/DisplayServer.h"

namespace {

HHOOK const kHook = reinterpret_cast<HHOOK>(std::uintptr_t{1});

// Runs WM_CREATE on a separate thread: contexts that the procedure makes current must not affect the caller's
// thread.
LRESULT DeliverCreate(const WindowRecordPtr& aRecord, CREATESTRUCTA aCreate) {
  LRESULT result = -1;
  StartThread([&] {
    result = WindowTable::Get().Call(aRecord, WM_CREATE, 0, reinterpret_cast<LPARAM>(&aCreate));
    wglMakeCurrent(nullptr, nullptr);  // a context that is current on an ended thread could not be destroyed
  }).join();
  return result;
}

/// Returns a rectangle whose edges can be added and subtracted without overflow. A negative length becomes 0.
RECT Placed(int x, int y, int aWidth, int aHeight) noexcept {
  constexpr int kFar = 0x3FFFFFFF;
  const int left = std::clamp(x, -kFar, kFar), top = std::clamp(y, -kFar, kFar);
  return {left, top, left + std::clamp(aWidth, 0, kFar), top + std::clamp(aHeight, 0, kFar)};
}

}  // namespace

HINSTANCE ModuleInstance() noexcept { return nullptr; }

ATOM RegisterClassA(const WNDCLASSA* pClass) noexcept {
  try {
    return WindowTable::Get().RegisterWindowClass(pClass->lpszClassName, pClass->lpfnWndProc);
  } catch (...) {
    return 0;
  }
}

BOOL UnregisterClassA(const char* szClass, HINSTANCE) noexcept {
  return WindowTable::Get().UnregisterWindowClass(szClass) ? TRUE : FALSE;
}

HCURSOR LoadCursorA(HINSTANCE, const char*) noexcept { return nullptr; }

HWND CreateWindowExA(DWORD dwExStyle, const char* szClass, const char* szTitle, DWORD dwStyle, int x, int y,
                     int nWidth, int nHeight, HWND hParent, HMENU hMenu, HINSTANCE hInstance,
                     void* pParam) noexcept {
  const auto display = TheDisplay();
  const WNDPROC proc = WindowTable::Get().ProcOfClass(szClass);
  if (display == nullptr || proc == nullptr) return nullptr;
  if (x == CW_USEDEFAULT) x = y = nWidth = nHeight = 0;
  const HWND window = display->MakeWindow(hParent, Placed(x, y, nWidth, nHeight));
  if (window == nullptr) return nullptr;
  try {
    const auto record = std::make_shared<WindowRecord>();
    record->m_hWnd = window;
    record->m_pfnProc = proc;
    record->m_pDisplay = display;
    WindowTable::Get().Add(record);
    const CREATESTRUCTA create{
        pParam,  hInstance, hMenu,    hParent, nHeight, nWidth, y, x, static_cast<LONG>(dwStyle),
        szTitle, szClass,   dwExStyle};
    const bool willing = DeliverCreate(record, create) != -1;
    if (willing && ((dwStyle & WS_VISIBLE) == 0 || display->Show(window))) return window;
  } catch (...) {
    // handled as if the procedure had refused the window
  }
  WindowTable::Get().Remove(window);
  display->EndWindow(window);
  return nullptr;
}

BOOL DestroyWindow(HWND hWnd) noexcept {
  WindowTable& table = WindowTable::Get();
  const WindowRecordPtr record = table.Find(hWnd);
  if (record == nullptr) return FALSE;
  if (table.MarkDestroyed(record)) table.Call(record, WM_DESTROY, 0, 0);
  table.Remove(hWnd);
  record->m_pDisplay->EndWindow(hWnd);
  return TRUE;
}

LRESULT DefWindowProcA(HWND, UINT, WPARAM, LPARAM) noexcept { return 0; }

LONG_PTR SetWindowLongPtrA(HWND hWnd, int nIndex, LONG_PTR value) noexcept {
  return nIndex == GWLP_USERDATA ? WindowTable::Get().SetUserData(hWnd, value) : 0;
}

LONG_PTR GetWindowLongPtrA(HWND hWnd, int nIndex) noexcept {
  return nIndex == GWLP_USERDATA ? WindowTable::Get().GetUserData(hWnd) : 0;
}

BOOL GetWindowRect(HWND hWnd, RECT* pRect) noexcept {
  const auto display = WindowTable::Get().DisplayOf(hWnd);
  return display != nullptr && pRect != nullptr && display->ScreenRectangle(hWnd, pRect) ? TRUE : FALSE;
}

BOOL ScreenToClient(HWND hWnd, POINT* pPoint) noexcept {
  RECT rect{};
  if (pPoint == nullptr || !GetWindowRect(hWnd, &rect)) return FALSE;
  pPoint->x -= rect.left;
  pPoint->y -= rect.top;
  return TRUE;
}

HWND GetParent(HWND hWnd) noexcept {
  const auto display = WindowTable::Get().DisplayOf(hWnd);
  return display != nullptr && hWnd != nullptr ? display->ParentOf(hWnd) : nullptr;
}

BOOL MoveWindow(HWND hWnd, int x, int y, int nWidth, int nHeight, BOOL) noexcept {
  const auto display = WindowTable::Get().DisplayOf(hWnd);
  return display != nullptr && hWnd != nullptr && display->Place(hWnd, x, y, nWidth, nHeight) ? TRUE : FALSE;
}

BOOL SetWindowPos(HWND hWnd, HWND, int x, int y, int cx, int cy, UINT) noexcept {
  return MoveWindow(hWnd, x, y, cx, cy, FALSE);
}

BOOL LockWindowUpdate(HWND) noexcept { return TRUE; }

HMONITOR MonitorFromWindow(HWND hWnd, DWORD) noexcept {
  return reinterpret_cast<HMONITOR>(hWnd);  // a window serves as the handle of its monitor
}

BOOL GetMonitorInfoA(HMONITOR hMonitor, MONITORINFO* pInfo) noexcept {
  const auto display = TheDisplay();
  RECT area{};
  if (display == nullptr || pInfo == nullptr || pInfo->cbSize != sizeof(*pInfo)) return FALSE;
  if (!display->WorkArea(reinterpret_cast<HWND>(hMonitor), &area)) return FALSE;
  pInfo->rcMonitor = pInfo->rcWork = area;
  pInfo->dwFlags = 0;
  return TRUE;
}

BOOL SystemParametersInfoA(UINT uAction, UINT, void* pParam, UINT) noexcept {
  const auto display = TheDisplay();
  if (display == nullptr || uAction != SPI_GETWORKAREA || pParam == nullptr) return FALSE;
  return display->WorkArea(nullptr, static_cast<RECT*>(pParam)) ? TRUE : FALSE;
}

HWND GetDesktopWindow() noexcept {
  const auto display = TheDisplay();
  return display != nullptr ? display->Desktop() : nullptr;
}

HHOOK SetWindowsHookExA(int, HOOKPROC pfn, HINSTANCE, DWORD) noexcept {
  return MessageThread::Get().SetHook(pfn) ? kHook : nullptr;
}

BOOL UnhookWindowsHookEx(HHOOK hHook) noexcept {
  if (hHook != kHook) return FALSE;
  MessageThread::Get().ClearHook();
  return TRUE;
}

LRESULT CallNextHookEx(HHOOK, int, WPARAM, LPARAM) noexcept { return 0; }

BOOL PostMessageA(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept {
  return MessageThread::Get().Post(hWnd, uMsg, wParam, lParam) ? TRUE : FALSE;
}

void ChooseDisplay() noexcept { DecideDisplay(); }

DWORD GetCurrentThreadId() noexcept { return static_cast<DWORD>(syscall(SYS_gettid)); }

BOOL EndWindow(HWND hWnd) noexcept { return DestroyWindow(hWnd); }

bool CanDestroyHere(HWND) noexcept { return true; }
