// glview in a window: picture, keys, mouse and dropped files. Xvfb.

#include "Program.h"
#include "Screen.h"
#include "shared/Picture.h"

namespace {

constexpr int kWidth = 320;
constexpr int kHeight = 240;
constexpr int kMiddleX = kWidth / 2, kMiddleY = kHeight / 2;
constexpr std::uint32_t kBackground = 0x212630;
// Keycodes of the server.
constexpr std::uint8_t kEscape = 9, kFour = 13, kW = 25, kS = 39, kD = 40, kV = 55, kControl = 37,
                       kShift = 50, kMinus = 20, kC = 54, kM = 58, kPageUp = 112, kPageDown = 117;

class GlviewWindow : public HostOnScreen {
 protected:
  /// A green textured wall, and a dot.
  std::string Wall() const {
    Picture green(1, 1);
    green.pixels[1] = 255;
    WritePng(green, m_folder / "green.png");
    m_folder.Put("wall.mtl", "newmtl green\nKd 1 1 1\nmap_Kd green.png\n");
    return m_folder.Put("wall.obj",
                        "mtllib wall.mtl\nvt 0 0\n"
                        "o wall\nusemtl green\nv -1 -1 0\nv 1 -1 0\nv 1 1 0\nv -1 1 0\nf 1/1 2/1 3/1 4/1\n"
                        "o dot\nv 1.5 1 0\nv 2 1 0\nv 2 1.5 0\nf 5/1 6/1 7/1\n");
  }

  /// Starts glview in a separate folder, and waits for a title.
  void Open(const std::string& aModel, const std::string& aTitle) {
    HostOnScreen::Open({"sh", "-c", "cd \"$0\" && exec \"$@\"", m_folder / ".",
                        GLLIB_EXAMPLES_FOLDER "/glview", "--turn", "0,0", "--ortho", "--fsaa", "4", "--size",
                        std::to_string(kWidth) + "x" + std::to_string(kHeight), aModel},
                       aTitle);
  }
  /// Presses a key three times, with pauses: two presses in one millisecond would count as one.
  void PressThrice(std::uint8_t aKey) {
    for (int i = 0; i < 3; ++i) {
      m_screen.Press(aKey);
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
  }
  void Quit() {
    m_screen.Press(kEscape);
    EXPECT_EQ(Status(), 0);
  }
  std::uint32_t Pixel(int aX, int aY) const { return m_screen.Pixel(aX, aY); }
  bool TitleBeginsWith(const std::string& aBegin) {
    return Eventually([&] { return m_screen.Title().starts_with(aBegin); });
  }
  /// Presses C. The picture file must show the window's content at twice its size.
  void ExpectPicture(const std::string& aName) {
    m_screen.Press(kC);
    EXPECT_TRUE(TitleEndsWith("wrote " + aName)) << m_screen.Title();
    Picture picture;
    ASSERT_TRUE(ReadPng(m_folder / aName, picture));
    ASSERT_EQ(picture.width, 2 * kWidth);
    ASSERT_EQ(picture.height, 2 * kHeight);
    const Picture window = m_screen.Shot();
    int different = 0;
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        const std::uint8_t *there = picture.At(2 * x, 2 * y), *here = window.At(x, y);
        different += !std::equal(here, here + 3, there);
      }
    }
    EXPECT_LT(different * 20, kWidth * kHeight) << "only lines differ";
  }
};

TEST_F(GlviewWindow, DrawsPicksAndQuits) {
  Open(Wall(), "triangles");
  ASSERT_TRUE(Eventually([&] {
    return Pixel(2, 2) == kBackground && Pixel(kMiddleX, kMiddleY) != kBackground;
  })) << "the wall is not drawn";
  EXPECT_EQ(Pixel(kMiddleX, kMiddleY) & 0xFF00FF, 0u) << "green texture";
  m_screen.Press(kM);
  ASSERT_TRUE(Eventually([&] { return (Pixel(kMiddleX, kMiddleY) & 0xFF00FF) != 0; })) << "M: no texture";
  const std::uint32_t plain = Pixel(kMiddleX, kMiddleY);

  m_screen.Click(kMiddleX - 40, kMiddleY + 10);
  EXPECT_TRUE(TitleEndsWith("ms - wall")) << m_screen.Title();
  EXPECT_TRUE(Eventually([&] { return Pixel(kMiddleX - 40, kMiddleY) != plain; }))
      << "the picked part is marked";

  m_screen.Drag(2, 2, kWidth - 3, kHeight - 3, kShift);
  EXPECT_TRUE(TitleEndsWith("ms - wall, dot")) << m_screen.Title();
  m_screen.Drag(kMiddleX - 20, 2, kWidth - 3, kHeight - 3, kControl);
  EXPECT_TRUE(TitleEndsWith("ms - dot")) << m_screen.Title();

  m_screen.Press(kW);  // wire frame: the background shows through the wall
  EXPECT_TRUE(Eventually([&] { return Pixel(kMiddleX - 40, kMiddleY + 10) == Pixel(2, 2); }));
  m_screen.Press(kFour);
  EXPECT_TRUE(Eventually([&] { return Pixel(kMiddleX, 5) != Pixel(2, 2); })) << "four frames";
  ExpectPicture("wall-001.png");
  ExpectPicture("wall-002.png");

  Quit();
}

TEST_F(GlviewWindow, MeasuresCutsAndTurns) {
  Open(Wall(), "triangles");
  const auto shows = [&](int aX, int aY) { return Eventually([&] { return Pixel(aX, aY) != kBackground; }); };
  const auto hides = [&](int aX, int aY) { return Eventually([&] { return Pixel(aX, aY) == kBackground; }); };
  const int x = kMiddleX - 40, y = kMiddleY + 10;
  ASSERT_TRUE(shows(x, y)) << "the wall is not drawn";
  m_screen.Press(kD);
  for (const auto& [clickX, end] : {std::pair{x, "measuring"}, {x + 40, ""}, {x + 20, " deg"}}) {
    m_screen.Click(clickX, y);
    EXPECT_TRUE(TitleEndsWith(end)) << m_screen.Title();
  }
  m_screen.Press(kD);
  EXPECT_TRUE(TitleEndsWith("ms")) << m_screen.Title();

  const auto widthShown = [&] {
    const Picture shot = m_screen.Shot();
    int count = 0;
    for (int i = 0; i < kWidth - 30; ++i) {  // without the slider
      const std::uint8_t* p = shot.At(i, y);
      count += (p[0] << 16 | p[1] << 8 | p[2]) != kBackground ? 1 : 0;
    }
    return count;
  };
  const int whole = widthShown();
  m_screen.Press(kS);
  EXPECT_TRUE(Eventually([&] { return widthShown() < whole; })) << "half of the model";
  const int half = widthShown();
  PressThrice(kMinus);
  EXPECT_TRUE(Eventually([&] { return widthShown() < half; }));
  const int slider = kWidth - 17;
  m_screen.Drag(slider, kMiddleY, slider, kHeight - 2);
  EXPECT_TRUE(hides(x, y)) << "the section removes everything";
  m_screen.Drag(slider, kHeight - 24, slider, 5);
  EXPECT_TRUE(shows(x, y));
  PressThrice(kS);  // y, z, off

  PressThrice(kV);  // front, back, left: edge-on
  EXPECT_TRUE(hides(x, y));
  Quit();
}

TEST_F(GlviewWindow, ShowsDroppedFiles) {
  Open(Wall(), "triangles");
  const std::string left = m_folder.Put("left.obj", Square("left", "", -1, -1, 0, 1));
  const std::string bad = m_folder.Put("bad.obj", "nothing\n");
  m_screen.Drop({bad});
  EXPECT_TRUE(Eventually([&] { return m_screen.Title().find("bad.obj") != std::string::npos; }));
  EXPECT_TRUE(m_screen.Title().starts_with("wall.obj - 3 triangles")) << "the previous model is still shown";
  m_screen.Drop({left, left});
  EXPECT_TRUE(TitleBeginsWith("left.obj, left.obj - 4 triangles")) << m_screen.Title();
  Quit();
}

TEST_F(GlviewWindow, ReportsThatNamesCannotBePrinted) {
  Run({"sh", "-c", "exec \"$0\" --pick 512,384 \"$1\" >/dev/full", GLLIB_EXAMPLES_FOLDER "/glview", Wall()});
  EXPECT_EQ(Status(), 1);
}

TEST_F(GlviewWindow, CutsTheLongNameOfManyModels) {
  std::vector<std::string> paths;
  for (char model = 'a'; model < 'e'; ++model) {
    paths.push_back(m_folder.Put(std::string(70, model) + "\u00FC.obj", Square("", "", -1, -1, 0, 1)));
  }
  Open(paths.front(), "aaa");
  m_screen.Drop(paths);
  EXPECT_TRUE(Eventually([&] { return m_screen.Title().find(", ddd") != std::string::npos; }));
  m_screen.Press(kC);
  EXPECT_TRUE(TitleEndsWith("-001.png")) << m_screen.Title();
  Quit();
}

TEST_F(GlviewWindow, StepsThroughTheModelsOfAFolder) {
  std::filesystem::create_directory(m_folder / "models");
  m_folder.Put("models/a.obj", "nothing\n");
  m_folder.Put("models/b.obj", Square("left", "", -1, -1, 0, 1));
  m_folder.Put("models/c.obj", Square("left", "", -1, -1, 0, 1) + Square("right", "", 1, -1, 2, 1));
  m_folder.Put("models/d.text", "no model by its name\n");
  Open(m_folder / "models", "1 of 3: ");
  EXPECT_NE(m_screen.Title().find("a.obj"), std::string::npos) << "the first model is refused";
  for (const auto& [key, begin, end] : {std::tuple{kPageDown, "b.obj - 2 triangles", "2 of 3"},
                                        {kPageDown, "c.obj - 4 triangles", "3 of 3"},
                                        {kPageUp, "b.obj - 2 triangles", "2 of 3"}}) {
    m_screen.Press(key);
    EXPECT_TRUE(TitleBeginsWith(begin)) << m_screen.Title();
    EXPECT_TRUE(TitleEndsWith(end)) << m_screen.Title();
  }
  m_screen.Drop({m_folder / "models"});
  EXPECT_TRUE(Eventually([&] { return m_screen.Title().find("1 of 3: ") != std::string::npos; }));
  m_screen.Press(kPageUp);
  EXPECT_TRUE(TitleEndsWith("3 of 3")) << "Page Up on the first model shows the last";
  Quit();
}

TEST_F(GlviewWindow, ShowsProgressOfALargeModel) {
  Open(Grid(m_folder), "reading");
  const int barY = kHeight / 2 + kHeight * 44 / 100;  // within the bar; its left quarter is filled early
  EXPECT_TRUE(Eventually([&] { return Pixel(kWidth / 4 + 5, barY) >> 16 > 0xC0; }));
  EXPECT_TRUE(TitleBeginsWith("grid.obj - 498998 triangles")) << m_screen.Title();
  EXPECT_TRUE(Eventually([&] { return Pixel(kMiddleX, kMiddleY) >> 16 > 0x60; }));
  EXPECT_TRUE(Eventually([&] { return Pixel(kWidth / 4 + 5, barY) != 0xFF8C1A; })) << "the bar is removed";
}

TEST_F(GlviewWindow, QuitsWhileAModelIsRead) {
  Open(Grid(m_folder), "reading");
  Quit();
}

}  // namespace
