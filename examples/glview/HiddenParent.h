// HiddenParent: where a context stands whose pictures go to a file: with no display at all, or, on Windows,
// under a window that isn't shown. The host's thread.

#pragma once

#include <gllib/GLLib.h>

class HiddenParent {
 public:
  HiddenParent();
  ~HiddenParent();
  HiddenParent(const HiddenParent&) = delete;
  HiddenParent& operator=(const HiddenParent&) = delete;

  ULONG_PTR Handle() const { return m_handle; }
  /// Delivers the messages that have come. To be called while the host waits for the draw thread, which may
  /// send some.
  void DeliverMessages() const;

 private:
  ULONG_PTR m_handle = 0;
};
