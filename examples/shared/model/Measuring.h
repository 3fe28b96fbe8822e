// Measuring: a distance between two points of the model, or an angle at the middle one of three.
// The host's thread sets it; Draw runs on the context's draw thread.

#pragma once

#include <gllib/GLViewing.h>

#include <mutex>
#include <string>
#include <vector>

class Measuring {
 public:
  /// Adds a point; a fourth one begins anew.
  void Add(const GLDATA_POINT& aPoint);
  void Clear();
  /// What is measured, in units of the model or in degrees; empty with fewer than two points.
  std::string Text() const;
  /// Draws the points, the lines between them and the text over the scene.
  /// @param aScale of a picture that is larger than the window
  void Draw(IGLCanvas& aCanvas, IGLContext& aContext, int aScale);

 private:
  std::vector<GLDATA_POINT> Points() const;

  mutable std::mutex m_lock;  // guards m_points
  std::vector<GLDATA_POINT> m_points;
  GLRasterText m_text{GLString("DejaVu Sans"), -15};  // the draw thread's
};
