// HiddenParent on Windows: a window that is never shown. Host's thread.

#include "glview/HiddenParent.h"

HiddenParent::HiddenParent()
    : m_handle(reinterpret_cast<ULONG_PTR>(
          CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr))) {}

HiddenParent::~HiddenParent() { DestroyWindow(reinterpret_cast<HWND>(m_handle)); }

void HiddenParent::DeliverMessages() const {
  for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;) DispatchMessageA(&message);
}
