// BoxTree: a binary tree of boxes that finds those which a pick volume may touch. Any thread.

#pragma once

#include <cstdint>
#include <vector>

#include "view/lists/Box.h"

class PickVolume;

class BoxTree {
 public:
  /// Builds the tree over boxes that the caller keeps. Throws std::bad_alloc.
  template <class Items>
  explicit BoxTree(const Items& aItems) {
    m_aNodes.reserve(MostNodes(aItems.size()));
    m_aOrder.reserve(aItems.size());
    std::vector<Box> boxes;
    boxes.reserve(aItems.size());
    for (const auto& item : aItems) boxes.push_back(item.m_Box);
    Build(boxes);
  }

  /// Appends the index of each box that the volume may touch, in no order, and of some of their neighbours.
  /// Does not allocate where aFound has room for all boxes.
  void Find(const PickVolume& aVolume, std::vector<std::uint32_t>& aFound) const;

  std::size_t Bytes() const noexcept {
    return m_aNodes.capacity() * sizeof(Node) + m_aOrder.capacity() * sizeof(std::uint32_t);
  }

 private:
  /// A node with boxes of its own has a count; another has its first child behind it.
  struct Node {
    Box m_Box;
    std::uint32_t m_uIndex;  ///< of its first box in m_aOrder, or of its second child
    std::uint32_t m_uCount;  ///< of boxes; 0 for a node with children
  };

  static std::size_t MostNodes(std::size_t aBoxes) noexcept;
  void Build(const std::vector<Box>& aBoxes);
  void BuildNode(const std::vector<Box>& aBoxes, std::uint32_t aFirst, std::uint32_t aEnd);

  std::vector<Node> m_aNodes;
  std::vector<std::uint32_t> m_aOrder;
};
