// The two glyph sheets in the module: grid, rows and texels. No display.

#include "platform/Resources.h"
#include "platform/Window.h"
#include "support/Test.h"

namespace {

const unsigned char* Block(const char* aName) {
  const HRSRC resource = FindResourceA(ModuleInstance(), aName, RT_RCDATA);
  EXPECT_EQ(SizeofResource(ModuleInstance(), resource), 131072u) << aName;
  return static_cast<const unsigned char*>(LockResource(LoadResource(ModuleInstance(), resource)));
}

}  // namespace

TEST(Atlas, IsFoundInAnyCase) {
  EXPECT_EQ(Block("hand"), Block("HAND"));
  EXPECT_NE(Block("SansSerif"), Block("HAND"));
  EXPECT_EQ(FindResourceA(ModuleInstance(), "HANDS", RT_RCDATA), nullptr);
  EXPECT_EQ(FindResourceA(ModuleInstance(), "HAND", "TEXT"), nullptr);
}

TEST(Atlas, HasOpaqueOrClearWhiteTexels) {
  for (const char* name : {"HAND", "SANSSERIF"}) {
    const unsigned char* block = Block(name);
    std::set<int> empty;
    for (int code = 0; code < 256; ++code) empty.insert(code);
    for (int i = 0; i < 131072; i += 4) {
      ASSERT_EQ(std::memcmp(block + i, "\xFF\xFF\xFF", 3), 0) << name << " at " << i;
      ASSERT_TRUE(block[i + 3] == 0 || block[i + 3] == 255) << name << " at " << i;
      const int x = i / 4 % 128, y = 255 - i / 4 / 128;  // from the top
      if (block[i + 3] != 0) empty.erase(y / 16 * 16 + x / 8);
    }
    EXPECT_EQ(empty, (std::set{0, 32, 255})) << name;
  }
}
