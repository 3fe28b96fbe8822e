// Embed: runs a host in a toolkit, with a model of two squares, in a window of an X server. One test thread.

#pragma once

#include "Program.h"
#include "Screen.h"

constexpr std::uint32_t kBackground = 0x212630;

/// Returns whether a pixel has the orange colour of a picked part.
inline bool IsMarked(std::uint32_t aPixel) {
  const auto red = aPixel >> 16 & 0xFF, green = aPixel >> 8 & 0xFF, blue = aPixel & 0xFF;
  return red > green + 40 && green > blue + 30;
}

class Embed : public HostOnScreen {
 protected:
  /// Starts a host with a model of two squares, left and right.
  /// @param aBefore variables of its environment
  void Open(const std::string& aHost, std::vector<std::string> aBefore = {}) {
    const std::string pair = Square("left", "", -2, -1, -0.1, 1) + Square("right", "", 0.1, -1, 2, 1);
    aBefore.insert(aBefore.begin(), {"env", "GLLIB_LOG=warning", "GLLIB_LOG_FILE=" + m_folder / "log"});
    aBefore.insert(aBefore.end(), {GLLIB_EXAMPLES_FOLDER "/" + aHost, m_folder.Put("pair.obj", pair)});
    HostOnScreen::Open(aBefore, "pair.obj");
    ASSERT_TRUE(ShowsModel());
  }
  /// Waits for the host to end. Its log must contain no warning. @return its exit status
  int Status() {
    const int status = HostOnScreen::Status();
    EXPECT_EQ(m_folder.Get("log"), "");
    return status;
  }

  struct Extents {
    int left = 0, right = 0, top = 0, bottom = 0;
    int Width() const { return right - left + 1; }
    int Height() const { return bottom - top + 1; }
  };
  /// Returns the extents of the scene in the window: those of all pixels in its background colour. Without
  /// such pixels right and bottom are -1.
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
  /// Returns the pixel at a share of the scene's width, in its middle row.
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
  struct Marks {
    bool left = false, right = false;
  };
  /// Waits until exactly these squares are marked.
  bool ShowsMarked(Marks aMarks) {
    return Eventually(
        [&] { return IsMarked(PixelAt(kLeft)) == aMarks.left && IsMarked(PixelAt(kRight)) == aMarks.right; });
  }
  /// Waits until the background is visible in the left square's place: the squares are drawn as lines, or
  /// turned edge-on.
  bool ShowsBackground() {
    return Eventually([&] { return PixelAt(kLeft) == kBackground; });
  }
  bool Fills(int aWidth, int aHeight) {
    return Eventually([&] { return SceneExtents().Width() == aWidth && SceneExtents().Height() == aHeight; });
  }
  static constexpr double kLeft = 0.35, kRight = 0.65;
};
