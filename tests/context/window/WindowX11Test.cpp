// A context in a window of another program: display, resizing, and the loss of the window or the server.
// Xvfb.

#include "platform/Window.h"
#include "support/ForeignWindow.h"
#include "support/Scene.h"

// Included last, because Xlib defines macros.
#include <EGL/egl.h>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kTimeLimit = 7s;  // limit for the two bounded waits of a release and one cycle

}  // namespace

TEST(ForeignParent, ShowsTheFrameAndFollowsTheViewport) {
  const XServer server;
  ASSERT_TRUE(server.IsRunning());
  ForeignWindow parent(200, 150);
  auto context = FreeContext({}, 200, 150, parent.Xid()).context;
  GLDATA_RGBA orange{1.0f, 0.5f, 0.0f, 1.0f};
  context->SetBackgroundColor(&orange);
  ULONG_PTR window = 0;
  context->GetWindow(&window);
  EXPECT_EQ(parent.Child(), window);
  const auto shows = [&](int width, int height) {
    return Eventually([&] {
      return parent.Screenshot(static_cast<xcb_window_t>(window), width, height).CountOther(0xFF8000FF) == 0;
    });
  };
  EXPECT_TRUE(shows(200, 150));
  parent.Resize(300, 250);
  context->SetViewport(0, 0, 300, 250);
  EXPECT_TRUE(shows(300, 250));
  context.Reset();
  EXPECT_TRUE(Eventually([&] { return parent.Child() == 0; }));
}

// Compares pixels of the server. For GL the driver resolves the samples into one.
TEST(Smoothing, ShowsOnTheScreenIfAvailable) {
  struct {
    const char* name;
    LONG wanted, most;
    bool smooth;
  } const cases[] = {{"not requested", 0, 4, false},
                     {"requested", 1, 4, true},
                     {"any number of samples", 1, 0, true},
                     {"fewer samples than any format has", 1, 1, false}};
  Picture plain;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const XServer server;  // a new server for each case: cached facts of the previous one must not be used
    ForeignWindow parent(100, 100);
    const FreeContext drawn(
        [](Scene& scene) {
          scene.Canvas().BeginDrawTriangles();
          for (const auto& [x, y] : {std::pair{-40.0, -35.0}, {40.0, -20.0}, {0.0, 40.0}})
            scene.Canvas().Vertex3d(x, y, -10);
          scene.Canvas().EndDrawVertices();
        },
        100, 100, parent.Xid());
    const auto& context = drawn.context;
    context->EnableLighting(0);
    const auto smoothing = context.As<IGLContext14_3>();
    smoothing->put_bFSAA(c.wanted);
    smoothing->put_lFSAAMaxSamples(c.most);
    ASSERT_EQ(context->Initialize(parent.Xid()), S_OK);
    context->SetViewport(0, 0, 100, 100);
    drawn.Await(3);
    ULONG_PTR window = 0;
    context->GetWindow(&window);
    const Picture screen = parent.Screenshot(static_cast<xcb_window_t>(window), 100, 100);
    EXPECT_GT(screen.CountOther(0x000000FF), 1000);
    const int greys = screen.CountOther(0x000000FF) + screen.CountOther(0xFFFFFFFF) - 100 * 100;
    EXPECT_TRUE(c.smooth ? greys > 50 : greys == 0) << greys << " grey pixels";
    if (!c.wanted) plain = screen;
    EXPECT_EQ(Difference(screen, plain) == 0, !c.smooth) << "without samples the picture is plain";
  }
}

TEST(ForeignParent, MayBeDestroyedInEachWay) {
  struct {
    const char* name;
    void (*end)(ForeignWindow&, XServer&);
  } const ways[] = {
      {"unmapped", [](ForeignWindow& window, XServer&) { window.Unmap(); }},
      {"destroyed", [](ForeignWindow& window, XServer&) { window.DestroyWindow(); }},
      {"connection closed", [](ForeignWindow& window, XServer&) { window.CloseConnection(); }},
      {"server killed", [](ForeignWindow&, XServer& server) { server.Kill(); }},
  };
  for (const auto& way : ways) {
    SCOPED_TRACE(way.name);
    XServer server;
    ASSERT_TRUE(server.IsRunning());
    ForeignWindow parent(100, 100);
    std::atomic<bool> hold{true};
    const bool killed = std::string(way.name) == "server killed";
    FreeContext drawn(
        [&](Scene&) {
          while (hold && !killed) std::this_thread::sleep_for(1ms);  // during a frame
        },
        100, 100, parent.Xid());
    ASSERT_TRUE(Eventually([&] { return *drawn.frames > 0; }));
    auto control = drawn.context.As<IGLContext2>();
    if (killed) {  // between two frames
      control->SetControlledDrawThread(1, 0xFFFFFFFF);
      std::this_thread::sleep_for(200ms);
    }
    way.end(parent, server);
    hold = false;
    if (killed) control->TriggerDrawThread();
    std::this_thread::sleep_for(100ms);
    const auto start = Clock::now();
    control.Reset();
    drawn.context.Reset();
    EXPECT_LT(Clock::now() - start, kTimeLimit);
  }
}

TEST(ForeignParent, MustBeAWindow) {
  const XServer server;
  ASSERT_TRUE(server.IsRunning());
  ForeignWindow parent(100, 100), other(100, 100);
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  EXPECT_EQ(context->Initialize(0x7FFFFFF), E_FAIL);
  EXPECT_EQ(context->Initialize(ULONG_PTR{1} << 32 | other.Xid()), E_FAIL) << "only its low 32 bits";
  const xcb_window_t gone = parent.Xid();
  parent.DestroyWindow();
  EXPECT_EQ(context->Initialize(gone), E_FAIL);
  EXPECT_EQ(context->Initialize(other.Xid()), S_OK) << "the object can be used again";
  other.DestroyWindow();
  EXPECT_EQ(context->Initialize(other.Xid()), E_FAIL);
}

TEST(HostContext, MadeByEglStaysCurrent) {
  const XServer server;
  ForeignWindow parent(100, 100);
  const EGLDisplay display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
  ASSERT_TRUE(eglInitialize(display, nullptr, nullptr));
  eglBindAPI(EGL_OPENGL_API);
  EGLConfig config = nullptr;
  EGLint count = 0;
  const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
  ASSERT_TRUE(eglChooseConfig(display, wanted, &config, 1, &count) && count == 1);
  const EGLint size[] = {EGL_WIDTH, 8, EGL_HEIGHT, 8, EGL_NONE};
  const EGLSurface surface = eglCreatePbufferSurface(display, config, size);
  const EGLContext own = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
  ASSERT_TRUE(eglMakeCurrent(display, surface, surface, own));
  const GLuint list = glGenLists(1);
  glNewList(list, GL_COMPILE);
  glEndList();
  {  // the calls that the component makes on a host's thread
    const FreeContext drawn({}, 64, 64, parent.Xid());
    EXPECT_TRUE(Eventually([&] { return *drawn.frames > 0; }));
    drawn.context->SetViewport(0, 0, 80, 80);
    ULONG_PTR before = 0, after = 0;
    drawn.context->GetWindow(&before);
    PostMessageA(reinterpret_cast<HWND>(before), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_TRUE(Eventually([&] { return drawn.context->GetWindow(&after), after != 0 && after != before; }));
  }
  EXPECT_EQ(eglGetCurrentContext(), own);
  EXPECT_TRUE(glIsList(list));
  EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
  eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  eglDestroyContext(display, own);
  eglDestroySurface(display, surface);
}
