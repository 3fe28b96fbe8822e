// ChildWindow: X11 calls for the child window. Host's thread.

#include "embed-gtk/ChildWindow.h"

#include <X11/Xlib.h>

ChildWindow::~ChildWindow() {
  if (m_window == 0) return;
  XDestroyWindow(m_display, m_window);
  XFlush(m_display);
}

void ChildWindow::Enter(_XDisplay* aDisplay, unsigned long aParent) {
  m_display = aDisplay;
  if (m_window == 0) {
    // The window selects no input, so that GTK's window receives mouse and keys.
    m_window = XCreateWindow(m_display, aParent, 0, 0, 1, 1, 0, CopyFromParent, InputOutput, CopyFromParent,
                             0, nullptr);
  } else {
    XReparentWindow(m_display, m_window, aParent, 0, 0);
  }
  XMapWindow(m_display, m_window);
  // Xlib and GTK buffer requests, and the component uses its own connection. It finds this window and the
  // parent only after the server has processed the requests.
  XSync(m_display, False);
}

void ChildWindow::Place(int aX, int aY, int aWidth, int aHeight) {
  if (m_window == 0) return;
  XMoveResizeWindow(m_display, m_window, aX, aY, static_cast<unsigned>(aWidth > 0 ? aWidth : 1),
                    static_cast<unsigned>(aHeight > 0 ? aHeight : 1));
  XFlush(m_display);
}

void ChildWindow::Leave() {
  if (m_window == 0) return;
  XUnmapWindow(m_display, m_window);
  XReparentWindow(m_display, m_window, DefaultRootWindow(m_display), 0, 0);
  XFlush(m_display);
}
