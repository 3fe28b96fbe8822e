// Log messages about failures of the platform. Scripted display over the headless one.

#include <sys/wait.h>
#include <unistd.h>

#include "component/Module.h"
#include "context/window/PixelFormatSelection.h"
#include "context/window/StartLimit.h"
#include "support/BitmapFiles.h"
#include "support/Counting.h"
#include "support/LogLines.h"
#include "support/Scene.h"
#include "support/ScriptedDisplay.h"
#include "support/TestRegistry.h"

namespace {

constexpr auto kShortStart = std::chrono::seconds(2);  // instead of 10 s

/// Refuses a rendering context only after Initialize has stopped waiting for it.
class SlowDisplay final : public ScriptedDisplay {
 public:
  std::unique_ptr<DrawContext> MakeContext(const DisplayFormat&) noexcept override {
    std::this_thread::sleep_for(2 * kShortStart);
    return nullptr;
  }
};

/// Initialises a context on a display that creates no rendering context in time.
void StartOn(const std::shared_ptr<ScriptedDisplay>& aDisplay) {
  const auto usual = std::exchange(g_LongestStart, kShortStart);
  SetDisplay(aDisplay);
  GLCreate<IGLContext>(CLSID_GLContext)->Initialize(0);
  g_LongestStart = usual;
}

/// If set, allocations of large images fail.
std::atomic<bool> g_bNoImages{false};

/// Initialises a context on a display that the caller prepares.
template <class Prepare>
void InitializeOn(Prepare aPrepare, LONG aSmooth = 0) {
  const auto display = ScriptedDisplay::Set();
  aPrepare(*display);
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  context.As<IGLContext14_3>()->put_bFSAA(aSmooth);
  context->Initialize(0);
}

const LogCase kCases[] = {
    {"error", "a parent window is passed, but the display is headless",
     [] { GLCreate<IGLContext>(CLSID_GLContext)->Initialize(5); }},
    {"error", "Initialize failed: no window could be created",
     [] { InitializeOn([](ScriptedDisplay& d) { d.m_bMakesWindows = false; }); }},
    {"error", "Initialize failed: no pixel format could be set",
     [] { InitializeOn([](ScriptedDisplay& d) { d.m_iChosen = 0; }); }},
    {"error", "Initialize failed: the window class could not be registered",
     [] {
       EXPECT_EQ(DllCanUnloadNow(), S_OK);  // no class of the component is registered now
       WNDCLASSA other{};
       other.lpszClassName = "GLWindow_Class";
       other.lpfnWndProc = DefWindowProcA;
       RegisterClassA(&other);
       InitializeOn([](ScriptedDisplay&) {});
       UnregisterClassA(other.lpszClassName, nullptr);
     }},
    {"error", "Initialize failed: the draw thread has not begun to draw",
     [] { StartOn(std::make_shared<SlowDisplay>()); }},
    {"error", "Initialize failed: the driver created no rendering context within 10 s",
     [] {
       const auto display = std::make_shared<ScriptedDisplay>();
       display->m_iRefusedContexts = 1 << 20;
       StartOn(display);
     }},
    {"error", "Initialize failed: the rendering context could not be made current within 10 s",
     [] {
       const auto display = std::make_shared<ScriptedDisplay>();
       display->m_bRefusesCurrent = true;
       StartOn(display);
     }},
    {"warning", "the palette of the window cannot be set",
     [] {
       InitializeOn([](ScriptedDisplay& d) {
         d.m_vWindowFormats = HeadlessDisplay::Open()->Formats(SurfaceKind::kWindow);
         for (DisplayFormat& format : d.m_vWindowFormats) format.m_Description.dwFlags |= PFD_NEED_PALETTE;
       });
     }},
    {"warning", "no pixel format has multisampling", [] { InitializeOn([](ScriptedDisplay&) {}, 1); }},
    {"info", "the registry switches acceleration off",
     [] {
       g_bAccel = false;
       InitializeOn([](ScriptedDisplay&) {});
       g_bAccel = true;
     }},
    {"warning", "a capture failed: cannot create a surface of 32 x 32 pixels",
     [] {
       const auto display = ScriptedDisplay::Set();
       const FreeContext painted;
       const auto capture = GLMake<TestCapture>();
       display->m_iRefusedContexts = 1;
       painted.context->AttachCapture(capture.Get());
       EXPECT_EQ(capture->Take(), 0);
     }},
    {"warning", "a capture failed: not enough memory for the pixmap",
     [] {
       const FreeContext painted;
       const auto capture = GLMake<TestCapture>();
       capture->request.m_fZoom = 64;
       painted.context->AttachCapture(capture.Get());
       g_bNoImages = true;
       EXPECT_EQ(capture->Take(), 0);
       g_bNoImages = false;
     }},
    {"warning", "an image file is not loaded: not enough memory for its pixels",
     [] {
       const TestFolder folder;
       const BitmapBytes image{2048, 2048, 1, Bytes(8), Bytes(2048 * 2048 / 8)};
       g_bNoImages = true;
       EXPECT_EQ(LoadFrom(*GLCreate<IGLPixmap>(CLSID_GLPixmap), folder.Put("i", image.File()).u16string()),
                 E_FAIL);
       g_bNoImages = false;
     }},
    {"warning", "the registry file ",
     [] {
       const TestRegistry registry;
       registry.Put("user.reg", "no registry");
       HKEY key = nullptr;
       EXPECT_NE(RegOpenKeyExA(HKEY_CURRENT_USER, "key", 0, KEY_READ, &key), ERROR_SUCCESS);
     }},
};

// Counts without allocating, because an allocation fails.
std::atomic<int> g_iReasons{0}, g_iParts{0}, g_iThreads{0};

void CountReasons(const char* aLine, std::size_t aLength) {
  const std::string_view line(aLine, aLength);
  if (line.find("Initialize failed: ") == line.npos) return;
  ++g_iReasons;
  if (line.find("not enough memory for the parts of the context") != line.npos) ++g_iParts;
  if (line.find("no draw thread could be started") != line.npos) ++g_iThreads;
}

/// Runs a function in a forked child, which has a copy of the log lines. @return the function's result
template <class Function>
bool HoldsInChild(Function aFunction) {
  const pid_t child = fork();
  if (child == 0) _exit(aFunction() ? 0 : 1);
  int status = 1;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

/// Replaces the function of the C library, which the component calls for large images only.
extern "C" void* aligned_alloc(std::size_t aAlignment, std::size_t aSize) {
  void* block = nullptr;
  return g_bNoImages || posix_memalign(&block, aAlignment, aSize) != 0 ? nullptr : block;
}

TEST(Log, ReportsEachPlatformFaultOnce) {
  for (const LogCase& c : kCases) {
    const DisplayGuard guard;
    ExpectOnce(c);
  }
}

TEST(Log, GivesOneReasonPerInitializeWithoutMemory) {
  const LogLines restores(LogLevel::kUnread);
  SetLogSink(LogLevel::kError, CountReasons);
  AllocationFault::ForgetWays();
  for (bool failed = true; failed;) {
    const AllocationFault one;
    g_iReasons = 0;
    if (const auto context = GLCreate<IGLContext>(CLSID_GLContext)) {
      const HRESULT result = context->Initialize(0);
      EXPECT_EQ(g_iReasons, FAILED(result) ? 1 : 0) << std::hex << result;
    }
    failed = one.HasFailed();
  }
  EXPECT_GT(g_iParts, 0);
  EXPECT_GT(g_iThreads, 0);
}

TEST(Log, ReportsWhyAForkedChildCannotDraw) {
  const LogLines log(LogLevel::kDebug);
  const FreeContext inherited;
  EXPECT_TRUE(HoldsInChild([&] {
    inherited.context->Initialize(0);
    return log.Count("Initialize failed: the context was created before a fork", "error") == 1;
  }));
  EXPECT_TRUE(HoldsInChild([&] {
    GLCreate<IGLContext>(CLSID_GLContext)->Initialize(0);
    return log.Count("the parent of this forked process has used a GL driver", "error") >= 1;
  }));
}

TEST(Log, ReportsALateDrawThread) {
  const LogLines log(LogLevel::kWarning);
  const auto sleeping = [] {
    FreeContext painted;
    painted.context->SetDrawThreadPars(0, 4000, 4000);
    painted.Await(1);  // the draw thread then sleeps for 4 s
    return painted;
  };
  sleeping();
  EXPECT_EQ(log.Count("the draw thread did not park within 3 s"), 0) << "the last Release ends the sleep";
  sleeping().context.As<IGLContext12>()->SuspendDrawThread();
  EXPECT_EQ(log.Count("the draw thread did not park within 3 s"), 1) << log.Joined();
}
