// Random points for the geometry tests, and their twins in glm.

#pragma once

#include <glm/glm.hpp>
#include <random>

#include "geometry/GPoint.h"

constexpr int kPlacements = 10'000;
constexpr double kClose = 1e-9;  // of the scale of the numbers that go in

inline glm::dvec3 ToGlm(const GPoint& p) { return {p.x, p.y, p.z}; }

/// Numbers and points, the same ones in every run.
class Random {
 public:
  double Number(double aLimit) { return std::uniform_real_distribution(-aLimit, aLimit)(m_Engine); }
  GPoint Point(double aLimit = 100) { return {Number(aLimit), Number(aLimit), Number(aLimit)}; }

 private:
  std::mt19937 m_Engine{20240229};
};
