// ReaderProcess on Windows: reads in the viewer's process. Any thread.

#include "glview/ReaderProcess.h"

Model LoadModelWithin(const ReadLimits&, const std::string& aPath, const ReadProgress& aProgress) {
  return LoadModel(aPath, aProgress);
}

void RunReader(int, const char* const*) {}
