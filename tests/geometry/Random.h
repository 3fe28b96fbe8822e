// Random points for the geometry tests, and the corresponding values of glm.

#pragma once

#include <glm/glm.hpp>
#include <random>

#include "geometry/GPoint.h"

constexpr int kPlacements = 10'000;
constexpr double kClose = 1e-9;  // relative to the scale of the input

inline glm::dvec3 ToGlm(const GPoint& p) { return {p.x, p.y, p.z}; }

/// Random numbers and points, the same in each run.
class Random {
 public:
  double Number(double aLimit) { return std::uniform_real_distribution(-aLimit, aLimit)(m_Engine); }
  GPoint Point(double aLimit = 100) { return {Number(aLimit), Number(aLimit), Number(aLimit)}; }

 private:
  std::mt19937 m_Engine{20240229};
};
