// The two glyph atlases as the module carries them: grid, line use, and what both have in common.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "platform/Resources.h"
#include "platform/Window.h"

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

/// The first and the last line with a texel.
std::pair<int, int> LinesOf(const Cell& aCell) {
  const auto isUsed = [](unsigned aLine) { return aLine != 0; };
  const auto first = std::find_if(aCell.begin(), aCell.end(), isUsed);
  const auto last = std::find_if(aCell.rbegin(), aCell.rend(), isUsed);
  return {first - aCell.begin(), aCell.rend() - last - 1};
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

TEST(Atlas, StandsOnTheLinesOfItsKindOfLetter) {
  const struct {
    const char* m_szName;
    std::pair<int, int> m_Capitals, m_Small;
  } sheets[] = {{"SANSSERIF", {2, 11}, {5, 11}}, {"HAND", {1, 12}, {5, 12}}};
  for (const auto& sheet : sheets) {
    for (char c = 'A'; c <= 'Z'; ++c) EXPECT_EQ(LinesOf(CellOf(sheet.m_szName, c)), sheet.m_Capitals) << c;
    for (const char c : std::string("acemnorsuvwxz"))
      EXPECT_EQ(LinesOf(CellOf(sheet.m_szName, c)), sheet.m_Small) << c;
    for (const char c : std::string("gpqy"))
      EXPECT_EQ(LinesOf(CellOf(sheet.m_szName, c)), std::pair(5, 14)) << c;
    Cell underscore{};
    underscore[14] = 0xFF;
    EXPECT_EQ(CellOf(sheet.m_szName, '_'), underscore);
  }
}

TEST(Atlas, ShadesByFixedBytes) {
  const struct {
    int m_iCode;
    unsigned m_uEven, m_uOdd;
  } shades[] = {{176, 0x11, 0x44}, {177, 0x55, 0xAA}, {178, 0xDD, 0x77}};
  for (const auto& shade : shades) {
    const Cell cell = CellOf("HAND", shade.m_iCode);
    for (std::size_t line = 0; line < 16; ++line)
      EXPECT_EQ(cell[line], line % 2 == 0 ? shade.m_uEven : shade.m_uOdd);
  }
}

// Every piece shows, on each of its sides, the same edge as the plain line that leads there.
TEST(Atlas, DrawsLinesThatMeetTheirNeighbours) {
  // Legs of the codes from 179 on: up, down, left, right; 0 none, 1 single, 2 double.
  constexpr char kLegs[] =
      "1100 1110 1120 2210 0210 0120 2220 2200 0220 2020 2010 1020 0110 1001 1011 0111 1101 0011 1111 1102 "
      "2201 2002 0202 2022 0222 2202 0022 2222 1022 2011 0122 0211 2001 1002 0102 0201 2211 1122 1010 0101";
  const auto edges = [](const Cell& cell) {
    std::array<unsigned, 4> edge{cell[0], cell[15], 0, 0};
    for (std::size_t line = 0; line < 16; ++line) {
      edge[2] |= (cell[line] >> 7 & 1) << line;
      edge[3] |= (cell[line] & 1) << line;
    }
    return edge;
  };
  for (const char* name : {"HAND", "SANSSERIF"}) {
    const unsigned vertical[] = {0, edges(CellOf(name, 179))[0], edges(CellOf(name, 186))[0]};
    const unsigned horizontal[] = {0, edges(CellOf(name, 196))[2], edges(CellOf(name, 205))[2]};
    for (int code = 179; code <= 218; ++code) {
      const auto edge = edges(CellOf(name, code));
      for (std::size_t side = 0; side < 4; ++side) {
        const auto kind =
            static_cast<std::size_t>(kLegs[static_cast<std::size_t>(5 * (code - 179)) + side] - '0');
        EXPECT_EQ(edge[side], side < 2 ? vertical[kind] : horizontal[kind])
            << name << ' ' << code << " side " << side;
      }
    }
  }
}
