// GLRecorder: calls of GL and GLU by the executable's code, in order, as text. The test executables define
// glGetString and the functions of GLCalls.inc. A recorder records each call of them and forwards it to the
// driver. It does not see calls inside GLU. Any thread may call GL; one recorder at a time.

#pragma once

#include <string_view>

#include "platform/GL.h"
#include "support/Test.h"

/// Records until it is destroyed. A call has the form "glLineWidth(0.5)", with "data" for an input pointer
/// and "out" for an output pointer. Tests compare the texts of two recordings.
class GLRecorder {
 public:
  GLRecorder();
  ~GLRecorder();
  GLRecorder(GLRecorder&&) = delete;

  void Clear();

  std::vector<std::string> Calls() const;
  /// Returns the calls of a function, or of all functions whose names begin in the same way: "glPush*".
  std::vector<std::string> CallsOf(const std::string& aFunction) const;
  int Count(const std::string& aFunction) const { return static_cast<int>(CallsOf(aFunction).size()); }

  /// Makes a function fail: it is not called, and returns 0.
  void Fail(std::string_view aFunction);
  /// Sets the result of glGetString for a name.
  void SetString(GLenum aName, std::string aText);
};
