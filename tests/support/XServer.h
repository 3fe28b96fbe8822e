// XServer: an X server of a test (Xvfb). One test thread; the server's process is ended by its id.

#pragma once

#include <sys/types.h>

#include "support/Test.h"

/// Runs until the object is destroyed. Sets DISPLAY to its name and GLLIB_DISPLAY to x11, also for later
/// tests.
class XServer {
 public:
  /// @param aScreen width, height and depth
  explicit XServer(const char* aScreen = "1024x768x24");
  ~XServer();
  XServer(XServer&&) = delete;

  /// Returns the value of DISPLAY.
  const std::string& Display() const { return m_Display; }
  bool IsRunning() const { return m_Process > 0; }
  /// Ends the server at once, like a crash.
  void Kill();
  /// Ends the server by a signal, and waits for it.
  void End(int aSignal);
  void Signal(int aSignal) const;

 private:
  pid_t m_Process = -1;
  std::string m_Display = ":";
};
