// PPointerArray: slots, growth and packing. No display.

#include "support/Test.h"
#include "thread/PPointerArray.h"

TEST(PointerArray, FillsTheLowestFreeSlot) {
  int pool[12];
  PPointerArray<int> array;
  EXPECT_FALSE(array.Add(nullptr));
  for (int i = 0; i < 11; ++i) EXPECT_TRUE(array.Add(&pool[i]));
  EXPECT_EQ(array.GetSlots(), 20);
  EXPECT_FALSE(array.Add(&pool[4])) << "added before";
  EXPECT_FALSE(array.Remove(nullptr)) << "a free slot is not an element";
  EXPECT_TRUE(array.Remove(&pool[3]));
  EXPECT_TRUE(array.Add(&pool[11]));
  int position = 2;
  EXPECT_EQ(array.GetNext(position), &pool[11]) << "in slot 3";
  array.Remove(&pool[11]);
  array.Remove(&pool[4]);
  EXPECT_EQ(array.GetNext(position), &pool[5]);
  position = 10;
  EXPECT_EQ(array.GetNext(position), nullptr);
  EXPECT_EQ(position, 20) << "the number of slots";
  position = -1;
  EXPECT_EQ(array.GetNext(position), nullptr);
}

TEST(PointerArray, PacksAtTenFreeSlots) {
  const struct {
    int elements, removed, slots, first;  // first: the slot of the first remaining element
  } cases[] = {{21, 0, 30, 0},  {30, 9, 30, 9},  {30, 10, 20, 0},
               {30, 21, 10, 0}, {11, 10, 10, 0}, {10, 10, 0, 0}};
  for (const auto& [elements, removed, slots, first] : cases) {
    int pool[30];
    PPointerArray<int> array;
    for (int i = 0; i < elements; ++i) array.Add(&pool[i]);
    for (int i = 0; i < removed; ++i) array.Remove(&pool[i]);
    array.Pack();
    EXPECT_EQ(array.GetSlots(), slots) << elements << " minus " << removed;
    int position, next = removed;
    for (int* p = array.GetFirst(position); p != nullptr; p = array.GetNext(position), ++next) {
      EXPECT_EQ(p, &pool[next]);
      EXPECT_EQ(position, first + next - removed);
    }
    EXPECT_EQ(next, elements);
  }
}
