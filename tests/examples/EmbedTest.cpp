// The example hosts for Qt, SDL and plain pixels: picture, resizing, picking and exit. Xvfb.

#include "Embed.h"

namespace {

constexpr std::uint8_t kHome = 110, kEscape = 9, kSpace = 65, kW = 25, kD = 40;  // keycodes of the server

TEST_F(Embed, SdlHostDrawsResizesPicksTurnsAndExits) {
  Open("embed-sdl");
  ClickAt(kLeft);
  EXPECT_TRUE(TitleEndsWith("pair.obj - left")) << m_screen.Title();
  for (const auto& [width, height] : {std::pair{480, 360}, {900, 700}, {640, 480}}) {
    m_screen.Resize(width, height);
    EXPECT_TRUE(Fills(width, height)) << width << " by " << height;
    EXPECT_TRUE(ShowsMarked({.left = true}));
  }
  m_screen.Drag(420, 240, 300, 240);  // 60 degrees and the initial 30: the squares are edge-on
  EXPECT_TRUE(ShowsBackground());
  m_screen.Press(kEscape);
  EXPECT_EQ(Status(), 0);
}

TEST_F(Embed, PixelsOfAHeadlessContextFollowTheWindow) {
  Open("embed-pixels");
  for (const auto& [width, height] : {std::pair{480, 360}, {900, 700}}) {
    m_screen.Resize(width, height);
    EXPECT_TRUE(Fills(width, height));
    ClickAt(kRight);
    EXPECT_TRUE(TitleEndsWith("pair.obj - right")) << m_screen.Title();
    ClickAt(kLeft);
    EXPECT_TRUE(TitleEndsWith("pair.obj - left")) << m_screen.Title();
    EXPECT_TRUE(ShowsMarked({.left = true})) << "the picture is upright and not mirrored";
  }
  m_screen.Press(kSpace);
  for (const bool edgeOn : {true, false, true})
    EXPECT_TRUE(Eventually([&] { return (PixelAt(kLeft) == kBackground) == edgeOn; })) << "the model rotates";
  m_screen.Close();
  EXPECT_EQ(Status(), 0);
}

/// The Qt host, which shows a tree beside the scene. Parameter: Qt's scale factor.
class EmbedQt : public Embed, public testing::WithParamInterface<int> {
 protected:
  void Open() {
    Embed::Open("embed-qt", {"QT_SCALE_FACTOR=" + std::to_string(GetParam())});
    m_screen.Resize(1000, 740);  // the initial size exceeds the screen at a scale of 2
    ASSERT_TRUE(FillsWindow(1000, 740));
  }
  /// Waits until the scene reaches the window's right edge and the status bar below.
  bool FillsWindow(int aWidth, int aHeight) const {
    return Eventually([&] {
      const Extents scene = SceneExtents();
      return scene.right > aWidth - 10 && scene.right < aWidth && scene.bottom > aHeight - 50 * GetParam() &&
             scene.left > 50;
    });
  }
  /// Returns the uppermost selected row of the tree, by the colour of Qt's style; 0 if there is none.
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
};

TEST_P(EmbedQt, QtHostDrawsResizesAndPicks) {
  Open();
  ClickAt(kRight);
  EXPECT_TRUE(TitleEndsWith("pair.obj - right")) << m_screen.Title();
  EXPECT_TRUE(ShowsMarked({.right = true}));
  const int rightRow = SelectedRow();
  ClickAt(kLeft);
  EXPECT_TRUE(Eventually([&] { return SelectedRow() > 0 && SelectedRow() < rightRow; }))
      << "the tree follows the scene from row " << rightRow << " to " << SelectedRow();

  m_screen.Click(SceneExtents().left / 2, rightRow + 2);
  EXPECT_TRUE(ShowsMarked({.right = true})) << "the scene follows the tree";
  m_screen.Press(kHome);
  EXPECT_TRUE(ShowsMarked({.left = true, .right = true})) << "the item of the model selects all its parts";

  for (const auto& [width, height] : {std::pair{900, 600}, {1000, 740}}) {
    m_screen.Resize(width, height);
    EXPECT_TRUE(FillsWindow(width, height)) << width << " by " << height;
    EXPECT_TRUE(ShowsMarked({.left = true, .right = true}));
  }
  m_screen.Press(kW);
  EXPECT_TRUE(ShowsBackground()) << "the wire frame switch of the tool bar";
  m_screen.Close();
  EXPECT_EQ(Status(), 0);
}

TEST_P(EmbedQt, SceneMovesToAnotherWindowAndBack) {
  Open();
  ClickAt(kLeft);
  ASSERT_TRUE(ShowsMarked({.left = true}));
  for (const bool byKey : {true, false}) {
    m_screen.Press(kD);
    ASSERT_TRUE(m_screen.WaitForWindow("pair.obj - detached"));
    m_screen.Focus();
    EXPECT_TRUE(ShowsMarked({.left = true})) << "the scene is unchanged";
    m_screen.Resize(500, 400);
    EXPECT_TRUE(Fills(500, 400));
    byKey ? m_screen.Press(kD) : m_screen.Close();
    ASSERT_TRUE(m_screen.WaitForWindow("pair.obj - left"));
    m_screen.Focus();
    EXPECT_TRUE(FillsWindow(1000, 740)) << "the scene is beside the tree";
    ClickAt(kLeft);
    EXPECT_TRUE(ShowsMarked({.left = true}));
  }
  m_screen.Close();
  EXPECT_EQ(Status(), 0);
}

INSTANTIATE_TEST_SUITE_P(Scales, EmbedQt, testing::Values(1, 2));

}  // namespace
