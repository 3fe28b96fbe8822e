// Program: an example host in a separate process, its output and its exit status. One test thread.

#pragma once

#include <sys/types.h>

#include "support/TestFolder.h"

struct Outcome {
  int status = -1;  ///< exit status; -1 if a signal ended it
  std::string out;
  std::string err;
};

/// Starts a program. @param aDisplay value of DISPLAY; empty for none
pid_t Start(const std::vector<std::string>& aCommand, const std::string& aDisplay,
            const std::string& aOutFile, const std::string& aErrFile);

/// Waits for a program to end. @return its exit status; -1 if a signal ended it
int WaitFor(pid_t aProcess);

/// Runs an example until it ends, without a display.
Outcome RunProgram(const std::string& aExample, const std::vector<std::string>& aArguments);

/// Returns a part of an OBJ file: an upright square with a name and optionally a material.
std::string Square(const std::string& aName, const std::string& aMaterial, double aX1, double aY1, double aX2,
                   double aY2, double aZ = 0);
/// Writes a model of half a million triangles, which takes time to read. @return its path
std::string Grid(const TestFolder& aFolder);
