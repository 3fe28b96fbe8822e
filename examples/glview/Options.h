// Options: what the command line asks for. Plain values.

#pragma once

#include <gllib/GLLib.h>

#include <optional>
#include <stdexcept>
#include <string>

/// How faces are drawn.
enum class Shade { Shaded, Wire, Hidden, Points };

/// A box on the picture, in pixels from the top left; a point pick has its two corners equal.
struct PixelBox {
  int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  bool inside = false;  ///< only what lies wholly inside
  bool point = false;   ///< only what is nearest to the eye under (x1, y1)
};

struct Options {
  std::string model;
  std::string out;  ///< empty: a window
  int width = 1024;
  int height = 768;
  int views = 1;  ///< 1 or 4
  bool ortho = false;
  bool axes = false;
  bool text = false;
  GLDATA_RGBA background{0.13f, 0.15f, 0.19f, 1.0f};
  double zoom = 1;  ///< of the picture; the window has none
  int samples = 1;  ///< a pixel of the window, at most; above 1 smooths edges
  bool fog = false;
  bool help = false;
  Shade shade = Shade::Shaded;
  double yaw = 30;    ///< degrees
  double pitch = 15;  ///< degrees
  std::optional<PixelBox> pick;
};

/// A command line that makes no sense; what() is one line for the user.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Reads the command line. @throws UsageError
Options ParseOptions(int argc, const char* const* argv);

/// The text of --help.
extern const char* const kHelp;
