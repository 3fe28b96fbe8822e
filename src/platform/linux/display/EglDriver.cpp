// EglDriver: formats, surfaces and contexts of an EGL display. Any thread.

#include "platform/linux/display/EglDriver.h"

#include <GL/gl.h>
#include <dlfcn.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <new>
#include <utility>

#include "platform/ExitGate.h"
#include "platform/Log.h"
#include "platform/ProcessWide.h"
#include "platform/Thread.h"
#include "platform/linux/display/PipeSignal.h"

namespace {

class EglContext final : public DrawContext {
 public:
  EglContext(EGLDisplay aDisplay, EGLContext aContext) noexcept : m_Display(aDisplay), m_Context(aContext) {}
  ~EglContext() override {
    const PipeSignal quiet;
    if (const ExitGate::Pass pass; pass) eglDestroyContext(m_Display, m_Context);
  }
  EglContext(const EglContext&) = delete;
  EglContext& operator=(const EglContext&) = delete;

  bool IsCurrent() const noexcept override { return eglGetCurrentContext() == m_Context; }
  EGLContext Handle() const noexcept { return m_Context; }

 private:
  EGLDisplay m_Display;
  EGLContext m_Context;
};

constexpr int kLeastLargest = 2048;

/// Keeps the driver's library loaded after the module is unloaded: some drivers cannot be loaded twice.
void KeepDriver() noexcept { dlopen("libEGL.so.1", RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE); }

bool IsInitialised(EGLDisplay aDisplay) noexcept { return eglQueryString(aDisplay, EGL_VERSION) != nullptr; }

/// Counts the component's users of each EGL display, since EGL itself does not.
class DisplayUsers {
 public:
  /// @return false if the display cannot be initialised in this process
  bool Add(EGLDisplay aDisplay) noexcept try {
    const std::scoped_lock lock(m_Lock);
    Users& users = m_Users[aDisplay];
    if (users.m_iCount == 0) {
      users.m_bForeign = IsInitialised(aDisplay);
      // A display initialised before a fork needs threads that do not exist in the child.
      if (users.m_bForeign && ProcessGeneration() > 1) return false;
    }
    if (eglInitialize(aDisplay, nullptr, nullptr) == EGL_FALSE) return false;
    ++users.m_iCount;
    return true;
  } catch (...) {
    return false;
  }

  void Remove(EGLDisplay aDisplay) noexcept {
    const std::scoped_lock lock(m_Lock);
    const auto found = m_Users.find(aDisplay);
    if (found == m_Users.end() || --found->second.m_iCount > 0) return;
    const bool foreign = found->second.m_bForeign;
    m_Users.erase(found);
    const ExitGate::Pass pass;
    if (pass && !foreign) eglTerminate(aDisplay);
  }

 private:
  struct Users {
    int m_iCount = 0;
    bool m_bForeign = false;  // initialised by the host
  };

  std::mutex m_Lock;
  std::map<EGLDisplay, Users> m_Users;
};

constinit ProcessWide<DisplayUsers> g_Users;

/// Generation of the process that first started a driver; 0 before.
std::atomic<unsigned> g_uStartedIn{0};

/// Returns whether a driver may run in this process. If the parent of a forked child has run a driver, the
/// child must not run it too: the driver's exit handlers would wait forever for threads of the parent.
bool MayRunHere() noexcept {
  unsigned starter = 0;
  return g_uStartedIn.compare_exchange_strong(starter, ProcessGeneration()) || starter == ProcessGeneration();
}

/// Draws and reads one pixel before the first frame, so that the driver registers its exit handlers now.
void DrawOnce() noexcept {
  static std::atomic_flag drawn;
  if (drawn.test_and_set()) return;
  glBegin(GL_TRIANGLES);
  for (const GLfloat x : {-1.0f, 1.0f, 0.0f}) {
    glColor4f(x, 0.5f, 0.5f, 0.5f);
    glVertex2f(x, x);
  }
  glEnd();
  GLubyte pixel[4] = {};
  glReadPixels(0, 0, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
}

}  // namespace

EglSurface::~EglSurface() {
  const PipeSignal quiet;
  if (const ExitGate::Pass pass; pass) eglDestroySurface(m_Display, m_Surface);
}

bool EglDriver::Start(EGLDisplay aDisplay, EGLint aVisual) noexcept {
  const ExitGate::Pass pass;
  if (!pass || aDisplay == EGL_NO_DISPLAY) return false;
  if (!MayRunHere()) {
    LogError("the parent of this forked process has used a GL driver: GL cannot draw here");
    return false;
  }
  KeepDriver();
  bool started = false;
  try {
    StartThread([&] {
      if (g_Users.Get().Add(aDisplay)) {
        m_Display = aDisplay;
        started = StartHere(aVisual);
      }
      eglReleaseThread();
    }).join();
  } catch (...) {
    // a failed start of the thread is reported by the result
  }
  if (!started) End();
  return started;
}

void EglDriver::End() noexcept {
  if (m_Display == EGL_NO_DISPLAY) return;
  const PipeSignal quiet;
  g_Users.Get().Remove(std::exchange(m_Display, EGL_NO_DISPLAY));
}

bool EglDriver::IsUsable() const noexcept {
  const ExitGate::Pass pass;
  return pass && IsInitialised(m_Display);
}

bool EglDriver::StartHere(EGLint aVisual) noexcept {
  if (eglBindAPI(EGL_OPENGL_API) == EGL_FALSE) return false;
  try {
    constexpr DWORD kWindowFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
    m_vWindowFormats = ReadFormats(aVisual != 0 ? EGL_WINDOW_BIT : EGL_PBUFFER_BIT, aVisual, kWindowFlags);
    m_vMemoryFormats = ReadFormats(EGL_PBUFFER_BIT, 0, PFD_DRAW_TO_BITMAP | PFD_SUPPORT_OPENGL);
  } catch (...) {
    return false;
  }
  m_iLargest = ReadLargest();
  return !m_vWindowFormats.empty();
}

EGLint EglDriver::Attribute(EGLConfig aConfig, EGLint aName) const noexcept {
  EGLint value = 0;
  eglGetConfigAttrib(m_Display, aConfig, aName, &value);
  return value;
}

std::vector<DisplayFormat> EglDriver::ReadFormats(EGLint aSurfaceBit, EGLint aVisual, DWORD aFlags) {
  EGLint count = 0;
  eglGetConfigs(m_Display, nullptr, 0, &count);
  std::vector<EGLConfig> configs(static_cast<std::size_t>(count));
  eglGetConfigs(m_Display, configs.data(), count, &count);
  std::vector<DisplayFormat> formats;
  for (EGLConfig config : configs) {
    if ((Attribute(config, EGL_SURFACE_TYPE) & aSurfaceBit) == 0) continue;
    if ((Attribute(config, EGL_RENDERABLE_TYPE) & EGL_OPENGL_BIT) == 0) continue;
    if (Attribute(config, EGL_COLOR_BUFFER_TYPE) != EGL_RGB_BUFFER) continue;
    // Colours with more than 8 bits per channel do not fit the description.
    if (Attribute(config, EGL_RED_SIZE) > 8) continue;
    if (aVisual != 0 && Attribute(config, EGL_NATIVE_VISUAL_ID) != aVisual) continue;
    formats.push_back(Describe(config, aFlags));
  }
  return formats;
}

DisplayFormat EglDriver::Describe(EGLConfig aConfig, DWORD aFlags) const noexcept {
  const auto bits = [&](EGLint aName) { return static_cast<BYTE>(Attribute(aConfig, aName)); };
  PIXELFORMATDESCRIPTOR description{};
  description.nSize = sizeof(description);
  description.nVersion = 1;
  description.dwFlags = aFlags;
  description.iPixelType = PFD_TYPE_RGBA;
  description.cColorBits = bits(EGL_BUFFER_SIZE);
  description.cRedBits = bits(EGL_RED_SIZE);
  description.cGreenBits = bits(EGL_GREEN_SIZE);
  description.cBlueBits = bits(EGL_BLUE_SIZE);
  description.cAlphaBits = bits(EGL_ALPHA_SIZE);
  description.cGreenShift = description.cBlueBits;
  description.cRedShift = static_cast<BYTE>(description.cGreenShift + description.cGreenBits);
  description.cAlphaShift = static_cast<BYTE>(description.cRedShift + description.cRedBits);
  description.cDepthBits = bits(EGL_DEPTH_SIZE);
  description.cStencilBits = bits(EGL_STENCIL_SIZE);
  return {description, Attribute(aConfig, EGL_SAMPLES), aConfig};
}

// The driver reports its limit only for a current context. Larger pbuffers can be created, but not drawn on.
int EglDriver::ReadLargest() noexcept {
  if (m_vMemoryFormats.empty()) return 0;
  const auto surface = MakePbuffer(1, 1, m_vMemoryFormats.front());
  const auto context = MakeContext(m_vMemoryFormats.front());
  if (surface == nullptr || context == nullptr) return kLeastLargest;
  if (!MakeCurrent(static_cast<EglSurface&>(*surface).Handle(), context.get())) return kLeastLargest;
  GLint size = 0;
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
  DrawOnce();
  MakeCurrent(EGL_NO_SURFACE, nullptr);
  return std::max(kLeastLargest, size);
}

std::unique_ptr<DrawSurface> EglDriver::MakePbuffer(int aWidth, int aHeight,
                                                    const DisplayFormat& aFormat) noexcept {
  const ExitGate::Pass pass;
  if (!pass) return nullptr;
  const EGLint attributes[] = {EGL_WIDTH, std::max(aWidth, 1), EGL_HEIGHT, std::max(aHeight, 1), EGL_NONE};
  const EGLSurface surface = eglCreatePbufferSurface(m_Display, aFormat.m_pConfig, attributes);
  if (surface == EGL_NO_SURFACE) return nullptr;
  return std::unique_ptr<DrawSurface>(new (std::nothrow) EglSurface(m_Display, surface));
}

std::unique_ptr<DrawContext> EglDriver::MakeContext(const DisplayFormat& aFormat) noexcept {
  const ExitGate::Pass pass;
  if (!pass) return nullptr;
  ExitGate::NoteNewWork();
  eglBindAPI(EGL_OPENGL_API);
  const EGLContext context = eglCreateContext(m_Display, aFormat.m_pConfig, EGL_NO_CONTEXT, nullptr);
  if (context == EGL_NO_CONTEXT) return nullptr;
  return std::unique_ptr<DrawContext>(new (std::nothrow) EglContext(m_Display, context));
}

bool EglDriver::MakeCurrent(EGLSurface aSurface, DrawContext* aContext) noexcept {
  const ExitGate::Pass pass;
  if (!pass) return false;
  eglBindAPI(EGL_OPENGL_API);
  const EGLContext context =
      aContext != nullptr ? static_cast<EglContext*>(aContext)->Handle() : EGL_NO_CONTEXT;
  return eglMakeCurrent(m_Display, aSurface, aSurface, context) == EGL_TRUE;
}
