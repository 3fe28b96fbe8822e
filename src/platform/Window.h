// Windows: classes, child windows and pop-ups, their procedures, geometry, work areas and the message hook.
// The documented Win32 operations. Off Windows the procedures run on the layer's message thread: windows have
// no thread of their own, and every operation may be called from any thread.

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

/// The handle of the module that holds the component, for window classes and resources.
HINSTANCE ModuleInstance() noexcept;

ATOM RegisterClassA(const WNDCLASSA* pClass) noexcept;
BOOL UnregisterClassA(const char* szClass, HINSTANCE hInstance) noexcept;
HCURSOR LoadCursorA(HINSTANCE hInstance, const char* szName) noexcept;

/// Makes a window. WM_CREATE has been delivered, on a thread of the layer, before it returns.
/// @return null when the parent is no window or the window system refuses
HWND CreateWindowExA(DWORD dwExStyle, const char* szClass, const char* szTitle, DWORD dwStyle, int x, int y,
                     int nWidth, int nHeight, HWND hParent, HMENU hMenu, HINSTANCE hInstance,
                     void* pParam) noexcept;
/// Ends a window. WM_DESTROY is delivered on the calling thread; a procedure that runs at the time on another
/// thread isn't waited for.
BOOL DestroyWindow(HWND hWnd) noexcept;
LRESULT DefWindowProcA(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept;

/// Stores the user data of a window. Waits for a procedure of the window that runs on another thread, so that
/// after clearing it nobody holds the old value.
LONG_PTR SetWindowLongPtrA(HWND hWnd, int nIndex, LONG_PTR value) noexcept;
LONG_PTR GetWindowLongPtrA(HWND hWnd, int nIndex) noexcept;

BOOL GetWindowRect(HWND hWnd, RECT* pRect) noexcept;
BOOL ScreenToClient(HWND hWnd, POINT* pPoint) noexcept;
/// The parent of a window of whatever program; null at the top.
HWND GetParent(HWND hWnd) noexcept;
BOOL MoveWindow(HWND hWnd, int x, int y, int nWidth, int nHeight, BOOL bRepaint) noexcept;
BOOL SetWindowPos(HWND hWnd, HWND hInsertAfter, int x, int y, int cx, int cy, UINT uFlags) noexcept;
BOOL LockWindowUpdate(HWND hWnd) noexcept;

HMONITOR MonitorFromWindow(HWND hWnd, DWORD dwFlags) noexcept;
BOOL GetMonitorInfoA(HMONITOR hMonitor, MONITORINFO* pInfo) noexcept;
BOOL SystemParametersInfoA(UINT uAction, UINT uParam, void* pParam, UINT uWinIni) noexcept;
HWND GetDesktopWindow() noexcept;

/// Installs a hook on the messages of a thread; off Windows on those of the layer's message thread, whichever
/// thread is named. One at a time a thread is enough for the component.
HHOOK SetWindowsHookExA(int idHook, HOOKPROC pfn, HINSTANCE hMod, DWORD dwThreadId) noexcept;
BOOL UnhookWindowsHookEx(HHOOK hHook) noexcept;
LRESULT CallNextHookEx(HHOOK hHook, int nCode, WPARAM wParam, LPARAM lParam) noexcept;
/// Queues a message for a window of the component; never waits.
BOOL PostMessageA(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept;
DWORD GetCurrentThreadId() noexcept;
/// Decides again which display new windows are made on: the X server may have gone or come back.
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

/// Ends a window from any thread. On Windows, where its own thread alone can, that one is asked by WM_CLOSE
/// and waited for up to 3 s; it must pump its messages, and the window's procedure leave that one to
/// DefWindowProcA.
BOOL EndWindow(HWND hWnd) noexcept;
/// Whether the calling thread may destroy a window. On Windows only the thread that made it may.
bool CanDestroyHere(HWND hWnd) noexcept;
