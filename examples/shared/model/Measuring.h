// Measuring: the distance between two points of the model, or the angle at the second of three points. The
// host's thread adds points; Draw runs on the context's draw thread.

#pragma once

#include <gllib/GLViewing.h>

#include <mutex>
#include <string>
#include <vector>

class Measuring {
 public:
  /// Adds a point. A fourth point starts a new measurement.
  void Add(const GLDATA_POINT& aPoint);
  void Clear();
  /// Returns the result, in units of the model or in degrees; empty with fewer than two points.
  std::string Text() const;
  /// Draws the points, the lines between them and the text over the scene.
  /// @param aScale size of the picture relative to the window
  void Draw(IGLCanvas& aCanvas, IGLContext& aContext, int aScale);

 private:
  std::vector<GLDATA_POINT> Points() const;

  mutable std::mutex m_lock;  // guards m_points
  std::vector<GLDATA_POINT> m_points;
  GLRasterText m_text{GLString("DejaVu Sans"), -15};  // draw thread only
};
