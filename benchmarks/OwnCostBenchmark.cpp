// OwnCostBenchmark: the component's own cost of a frame. It measures empty frames while every GL call returns
// at once, compared with the swap at the end of each frame.

#include <benchmark/benchmark.h>

#include "EmptyFrames.h"
#include "PlainContext.h"

// The executable defines GL functions, which the loader finds before the driver's.
#define GL_CALL(result, name, parameters, arguments) \
  extern "C" result APIENTRY name parameters { return result(); }
#include "support/GLCalls.inc"
// The GL functions that the component calls and that the tests' recorder leaves out.
// clang-format off
GL_CALL(void, glBitmap, (GLsizei width, GLsizei height, GLfloat xorig, GLfloat yorig, GLfloat xmove, GLfloat ymove, const GLubyte* bitmap), (width, height, xorig, yorig, xmove, ymove, bitmap))
GL_CALL(void, glClear, (GLbitfield mask), (mask))
GL_CALL(void, glClearColor, (GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha), (red, green, blue, alpha))
GL_CALL(void, glClipPlane, (GLenum plane, const GLdouble* equation), (plane, equation))
GL_CALL(void, glColorMaterial, (GLenum face, GLenum mode), (face, mode))
GL_CALL(void, glDeleteLists, (GLuint list, GLsizei range), (list, range))
GL_CALL(void, glDepthFunc, (GLenum func), (func))
GL_CALL(void, glDrawPixels, (GLsizei width, GLsizei height, GLenum format, GLenum type, const void* pixels), (width, height, format, type, pixels))
GL_CALL(void, glEdgeFlag, (GLboolean flag), (flag))
GL_CALL(void, glFlush, (), ())
GL_CALL(void, glFogf, (GLenum pname, GLfloat param), (pname, param))
GL_CALL(void, glFogfv, (GLenum pname, const GLfloat* params), (pname, params))
GL_CALL(void, glFogi, (GLenum pname, GLint param), (pname, param))
GL_CALL(void, glGetBooleanv, (GLenum pname, GLboolean* params), (pname, params))
GL_CALL(void, glGetClipPlane, (GLenum plane, GLdouble* equation), (plane, equation))
GL_CALL(void, glGetDoublev, (GLenum pname, GLdouble* params), (pname, params))
GL_CALL(GLenum, glGetError, (), ())
GL_CALL(void, glHint, (GLenum target, GLenum mode), (target, mode))
GL_CALL(void, glInitNames, (), ())
GL_CALL(void, glLightModelfv, (GLenum pname, const GLfloat* params), (pname, params))
GL_CALL(void, glLightModeli, (GLenum pname, GLint param), (pname, param))
GL_CALL(void, glLightf, (GLenum light, GLenum pname, GLfloat param), (light, pname, param))
GL_CALL(void, glLightfv, (GLenum light, GLenum pname, const GLfloat* params), (light, pname, params))
GL_CALL(void, glLoadMatrixf, (const GLfloat* m), (m))
GL_CALL(void, glLoadName, (GLuint name), (name))
GL_CALL(void, glMaterialf, (GLenum face, GLenum pname, GLfloat param), (face, pname, param))
GL_CALL(void, glMaterialfv, (GLenum face, GLenum pname, const GLfloat* params), (face, pname, params))
GL_CALL(void, glPixelZoom, (GLfloat xfactor, GLfloat yfactor), (xfactor, yfactor))
GL_CALL(void, glPopClientAttrib, (), ())
GL_CALL(void, glPushClientAttrib, (GLbitfield mask), (mask))
GL_CALL(void, glPushName, (GLuint name), (name))
GL_CALL(void, glRasterPos3f, (GLfloat x, GLfloat y, GLfloat z), (x, y, z))
GL_CALL(void, glReadBuffer, (GLenum mode), (mode))
GL_CALL(void, glReadPixels, (GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type, void* pixels), (x, y, width, height, format, type, pixels))
GL_CALL(void, glScissor, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height))
GL_CALL(void, glTexGend, (GLenum coord, GLenum pname, GLdouble param), (coord, pname, param))
GL_CALL(void, glTexGendv, (GLenum coord, GLenum pname, const GLdouble* params), (coord, pname, params))
GL_CALL(void, glTexGeni, (GLenum coord, GLenum pname, GLint param), (coord, pname, param))
GL_CALL(void, glTexGeniv, (GLenum coord, GLenum pname, const GLint* params), (coord, pname, params))
GL_CALL(void, glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height))
// clang-format on
#undef GL_CALL

namespace {

constexpr int kWidth = 800, kHeight = 600;

void FrameWithoutGL(benchmark::State& aState) {
  EmptyFrames frames(static_cast<int>(aState.range(0)), kWidth, kHeight);
  frames.MeasureProcessor(aState, 100);
}

void Swap(benchmark::State& aState) {
  const PlainContext plain(kWidth, kHeight);
  for (auto _ : aState) eglSwapBuffers(eglGetCurrentDisplay(), eglGetCurrentSurface(EGL_DRAW));
}

}  // namespace

BENCHMARK(FrameWithoutGL)
    ->Arg(1)
    ->Arg(16)
    ->Arg(64)
    ->Iterations(50)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(Swap)->UseRealTime()->Unit(benchmark::kMicrosecond);
