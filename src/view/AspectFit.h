// AspectFit: how a view of any aspect shows a square. The shorter side shows the square exactly; the longer
// side shows more. Any thread.

#pragma once

/// Factors of one view. The view shows x from -m_dWidth to m_dWidth and y from -1 / m_dHeight to 1 /
/// m_dHeight. The factor of the shorter side is exactly 1, so that it changes no bit of a coordinate.
struct AspectFit {
  /// @param aAspect width divided by height; above 0
  explicit AspectFit(double aAspect) noexcept
      : m_dWidth(1.0 > aAspect ? 1.0 : aAspect), m_dHeight(1.0 > aAspect ? aAspect : 1.0) {}

  double m_dWidth;   ///< at least 1
  double m_dHeight;  ///< at most 1
};
