// The slot array: which slot an element gets and keeps, growth and packing.

#include "thread/PPointerArray.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

/// The numbers of the elements by slot, from a walk; each element is an int of a pool.
std::vector<std::pair<int, int>> SlotsOf(const PPointerArray<int>& aArray) {
  std::vector<std::pair<int, int>> slots;
  int position;
  for (int* p = aArray.GetFirst(position); p != nullptr; p = aArray.GetNext(position))
    slots.emplace_back(position, *p);
  return slots;
}

struct PointerArray : testing::Test {
  PointerArray() {
    for (int i = 0; i < 40; ++i) m_Pool[i] = i;
  }
  void Fill(int aCount) {
    for (int i = 0; i < aCount; ++i) ASSERT_TRUE(m_Array.Add(&m_Pool[i]));
  }
  int m_Pool[40];
  PPointerArray<int> m_Array;
};

}  // namespace

TEST_F(PointerArray, FillsTheLowestFreeSlotAndGrowsByTen) {
  EXPECT_FALSE(m_Array.Add(nullptr));
  EXPECT_EQ(m_Array.GetSlots(), 0);
  Fill(10);
  EXPECT_EQ(m_Array.GetSlots(), 10);
  EXPECT_FALSE(m_Array.Add(&m_Pool[4])) << "already there";
  EXPECT_TRUE(m_Array.Add(&m_Pool[10]));
  EXPECT_EQ(m_Array.GetSlots(), 20);
  EXPECT_TRUE(m_Array.Remove(&m_Pool[7]));
  EXPECT_FALSE(m_Array.Remove(&m_Pool[7]));
  EXPECT_FALSE(m_Array.Remove(nullptr)) << "a free slot is no element";
  EXPECT_TRUE(m_Array.Remove(&m_Pool[3]));
  EXPECT_TRUE(m_Array.Add(&m_Pool[20]));
  EXPECT_TRUE(m_Array.Add(&m_Pool[21]));
  using Slots = std::vector<std::pair<int, int>>;
  EXPECT_EQ(
      SlotsOf(m_Array),
      (Slots{{0, 0}, {1, 1}, {2, 2}, {3, 20}, {4, 4}, {5, 5}, {6, 6}, {7, 21}, {8, 8}, {9, 9}, {10, 10}}));
  EXPECT_EQ(m_Array.GetCount(), 11);
}

TEST_F(PointerArray, PacksOnceTenSlotsAreFree) {
  struct Case {
    int m_iElements, m_iRemoved, m_iSlots;
  };
  for (const auto [elements, removed, slots] :
       {Case{21, 0, 30}, {30, 10, 20}, {30, 9, 30}, {30, 21, 10}, {11, 10, 10}, {10, 10, 0}, {0, 0, 0}}) {
    PPointerArray<int> array;
    for (int i = 0; i < elements; ++i) array.Add(&m_Pool[i]);
    for (int i = 0; i < removed; ++i) array.Remove(&m_Pool[i]);
    array.Pack();
    EXPECT_EQ(array.GetSlots(), slots) << elements << " less " << removed;
    std::vector<std::pair<int, int>> expected;
    const int shift = elements >= 30 && removed == 9 ? 0 : removed;
    for (int i = removed; i < elements; ++i) expected.emplace_back(i - shift, i);
    EXPECT_EQ(SlotsOf(array), expected) << elements << " less " << removed;
  }
}

TEST_F(PointerArray, AWalkGoesBySlotAndStandsRemovals) {
  int position = 99;
  EXPECT_EQ(m_Array.GetFirst(position), nullptr);
  EXPECT_EQ(position, 0) << "the number of slots";
  Fill(3);
  EXPECT_EQ(m_Array.GetFirst(position), &m_Pool[0]);
  m_Array.Remove(&m_Pool[0]);
  m_Array.Remove(&m_Pool[1]);
  EXPECT_EQ(m_Array.GetNext(position), &m_Pool[2]);
  EXPECT_EQ(m_Array.GetNext(position), nullptr);
  EXPECT_EQ(m_Array.GetNext(position), nullptr) << "stays at the end";
  position = -1;
  EXPECT_EQ(m_Array.GetNext(position), nullptr);
  EXPECT_EQ(position, -1);
}
