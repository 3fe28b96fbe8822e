// FrameReader: reads whole pictures of a context back, with the overlays of all its viewers.
// Made and asked by a host thread; reads on the context's draw thread.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include "shared/Picture.h"

class FrameReader {
 public:
  /// Takes a viewer of its own, off the window's edge. Must be made before the viewers that it is to show:
  /// of up to ten viewers the first is drawn last.
  explicit FrameReader(IGLContext& aContext);
  ~FrameReader();
  FrameReader(const FrameReader&) = delete;
  FrameReader& operator=(const FrameReader&) = delete;

  /// Reads the picture as it stands once everything has been set up.
  /// @return false when no frame came in time
  bool Read(Picture& aPicture);

 private:
  class Gauge;
  IGLContext& m_context;
  IGLViewer* m_viewer = nullptr;  // borrowed, the context's
  GLPtr<Gauge> m_gauge;
};
