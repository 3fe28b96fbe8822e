// Log messages about the X server and its windows. Xvfb.

#include "platform/linux/display/DisplayServer.h"
#include "support/ForeignWindow.h"
#include "support/LogLines.h"
#include "support/Scene.h"

namespace {

/// Sets the environment; the display is opened again in it.
class Environment {
 public:
  Environment(const char* aDisplay, const char* aServer) {
    EndDisplay();
    setenv("GLLIB_DISPLAY", aDisplay, 1);
    setenv("DISPLAY", aServer, 1);
  }
  ~Environment() {
    unsetenv("GLLIB_DISPLAY");
    unsetenv("DISPLAY");
    EndDisplay();
  }
};

HRESULT InitializeIn(ULONG_PTR aParent) { return GLCreate<IGLContext>(CLSID_GLContext)->Initialize(aParent); }

/// Creates a window that cannot have a visible child.
xcb_window_t MakeInputWindow(const ForeignWindow& aParent) {
  xcb_connection_t* connection = aParent.Connection();
  const xcb_window_t window = xcb_generate_id(connection);
  const auto made = xcb_create_window_checked(connection, 0, window, aParent.Xid(), 0, 0, 9, 9, 0,
                                              XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  free(xcb_request_check(connection, made));
  return window;
}

/// Initialises a context without a server, or with another one.
void InitializeUnder(const char* aDisplay, const char* aServer) {
  const Environment environment(aDisplay, aServer);
  InitializeIn(0);
}

const LogCase kWithoutServer[] = {
    {"info", "there is no X server: DISPLAY is not set", [] { InitializeUnder("", ""); }},
    {"info", "display: headless: no X server can be used", [] { InitializeUnder("", ""); }},
    {"info", "display: headless: GLLIB_DISPLAY requires it", [] { InitializeUnder("headless", ""); }},
    {"warning", "the X server nowhere:7 cannot be reached", [] { InitializeUnder("", "nowhere:7"); }},
    {"error", "there is no display: GLLIB_DISPLAY requires X11", [] { InitializeUnder("x11", ""); }},
    {"warning", "EGL cannot draw on the X server :",
     [] {
       EndDisplay();
       const XServer server("640x480x8");  // EGL has no format for its visual
       EXPECT_EQ(InitializeIn(0), E_FAIL);
     }},
    {"warning", "GLLIB_DISPLAY is \"wayland\", which is neither x11 nor headless",
     [] { InitializeUnder("wayland", ""); }},
};

const LogCase kWithServer[] = {
    {"info", "display: X11, server :", [] { EXPECT_EQ(InitializeIn(0), S_OK); }},
    {"error", "the X server does not know the parent window 0x123456: flush or synchronise the host's own",
     [] { EXPECT_EQ(InitializeIn(0x123456), E_FAIL); }},
    {"error", "the X server refuses a child of the window 0x",
     [] {
       const ForeignWindow parent(30, 30);
       EXPECT_EQ(InitializeIn(MakeInputWindow(parent)), E_FAIL);
     }},
    {"error", "the parent's handle has more than 32 bits",
     [] { EXPECT_EQ(InitializeIn(~ULONG_PTR{0}), E_FAIL); }},
};

}  // namespace

TEST(Log, ReportsTheChosenDisplay) {
  for (const LogCase& c : kWithoutServer) ExpectOnce(c);
}

TEST(Log, ReportsWhyAParentIsRefused) {
  for (const LogCase& c : kWithServer) {
    EndDisplay();
    const XServer server;
    ASSERT_TRUE(server.IsRunning()) << c.m_szMessage;
    ExpectOnce(c);
  }
}

TEST(Log, ReportsALostWindowAndServer) {
  EndDisplay();
  XServer server;
  ASSERT_TRUE(server.IsRunning());
  const LogLines log(LogLevel::kInfo);
  ForeignWindow parent(30, 30);
  const FreeContext inParent({}, 30, 30, parent.Xid()), own;
  EXPECT_EQ(log.Count("warning") + log.Count("error"), 0) << log.Joined();
  parent.DestroyWindow();
  EXPECT_TRUE(log.Has("the window is destroyed"));
  EXPECT_EQ(log.Count("the window is destroyed"), 1) << log.Joined();
  server.Kill();
  EXPECT_TRUE(log.Has("the connection to the X server is lost"));
  EXPECT_TRUE(Eventually([&] { return log.Count("the window is destroyed") == 2; }))
      << "also the window of the other context";
}
