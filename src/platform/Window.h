// Windows: classes, child windows and pop-ups, procedures, geometry, work areas and the message hook. The
// documented Win32 operations. Off Windows the message thread of the layer runs the procedures. There windows
// belong to no thread, and any thread may call every operation.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32

using WNDPROC = LRESULT (*)(HWND, UINT, WPARAM, LPARAM);
using HOOKPROC = LRESULT (*)(int, WPARAM, LPARAM);

struct WNDCLASSA {
  UINT style;
  WNDPROC lpfnWndProc;
  int cbClsExtra, cbWndExtra;
  HINSTANCE hInstance;
  HICON hIcon;
  HCURSOR hCursor;
  HBRUSH hbrBackground;
  const char* lpszMenuName;
  const char* lpszClassName;
};
struct CREATESTRUCTA {
  void* lpCreateParams;
  HINSTANCE hInstance;
  HMENU hMenu;
  HWND hwndParent;
  int cy, cx, y, x;
  LONG style;
  const char* lpszName;
  const char* lpszClass;
  DWORD dwExStyle;
};
struct CWPRETSTRUCT {
  LRESULT lResult;
  LPARAM lParam;
  WPARAM wParam;
  UINT message;
  HWND hwnd;
};
struct MONITORINFO {
  DWORD cbSize;
  RECT rcMonitor, rcWork;
  DWORD dwFlags;
};

inline constexpr UINT CS_VREDRAW = 0x1, CS_HREDRAW = 0x2, CS_OWNDC = 0x20;
inline constexpr DWORD WS_CHILD = 0x40000000, WS_VISIBLE = 0x10000000, WS_DISABLED = 0x08000000,
                       WS_CLIPSIBLINGS = 0x04000000, WS_CLIPCHILDREN = 0x02000000, WS_POPUP = 0x80000000;
inline constexpr int CW_USEDEFAULT = static_cast<int>(0x80000000);
inline constexpr UINT WM_CREATE = 0x1, WM_DESTROY = 0x2, WM_PAINT = 0xF, WM_ERASEBKGND = 0x14,
                      WM_SYSCOLORCHANGE = 0x15, WM_QUERYNEWPALETTE = 0x30F, WM_PALETTECHANGED = 0x311;
inline constexpr int GWLP_USERDATA = -21;
inline constexpr UINT SWP_NOZORDER = 0x4, SWP_NOREDRAW = 0x8, SWP_NOACTIVATE = 0x10,
                      SWP_NOOWNERZORDER = 0x200, SWP_DEFERERASE = 0x2000, SWP_ASYNCWINDOWPOS = 0x4000;
inline constexpr DWORD MONITOR_DEFAULTTOPRIMARY = 1;
inline constexpr UINT SPI_GETWORKAREA = 0x30;
inline constexpr int WH_CALLWNDPROCRET = 12;
inline constexpr int HC_ACTION = 0;
inline const char* const IDC_CROSS = reinterpret_cast<const char*>(std::uintptr_t{32515});

/// Returns the handle of the component's module, for window classes and resources.
HINSTANCE ModuleInstance() noexcept;

ATOM RegisterClassA(const WNDCLASSA* pClass) noexcept;
BOOL UnregisterClassA(const char* szClass, HINSTANCE hInstance) noexcept;
HCURSOR LoadCursorA(HINSTANCE hInstance, const char* szName) noexcept;

/// Creates a window. A thread of the layer has delivered WM_CREATE before this returns.
/// @return null if the parent does not exist or the window system refuses
HWND CreateWindowExA(DWORD dwExStyle, const char* szClass, const char* szTitle, DWORD dwStyle, int x, int y,
                     int nWidth, int nHeight, HWND hParent, HMENU hMenu, HINSTANCE hInstance,
                     void* pParam) noexcept;
/// Destroys a window. Delivers WM_DESTROY on the calling thread. Does not wait for a procedure that runs on
/// another thread.
BOOL DestroyWindow(HWND hWnd) noexcept;
LRESULT DefWindowProcA(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept;

/// Stores the user data of a window. Waits for procedures of the window that run on other threads, so that no
/// thread uses the old value afterwards.
LONG_PTR SetWindowLongPtrA(HWND hWnd, int nIndex, LONG_PTR value) noexcept;
LONG_PTR GetWindowLongPtrA(HWND hWnd, int nIndex) noexcept;

BOOL GetWindowRect(HWND hWnd, RECT* pRect) noexcept;
BOOL ScreenToClient(HWND hWnd, POINT* pPoint) noexcept;
/// Returns the parent of a window of any program; null at the top level.
HWND GetParent(HWND hWnd) noexcept;
BOOL MoveWindow(HWND hWnd, int x, int y, int nWidth, int nHeight, BOOL bRepaint) noexcept;
BOOL SetWindowPos(HWND hWnd, HWND hInsertAfter, int x, int y, int cx, int cy, UINT uFlags) noexcept;
BOOL LockWindowUpdate(HWND hWnd) noexcept;

HMONITOR MonitorFromWindow(HWND hWnd, DWORD dwFlags) noexcept;
BOOL GetMonitorInfoA(HMONITOR hMonitor, MONITORINFO* pInfo) noexcept;
BOOL SystemParametersInfoA(UINT uAction, UINT uParam, void* pParam, UINT uWinIni) noexcept;
HWND GetDesktopWindow() noexcept;

/// Installs a hook on the messages of a thread. Off Windows the hook always sees the messages of the layer's
/// message thread. Only one hook is supported.
HHOOK SetWindowsHookExA(int idHook, HOOKPROC pfn, HINSTANCE hMod, DWORD dwThreadId) noexcept;
BOOL UnhookWindowsHookEx(HHOOK hHook) noexcept;
LRESULT CallNextHookEx(HHOOK hHook, int nCode, WPARAM wParam, LPARAM lParam) noexcept;
/// Queues a message for a window of the component. Never blocks.
BOOL PostMessageA(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept;
DWORD GetCurrentThreadId() noexcept;
/// Chooses the display of new windows again, since an X server may have stopped or started.
void ChooseDisplay() noexcept;

#else

inline void ChooseDisplay() noexcept {}
inline HINSTANCE ModuleInstance() noexcept {
  HMODULE module = nullptr;
  GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<const char*>(&ModuleInstance), &module);
  return module;
}

#endif

/// Destroys a window from any thread. On Windows only the window's own thread can destroy it: it receives
/// WM_CLOSE and this waits up to 3 s. That thread must pump messages, and the window procedure must pass
/// WM_CLOSE to DefWindowProcA.
BOOL EndWindow(HWND hWnd) noexcept;
/// Returns whether the calling thread may destroy a window. On Windows only the thread that created it may.
bool CanDestroyHere(HWND hWnd) noexcept;
