// Where the contexts of tests draw, and the message pump of the thread that made a window. Any thread, each
// on its own.

#pragma once

/// Lets the contexts of the process draw without a display server, unless the environment names another
/// display.
void PrepareDisplay();
/// Delivers what waits for windows of the calling thread, where windows have a thread.
void PumpMessages();
