// The system's own display; a window's messages come to the thread that made it.

#include "support/TestDisplay.h"

#include <windows.h>

void PrepareDisplay() {}

void PumpMessages() {
  for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;) DispatchMessageA(&message);
}
