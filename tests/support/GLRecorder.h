// GLRecorder: the GL and GLU calls that the process makes, in order, as text.
// The test executables define those functions themselves: each call is noted while a recorder stands, and
// goes on to the driver. Only calls of the executable's own code are seen, not those that GLU makes inside.
// Any thread may call GL meanwhile; one recorder at a time.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/GL.h"

/// Records from its making to its end. A call reads "glFogf(2914, 0.5)", with "data" for what a pointer leads
/// to and "out" for what is written: tests hold the texts of two recordings against each other.
class GLRecorder {
 public:
  GLRecorder();
  ~GLRecorder();
  GLRecorder(const GLRecorder&) = delete;
  GLRecorder& operator=(const GLRecorder&) = delete;

  void Clear();

  std::vector<std::string> Calls() const;
  /// The calls of a function, or of a family of them: "glFog*".
  std::vector<std::string> CallsOf(const std::string& aFunction) const;
  int Count(const std::string& aFunction) const { return static_cast<int>(CallsOf(aFunction).size()); }

  /// Makes a function fail: it isn't called any more, and gives 0.
  void Fail(std::string_view aFunction);
  /// What glGetString answers for a name instead of the driver.
  void SetString(GLenum aName, std::string aText);
};
