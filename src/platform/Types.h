// Base types of the platform subset, by their documented Win32 names. No state.

#pragma once

#include <gllib/GLPlatform.h>

#ifndef _WIN32

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using UINT = unsigned int;
using ATOM = std::uint16_t;
using FLOAT = float;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using COLORREF = DWORD;

// Handles are opaque and have the size of a pointer. An HWND holds the window system's window number.
using HWND = struct HWND__*;
using HDC = struct HDC__*;
using HGLRC = struct HGLRC__*;
using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;
using HICON = struct HICON__*;
using HCURSOR = HICON;
using HMENU = struct HMENU__*;
using HMONITOR = struct HMONITOR__*;
using HHOOK = struct HHOOK__*;
using HKEY = struct HKEY__*;
using HRSRC = struct HRSRC__*;
using HGLOBAL = void*;
using HANDLE = void*;
using HGDIOBJ = void*;
using HBRUSH = HGDIOBJ;
using HBITMAP = HGDIOBJ;
using HFONT = HGDIOBJ;
using HPALETTE = HGDIOBJ;

struct RECT {
  LONG left, top, right, bottom;
};
struct POINT {
  LONG x, y;
};

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;

#endif
