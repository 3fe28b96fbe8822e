// glview.exe in its window: picture, keys and mouse. Wine.

#include <windows.h>

#include "Program.h"
#include "shared/Picture.h"
#include "support/Test.h"

namespace {

constexpr int kWidth = 320, kHeight = 240;

class GlviewWindow : public ::testing::Test {
 protected:
  ~GlviewWindow() override { WaitFor(m_glview); }

  static std::string Title(HWND aWindow) {
    char title[256] = {};
    GetWindowTextA(aWindow, title, sizeof(title));
    return title;
  }
  /// Waits for glview's window with a title that contains a text.
  HWND Await(const std::string& aWords) const {
    HWND window = nullptr;
    const auto found = [&] {
      window = FindWindowA("glview", nullptr);
      return window != nullptr && Title(window).find(aWords) != std::string::npos;
    };
    if (Eventually(found)) return window;
    ADD_FAILURE() << Title(FindWindowA("glview", nullptr));
    return nullptr;
  }

  TestFolder m_folder;
  pid_t m_glview = -1;
};

TEST_F(GlviewWindow, DrawsPicksWritesAPictureAndQuits) {
  const std::filesystem::path model =
      m_folder.Put("wall.obj", Square("wall", "", -1, -1, 1, 1) + Square("dot", "", 1.5, 1, 2, 1.5));
  // Pictures are written to the working folder.
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(m_folder.Path());
  m_glview = Start({GLLIB_EXAMPLES_FOLDER "/glview.exe", "--turn", "0,0", "--ortho", "--size",
                    std::to_string(kWidth) + "x" + std::to_string(kHeight), model.string()},
                   "", m_folder / "out", m_folder / "err");
  std::filesystem::current_path(before);
  const HWND window = Await("wall.obj - 4 triangles");
  ASSERT_NE(window, nullptr);
  EXPECT_NE(GetWindow(window, GW_CHILD), nullptr) << "the component's window is a child";
  RECT inside{};
  GetClientRect(window, &inside);
  EXPECT_EQ(inside.right, kWidth);
  EXPECT_EQ(inside.bottom, kHeight);

  const LPARAM middle = MAKELPARAM(kWidth / 2 - 40, kHeight / 2);
  PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, middle);
  PostMessageA(window, WM_LBUTTONUP, 0, middle);
  EXPECT_NE(Await("ms - wall"), nullptr) << "a click picks";
  PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(1, 1));
  PostMessageA(window, WM_MOUSEMOVE, MK_LBUTTON | MK_SHIFT, MAKELPARAM(kWidth - 2, kHeight - 2));
  PostMessageA(window, WM_LBUTTONUP, MK_SHIFT, MAKELPARAM(kWidth - 2, kHeight - 2));
  EXPECT_NE(Await("ms - wall, dot"), nullptr) << "a box picks all parts that it touches";

  PostMessageA(window, WM_KEYDOWN, 'W', 0);
  PostMessageA(window, WM_KEYDOWN, 'C', 0);
  EXPECT_NE(Await("wrote wall-001.png"), nullptr);
  Picture picture;
  ASSERT_TRUE(ReadPng(m_folder / "wall-001.png", picture));
  EXPECT_EQ(picture.width, 2 * kWidth);
  const std::uint8_t* background = picture.At(0, 0);
  EXPECT_EQ(std::memcmp(picture.At(kWidth - 80, kHeight + 9), background, 3), 0) << "wire frame, after W";

  PostMessageA(window, WM_KEYDOWN, VK_ESCAPE, 0);
  EXPECT_EQ(WaitFor(std::exchange(m_glview, -1)), 0);
}

}  // namespace
