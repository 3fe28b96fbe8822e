// A plain rendering context: a separate window with the format that GDI chooses for 32 bits of colour and
// depth. Current on the thread that creates it.

#pragma once

#include <windows.h>

#include <stdexcept>

#include "platform/GL.h"
#include "support/TestDisplay.h"

class PlainContext {
 public:
  PlainContext(int aWidth, int aHeight) {
    WNDCLASSA windowClass{};
    windowClass.style = CS_OWNDC;
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.lpszClassName = "PlainGL";
    RegisterClassA(&windowClass);  // fails if the class is registered already
    m_hWnd = CreateWindowExA(0, "PlainGL", "", WS_POPUP | WS_VISIBLE, 0, 0, aWidth, aHeight, nullptr, nullptr,
                             nullptr, nullptr);
    m_hDC = GetDC(m_hWnd);
    PIXELFORMATDESCRIPTOR request{};
    request.nSize = sizeof(request);
    request.nVersion = 1;
    request.dwFlags = PFD_DOUBLEBUFFER | PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
    request.cColorBits = 32;
    request.cDepthBits = 32;
    SetPixelFormat(m_hDC, ChoosePixelFormat(m_hDC, &request), &request);
    m_hRC = wglCreateContext(m_hDC);
    if (wglMakeCurrent(m_hDC, m_hRC) == FALSE) throw std::runtime_error("no rendering context");
  }
  ~PlainContext() {
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(m_hRC);
    ReleaseDC(m_hWnd, m_hDC);
    DestroyWindow(m_hWnd);
    PumpMessages();
  }
  PlainContext(PlainContext&&) = delete;

 private:
  HWND m_hWnd = nullptr;
  HDC m_hDC = nullptr;
  HGLRC m_hRC = nullptr;
};
