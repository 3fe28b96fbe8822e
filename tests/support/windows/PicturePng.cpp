// Picture: no PNG library comes with the cross compiler, so no picture is written.

#include "support/Picture.h"

bool Picture::WritePng(const std::string&) const { return false; }
