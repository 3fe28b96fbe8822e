// SceneOptions: initial settings of a scene. Plain values.

#pragma once

#include <gllib/GLLib.h>

#include "shared/model/Section.h"

/// Drawing style of faces.
enum class Shade { Shaded, Wire, Hidden, Points };

/// A box in the picture, in pixels from the top left. A point pick has two equal corners.
struct PixelBox {
  int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  bool inside = false;  ///< only parts completely inside
  bool point = false;   ///< only the part nearest to the eye at (x1, y1)
};

struct SceneOptions {
  int width = 1024;
  int height = 768;
  int views = 1;  ///< 1 or 4
  bool ortho = false;
  bool axes = false;
  bool text = false;
  bool fog = false;
  GLDATA_RGBA background{0.13f, 0.15f, 0.19f, 1.0f};
  int samples = 1;  ///< maximum number of samples per pixel of the window; above 1 smooths edges
  Shade shade = Shade::Shaded;
  double yaw = 30;    ///< of the free view, in degrees
  double pitch = 15;  ///< of the free view, in degrees
  Section section;
};
