// The headless display. Window procedures run on a thread of the platform layer.

#include "support/TestDisplay.h"

#include <cstdlib>

void PrepareDisplay() { setenv("GLLIB_DISPLAY", "headless", 0); }
void PumpMessages() {}
