// GLErrors: the names of GL's errors, and which ones a thread has reported. Draw thread, with GL current.

#include "diagnostics/GLErrors.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/GL.h"

namespace {

constexpr int kMostAtOnce = 16;  // a driver that has lost its device may answer with errors for ever

struct Report {
  const char* m_szOperation;
  GLenum m_uError;
  friend bool operator==(const Report&, const Report&) = default;
};

thread_local std::array<Report, 64> t_aReported{};
thread_local std::size_t t_uReported = 0;

/// Whether a report is new. One that finds no room is not.
bool IsNew(const Report& aReport) noexcept {
  const auto end = t_aReported.begin() + static_cast<std::ptrdiff_t>(t_uReported);
  if (end == t_aReported.end() || std::find(t_aReported.begin(), end, aReport) != end) return false;
  t_aReported[t_uReported++] = aReport;
  return true;
}

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
    if (IsNew({aOperation, error}))
      LogDebug("GL error 0x%04x (%s) %s %s", error, NameOf(error), aWhen, aOperation);
  }
}
