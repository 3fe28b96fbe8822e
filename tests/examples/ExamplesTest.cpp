// The small examples: what their pictures show and what they print.

#include <gtest/gtest.h>

#include <algorithm>

#include "Program.h"
#include "shared/Picture.h"

namespace {

Picture PictureOf(const std::string& aExample, std::string* aOutput = nullptr) {
  const TestFolder folder;
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
  for (const char* example :
       {"lights", "glass", "picking", "text", "atlases", "texture", "markers", "capture"}) {
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

TEST(Examples, SortedGlassShowsWhatUnsortedGlassHides) {
  const Picture picture = PictureOf("glass");
  const int half = picture.width / 2;
  // Inside the nearest pane, where the second stands behind it; and where the nearest stands alone.
  const int x = 110, y = 290, aloneX = 60, aloneY = 110;
  const std::uint8_t* alone = picture.At(aloneX, aloneY);
  EXPECT_TRUE(std::equal(alone, alone + 3, picture.At(half + aloneX, aloneY))) << "one pane needs no order";
  EXPECT_TRUE(std::equal(alone, alone + 3, picture.At(x, y))) << "unsorted, the second pane is lost";
  EXPECT_LT(picture.At(half + x, y)[0] + 20, picture.At(x, y)[0]) << "sorted, it takes of the red";
}

TEST(Examples, PickingFindsTheBoxesOfEachKind) {
  std::string found;
  const Picture picture = PictureOf("picking", &found);
  EXPECT_EQ(found,
            "under the point: 9 25\n"
            "nearest at the point: 9\n"
            "met by the frame: 2 3 4 8 9 10 14 15 16 25\n"
            "wholly inside it: 25 9\n");
  const std::uint8_t* inside = picture.At(273, 287);
  const std::uint8_t* met = picture.At(180, 287);
  const std::uint8_t* free = picture.At(460, 287);
  EXPECT_TRUE(inside[0] > inside[1] + 100 && met[1] > met[2] + 80 && free[2] >= free[0])
      << "red, orange and grey";
}

TEST(Examples, TextShowsEveryKindOfFont) {
  const Picture picture = PictureOf("text");
  const struct {
    const char* kind;
    int left, top, right, bottom;
  } places[] = {{"solid", 100, 80, 940, 250},     {"raster", 40, 280, 410, 305},
                {"italic", 40, 316, 350, 340},    {"system", 40, 436, 280, 452},
                {"SANSSERIF", 40, 476, 240, 506}, {"HAND", 296, 490, 640, 560},
                {"flat", 650, 290, 930, 570}};
  const int paper = Brightness(picture.At(0, 0));
  for (const auto& place : places) {
    int ink = 0;
    for (int y = place.top; y < place.bottom; ++y) {
      for (int x = place.left; x < place.right; ++x) ink += Brightness(picture.At(x, y)) < paper - 60;
    }
    EXPECT_GT(ink * 50, (place.right - place.left) * (place.bottom - place.top)) << place.kind;
  }
}

TEST(Examples, TexturesLieOnTheirFaces) {
  const Picture picture = PictureOf("texture");
  const std::uint8_t *snow = picture.At(650, 155), *water = picture.At(500, 380),
                     *bricks = picture.At(310, 330);
  EXPECT_GT(Brightness(snow), 600);
  EXPECT_GT(water[2], water[0] + 80);
  EXPECT_GT(bricks[0], bricks[2] + 60);
}

TEST(Examples, CaptureIsSharperThanTheWindow) {
  const Picture picture = PictureOf("capture");
  const int half = picture.width / 2;
  EXPECT_EQ(Brightness(picture.At(half + 2, 2)), 3 * 255) << "a background of its own";
  int windowSteps = 0, captureSteps = 0;  // changes within the squares that one pixel of the window fills
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < half; x += 3) {
      windowSteps += Brightness(picture.At(x, y)) != Brightness(picture.At(x + 2, y));
      captureSteps += Brightness(picture.At(half + x, y)) != Brightness(picture.At(half + x + 2, y));
    }
  }
  EXPECT_EQ(windowSteps, 0);
  EXPECT_GT(captureSteps, 1000);
}

TEST(Examples, MarkersKeepTheirSizeNearAndFar) {
  const Picture picture = PictureOf("markers");
  // Two poles' feet, one behind the other: 16 pixels of the same colour stand on each, and no more.
  for (const auto& [x, y] : {std::pair{376, 408}, {355, 133}}) {
    int height = 0;
    for (int row = y - 24; row < y + 8; ++row) height += picture.At(x, row)[0] == 255 ? 1 : 0;
    EXPECT_EQ(height, 16) << "at " << x << ", " << y;
  }
}

}  // namespace
