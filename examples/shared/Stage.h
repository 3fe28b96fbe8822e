// Stage: a context with no display, whose picture goes to a file; the bare frame of a small example.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <memory>

#include "shared/FrameReader.h"
#include "shared/Picture.h"

class Stage {
 public:
  /// @throws std::runtime_error when there is no context to be had
  Stage(int aWidth, int aHeight);
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  IGLContext& Context() const { return *m_context; }

  /// Adds a perspective viewer.
  /// @param aEye   where it stands
  /// @param aPitch how far it looks down, in radians
  IGLViewer& AddViewer(const GLDATA_POINT& aEye, double aPitch) const;

  /// The picture of the moment. @throws std::runtime_error
  Picture Read() const;

 private:
  GLPtr<IGLContext> m_context;
  std::unique_ptr<FrameReader> m_reader;
};

/// Runs an example with the file name behind --out, and writes the picture that it gives there.
/// @return the exit status
int RunExample(int argc, char** argv, Picture (*aExample)());
