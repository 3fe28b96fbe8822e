// Options: what the command line asks for. Plain values.

#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "glview/ReadLimits.h"
#include "shared/model/SceneOptions.h"

struct Options : SceneOptions {
  std::vector<std::string> models;  ///< files, or one folder
  ReadLimits limits;
  bool together = false;  ///< models stand where their coordinates put them
  std::string out;        ///< empty: a window
  double zoom = 1;        ///< of the picture; the window has none
  bool help = false;
  std::optional<PixelBox> pick;
  std::vector<int> measure;  ///< two or three pixels, x and y of each
};

/// A command line that makes no sense; what() is one line for the user.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Reads the command line. @throws UsageError
Options ParseOptions(int argc, const char* const* argv);

/// The text of --help.
std::string HelpText();
