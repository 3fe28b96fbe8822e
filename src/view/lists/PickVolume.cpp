// PickVolume: half-spaces from GL's matrices, and the test of a box against them. Draw thread, with GL
// current.
// The near and far sides are not tested. The four other sides suffice for the tree, and float errors are
// largest in the depth of a perspective view.

#include "view/lists/PickVolume.h"

#include <algorithm>
#include <cmath>

#include "component/Module.h"
#include "platform/GL.h"

namespace {

// GL transforms in float. The error is a few units of 2^-24 times the sum of the terms' magnitudes.
constexpr double kMargin = 1.0 / (1 << 20);

using Matrix = std::array<double, 16>;  // column-major, like in GL

struct Row {
  std::array<double, 4> m_adTerms{}, m_adWeights{};
};

// Computes row aRow of aLeft * aRight.
Row RowOfProduct(const Matrix& aLeft, const Matrix& aRight, std::size_t aRow) noexcept {
  Row row;
  for (std::size_t column = 0; column < 4; ++column) {
    for (std::size_t k = 0; k < 4; ++k) {
      const double term = aLeft[k * 4 + aRow] * aRight[column * 4 + k];
      row.m_adTerms[column] += term;
      row.m_adWeights[column] += std::fabs(term);
    }
  }
  return row;
}

bool IsIdentity(const Matrix& aMatrix) noexcept {
  for (std::size_t i = 0; i < 16; ++i) {
    if (aMatrix[i] != (i % 5 == 0 ? 1.0 : 0.0)) return false;
  }
  return true;
}

}  // namespace

PickVolume::PickVolume() noexcept {
  Matrix modelview{}, projection{};
  glGetDoublev(GL_MODELVIEW_MATRIX, modelview.data());
  glGetDoublev(GL_PROJECTION_MATRIX, projection.data());
  const Row w = RowOfProduct(projection, modelview, 3);
  for (std::size_t axis = 0; axis < 2; ++axis) {
    const Row side = RowOfProduct(projection, modelview, axis);
    for (const double sign : {1.0, -1.0}) {
      HalfSpace& space = m_aHalfSpaces[m_nHalfSpaces++];
      for (std::size_t i = 0; i < 4; ++i) {
        space.m_adTerms[i] = w.m_adTerms[i] + sign * side.m_adTerms[i];
        space.m_adWeights[i] = w.m_adWeights[i] + side.m_adWeights[i];
      }
    }
  }
  // GL transforms planes by the inverse of the projection. The error of that is hard to bound, so planes are
  // used only with the identity.
  if (IsIdentity(projection)) AddClipPlanes(modelview.data());
}

void PickVolume::AddClipPlanes(const double* aModelview) noexcept {
  const int planes = std::min(static_cast<int>(g_iMaxClipPlanes), static_cast<int>(kMaxClipPlanes));
  for (int i = 0; i < planes; ++i) {
    const auto plane = static_cast<GLenum>(GL_CLIP_PLANE0 + i);
    if (glIsEnabled(plane) == GL_FALSE) continue;
    std::array<double, 4> equation{};
    glGetClipPlane(plane, equation.data());
    HalfSpace& space = m_aHalfSpaces[m_nHalfSpaces++];
    space = {};
    for (std::size_t column = 0; column < 4; ++column) {
      for (std::size_t k = 0; k < 4; ++k) {
        const double term = equation[k] * aModelview[column * 4 + k];
        space.m_adTerms[column] += term;
        space.m_adWeights[column] += std::fabs(term);
      }
    }
  }
}

// Written so that a NaN sum excludes nothing.
bool PickVolume::HalfSpace::Excludes(const Box& aBox) const noexcept {
  double sum = m_adTerms[3], weight = m_adWeights[3];
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double low = aBox.m_afLow[axis], high = aBox.m_afHigh[axis];
    sum += m_adTerms[axis] * (m_adTerms[axis] > 0.0 ? high : low);
    weight += m_adWeights[axis] * std::max(std::fabs(low), std::fabs(high));
  }
  return sum < -kMargin * weight;
}

bool PickVolume::MayTouch(const Box& aBox) const noexcept {
  if (aBox.IsEmpty()) return false;
  for (std::size_t i = 0; i < m_nHalfSpaces; ++i) {
    if (m_aHalfSpaces[i].Excludes(aBox)) return false;
  }
  return true;
}
