// Program: an example host as a process of its own, with what it says and how it ends.

#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "support/TestFolder.h"

struct Outcome {
  int status = -1;  ///< exit status; -1 when a signal ended it
  std::string out;
  std::string err;
};

/// Starts a program. @param aDisplay value of DISPLAY; empty for none
pid_t Start(const std::vector<std::string>& aCommand, const std::string& aDisplay,
            const std::string& aOutFile, const std::string& aErrFile);

/// Waits for a program's end. @return its exit status; -1 when a signal ended it
int WaitFor(pid_t aProcess);

/// Runs one of the examples to its end, with no display.
Outcome RunProgram(const std::string& aExample, const std::vector<std::string>& aArguments);

/// A part of a model file (OBJ): an upright square with a name, of a material where there is one.
std::string Square(const std::string& aName, const std::string& aMaterial, double aX1, double aY1, double aX2,
                   double aY2, double aZ = 0);
/// Writes a model of half a million triangles, which takes a while to read. @return its whole name
std::string Grid(const TestFolder& aFolder);
