// Stage: a context without a display whose picture goes to a file. The small examples share it, so that each
// contains only its subject. Host's thread.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <memory>

#include "shared/FrameReader.h"
#include "shared/Picture.h"

/// Checks the result of an operation. @throws std::runtime_error with the message if it is a failure
void Require(HRESULT aResult, const char* aMessage);

class Stage {
 public:
  /// Creates a context of a size in pixels.
  /// @throws std::runtime_error if no context can be created
  Stage(int aWidth, int aHeight);
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  IGLContext& Context() const { return *m_context; }

  /// Adds a perspective viewer. @throws std::runtime_error
  /// @param aEye   position of the eye
  /// @param aPitch downward angle of the view, in radians
  /// @return the viewer, borrowed: the context owns it
  IGLViewer& AddViewer(const GLDATA_POINT& aEye, double aPitch) const;

  /// Adds a light whose rays run in one direction of the world. @throws std::runtime_error
  void AddDistantLight(const GLDATA_POINT& aDirection) const;

  /// Reads the current picture. @throws std::runtime_error if no frame is drawn
  Picture Read() const;

 private:
  GLPtr<IGLContext> m_context;
  std::unique_ptr<FrameReader> m_reader;
};

/// Runs an example and writes its picture to the file that follows --out. Prints failures to standard error.
/// @return the exit status: 0 success, 1 failure, 2 invalid command line
int RunExample(int argc, char** argv, Picture (*aExample)());
