// Viewers with random eyes, projections and clip rectangles.

#pragma once

#include <gllib/GLViewMath.h>

#include "support/Test.h"

class RandomViews {
 public:
  explicit RandomViews(unsigned aSeed) : m_Engine(aSeed) {}

  double Number(double aLow, double aHigh) {
    return std::uniform_real_distribution<double>(aLow, aHigh)(m_Engine);
  }
  int Whole(int aLow, int aHigh) { return std::uniform_int_distribution<int>(aLow, aHigh)(m_Engine); }
  GLDATA_POINT Point(double aSize) {
    return {Number(-aSize, aSize), Number(-aSize, aSize), Number(-aSize, aSize)};
  }

  /// Gives a context and its viewer random settings.
  void Randomise(IGLContext& aContext, IGLViewer& aViewer) {
    const int width = Whole(40, 900), height = Whole(40, 900);
    aContext.SetViewport(0, 0, width, height);
    aViewer.SetOrtho(Whole(0, 1));
    aViewer.Clip(Whole(0, 2) > 0);
    aViewer.ScaleClip(Whole(0, 2) > 0);
    aViewer.SetClipRectangle(Whole(0, width / 2), Whole(0, height / 2), Whole(10, width), Whole(10, height));
    aViewer.SetEyeFovy_DEG(Number(5, 120));
    aViewer.SetEyeAspect(Whole(0, 1) != 0 ? 1.0 : Number(0.5, 2));
    const double zNear = Number(0.1, 5);
    aViewer.SetEyeZNearAndFar(zNear, zNear + Number(10, 500));
    GLDATA_POINT low = {Number(-60, -5), Number(-60, -5), Number(-100, 0)};
    GLDATA_POINT high = {Number(-4, 60), Number(-4, 60), Number(10, 300)};
    aViewer.SetOrthoExtents(&low, &high);
    GLPtr<IGLCoord> eye;
    aViewer.GetCoord(eye.Put());
    const GLDATA_POINT origin = Point(100);
    GLDATA_MATRIX6D placement = {origin.x, origin.y, origin.z, Number(-4, 4), Number(-4, 4), Number(-4, 4)};
    eye->SetMatrix6d(&placement);
  }

 private:
  std::mt19937 m_Engine;
};
