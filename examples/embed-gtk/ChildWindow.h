// ChildWindow: an X11 window of the host, inside a window of GTK. GTK can destroy the window of a widget and
// create it again. The host takes the child out before that, and puts it into the new window. Host's thread
// only.

#pragma once

// Xlib's header defines macros with common names. Files that need it include it last.
struct _XDisplay;

class ChildWindow {
 public:
  ChildWindow() = default;
  ~ChildWindow();
  ChildWindow(const ChildWindow&) = delete;
  ChildWindow& operator=(const ChildWindow&) = delete;

  /// Moves the window into a parent, at 0, 0. The first call creates it, with one pixel. On return the X
  /// server has processed the request, so other connections can use the window.
  /// @param aDisplay GTK's connection
  void Enter(_XDisplay* aDisplay, unsigned long aParent);
  /// Sets position and size in the parent, in pixels.
  void Place(int aX, int aY, int aWidth, int aHeight);
  /// Takes the window out of the parent and hides it until the next Enter.
  void Leave();

  unsigned long Id() const { return m_window; }

 private:
  _XDisplay* m_display = nullptr;
  unsigned long m_window = 0;
};
