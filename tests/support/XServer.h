// An X server of a test (Xvfb), and a host's window on a separate connection. One test thread; the server's
// process is ended by its id.

#pragma once

#include <sys/types.h>
#include <xcb/xcb.h>

#include <string>

#include "support/Picture.h"

/// Runs until the object is destroyed. DISPLAY names it.
class XServer {
 public:
  XServer();
  ~XServer();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  bool IsRunning() const { return m_Process > 0; }
  /// Ends the server at once, like a crash.
  void Kill();
  /// Sends the server a signal.
  void End(int aSignal);
  void Signal(int aSignal) const;

 private:
  pid_t m_Process = -1;
};

/// A window of another program: a connection, and a top-level window on it.
class ForeignWindow {
 public:
  ForeignWindow(int aWidth, int aHeight);
  ~ForeignWindow();
  ForeignWindow(const ForeignWindow&) = delete;
  ForeignWindow& operator=(const ForeignWindow&) = delete;

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
