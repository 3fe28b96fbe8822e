// TestRegistry: a separate registry in a temporary folder.

#pragma once

#include <stdlib.h>

#include "support/TestFolder.h"

class TestRegistry : public TestFolder {
 public:
  TestRegistry() { setenv("GLLIB_REGISTRY_DIR", Path().c_str(), 1); }
  ~TestRegistry() { unsetenv("GLLIB_REGISTRY_DIR"); }
};
