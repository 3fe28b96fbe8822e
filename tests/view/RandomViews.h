// Viewers with random eyes, projections and clip rectangles, and what plain geometry makes of them.

#pragma once

#include <gllib/GLViewMath.h>
#include <gtest/gtest.h>

#include <random>

#define GLM_FORCE_CTOR_INIT
#include <glm/gtc/matrix_transform.hpp>
#include <glm/vec3.hpp>

inline glm::dvec3 ToVec(const GLDATA_POINT& a) { return {a.x, a.y, a.z}; }
inline GLDATA_POINT ToPoint(const glm::dvec3& a) { return {a.x, a.y, a.z}; }

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

  /// Gives a context and its viewer new settings.
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

/// The matrices and the viewport of a viewer, from what it was set to.
struct PlainView {
  glm::dmat4 view, projection;
  glm::dvec4 viewport;

  static PlainView Of(IGLContext& aContext, IGLViewer& aViewer) {
    GLPtr<IGLCoord> eye;
    aViewer.GetCoord(eye.Put());
    GLDATA_MATRIX6D p{};
    eye->GetMatrix6d(&p);
    glm::dmat4 placement = glm::translate(glm::dmat4(1), {p.x, p.y, p.z});
    placement = glm::rotate(placement, p.m_dAngleX, {1, 0, 0});
    placement = glm::rotate(placement, p.m_dAngleY, {0, 1, 0});
    placement = glm::rotate(placement, p.m_dAngleZ, {0, 0, 1});
    int width = 0, height = 0, x = 0, y = 0, clipWidth = 0, clipHeight = 0;
    LONG clipped = 0, scaled = 0, ortho = 0;
    aContext.GetViewportWidth(&width);
    aContext.GetViewportHeight(&height);
    aViewer.GetClipX(&x);
    aViewer.GetClipY(&y);
    aViewer.GetClipWidth(&clipWidth);
    aViewer.GetClipHeight(&clipHeight);
    aViewer.IsClipped(&clipped);
    aViewer.IsClipScaled(&scaled);
    aViewer.IsOrtho(&ortho);
    PlainView plain{glm::inverse(placement), glm::dmat4(1), {0, 0, width, height}};
    if (clipped != 0 && scaled != 0) plain.viewport = {x, y, clipWidth, clipHeight};
    const double aspect = clipped != 0 ? double(clipWidth) / clipHeight : double(width) / height;
    if (ortho != 0) {
      GLDATA_POINT low{}, high{};
      aViewer.GetOrthoExtents(&low, &high);
      const double ax = aspect > 1 ? aspect : 1, ay = aspect < 1 ? 1 / aspect : 1;
      plain.projection = glm::ortho(low.x * ax, high.x * ax, low.y * ay, high.y * ay, low.z, high.z);
    } else {
      double fovy = 0, factor = 0, zNear = 0, zFar = 0;
      aViewer.GetEyeFovy_DEG(&fovy);
      aViewer.GetEyeAspect(&factor);
      aViewer.GetEyeZNear(&zNear);
      aViewer.GetEyeZFar(&zFar);
      plain.projection = glm::perspective(glm::radians(fovy), aspect * factor, zNear, zFar);
    }
    return plain;
  }
  /// Window coordinates from the lower left, with the depth.
  glm::dvec3 Project(const glm::dvec3& aPoint) const {
    return glm::projectNO(aPoint, view, projection, viewport);
  }
  glm::dvec3 UnProject(const glm::dvec3& aWindow) const {
    return glm::unProjectNO(aWindow, view, projection, viewport);
  }
};
