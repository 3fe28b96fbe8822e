// Stage: a context without a display whose picture goes to a file. The small examples share it. Host's
// thread.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <memory>

#include "shared/FrameReader.h"
#include "shared/Picture.h"

class Stage {
 public:
  /// @throws std::runtime_error if no context can be created
  Stage(int aWidth, int aHeight);
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  IGLContext& Context() const { return *m_context; }

  /// Adds a perspective viewer.
  /// @param aEye   position of the eye
  /// @param aPitch downward angle of the view, in radians
  IGLViewer& AddViewer(const GLDATA_POINT& aEye, double aPitch) const;

  /// Reads the current picture. @throws std::runtime_error
  Picture Read() const;

 private:
  GLPtr<IGLContext> m_context;
  std::unique_ptr<FrameReader> m_reader;
};

/// Runs an example and writes its picture to the file named after --out.
/// @return the exit status
int RunExample(int argc, char** argv, Picture (*aExample)());
