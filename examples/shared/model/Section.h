// Section: a plane that cuts the model, and the slider that moves it. Plain values; any thread.

#pragma once

#include <algorithm>
#include <array>

#include "shared/model/Model.h"

struct Section {
  int axis = -1;       ///< 0 to 2: the plane is perpendicular to x, y or z; -1: no section
  double share = 0.5;  ///< from 0 to 1 over the bounding sphere; the part beyond it is cut off

  bool IsOn() const { return axis >= 0; }

  /// Returns the plane's equation in the world. Points with a value of at least 0 remain.
  std::array<double, 4> Equation(const Model& aModel) const {
    const double centre[3] = {aModel.centre.x, aModel.centre.y, aModel.centre.z};
    std::array<double, 4> equation{};
    equation[static_cast<std::size_t>(axis)] = -1;
    equation[3] = centre[axis] + (2 * share - 1) * aModel.radius;
    return equation;
  }
};

/// The slider at the right edge of a view, in pixels from the view's top left.
struct SectionSlider {
  double left, right, top, bottom;

  /// Returns the slider in a view of this size.
  static SectionSlider In(double aWidth, double aHeight) {
    return {aWidth - 22, aWidth - 12, 24, std::max(aHeight - 24, 25.0)};
  }
  bool Holds(double aX, double aY) const {
    constexpr double kRoom = 8;  // margin for the pointer, in pixels
    return aX > left - kRoom && aX < right + kRoom && aY > top - kRoom && aY < bottom + kRoom;
  }
  /// Returns the y of a share.
  double HeightOf(double aShare) const { return bottom - aShare * (bottom - top); }
  /// Returns the share at a y, limited to 0 to 1.
  double ShareAt(double aY) const { return std::clamp((bottom - aY) / (bottom - top), 0.0, 1.0); }
};
