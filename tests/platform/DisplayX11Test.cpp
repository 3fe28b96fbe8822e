// Windows on an X server: what they ask of it, and what is left when parent, connection or server has gone.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "platform/DeviceContext.h"
#include "platform/GL.h"
#include "platform/PixelFormat.h"
#include "platform/RenderingContext.h"
#include "platform/Window.h"
#include "support/Eventually.h"
#include "support/XServer.h"

namespace {

using namespace std::chrono_literals;

constexpr char kClass[] = "DisplayX11Test";
std::atomic<int> g_iDestroyed{0}, g_iPainted{0};

HWND HandleOf(xcb_window_t aXid) { return reinterpret_cast<HWND>(std::uintptr_t{aXid}); }
xcb_window_t XidOf(HWND aWindow) {
  return static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(aWindow));
}

/// So many calls of poll on this thread fail first, as a signal makes them fail.
thread_local int t_iInterruptions = 0;

class XWindow : public testing::Test {
 protected:
  XWindow() {
    g_iDestroyed = g_iPainted = 0;
    WNDCLASSA windowClass{};
    windowClass.lpszClassName = kClass;
    windowClass.lpfnWndProc = [](HWND, UINT message, WPARAM, LPARAM) -> LRESULT {
      if (message == WM_DESTROY) ++g_iDestroyed;
      if (message == WM_PAINT) ++g_iPainted;
      return 0;
    };
    RegisterClassA(&windowClass);
  }
  ~XWindow() override { UnregisterClassA(kClass, nullptr); }

  static HWND Make(xcb_window_t aParent) {
    return CreateWindowExA(0, kClass, "", WS_CHILD | WS_VISIBLE, 0, 0, 60, 40, HandleOf(aParent), nullptr,
                           nullptr, nullptr);
  }

  XServer m_Server;
};

/// Double-buffered drawing on a window, current on the thread that makes it.
struct Drawing {
  explicit Drawing(HWND aWindow) : m_hWnd(aWindow), m_hDC(GetDC(aWindow)) {
    PIXELFORMATDESCRIPTOR request{};
    request.dwFlags = PFD_DOUBLEBUFFER | PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
    request.cColorBits = 32;
    SetPixelFormat(m_hDC, ChoosePixelFormat(m_hDC, &request), &request);
    m_hRC = wglCreateContext(m_hDC);
    EXPECT_TRUE(wglMakeCurrent(m_hDC, m_hRC));
  }
  ~Drawing() {
    wglDeleteContext(m_hRC);
    ReleaseDC(m_hWnd, m_hDC);
  }
  bool Frame() const {
    glClearColor(0, 0, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    return SwapBuffers(m_hDC) != FALSE;
  }
  HWND m_hWnd;
  HDC m_hDC;
  HGLRC m_hRC;
};

}  // namespace

/// Stands in for the C library's.
extern "C" int poll(pollfd* aFiles, nfds_t aCount, int aTimeout) {
  static const auto real = reinterpret_cast<int (*)(pollfd*, nfds_t, int)>(dlsym(RTLD_NEXT, "poll"));
  if (t_iInterruptions == 0) return real(aFiles, aCount, aTimeout);
  --t_iInterruptions;
  errno = EINTR;
  return -1;
}

TEST_F(XWindow, CutsCoordinatesToWhatTheServerCanHold) {
  const HWND window = Make(0);
  ASSERT_NE(window, nullptr);
  for (const int far : {70000, 32768, -70000}) {
    EXPECT_TRUE(MoveWindow(window, far, far, 60, 40, FALSE));
    RECT rect{};
    ASSERT_TRUE(GetWindowRect(window, &rect));
    const int expected = far > 0 ? 32767 : -32768;
    EXPECT_EQ(rect.left, expected) << far;
    EXPECT_EQ(rect.top, expected) << far;
    EXPECT_EQ(rect.right - rect.left, 60);
  }
  DestroyWindow(window);
  const HWND made =
      CreateWindowExA(0, kClass, "", WS_POPUP, 70000, -70000, 60, 40, nullptr, nullptr, nullptr, nullptr);
  RECT rect{};
  ASSERT_TRUE(GetWindowRect(made, &rect));
  EXPECT_EQ(rect.left, 32767);
  EXPECT_EQ(rect.top, -32768);
  const HWND child = Make(XidOf(made));
  ASSERT_TRUE(MoveWindow(child, 30000, -30000, 60, 40, FALSE));
  ASSERT_TRUE(GetWindowRect(child, &rect));
  EXPECT_EQ(rect.left, 62767) << "the sum of two places has more bits";
  EXPECT_EQ(rect.bottom, -62728);
  DestroyWindow(child);
  DestroyWindow(made);
}

TEST_F(XWindow, RefusesHandlesOfMoreThan32Bits) {
  const HWND window = Make(0);
  ASSERT_NE(window, nullptr);
  const auto wide =
      reinterpret_cast<HWND>(reinterpret_cast<std::uintptr_t>(window) | std::uintptr_t{1} << 32);
  EXPECT_EQ(CreateWindowExA(0, kClass, "", WS_CHILD, 0, 0, 60, 40, wide, nullptr, nullptr, nullptr), nullptr);
  RECT rect{};
  EXPECT_FALSE(GetWindowRect(wide, &rect));
  EXPECT_FALSE(MoveWindow(wide, 0, 0, 8, 8, FALSE));
  EXPECT_EQ(GetParent(wide), nullptr);
  DestroyWindow(window);
}

TEST_F(XWindow, FitsUnderAParentOfAnotherVisualAndTakesNoInput) {
  ForeignWindow host(100, 100);
  xcb_connection_t* connection = host.Connection();
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  xcb_visualid_t deep = 0;
  for (auto depth = xcb_screen_allowed_depths_iterator(screen); depth.rem > 0; xcb_depth_next(&depth)) {
    if (depth.data->depth == 32 && xcb_depth_visuals_length(depth.data) > 0)
      deep = xcb_depth_visuals(depth.data)->visual_id;
  }
  ASSERT_NE(deep, 0u);
  const xcb_colormap_t colormap = xcb_generate_id(connection);
  xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colormap, host.Xid(), deep);
  const xcb_window_t parent = xcb_generate_id(connection);
  const std::uint32_t values[] = {0, 1, colormap};
  xcb_create_window(connection, 32, parent, screen->root, 0, 0, 90, 80, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    deep, XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP, values);
  std::free(
      xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, parent), nullptr));

  const HWND window = Make(parent);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(GetParent(window), HandleOf(parent));
  EXPECT_EQ(GetParent(HandleOf(parent)), nullptr) << "below the root is the top";
  const auto asked = xcb_get_window_attributes(connection, XidOf(window));
  auto* attributes = xcb_get_window_attributes_reply(connection, asked, nullptr);
  ASSERT_NE(attributes, nullptr);
  constexpr std::uint32_t kInput = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_BUTTON_PRESS |
                                   XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_ENTER_WINDOW;
  EXPECT_EQ(attributes->all_event_masks & kInput, 0u);
  EXPECT_EQ(attributes->do_not_propagate_mask, 0u) << "what it doesn't take goes to the parent";
  std::free(attributes);
  DestroyWindow(window);
}

TEST_F(XWindow, IsToldOfPaintingAndOfEveryEnd) {
  const struct {
    const char* name;
    void (*end)(ForeignWindow&, XServer&);
  } ways[] = {{"parent destroyed", [](ForeignWindow& parent, XServer&) { parent.DestroyWindow(); }},
              {"its connection closed", [](ForeignWindow& parent, XServer&) { parent.CloseConnection(); }},
              {"server killed", [](ForeignWindow&, XServer& server) { server.Kill(); }}};
  for (const auto& way : ways) {
    SCOPED_TRACE(way.name);
    XServer server;
    ForeignWindow parent(100, 100);
    g_iDestroyed = g_iPainted = 0;
    const HWND window = Make(parent.Xid());
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(Eventually([] { return g_iPainted > 0; }));
    way.end(parent, server);
    EXPECT_TRUE(Eventually([] { return g_iDestroyed == 1; }));
    RECT rect{};
    EXPECT_FALSE(GetWindowRect(window, &rect));
    EXPECT_FALSE(MoveWindow(window, 1, 1, 5, 5, FALSE));
    EXPECT_EQ(GetParent(window), nullptr);
    EXPECT_TRUE(DestroyWindow(window)) << "the record is still to be ended";
    EXPECT_EQ(g_iDestroyed, 1) << "and told once";
  }
}

TEST_F(XWindow, DoesNotSwapOnceParentOrServerHasGone) {
  for (const bool killed : {false, true}) {
    SCOPED_TRACE(killed ? "server killed" : "parent destroyed");
    XServer server;
    ForeignWindow parent(100, 100);
    const HWND window = Make(parent.Xid());
    ASSERT_NE(window, nullptr);
    std::thread([&] {
      const Drawing drawing(window);
      ASSERT_TRUE(drawing.Frame());
      EXPECT_TRUE(
          Eventually([&] { return parent.Screenshot(XidOf(window), 60, 40).CountOther(0x0000FFFF) == 0; }));
      if (killed) {
        server.Kill();
      } else {
        parent.DestroyWindow();
        ASSERT_TRUE(Eventually([] { return g_iDestroyed > 0; }));
      }
      const auto start = std::chrono::steady_clock::now();
      // Drawing would ask about the window that has gone, and the driver never frees the server's answer.
      EXPECT_FALSE(SwapBuffers(drawing.m_hDC));
      EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);
    }).join();
    DestroyWindow(window);
    g_iDestroyed = 0;
  }
}

TEST_F(XWindow, SwapsWhereASignalInterruptsTheLookAtItsConnection) {
  ForeignWindow parent(100, 100);
  const HWND window = Make(parent.Xid());
  ASSERT_NE(window, nullptr);
  std::thread([&] {
    const Drawing drawing(window);
    t_iInterruptions = 3;
    EXPECT_TRUE(drawing.Frame());
    EXPECT_EQ(t_iInterruptions, 0);
  }).join();
  DestroyWindow(window);
}

TEST_F(XWindow, OfAServerThatDiedDoesNotReachItsSuccessor) {
  ForeignWindow parent(100, 100);
  const HWND former = Make(parent.Xid());
  ASSERT_NE(former, nullptr);
  m_Server.Kill();
  ASSERT_TRUE(Eventually([] { return g_iDestroyed == 1; }));
  const XServer successor;
  ForeignWindow newParent(100, 100);
  const HWND window = Make(newParent.Xid());
  ASSERT_NE(window, nullptr);
  EXPECT_NE(window, former) << "one number would name two windows";
  EXPECT_FALSE(MoveWindow(former, 30, 30, 5, 5, FALSE));
  EXPECT_TRUE(DestroyWindow(former));
  EXPECT_EQ(newParent.Child(), XidOf(window));
  RECT rect{};
  ASSERT_TRUE(GetWindowRect(window, &rect));
  EXPECT_EQ(rect.right - rect.left, 60);
  DestroyWindow(window);
}
