// WindowState: the GL window of a context, its pixel format, and what the next one is asked for.
// Written on the thread that initialises, under the context's lock.

#pragma once

#include "context/frame/GLRenderTarget.h"
#include "platform/PixelFormat.h"
#include "platform/Window.h"
#include "thread/Relaxed.h"

struct WindowState {
  Relaxed<HWND> m_hWnd = nullptr;
  HWND m_hParentWnd = nullptr;
  HGDIOBJ m_hPalette = nullptr;
  PIXELFORMATDESCRIPTOR m_PixelFormat{};
  Relaxed<LONG> m_bFSAA = 0;  ///< multisampling, as the host asked for it
  Relaxed<LONG> m_lFSAAMaxSamples = 4;
  Relaxed<const char*> m_szObstacle = "";  ///< to the first rendering context
  GLRenderTarget m_Target;                 ///< the draw thread's while there is one
};
