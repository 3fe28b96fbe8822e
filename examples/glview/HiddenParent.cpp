// HiddenParent on Linux: no window is needed. Host's thread.

#include "glview/HiddenParent.h"

#include <cstdlib>

HiddenParent::HiddenParent() { setenv("GLLIB_DISPLAY", "headless", 1); }

HiddenParent::~HiddenParent() = default;

void HiddenParent::DeliverMessages() const {}
