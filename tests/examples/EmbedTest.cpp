// The hosts inside of toolkits, in windows of a real X server: what they show, that it follows the window's
// size, what picking does, and that nothing is left at the end.

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "Program.h"
#include "Screen.h"

namespace {

constexpr std::uint32_t kBackground = 0x212630;
constexpr std::uint8_t kHome = 110, kEscape = 9, kW = 25;  // the server's keycodes

/// Whether a pixel shows the orange of what is picked.
bool IsMarked(std::uint32_t aPixel) {
  const auto red = aPixel >> 16 & 0xFF, green = aPixel >> 8 & 0xFF, blue = aPixel & 0xFF;
  return red > green + 40 && green > blue + 30;
}

class Embed : public HostOnScreen {
 protected:
  /// Starts a host with a model of two squares, side by side: left and right.
  void Open(const std::string& aHost) {
    const std::string pair = Square("left", "", -2, -1, -0.1, 1) + Square("right", "", 0.1, -1, 2, 1);
    HostOnScreen::Open({GLLIB_EXAMPLES_FOLDER "/" + aHost, m_folder.Put("pair.obj", pair)}, "pair.obj");
    ASSERT_TRUE(ShowsModel());
  }

  /// The extents of the scene in the window: all that stands in a column or row of the background's colour.
  struct Extents {
    int left = 0, right = 0, top = 0, bottom = 0;
    int Width() const { return right - left + 1; }
    int Height() const { return bottom - top + 1; }
  };
  Extents SceneExtents() const {
    const Picture shot = m_screen.Shot();
    Extents found{shot.width, -1, shot.height, -1};
    for (int y = 0; y < shot.height; ++y) {
      for (int x = 0; x < shot.width; ++x) {
        const std::uint8_t* p = shot.At(x, y);
        if ((std::uint32_t{p[0]} << 16 | std::uint32_t{p[1]} << 8 | p[2]) != kBackground) continue;
        found = {std::min(found.left, x), std::max(found.right, x), std::min(found.top, y),
                 std::max(found.bottom, y)};
      }
    }
    return found;
  }
  /// The pixel at a share of the scene's width, in its middle row.
  std::uint32_t PixelAt(double aShare) const {
    const Extents scene = SceneExtents();
    return m_screen.Pixel(scene.left + static_cast<int>(aShare * scene.Width()),
                          scene.top + scene.Height() / 2);
  }
  void ClickAt(double aShare) {
    const Extents scene = SceneExtents();
    m_screen.Click(scene.left + static_cast<int>(aShare * scene.Width()), scene.top + scene.Height() / 2);
  }
  bool ShowsModel() {
    return Eventually([&] {
      const std::uint32_t left = PixelAt(kLeft);
      return left != kBackground && left >> 16 > 0x40 && SceneExtents().Width() > 100;
    });
  }
  /// The uppermost row that the tree shows as selected, in the colour of Qt's own style; 0 for none.
  int SelectedRow() const {
    constexpr std::uint32_t kHighlight = 0x308CC6;
    const int x = SceneExtents().left / 2;
    const Picture shot = m_screen.Shot();
    for (int y = 0; y < shot.height; ++y) {
      const std::uint8_t* p = shot.At(x, y);
      if ((std::uint32_t{p[0]} << 16 | std::uint32_t{p[1]} << 8 | p[2]) == kHighlight) return y;
    }
    return 0;
  }

  static constexpr double kLeft = 0.35, kRight = 0.65;
};

TEST_F(Embed, SdlWindowShowsFollowsPicksTurnsAndLeaves) {
  Open("embed-sdl");
  ClickAt(kLeft);
  EXPECT_TRUE(TitleEndsWith("pair.obj - left")) << m_screen.Title();
  EXPECT_TRUE(Eventually([&] { return IsMarked(PixelAt(kLeft)) && !IsMarked(PixelAt(kRight)); }));

  for (const auto& [width, height] : {std::pair{480, 360}, {900, 700}}) {
    m_screen.Resize(width, height);
    EXPECT_TRUE(Eventually([&] {
      const Extents scene = SceneExtents();
      return scene.Width() == width && scene.Height() == height && IsMarked(PixelAt(kLeft));
    })) << width
        << " by " << height;
  }
  m_screen.Resize(640, 480);
  EXPECT_TRUE(Eventually([&] { return SceneExtents().Width() == 640 && IsMarked(PixelAt(kLeft)); }));
  m_screen.Drag(420, 240, 300, 240);  // 60 degrees and the 30 at first: the squares stand edge-on
  EXPECT_TRUE(Eventually([&] { return PixelAt(kLeft) == kBackground; }));
  m_screen.Press(kEscape);
  EXPECT_EQ(Status(), 0);
}

TEST_F(Embed, SdlWindowShowsWiresAndCloses) {
  Open("embed-sdl");
  m_screen.Press(kW);
  EXPECT_TRUE(Eventually([&] { return PixelAt(kLeft) == kBackground; })) << "wires can be looked through";
  m_screen.Close();
  EXPECT_EQ(Status(), 0);
}

TEST_F(Embed, QtWindowShowsFollowsAndPicksBothWays) {
  Open("embed-qt");
  const Extents first = SceneExtents();
  EXPECT_GT(first.left, 50) << "the tree stands to the left of the scene";

  ClickAt(kRight);
  EXPECT_TRUE(TitleEndsWith("pair.obj - right")) << m_screen.Title();
  EXPECT_TRUE(Eventually([&] { return IsMarked(PixelAt(kRight)) && !IsMarked(PixelAt(kLeft)); }));
  const int rightRow = SelectedRow();
  ClickAt(kLeft);
  EXPECT_TRUE(Eventually([&] { return SelectedRow() > 0 && SelectedRow() < rightRow; }))
      << "the tree follows the scene, from row " << rightRow << " to " << SelectedRow();

  m_screen.Click(first.left / 2, rightRow + 2);
  EXPECT_TRUE(Eventually([&] { return IsMarked(PixelAt(kRight)) && !IsMarked(PixelAt(kLeft)); }))
      << "the scene follows the tree";
  m_screen.Press(kHome);
  EXPECT_TRUE(Eventually([&] { return IsMarked(PixelAt(kRight)) && IsMarked(PixelAt(kLeft)); }))
      << "the model's item means all of its parts";

  for (const auto& [width, height] : {std::pair{700, 500}, {1000, 740}}) {
    m_screen.Resize(width, height);
    EXPECT_TRUE(Eventually([&] {
      const Extents scene = SceneExtents();
      return scene.right > width - 10 && scene.bottom > height - 50 && IsMarked(PixelAt(kLeft));
    })) << width
        << " by " << height;
  }
  m_screen.Press(kW);
  EXPECT_TRUE(Eventually([&] { return PixelAt(kLeft) == kBackground; })) << "the tool bar's wire frame";
  m_screen.Close();
  EXPECT_EQ(Status(), 0);
}

}  // namespace
