// WindowState: the GL window of a context, its pixel format, and the settings for the next window.
// The thread that replaces the window writes the members, one replacement at a time. Any thread sets the
// multisampling values. The draw thread also writes m_szObstacle and m_Target.

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
  Relaxed<LONG> m_bFSAA = 0;  ///< multisampling, as requested by the host or the registry
  Relaxed<LONG> m_lFSAAMaxSamples = 4;
  Relaxed<const char*> m_szObstacle = "";  ///< reason why there is no rendering context yet
  GLRenderTarget m_Target;                 ///< owned by the draw thread while there is one
};
