// GLErrorCheck: logs GL's errors with the operation after which they were found. Draw thread, with GL
// current. Active only at log level debug. The host's glGetError does not return the errors that are logged
// here.

#pragma once

#include "platform/Log.h"

/// Reads all errors from GL and logs one line per error. The same error after the same operation is reported
/// once per thread. Must not be called between glBegin and glEnd, where glGetError itself is an error.
void ReportGLErrors(const char* aWhen, const char* aOperation) noexcept;

inline void CheckGLErrors(const char* aOperation) noexcept {
  if (IsLogged(LogLevel::kDebug)) ReportGLErrors("after", aOperation);
}

/// Checks for errors at the start and the end of an operation. Errors found at the start come from the
/// client's own GL calls.
class GLErrorCheck {
 public:
  explicit GLErrorCheck(const char* aOperation) noexcept : m_szOperation(aOperation) {
    if (IsLogged(LogLevel::kDebug)) ReportGLErrors("before", m_szOperation);
  }
  ~GLErrorCheck() { CheckGLErrors(m_szOperation); }
  GLErrorCheck(const GLErrorCheck&) = delete;
  GLErrorCheck& operator=(const GLErrorCheck&) = delete;

 private:
  const char* const m_szOperation;
};
