// GL's and GLU's functions in the system's libraries.

#include "support/DriverFunction.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <initializer_list>

void* DriverFunction(const char* aName) {
  for (const char* library : {"opengl32.dll", "glu32.dll"}) {
    if (const FARPROC found = GetProcAddress(LoadLibraryA(library), aName))
      return reinterpret_cast<void*>(found);
  }
  std::fprintf(stderr, "no %s behind the recorder\n", aName);
  std::abort();
}
