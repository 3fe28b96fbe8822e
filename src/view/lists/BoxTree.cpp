// BoxTree: split at the median along the longest side of the bounds of the box centres. Any thread.

#include "view/lists/BoxTree.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "view/lists/PickVolume.h"

namespace {

constexpr std::uint32_t kBoxesPerNode = 4;
constexpr std::size_t kDeepest = 64;  // median splits halve 2^32 boxes at most 32 times

// Returns twice the centre; 0 for a box without a centre, so that all boxes can be sorted.
float Centre(const Box& aBox, std::size_t aAxis) noexcept {
  const float sum = aBox.m_afLow[aAxis] + aBox.m_afHigh[aAxis];
  return std::isfinite(sum) ? sum : 0.0f;
}

}  // namespace

std::size_t BoxTree::MostNodes(std::size_t aBoxes) noexcept {
  // Halving a range of more than kBoxesPerNode boxes leaves at least (kBoxesPerNode + 1) / 2 boxes on each
  // side.
  return 2 * (aBoxes / ((kBoxesPerNode + 1) / 2) + 1);
}

void BoxTree::Build(const std::vector<Box>& aBoxes) {
  m_aOrder.resize(aBoxes.size());
  std::iota(m_aOrder.begin(), m_aOrder.end(), 0u);
  if (!aBoxes.empty()) BuildNode(aBoxes, 0, static_cast<std::uint32_t>(aBoxes.size()));
  m_aNodes.shrink_to_fit();
}

void BoxTree::BuildNode(const std::vector<Box>& aBoxes, std::uint32_t aFirst, std::uint32_t aEnd) {
  const std::size_t node = m_aNodes.size();
  m_aNodes.push_back({{}, aFirst, aEnd - aFirst});
  Box bounds, centres;
  for (std::uint32_t i = aFirst; i < aEnd; ++i) {
    const Box& box = aBoxes[m_aOrder[i]];
    bounds.Add(box);
    centres.Add(Centre(box, 0), Centre(box, 1), Centre(box, 2));
  }
  m_aNodes[node].m_Box = bounds;
  if (aEnd - aFirst <= kBoxesPerNode) return;

  std::size_t axis = 0;
  const auto side = [&](std::size_t aIndex) { return centres.m_afHigh[aIndex] - centres.m_afLow[aIndex]; };
  for (std::size_t i = 1; i < 3; ++i) {
    if (side(i) > side(axis)) axis = i;
  }
  const std::uint32_t middle = aFirst + (aEnd - aFirst) / 2;
  std::nth_element(m_aOrder.begin() + aFirst, m_aOrder.begin() + middle, m_aOrder.begin() + aEnd,
                   [&](std::uint32_t aLeft, std::uint32_t aRight) {
                     return Centre(aBoxes[aLeft], axis) < Centre(aBoxes[aRight], axis);
                   });
  m_aNodes[node].m_uCount = 0;
  BuildNode(aBoxes, aFirst, middle);
  m_aNodes[node].m_uIndex = static_cast<std::uint32_t>(m_aNodes.size());
  BuildNode(aBoxes, middle, aEnd);
}

void BoxTree::Find(const PickVolume& aVolume, std::vector<std::uint32_t>& aFound) const {
  if (m_aNodes.empty()) return;
  std::array<std::uint32_t, kDeepest> pending{};
  std::size_t count = 1;  // the root
  while (count > 0) {
    const std::uint32_t index = pending[--count];
    const Node& node = m_aNodes[index];
    if (!aVolume.MayTouch(node.m_Box)) continue;
    if (node.m_uCount == 0) {
      pending[count++] = node.m_uIndex;
      pending[count++] = index + 1;
    } else {
      const auto first = m_aOrder.begin() + node.m_uIndex;
      aFound.insert(aFound.end(), first, first + node.m_uCount);
    }
  }
}
