// glview in a window of a real X server, which the test starts: what the window shows, and what keys and
// mouse do.

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <memory>
#include <thread>

#include "Program.h"
#include "shared/Picture.h"

namespace {

constexpr int kWidth = 320;
constexpr int kHeight = 240;
constexpr std::uint8_t kEscape = 9, kFour = 13, kW = 25, kC = 54,
                       kM = 58;  // keycodes of the server's keyboard

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;
template <class Reply>
Owned<Reply> Own(Reply* aReply) {
  return {aReply, &std::free};
}

bool Eventually(const std::function<bool()>& aCondition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (!aCondition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return true;
}

/// An X server with a 24-bit screen and no other clients.
class Server {
 public:
  Server() {
    const std::string ready = m_folder / "display";
    // The server writes its number to the descriptor once it accepts clients.
    m_process = Start({"sh", "-c", "exec Xvfb -displayfd 3 -screen 0 640x480x24 -nolisten tcp 3>" + ready},
                      "", m_folder / "out", m_folder / "err");
    int number = -1;
    Eventually([&] { return static_cast<bool>(std::ifstream(ready) >> number); });
    m_display += std::to_string(number);
  }
  ~Server() {
    kill(m_process, SIGTERM);
    WaitFor(m_process);
  }
  const std::string& Display() const { return m_display; }

 private:
  TemporaryFolder m_folder;
  pid_t m_process;
  std::string m_display = ":";
};

class GlviewWindow : public ::testing::Test {
 protected:
  void SetUp() override {
    m_connection = xcb_connect(m_server.Display().c_str(), nullptr);
    ASSERT_EQ(xcb_connection_has_error(m_connection), 0);
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    Picture green(1, 1);
    green.pixels[1] = 255;
    WritePng(green, m_folder / "green.png");
    m_folder.Write("wall.mtl", "newmtl green\nKd 1 1 1\nmap_Kd green.png\n");
    const std::string model =
        m_folder.Write("wall.obj",
                       "mtllib wall.mtl\nvt 0 0\n"
                       "o wall\nusemtl green\nv -1 -1 0\nv 1 -1 0\nv 1 1 0\nv -1 1 0\nf 1/1 2/1 3/1 4/1\n"
                       "o dot\nv 1.5 1 0\nv 2 1 0\nv 2 1.5 0\nf 5/1 6/1 7/1\n");
    m_glview = Start({"sh", "-c", "cd \"$0\" && exec \"$@\"", m_folder / ".", GLLIB_EXAMPLES_FOLDER "/glview",
                      "--turn", "0,0", "--ortho", "--fsaa", "4", "--size",
                      std::to_string(kWidth) + "x" + std::to_string(kHeight), model},
                     m_server.Display(), m_folder / "out", m_folder / "err");
    ASSERT_TRUE(Eventually([&] { return FindWindow(); })) << "no window came";
  }
  void TearDown() override {
    if (m_glview > 0) {
      kill(m_glview, SIGKILL);
      WaitFor(m_glview);
    }
    xcb_disconnect(m_connection);
  }

  std::string Title(xcb_window_t aWindow) {
    const auto reply = Own(xcb_get_property_reply(
        m_connection, xcb_get_property(m_connection, 0, aWindow, XCB_ATOM_WM_NAME, XCB_ATOM_ANY, 0, 256),
        nullptr));
    if (!reply) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
  }

  bool FindWindow() {
    const auto tree = Own(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr));
    if (!tree) return false;
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
      const xcb_window_t window = xcb_query_tree_children(tree.get())[i];
      if (Title(window).find("triangles") != std::string::npos) m_window = window;
    }
    return m_window != 0;
  }

  /// The pixels that the screen shows where the window is.
  std::vector<std::uint32_t> Pixels() {
    const auto geometry =
        Own(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, m_window), nullptr));
    if (!geometry) return {};
    const auto image =
        Own(xcb_get_image_reply(m_connection,
                                xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, geometry->x,
                                              geometry->y, geometry->width, geometry->height, ~0u),
                                nullptr));
    if (!image) return {};
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(geometry->width) * geometry->height);
    std::memcpy(pixels.data(), xcb_get_image_data(image.get()), pixels.size() * sizeof(pixels[0]));
    for (auto& pixel : pixels) pixel &= 0xFFFFFF;
    return pixels;
  }
  std::uint32_t Pixel(int aX, int aY) {
    const auto pixels = Pixels();
    return pixels.empty() ? 0 : pixels[static_cast<std::size_t>(aY * kWidth + aX)];
  }

  template <class Event>
  void Send(Event aEvent, std::uint32_t aMask) {
    aEvent.event = m_window;
    aEvent.root = m_root;
    aEvent.same_screen = 1;
    xcb_send_event(m_connection, 0, m_window, aMask, reinterpret_cast<const char*>(&aEvent));
    xcb_flush(m_connection);
  }
  void Press(std::uint8_t aKey) {
    xcb_key_press_event_t event{};
    event.response_type = XCB_KEY_PRESS;
    event.detail = aKey;
    Send(event, XCB_EVENT_MASK_KEY_PRESS);
    event.response_type = XCB_KEY_RELEASE;
    Send(event, XCB_EVENT_MASK_KEY_RELEASE);
  }
  void MoveTo(int aX, int aY) {
    xcb_motion_notify_event_t event{};
    event.response_type = XCB_MOTION_NOTIFY;
    event.event_x = static_cast<std::int16_t>(aX);
    event.event_y = static_cast<std::int16_t>(aY);
    Send(event, XCB_EVENT_MASK_POINTER_MOTION);
  }
  void Button(std::uint8_t aType, std::uint16_t aModifiers) {
    xcb_button_press_event_t event{};
    event.response_type = aType;
    event.detail = 1;
    event.state = aModifiers;
    Send(event, XCB_EVENT_MASK_BUTTON_PRESS);
  }
  void Drag(int aX1, int aY1, int aX2, int aY2, std::uint16_t aModifiers) {
    MoveTo(aX1, aY1);
    Button(XCB_BUTTON_PRESS, aModifiers);
    MoveTo((aX1 + aX2) / 2, (aY1 + aY2) / 2);
    MoveTo(aX2, aY2);
    Button(XCB_BUTTON_RELEASE, aModifiers);
  }
  /// Presses C, and expects a picture of what the window shows, twice as large.
  void ExpectPicture(const std::string& aName) {
    Press(kC);
    EXPECT_TRUE(TitleEndsWith("wrote " + aName)) << Title(m_window);
    Picture picture;
    ASSERT_TRUE(ReadPng(m_folder / aName, picture));
    ASSERT_EQ(picture.width, 2 * kWidth);
    ASSERT_EQ(picture.height, 2 * kHeight);
    const auto window = Pixels();
    int different = 0;
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        const std::uint8_t* pixel = picture.At(2 * x, 2 * y);
        const std::uint32_t there = std::uint32_t{pixel[0]} << 16 | pixel[1] << 8 | std::uint32_t{pixel[2]};
        different += there != window[static_cast<std::size_t>(y * kWidth + x)];
      }
    }
    EXPECT_LT(different * 20, kWidth * kHeight) << "the same but for lines";
  }
  bool TitleEndsWith(const std::string& aEnd) {
    return Eventually([&] { return Title(m_window).ends_with(aEnd); });
  }

  Server m_server;
  TemporaryFolder m_folder;
  xcb_connection_t* m_connection = nullptr;
  xcb_window_t m_root = 0;
  xcb_window_t m_window = 0;
  pid_t m_glview = -1;
};

TEST_F(GlviewWindow, ShowsPicksAndLeaves) {
  const int middleX = kWidth / 2, middleY = kHeight / 2;
  ASSERT_TRUE(Eventually([&] { return Pixel(middleX, middleY) != Pixel(2, 2) && Pixel(2, 2) != 0; }))
      << "the wall never showed";
  EXPECT_EQ(Pixel(middleX, middleY) & 0xFF00FF, 0u) << "green by its image";
  Press(kM);
  ASSERT_TRUE(Eventually([&] { return (Pixel(middleX, middleY) & 0xFF00FF) != 0; })) << "M takes it off";
  const std::uint32_t plain = Pixel(middleX, middleY);

  Drag(middleX - 40, middleY + 10, middleX - 40, middleY + 10, 0);
  EXPECT_TRUE(TitleEndsWith("ms - wall")) << Title(m_window);
  EXPECT_TRUE(Eventually([&] { return Pixel(middleX - 40, middleY) != plain; }))
      << "what is picked is marked";

  Drag(2, 2, kWidth - 3, kHeight - 3, XCB_MOD_MASK_SHIFT);
  EXPECT_TRUE(TitleEndsWith("ms - wall, dot")) << Title(m_window);
  Drag(middleX - 20, 2, kWidth - 3, kHeight - 3, XCB_MOD_MASK_CONTROL);
  EXPECT_TRUE(TitleEndsWith("ms - dot")) << Title(m_window);

  Press(kW);  // wire: the wall can be seen through
  EXPECT_TRUE(Eventually([&] { return Pixel(middleX - 40, middleY + 10) == Pixel(2, 2); }));
  Press(kFour);
  EXPECT_TRUE(Eventually([&] { return Pixel(middleX, 5) != Pixel(2, 2); })) << "frames part the four views";
  ExpectPicture("wall-001.png");
  ExpectPicture("wall-002.png");

  Press(kEscape);
  const int status = WaitFor(m_glview);
  m_glview = -1;
  EXPECT_EQ(status, 0);
}

}  // namespace
