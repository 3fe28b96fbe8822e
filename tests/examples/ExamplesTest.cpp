// The small examples: their exit codes, pictures and output. Headless display.

#include "Program.h"
#include "shared/Picture.h"

namespace {

const char* const kExamples[] = {"lights",  "glass",   "picking", "text",
                                 "atlases", "texture", "markers", "capture"};

TEST(Examples, RefuseInvalidArguments) {
  for (const char* example : kExamples) {
    EXPECT_EQ(RunProgram(example, {}).status, 2) << example;
    EXPECT_EQ(RunProgram(example, {"--out"}).status, 2) << example;
    EXPECT_EQ(RunProgram(example, {"--out", "/no/folder/picture.png"}).status, 1) << example;
  }
}

TEST(Examples, DrawAndPrintResults) {
  for (const std::string example : kExamples) {
    SCOPED_TRACE(example);
    const TestFolder folder;
    const Outcome outcome = RunProgram(example, {"--out", folder / "picture.png"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    Picture picture;
    ASSERT_TRUE(ReadPng(folder / "picture.png", picture));
    std::set<std::uint32_t> colors;
    for (std::size_t i = 0; i < picture.pixels.size(); i += 4)
      colors.insert(picture.pixels[i] << 16 | picture.pixels[i + 1] << 8 | picture.pixels[i + 2]);
    EXPECT_GT(colors.size(), 1u) << "the picture is empty";
    if (example != "picking") continue;
    EXPECT_EQ(outcome.out,
              "under the point: 9 25\n"
              "nearest at the point: 9\n"
              "touched by the box: 2 3 4 8 9 10 14 15 16 25\n"
              "completely inside it: 25 9\n");
  }
}

}  // namespace
