// FrameReader: reads complete pictures of a context, with the overlays of all its viewers. A host thread
// creates and calls it; the context's draw thread reads the pixels.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include "shared/Picture.h"

class FrameReader {
 public:
  /// Creates a viewer outside the window. Construct the reader before the viewers that it should show: up to
  /// ten viewers are drawn in reverse order of creation.
  explicit FrameReader(IGLContext& aContext);
  ~FrameReader();
  FrameReader(const FrameReader&) = delete;
  FrameReader& operator=(const FrameReader&) = delete;

  /// Waits until fonts and other objects are built, and reads a frame that the draw thread draws after that.
  /// @return false if there is no such frame within two minutes
  bool Read(Picture& aPicture);

 private:
  class Gauge;
  IGLContext& m_context;
  IGLViewer* m_viewer = nullptr;  // borrowed: the context owns it
  GLPtr<Gauge> m_gauge;
};
