// The two glyph atlases as the module carries them: grid, line use, and what both have in common.

#include "platform/Resources.h"
#include "platform/Window.h"
#include "support/Test.h"

namespace {

constexpr int kWidth = 128;

const unsigned char* Block(const char* aName) {
  const HRSRC resource = FindResourceA(ModuleInstance(), aName, RT_RCDATA);
  EXPECT_EQ(SizeofResource(ModuleInstance(), resource), 131072u) << aName;
  return static_cast<const unsigned char*>(LockResource(LoadResource(ModuleInstance(), resource)));
}

/// The sixteen lines of a cell, the top one first, the leftmost texel in the highest bit.
using Cell = std::array<unsigned, 16>;

Cell CellOf(const char* aName, int aCode) {
  const unsigned char* block = Block(aName);
  Cell cell{};
  for (int line = 0; line < 16; ++line) {
    const int y = 255 - 16 * (aCode >> 4) - line;
    for (int x = 0; x < 8; ++x) {
      const int at = (y * kWidth + 8 * (aCode & 15) + x) * 4;
      cell[static_cast<std::size_t>(line)] |= (block[at + 3] != 0 ? 0x80u : 0u) >> x;
    }
  }
  return cell;
}

bool IsOfTheHand(int aCode) {
  constexpr int kRanges[][2] = {{1, 2},     {16, 18},   {23, 27},   {30, 31},   {33, 44},   {46, 60},
                                {62, 94},   {96, 126},  {128, 144}, {149, 152}, {155, 155}, {158, 158},
                                {160, 166}, {168, 168}, {181, 190}, {198, 216}, {228, 228}};
  return std::any_of(std::begin(kRanges), std::end(kRanges),
                     [aCode](const int* range) { return aCode >= range[0] && aCode <= range[1]; });
}

}  // namespace

TEST(Atlas, IsFoundByItsNameInAnyCase) {
  EXPECT_EQ(Block("hand"), Block("HAND"));
  EXPECT_NE(Block("SansSerif"), Block("HAND"));
  EXPECT_EQ(FindResourceA(ModuleInstance(), "HANDS", RT_RCDATA), nullptr);
  EXPECT_EQ(FindResourceA(ModuleInstance(), "HAND", "TEXT"), nullptr);
}

TEST(Atlas, HoldsWhiteTexelsOfFullOrNoAlpha) {
  for (const char* name : {"HAND", "SANSSERIF"}) {
    const unsigned char* block = Block(name);
    for (int i = 0; i < 131072; i += 4) {
      ASSERT_EQ(std::memcmp(block + i, "\xFF\xFF\xFF", 3), 0) << name << " at " << i;
      ASSERT_TRUE(block[i + 3] == 0 || block[i + 3] == 255) << name << " at " << i;
    }
  }
}

TEST(Atlas, SharesAllCellsButThoseOfItsHand) {
  for (int code = 0; code < 256; ++code) {
    const Cell hand = CellOf("HAND", code), sans = CellOf("SANSSERIF", code);
    EXPECT_EQ(hand != sans, IsOfTheHand(code)) << "code " << code;
    const bool empty = code == 0 || code == 32 || code == 255;
    EXPECT_EQ(hand == Cell{}, empty) << "HAND " << code;
    EXPECT_EQ(sans == Cell{}, empty) << "SANSSERIF " << code;
  }
}
