// GLErrorCheck: reads GL's errors and logs their names. Draw thread, with GL current.

#include "diagnostics/GLErrorCheck.h"

#include "diagnostics/FirstReport.h"
#include "platform/GL.h"

namespace {

constexpr int kMostAtOnce = 16;  // a driver that has lost its device may return errors without end

const char* NameOf(GLenum aError) noexcept {
  switch (aError) {
    case GL_INVALID_ENUM:
      return "GL_INVALID_ENUM";
    case GL_INVALID_VALUE:
      return "GL_INVALID_VALUE";
    case GL_INVALID_OPERATION:
      return "GL_INVALID_OPERATION";
    case GL_STACK_OVERFLOW:
      return "GL_STACK_OVERFLOW";
    case GL_STACK_UNDERFLOW:
      return "GL_STACK_UNDERFLOW";
    case GL_OUT_OF_MEMORY:
      return "GL_OUT_OF_MEMORY";
    default:
      return "unknown";
  }
}

}  // namespace

void ReportGLErrors(const char* aWhen, const char* aOperation) noexcept {
  for (int i = 0; i < kMostAtOnce; ++i) {
    const GLenum error = glGetError();
    if (error == GL_NO_ERROR) return;
    if (IsFirstReport(aOperation, error))
      LogDebug("GL error 0x%04x (%s) %s %s", error, NameOf(error), aWhen, aOperation);
  }
}
