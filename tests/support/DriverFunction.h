// What stands behind the recorder: the functions of GL and GLU themselves. Any thread.

#pragma once

/// A function by its name. Ends the process when there is none such.
void* DriverFunction(const char* aName);
