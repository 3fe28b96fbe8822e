// The system's display. A window's messages arrive on the thread that created it.

#include "support/TestDisplay.h"

#include <windows.h>

void PrepareDisplay() {}

void PumpMessages() {
  for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;) DispatchMessageA(&message);
}
