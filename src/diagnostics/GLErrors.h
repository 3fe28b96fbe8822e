// GLErrors: GL's errors and the operation after which they were seen. Draw thread, with GL current.
// At level debug alone, where the host's own glGetError no longer finds what is reported here.

#pragma once

#include "platform/Log.h"

/// Takes all errors from GL and writes one line for each. The same error after the same operation is reported
/// once per thread. Not between glBegin and glEnd, where the question itself is an error.
void ReportGLErrors(const char* aWhen, const char* aOperation) noexcept;

inline void CheckGLErrors(const char* aOperation) noexcept {
  if (IsLogged(LogLevel::kDebug)) ReportGLErrors("after", aOperation);
}

/// Looks for errors at both ends of an operation: what is there at its start comes from the client's own
/// calls.
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
