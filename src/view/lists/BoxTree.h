// BoxTree: a binary tree of boxes that finds the boxes that a pick volume may touch. Any thread.

#pragma once

#include <cstdint>
#include <vector>

#include "view/lists/Box.h"

class PickVolume;

class BoxTree {
 public:
  /// Builds the tree from the boxes of aItems. The indices that Find returns refer to aItems. Throws
  /// std::bad_alloc.
  template <class Items>
  explicit BoxTree(const Items& aItems) {
    m_aNodes.reserve(MostNodes(aItems.size()));
    m_aOrder.reserve(aItems.size());
    std::vector<Box> boxes;
    boxes.reserve(aItems.size());
    for (const auto& item : aItems) boxes.push_back(item.m_Box);
    Build(boxes);
  }

  /// Appends the index of each box that the volume may touch, and of some neighbouring boxes. The order is
  /// undefined. Does not allocate if aFound has capacity for all boxes.
  void Find(const PickVolume& aVolume, std::vector<std::uint32_t>& aFound) const;

  std::size_t Bytes() const noexcept {
    return m_aNodes.capacity() * sizeof(Node) + m_aOrder.capacity() * sizeof(std::uint32_t);
  }

 private:
  /// A leaf has boxes. The first child of an inner node follows it in m_aNodes.
  struct Node {
    Box m_Box;
    std::uint32_t m_uIndex;  ///< first box in m_aOrder, or second child
    std::uint32_t m_uCount;  ///< number of boxes; 0 for an inner node
  };

  static std::size_t MostNodes(std::size_t aBoxes) noexcept;
  void Build(const std::vector<Box>& aBoxes);
  void BuildNode(const std::vector<Box>& aBoxes, std::uint32_t aFirst, std::uint32_t aEnd);

  std::vector<Node> m_aNodes;
  std::vector<std::uint32_t> m_aOrder;
};
