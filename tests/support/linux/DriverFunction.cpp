// GL's and GLU's functions in the libraries after the executable.

#include "support/DriverFunction.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

void* DriverFunction(const char* aName) {
  void* found = dlsym(RTLD_NEXT, aName);
  if (found != nullptr) return found;
  std::fprintf(stderr, "no %s behind the recorder\n", aName);
  std::abort();
}
