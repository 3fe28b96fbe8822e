// Options: the parsed command line. Plain values.

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
  bool together = false;  ///< models keep their own coordinates
  std::string out;        ///< path of the picture; empty: show a window
  double zoom = 1;        ///< of the picture; not used by the window
  bool help = false;
  std::optional<PixelBox> pick;
  std::vector<int> measure;  ///< x and y of two or three pixels
};

/// An invalid command line; what() is one line for the user.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Parses the command line. @throws UsageError
Options ParseOptions(int argc, const char* const* argv);

/// Returns the text of --help.
std::string HelpText();
