// The functions of GL and GLU behind the recorder. Any thread.

#pragma once

/// Returns a function by name. Ends the process if there is none.
void* DriverFunction(const char* aName);
