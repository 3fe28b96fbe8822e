// Windows on an X server: requests, and the loss of the parent, the connection or the server. Xvfb.

#include <dlfcn.h>
#include <poll.h>

#include "platform/DeviceContext.h"
#include "platform/GL.h"
#include "platform/PixelFormat.h"
#include "platform/RenderingContext.h"
#include "platform/Window.h"
#include "support/ForeignWindow.h"

namespace {

using namespace std::chrono_literals;

constexpr char kClass[] = "DisplayX11Test";
std::atomic<int> g_iDestroyed{0}, g_iPainted{0};

HWND HandleOf(xcb_window_t aXid) { return reinterpret_cast<HWND>(std::uintptr_t{aXid}); }
xcb_window_t XidOf(HWND aWindow) {
  return static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(aWindow));
}

/// The number of next calls of poll on this thread that fail, as after a signal.
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

}  // namespace

/// Replaces the function of the C library.
extern "C" int poll(pollfd* aFiles, nfds_t aCount, int aTimeout) {
  static const auto real = reinterpret_cast<int (*)(pollfd*, nfds_t, int)>(dlsym(RTLD_NEXT, "poll"));
  if (t_iInterruptions == 0) return real(aFiles, aCount, aTimeout);
  --t_iInterruptions;
  errno = EINTR;
  return -1;
}

TEST_F(XWindow, LimitsCoordinatesToThoseOfTheServer) {
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
  EXPECT_EQ(rect.left, 62767) << "the sum of two positions needs more than 16 bits";
  EXPECT_EQ(rect.bottom, -62728);
  DestroyWindow(child);
  DestroyWindow(made);
}

TEST_F(XWindow, GetsMessagesForPaintingAndItsEnd) {
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
    EXPECT_TRUE(DestroyWindow(window)) << "the record still exists";
    EXPECT_EQ(g_iDestroyed, 1) << "one message per window";
  }
}

TEST_F(XWindow, SwapsAfterASignalInterruptsPoll) {
  ForeignWindow parent(100, 100);
  const HWND window = Make(parent.Xid());
  ASSERT_NE(window, nullptr);
  std::thread([&] {
    const HDC dc = GetDC(window);
    PIXELFORMATDESCRIPTOR request{};
    request.dwFlags = PFD_DOUBLEBUFFER | PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
    request.cColorBits = 32;
    SetPixelFormat(dc, ChoosePixelFormat(dc, &request), &request);
    const HGLRC context = wglCreateContext(dc);
    EXPECT_TRUE(wglMakeCurrent(dc, context));
    t_iInterruptions = 3;
    EXPECT_TRUE(SwapBuffers(dc));
    EXPECT_EQ(t_iInterruptions, 0);
    wglDeleteContext(context);
    ReleaseDC(window, dc);
  }).join();
  DestroyWindow(window);
}

TEST_F(XWindow, OfALostServerIsNotUsedOnTheNext) {
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
