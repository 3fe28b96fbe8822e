// ContextRace: two threads draw with rendering contexts of one EGL display, by plain EGL and GL. It is no
// test.
//
//   g++ -std=c++20 -O2 ContextRace.cpp -lEGL -lOpenGL -pthread -o context-race
//
// On a driver that needs rendering turns (platform/RenderingTurn.h) the program crashes within seconds; with
// one thread, or with turns, it does not. It shows the fault without the component.
//
//   context-race [SECONDS] [turns]    60 seconds; with turns, one thread draws at a time
//
// Mesa's software renderer asks at each change of a texture whether the scene of any context on the display
// refers to it, and reads the scenes of other threads while these free them. What is freed usually keeps its
// content for a while; M_PERTURB overwrites it at once, as memory that the host allocates would.

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <malloc.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <thread>
#include <vector>

namespace {

constexpr int kSide = 256;

std::atomic<long> g_Frames{0};
std::atomic<bool> g_bStop{false};
std::mutex g_Turn;

void DrawFrame(GLuint aTexture) {
  const std::vector<unsigned char> texels(64 * 64 * 4, 128);
  glClear(GL_COLOR_BUFFER_BIT);
  glEnable(GL_TEXTURE_2D);
  glBindTexture(GL_TEXTURE_2D, aTexture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 64, 64, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels.data());
  glBegin(GL_QUADS);
  for (int corner = 0; corner < 4; ++corner) {
    const float x = corner == 1 || corner == 2 ? 1.0f : -1.0f, y = corner < 2 ? -1.0f : 1.0f;
    glTexCoord2f(x, y);
    glVertex2f(x, y);
  }
  glEnd();
  glFlush();
}

void Draw(EGLDisplay aDisplay, EGLConfig aConfig, bool aTurns) {
  eglBindAPI(EGL_OPENGL_API);
  const EGLint size[] = {EGL_WIDTH, kSide, EGL_HEIGHT, kSide, EGL_NONE};
  const EGLSurface surface = eglCreatePbufferSurface(aDisplay, aConfig, size);
  const EGLContext context = eglCreateContext(aDisplay, aConfig, EGL_NO_CONTEXT, nullptr);
  eglMakeCurrent(aDisplay, surface, surface, context);
  GLuint textures[2] = {};
  glGenTextures(2, textures);
  while (!g_bStop) {
    std::unique_lock turn(g_Turn, std::defer_lock);
    if (aTurns) turn.lock();
    DrawFrame(textures[g_Frames++ % 2]);
  }
  eglMakeCurrent(aDisplay, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  eglDestroyContext(aDisplay, context);
  eglDestroySurface(aDisplay, surface);
}

EGLDisplay OpenDisplay() {
  const auto open =
      reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
  return open != nullptr ? open(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr) : EGL_NO_DISPLAY;
}

}  // namespace

int main(int argc, char** argv) {
  mallopt(M_PERTURB, 165);
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
  const bool turns = argc > 2 && std::strcmp(argv[2], "turns") == 0;
  const EGLDisplay display = OpenDisplay();
  if (eglInitialize(display, nullptr, nullptr) == EGL_FALSE) return 2;
  eglBindAPI(EGL_OPENGL_API);
  const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
  EGLConfig config = nullptr;
  EGLint count = 0;
  eglChooseConfig(display, wanted, &config, 1, &count);
  if (count == 0) return 2;
  std::thread first(Draw, display, config, turns), second(Draw, display, config, turns);
  for (int i = 0; i < seconds * 10; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(100));
  g_bStop = true;
  first.join();
  second.join();
  std::printf("%ld frames without a fault\n", g_Frames.load());
}
