// HiddenParent: the parent of a context whose pictures go to a file. On Linux there is no window; on Windows
// the parent is a hidden window. Host's thread.

#pragma once

#include <gllib/GLLib.h>

class HiddenParent {
 public:
  HiddenParent();
  ~HiddenParent();
  HiddenParent(const HiddenParent&) = delete;
  HiddenParent& operator=(const HiddenParent&) = delete;

  ULONG_PTR Handle() const { return m_handle; }
  /// Delivers pending messages. The host calls it while it waits for the draw thread, which may send
  /// messages.
  void DeliverMessages() const;

 private:
  ULONG_PTR m_handle = 0;
};
