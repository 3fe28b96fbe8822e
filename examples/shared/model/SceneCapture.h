// SceneCapture: pictures of all views at a multiple of the window's size.
// The host's thread places the views and asks; the context's draw thread serves.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <future>
#include <mutex>
#include <optional>
#include <vector>

#include "shared/Picture.h"

class SceneCapture final : public GLCaptureBase {
 public:
  /// A viewer and its clip rectangle, in pixels of the window.
  struct Place {
    IGLViewer* viewer;  // borrowed, the context's
    int x, y, width, height;
  };

  /// Sends clip rectangles to the viewers, now and, larger by the zoom, for each picture: a capture enlarges
  /// all that is drawn, but a rectangle is in pixels whatever they show.
  void SetPlaces(std::vector<Place> aPlaces);

  /// Asks for a picture. One that was asked for earlier and hasn't come is given up.
  /// @param aZoom       times the window's size
  /// @param aBackground behind the model
  /// @return the picture to come; nothing when it can't be made, for its size or for lack of memory
  std::future<std::optional<Picture>> Take(int aZoom, const GLDATA_RGBA& aBackground);

  /// Whether what is drawn now is a picture. The draw thread's to ask.
  bool IsTaking() const { return m_taking; }

  HRESULT IsEnabled(LONG* aEnabled) noexcept override;
  HRESULT OnData(LONG aSuccess) noexcept override;

 private:
  void Zoom(int aZoom);
  /// With the lock held.
  void SendPlaces() const;

  GLPtr<IGLPixmap> m_pixmap = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  bool m_taking = false;  // the draw thread's
  std::mutex m_lock;      // guards what follows
  std::vector<Place> m_places;
  int m_zoom = 1;  // of the moment
  std::promise<std::optional<Picture>> m_result;
};
