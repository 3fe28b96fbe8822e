// ForeignWindow: a window of a host, on a separate connection to the X server. One test thread.

#pragma once

#include <xcb/xcb.h>

#include "support/Picture.h"
#include "support/XServer.h"

/// A window of another program: a connection, and a top-level window on it.
class ForeignWindow {
 public:
  ForeignWindow(int aWidth, int aHeight);
  ~ForeignWindow();
  ForeignWindow(ForeignWindow&&) = delete;

  xcb_connection_t* Connection() const { return m_pConnection; }
  xcb_window_t Xid() const { return m_Window; }
  void Resize(int aWidth, int aHeight);
  void Unmap();
  void DestroyWindow();
  void CloseConnection();
  /// Returns the id of the first child; 0 if there is none.
  xcb_window_t Child() const;
  /// Returns the server's picture of a window.
  Picture Screenshot(xcb_window_t aWindow, int aWidth, int aHeight) const;

 private:
  void Sync() const;

  xcb_connection_t* m_pConnection = nullptr;
  xcb_window_t m_Window = 0;
};
