// ChildWindow: an X11 window of the host's own inside a window of GTK. It outlives what GTK does with a
// widget's window: before that goes, the host takes this one out, and puts it into the next. The host's
// thread only.

#pragma once

// Xlib's header has macros with common names; whoever needs it includes it last.
struct _XDisplay;

class ChildWindow {
 public:
  ChildWindow() = default;
  ~ChildWindow();
  ChildWindow(const ChildWindow&) = delete;
  ChildWindow& operator=(const ChildWindow&) = delete;

  /// Goes into a parent, at no place yet. The window is made by the first call. On return the X server knows
  /// it, and so do other connections.
  /// @param aDisplay GTK's connection
  void Enter(_XDisplay* aDisplay, unsigned long aParent);
  /// Covers a part of the parent, in pixels.
  void Place(int aX, int aY, int aWidth, int aHeight);
  /// Leaves the parent and isn't shown until the next Enter.
  void Leave();

  unsigned long Id() const { return m_window; }

 private:
  _XDisplay* m_display = nullptr;
  unsigned long m_window = 0;
};
