// The display of tests, and the message loop of the thread that created a window. Any thread, each
// separately.

#pragma once

/// Lets the contexts of the process draw without a display server, unless the environment selects another
/// display.
void PrepareDisplay();
/// Delivers pending messages of windows of the calling thread, on systems where windows have a thread.
void PumpMessages();
