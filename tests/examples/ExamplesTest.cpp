// The small examples: what their pictures show and what they print.

#include <gtest/gtest.h>

#include <algorithm>

#include "Program.h"
#include "shared/Picture.h"

namespace {

Picture PictureOf(const std::string& aExample, std::string* aOutput = nullptr) {
  const TemporaryFolder folder;
  const std::string file = folder / "picture.png";
  const Outcome outcome = RunProgram(aExample, {"--out", file});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  if (aOutput != nullptr) *aOutput = outcome.out;
  Picture picture;
  EXPECT_TRUE(ReadPng(file, picture));
  return picture;
}

int Brightness(const std::uint8_t* aPixel) { return aPixel[0] + aPixel[1] + aPixel[2]; }

TEST(Examples, RefuseAnythingButAFileToDrawTo) {
  for (const char* example : {"lights", "glass", "picking"}) {
    EXPECT_EQ(RunProgram(example, {}).status, 2) << example;
    EXPECT_EQ(RunProgram(example, {"--out"}).status, 2) << example;
    EXPECT_EQ(RunProgram(example, {"--out", "/no/folder/picture.png"}).status, 1) << example;
  }
}

TEST(Examples, NinthLightShinesOnceOneOfTheEightIsGone) {
  const Picture picture = PictureOf("lights");
  const int half = picture.width / 2;
  // The floor beneath the light that goes, in front, and the floor before the ball, which the ninth lights.
  const struct {
    const char* name;
    int x, y;
    bool eightLight, afterwards;
  } places[] = {{"beneath the first", 240, 400, true, false},
                {"in the middle", 240, 285, false, true},
                {"beneath the fifth", 240, 145, true, true},
                {"the corner of the floor", 40, 460, false, false}};
  for (const auto& place : places) {
    constexpr int kLit = 120;
    EXPECT_EQ(Brightness(picture.At(place.x, place.y)) > kLit, place.eightLight)
        << place.name << ": " << Brightness(picture.At(place.x, place.y));
    EXPECT_EQ(Brightness(picture.At(half + place.x, place.y)) > kLit, place.afterwards)
        << place.name << " afterwards: " << Brightness(picture.At(half + place.x, place.y));
  }
}

}  // namespace
