// A host program; the argument selects how its process ends or is disturbed. It is linked to the module as
// other hosts are, returns kIntended from main, and writes a line when it has reached the state of the
// argument.

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <gllib/GLEntryPoints.h>
#include <gllib/GLLibHost.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <future>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>

#include "process/Orange.h"

namespace {

using namespace std::chrono_literals;

constexpr int kIntended = 7, kFailed = 1;

/// Requests a picture of each frame.
struct Camera final : GLCaptureBase {
  explicit Camera(IGLPixmap* aPicture) : m_pPicture(GLPtr<IGLPixmap>::FromBorrowed(aPicture)) {
    Request(aPicture);
  }
  HRESULT OnData(LONG) noexcept override { return ++m_iPictures, Request(m_pPicture.Get()), S_OK; }
  GLPtr<IGLPixmap> m_pPicture;
  std::atomic<int> m_iPictures{0};
};

struct Scene {
  explicit Scene(std::function<void(IGLContext&)> aExtra = nullptr) {
    if (!m_pContext || FAILED(m_pContext->Initialize(0))) std::exit(kFailed);
    m_pPainter->m_Extra = std::move(aExtra);
    m_pContext->SetViewport(0, 0, 160, 120);
    m_pContext->EnableLighting(0);
    m_pContext->CreateViewer(1, 1, &m_pViewer);
    m_pContext->SetDrawThreadPars(0, 5, 5);
    m_pContext->AttachPainter(m_pPainter.Get());
  }
  void AwaitFrames(int aCount) const {
    for (const int start = m_pPainter->m_iFrames; m_pPainter->m_iFrames < start + aCount;)
      std::this_thread::sleep_for(1ms);
  }
  HRESULT Select() const {
    GLDATA_POINT low = {-1, -1, 0}, high = {1, 1, 0};
    int count = 4;
    ULONG found[4];
    return m_pContext->Select(m_pViewer, &low, &high, 0, 0, &count, found);
  }
  bool ShowsOrange() const { return ::ShowsOrange(*m_pContext, *GLCreate<IGLPixmap>(CLSID_GLPixmap)); }

  GLPtr<IGLContext> m_pContext = GLCreate<IGLContext>(CLSID_GLContext);
  GLPtr<OrangePainter> m_pPainter = GLMake<OrangePainter>();
  IGLViewer* m_pViewer = nullptr;
};

int Ready() {
  std::cout << "ready" << std::endl;
  return kIntended;
}

std::string AwaitLine() {
  std::string line;
  std::getline(std::cin, line);
  return line;
}

/// Keeps an object until the process ends, without destroying it.
template <class T>
T& Kept(T* aObject) {
  static T* kept = nullptr;
  return *(kept = aObject);
}

Scene& Drawing(std::function<void(IGLContext&)> aExtra = nullptr) {
  Scene& scene = Kept(new Scene(std::move(aExtra)));
  scene.AwaitFrames(2);
  return scene;
}

bool Initialised() {
  static const auto context = GLCreate<IGLContext>(CLSID_GLContext);  // released after main
  return SUCCEEDED(context->Initialize(0));
}

bool Captures() {
  Scene& scene = Drawing();
  auto& camera = Kept(new GLPtr<Camera>(GLMake<Camera>(GLCreate<IGLPixmap>(CLSID_GLPixmap).Get())));
  scene.m_pContext->AttachCapture(camera.Get());
  while (camera->m_iPictures < 2) std::this_thread::sleep_for(1ms);
  return true;
}

bool Selects() {
  Scene& scene = Drawing();
  std::promise<void> selected;
  std::thread([&scene, &selected] {
    scene.Select();
    selected.set_value();
    for (;;) scene.Select();
  }).detach();
  selected.get_future().wait();
  return true;
}

bool BuildsFonts() {
  Drawing([](IGLContext& aContext) {
    IGLFont* font = nullptr;
    if (SUCCEEDED(aContext.CreateSystemFont(&font)) && font != nullptr) aContext.DestroyFont(font);
  });
  return true;
}

/// The painter releases the last reference, and main returns while the context ends.
bool EndsInPainter() {
  static std::promise<void> released;
  static std::atomic_flag once;
  auto& scene = Kept(new Scene);
  scene.m_pContext->DetachPainter();
  static auto& last = Kept(new GLPtr<IGLContext>(scene.m_pContext));
  scene.m_pContext.Reset();
  const auto painter = GLMake<OrangePainter>();
  painter->m_Extra = [](IGLContext&) {
    if (once.test_and_set()) return;
    last.Reset();
    released.set_value();
  };
  last->AttachPainter(painter.Get());
  released.get_future().wait();
  return true;
}

bool ExitsInPainter() {
  Kept(new Scene([](IGLContext&) { std::exit(Ready()); }));
  std::this_thread::sleep_for(60s);
  return false;
}

/// An exit handler waits for a thread that uses the context. The component must not block that thread.
bool JoinsAtExit() {
  static Scene& scene = Drawing();
  static std::atomic<bool> stop{false};
  static std::thread user([] {
    auto control = scene.m_pContext.As<IGLContext12>();
    while (!stop) {
      scene.Select();
      scene.m_pContext->SetViewport(0, 0, 100, 100);
      control->SuspendDrawThread();
      control->ResumeDrawThread();
    }
    control.Reset();
    scene.m_pContext.Reset();
  });
  struct Join {
    ~Join() {
      stop = true;
      user.join();
    }
  };
  static const Join first;
  return true;
}

constexpr bool kWithHandlers = true;

/// Runs a function in a forked child, which ends with the result. @param aHandlers whether it runs exit
/// handlers
bool ChildEndsWith(const std::function<int()>& aChild, bool aHandlers) {
  const pid_t child = fork();
  if (child == 0) {
    alarm(50);
    const int code = aChild();
    if (aHandlers) std::exit(code);
    _exit(code);
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (!WIFEXITED(status)) std::cerr << "child ended by signal " << WTERMSIG(status) << '\n';
  return WIFEXITED(status) && WEXITSTATUS(status) == kIntended;
}

/// Checks the context in a forked child: each operation fails at once, and all objects can be released.
int UseInherited(Scene& aScene) {
  IGLContext& context = *aScene.m_pContext;
  const auto snapshot = GLMake<Snapshot>();
  auto control = aScene.m_pContext.As<IGLContext12>();
  const HRESULT results[] = {
      context.Initialize(0),   context.SetViewport(0, 0, 9, 9),    context.AttachCapture(snapshot.Get()),
      context.DetachPainter(), context.SetDrawThreadPars(0, 9, 9), control->SuspendDrawThread(),
      aScene.Select()};
  for (const HRESULT result : results) {
    if (result != E_GL_BADSTATE) return kFailed;
  }
  control.Reset();
  aScene.m_pContext.Reset();
  return kIntended;
}

bool Forks() {
  Scene& scene = Drawing();
  for (int i = 0; i < 10; ++i) {
    for (const bool handlers : {true, false}) {
      if (!ChildEndsWith([&] { return UseInherited(scene); }, handlers)) return false;
      if (!ChildEndsWith([] { return kIntended; }, handlers)) return false;
    }
    if (!scene.ShowsOrange()) return false;
  }
  return true;
}

/// A child may draw if its parent has not drawn. Otherwise it is refused, because the driver has state of the
/// parent.
bool DrawsInChild() {
  const auto early = GLCreate<IGLContext>(CLSID_GLContext);
  const auto draw = [] { return Kept(new Scene).ShowsOrange() ? kIntended : kFailed; };
  const auto isRefused = [] {
    return GLCreate<IGLContext>(CLSID_GLContext)->Initialize(0) == E_FAIL ? kIntended : kFailed;
  };
  for (int i = 0; i < 3; ++i) {
    if (!ChildEndsWith(draw, kWithHandlers)) return false;
  }
  const Scene& scene = Drawing();
  for (int i = 0; i < 3; ++i) {
    if (!ChildEndsWith(isRefused, kWithHandlers)) return false;
  }
  return scene.ShowsOrange();
}

/// The host blocks a signal after the start, and handles it itself. No thread of the component may consume
/// it.
bool WaitsForSignals() {
  Drawing();
  sigset_t wanted;
  sigemptyset(&wanted);
  for (const int number : {SIGTERM, SIGUSR1, SIGALRM, SIGCHLD}) sigaddset(&wanted, number);
  pthread_sigmask(SIG_BLOCK, &wanted, nullptr);
  for (const int number : {SIGTERM, SIGUSR1, SIGALRM}) {
    for (int i = 0; i < 20; ++i) {
      kill(getpid(), number);
      int taken = 0;
      sigwait(&wanted, &taken);
      if (taken != number) return false;
    }
  }
  return true;
}

/// The host's own use of EGL ends while a context draws.
bool TerminatesEgl() {
  const EGLDisplay own = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
  Scene& scene = Drawing();
  if (eglInitialize(own, nullptr, nullptr) == EGL_FALSE || eglTerminate(own) == EGL_FALSE) return false;
  if (!scene.ShowsOrange()) return false;
  eglInitialize(own, nullptr, nullptr);
  if (!(new Scene)->ShowsOrange()) return false;
  return eglTerminate(own) == EGL_TRUE && scene.ShowsOrange();
}

/// With no GLLIB_DISPLAY: draws headless while no server can be reached. Then it draws on the next server. A
/// line of stdin contains the server and the number of the parent window.
bool OutlivesAnOutage() {
  unsetenv("GLLIB_DISPLAY");
  Scene& scene = Drawing();
  Ready();
  AwaitLine();
  if (scene.m_pContext->Initialize(0) != S_OK || scene.m_pContext->Initialize(1234) != E_FAIL) return false;
  Ready();
  std::istringstream line(AwaitLine());
  std::string display;
  ULONG_PTR parent = 0;
  line >> display >> parent;
  setenv("DISPLAY", display.c_str(), 1);
  if (scene.m_pContext->Initialize(parent) != S_OK) return false;
  scene.m_pContext->SetViewport(0, 0, 160, 120);
  return scene.ShowsOrange();
}

/// Draws and moves its window on two threads without a pause until the server ends.
bool LosesServer() {
  Scene& scene = Drawing();
  {
    const std::jthread mover([&](const std::stop_token& stop) {
      for (int i = 0; !stop.stop_requested(); ++i) scene.m_pContext->SetViewport(0, 0, 100 + i % 50, 100);
    });
    Ready();
    AwaitLine();
  }
  (void)scene.m_pContext->Initialize(0);  // fails without a server
  scene.m_pContext.Reset();
  return true;
}

/// Exits on request while a context draws.
bool DrawsUntilRequested() {
  Drawing();
  Ready();
  AwaitLine();
  return true;
}

constexpr struct {
  const char* m_szName;
  bool (*m_pfnRun)();  // false: failed
} kCases[] = {{"created", [] { return bool(Kept(new auto(GLCreate<IGLContext>(CLSID_GLContext)))); }},
              {"initialised", Initialised},
              {"drawing", [] { return Drawing(), true; }},
              {"capturing", Captures},
              {"selecting", Selects},
              {"fonts", BuildsFonts},
              {"ending", EndsInPainter},
              {"painter", ExitsInPainter},
              {"joining", JoinsAtExit},
              {"forks", Forks},
              {"child-draws", DrawsInChild},
              {"signals", WaitsForSignals},
              {"eglterminate", TerminatesEgl},
              {"outage", OutlivesAnOutage},
              {"loses-server", LosesServer},
              {"until-requested", DrawsUntilRequested}};

}  // namespace

int main(int argc, char** argv) {
  for (const auto& one : kCases) {
    if (argc > 1 && std::strcmp(argv[1], one.m_szName) == 0) return one.m_pfnRun() ? Ready() : kFailed;
  }
  return kFailed;
}
