// A context in the window of another program, whatever that program and its X server do.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <thread>

#include "platform/Window.h"
#include "support/Counting.h"
#include "support/Eventually.h"
#include "support/Scene.h"
#include "support/XServer.h"

// Last, for the macros that Xlib defines.
#include <EGL/egl.h>
#include <GL/glx.h>
#include <X11/Xlib.h>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kBounded = 7s;  // the two bounded waits of a release and a cycle

int Count(const char* aFolder) {
  return static_cast<int>(std::distance(std::filesystem::directory_iterator(aFolder), {}));
}

}  // namespace

TEST(ForeignParent, ShowsTheFrameAndFollowsTheViewport) {
  const XServer server;
  ASSERT_TRUE(server.IsRunning());
  ForeignWindow parent(200, 150);
  const auto context = FreeContext({}, 200, 150, parent.Xid()).context;
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
}

// By the server's own pixels, as the driver gives GL but one sample of each.
TEST(Smoothing, ShowsOnTheScreenWhereItIsToBeHad) {
  struct {
    const char* name;
    LONG wanted, most;
    bool smooth;
  } const cases[] = {{"not asked for", 0, 4, false},
                     {"asked for", 1, 4, true},
                     {"any number of samples", 1, 0, true},
                     {"fewer samples than any format has", 1, 1, false}};
  Picture plain;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const XServer server;  // each time another one: what is known of the one before has no meaning
    ForeignWindow parent(100, 100);
    const auto context = GLCreate<IGLContext>(CLSID_GLContext);
    const auto smoothing = context.As<IGLContext14_3>();
    smoothing->put_bFSAA(c.wanted);
    smoothing->put_lFSAAMaxSamples(c.most);
    ASSERT_EQ(context->Initialize(parent.Xid()), S_OK);
    context->SetViewport(0, 0, 100, 100);
    context->EnableLighting(0);
    IGLViewer* viewer = nullptr;
    context->CreateViewer(1, 1, &viewer);
    std::atomic<int> frames{0};
    const auto painter = GLMake<TestPainter>([&](Scene& scene) {
      ++frames;
      GLDATA_RGBA white{1, 1, 1, 1};
      scene.Canvas().SetVertexColor(&white);
      scene.Canvas().BeginDrawTriangles();
      for (const auto& [x, y] : {std::pair{-40.0, -35.0}, {40.0, -20.0}, {0.0, 40.0}})
        scene.Canvas().Vertex3d(x, y, -10);
      scene.Canvas().EndDrawVertices();
    });
    context->AttachPainter(painter.Get());
    ASSERT_TRUE(Eventually([&] { return frames > 2; }));
    ULONG_PTR window = 0;
    context->GetWindow(&window);
    const Picture screen = parent.Screenshot(static_cast<xcb_window_t>(window), 100, 100);
    EXPECT_GT(screen.CountOther(0x000000FF), 1000);
    const int greys =
        100 * 100 - (100 * 100 - screen.CountOther(0x000000FF)) - (100 * 100 - screen.CountOther(0xFFFFFFFF));
    EXPECT_TRUE(c.smooth ? greys > 50 : greys == 0) << greys << " grey pixels";
    if (!c.wanted) plain = screen;
    EXPECT_EQ(Difference(screen, plain) == 0, !c.smooth) << "the plain picture where there are no samples";
  }
}

TEST(ForeignParent, MayVanishInEveryWay) {
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
          while (hold && !killed) std::this_thread::sleep_for(1ms);  // in mid-frame
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
    EXPECT_LT(Clock::now() - start, kBounded);
  }
}

TEST(ForeignParent, IsRefusedWhenItIsNoWindow) {
  const XServer server;
  ASSERT_TRUE(server.IsRunning());
  ForeignWindow parent(100, 100), other(100, 100);
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  EXPECT_EQ(context->Initialize(0x7FFFFFF), E_FAIL);
  EXPECT_EQ(context->Initialize(ULONG_PTR{1} << 32 | other.Xid()), E_FAIL)
      << "its low half alone is a window";
  const xcb_window_t gone = parent.Xid();
  parent.DestroyWindow();
  EXPECT_EQ(context->Initialize(gone), E_FAIL);
  EXPECT_EQ(context->Initialize(other.Xid()), S_OK) << "the object stays usable";
  other.DestroyWindow();
  EXPECT_EQ(context->Initialize(other.Xid()), E_FAIL);
}

namespace {

/// What the component does on a host's thread, in the order of a context's life.
void LiveAContext(xcb_window_t aParent) {
  const FreeContext drawn({}, 64, 64, aParent);
  const auto& context = drawn.context;
  EXPECT_TRUE(Eventually([&] { return *drawn.frames > 0; }));
  context->SetViewport(0, 0, 80, 80);
  ULONG_PTR before = 0, after = 0;
  context->GetWindow(&before);
  PostMessageA(reinterpret_cast<HWND>(before), WM_SYSCOLORCHANGE, 0, 0);
  EXPECT_TRUE(Eventually([&] {
    context->GetWindow(&after);
    return after != 0 && after != before;
  }));
}

}  // namespace

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
  LiveAContext(parent.Xid());
  EXPECT_EQ(eglGetCurrentContext(), own);
  EXPECT_TRUE(glIsList(list));
  EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
  eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  eglDestroyContext(display, own);
  eglDestroySurface(display, surface);
}

TEST(HostContext, MadeByGlxStaysCurrent) {
  const XServer server;
  ForeignWindow parent(100, 100);
  Display* display = XOpenDisplay(nullptr);
  ASSERT_NE(display, nullptr);
  int wanted[] = {GLX_RGBA, GLX_DOUBLEBUFFER, None};
  XVisualInfo* visual = glXChooseVisual(display, DefaultScreen(display), wanted);
  ASSERT_NE(visual, nullptr);
  XSetWindowAttributes attributes{};
  attributes.colormap = XCreateColormap(display, DefaultRootWindow(display), visual->visual, AllocNone);
  const Window window = XCreateWindow(display, DefaultRootWindow(display), 0, 0, 8, 8, 0, visual->depth,
                                      InputOutput, visual->visual, CWColormap, &attributes);
  const GLXContext own = glXCreateContext(display, visual, nullptr, True);
  ASSERT_TRUE(glXMakeCurrent(display, window, own));
  GLuint texture = 0;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  LiveAContext(parent.Xid());
  EXPECT_EQ(glXGetCurrentContext(), own);
  EXPECT_TRUE(glIsTexture(texture));
  EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
  glXMakeCurrent(display, None, nullptr);
  glXDestroyContext(display, own);
  XFree(visual);
  XCloseDisplay(display);
}

TEST(ForeignParent, BearsTwoHundredContextsAndKeepsNothing) {
  const XServer server;
  ForeignWindow parent(100, 100);
  const auto live = [&] { FreeContext({}, 64, 64, parent.Xid()); };
  for (int i = 0; i < 20; ++i) live();  // what the process keeps once
  const int threads = Count("/proc/self/task"), descriptors = Count("/proc/self/fd");
  const long memory = ResidentKiB();
  for (int i = 0; i < 200; ++i) live();
  EXPECT_TRUE(Eventually([&] { return Count("/proc/self/task") <= threads; })) << Count("/proc/self/task");
  EXPECT_EQ(Count("/proc/self/fd"), descriptors);
  EXPECT_EQ(parent.Child(), 0u);
  // The driver keeps some of each context for itself; a context's own picture alone is 64 KiB.
  EXPECT_LT(ResidentKiB() - memory, 200 * 64);
}
