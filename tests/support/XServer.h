// An X server of the test's own (Xvfb), and a host's window on a connection of its own.
// For one test thread; the server's process is ended by its id.

#pragma once

#include <sys/types.h>
#include <xcb/xcb.h>

#include "support/Picture.h"

/// Runs while the object stands; DISPLAY names it meanwhile.
class XServer {
 public:
  /// @param aScreen width, height and depth
  explicit XServer(const char* aScreen = "1024x768x24");
  ~XServer();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  bool IsRunning() const { return m_Process > 0; }
  /// Ends the server at once, as a crash would.
  void Kill();
  /// Ends the server by a signal of the caller's choice.
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
  /// The first child's id; 0 for none.
  xcb_window_t Child() const;
  /// What the server shows in a window.
  Picture Screenshot(xcb_window_t aWindow, int aWidth, int aHeight) const;

 private:
  void Sync() const;

  xcb_connection_t* m_pConnection = nullptr;
  xcb_window_t m_Window = 0;
};
