// The example hosts for GTK 3 and GTK 4, at scale 1 and 2: the scene follows its widget in size and into
// another window, and ends with it. Xvfb.

#include "Embed.h"

namespace {

constexpr std::uint8_t kEscape = 9, kD = 40, kX = 53;  // keycodes of the server

/// Parameters: the host, and GTK's scale factor.
class EmbedGtk : public Embed, public testing::WithParamInterface<std::tuple<const char*, int>> {
 protected:
  void Open() {
    const auto& [host, scale] = GetParam();
    Embed::Open(host, {"GDK_SCALE=" + std::to_string(scale)});
  }
  /// Clicks until the title has the expected end: GTK drops a click that arrives during the layout of its
  /// widgets.
  bool Picks(double aShare, const std::string& aTitle) {
    using namespace std::chrono_literals;
    for (int click = 0; click < 4; ++click) {
      ClickAt(aShare);
      for (int look = 0; look < 150; ++look) {
        if (m_screen.Title().ends_with(aTitle)) return true;
        std::this_thread::sleep_for(20ms);
      }
    }
    return false;
  }
  bool FillsWindow(int aWidth, int aHeight) const {
    return Eventually([&] {
      const Extents scene = SceneExtents();
      // A row of buttons is above the scene.
      return scene.left == 0 && scene.Width() == aWidth && scene.bottom == aHeight - 1 && scene.top > 20 &&
             scene.top < aHeight / 4;
    });
  }
};

TEST_P(EmbedGtk, SceneFollowsTheWindowAndPicks) {
  Open();
  const int scale = std::get<1>(GetParam());
  for (const auto& [width, height] : {std::pair{480, 400}, {900, 700}, {600, 600}}) {
    m_screen.Resize(width, height);
    EXPECT_TRUE(FillsWindow(width, height)) << width << " by " << height << ", scale " << scale;
    EXPECT_TRUE(Picks(kRight, "pair.obj - right")) << m_screen.Title();
    EXPECT_TRUE(Picks(kLeft, "pair.obj - left")) << m_screen.Title();
    EXPECT_TRUE(ShowsMarked({.left = true}));
  }
  const Extents scene = SceneExtents();
  const int y = scene.top + scene.Height() / 2;
  m_screen.Drag(420, y, 300, y);  // 60 degrees and the initial 30: the squares are edge-on
  EXPECT_TRUE(ShowsBackground());
  m_screen.Close();
  EXPECT_EQ(Status(), 0);
}

TEST_P(EmbedGtk, SceneMovesToAnotherWindowAndEndsWithItsWidget) {
  Open();
  ASSERT_TRUE(Picks(kLeft, "pair.obj - left")) << m_screen.Title();
  ASSERT_TRUE(ShowsMarked({.left = true}));
  for (int i = 0; i < 2; ++i) {
    m_screen.Press(kD);
    ASSERT_TRUE(m_screen.WaitForWindow("pair.obj - detached"));
    m_screen.Focus();
    EXPECT_TRUE(ShowsMarked({.left = true})) << "the scene is unchanged";
    EXPECT_TRUE(Eventually([&] { return SceneExtents().top == 0; })) << "the other window has no buttons";
    m_screen.Press(kD);
    ASSERT_TRUE(Eventually([&] { return m_screen.Title().empty(); })) << "the window is closed";
    ASSERT_TRUE(m_screen.WaitForWindow("pair.obj"));
    m_screen.Focus();
    EXPECT_TRUE(ShowsMarked({.left = true})) << "the scene has moved back";
    EXPECT_TRUE(Eventually([&] { return SceneExtents().top > 20; })) << "below the buttons";
  }
  m_screen.Press(kX);
  EXPECT_TRUE(TitleEndsWith("pair.obj - closed")) << m_screen.Title();
  EXPECT_TRUE(Eventually([&] { return SceneExtents().right < 0; })) << "no pixel remains";
  m_screen.Press(kEscape);
  EXPECT_EQ(Status(), 0);
}

INSTANTIATE_TEST_SUITE_P(Hosts, EmbedGtk,
                         testing::Combine(testing::Values("embed-gtk3", "embed-gtk4"), testing::Values(1, 2)),
                         [](const auto& aInfo) {
                           return std::string(std::get<0>(aInfo.param)).substr(6) + "_scale" +
                                  std::to_string(std::get<1>(aInfo.param));
                         });

}  // namespace
