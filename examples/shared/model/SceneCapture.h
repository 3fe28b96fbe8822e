// SceneCapture: a requested picture of a scene. The host's thread polls or waits for it.

#pragma once

#include <gllib/GLViewing.h>

#include <future>
#include <optional>

#include "shared/Picture.h"

class SceneCapture {
 public:
  /// Requests no picture.
  SceneCapture() = default;
  /// Requests a picture.
  /// @param aZoom       size of the picture relative to the window
  /// @param aBackground colour behind the model
  SceneCapture(GLViewing& aViewing, int aZoom, const GLDATA_RGBA& aBackground);

  /// Returns whether a requested picture has not been taken yet.
  bool IsPending() const { return m_taken.valid(); }
  /// Waits at most aPatience. @return whether Take would return at once
  bool IsReady(std::chrono::milliseconds aPatience) const {
    return m_taken.wait_for(aPatience) == std::future_status::ready;
  }
  /// Waits for the picture. @return no value if the capture fails, for example because memory is short
  std::optional<Picture> Take();

 private:
  GLPtr<IGLPixmap> m_pixmap;
  std::future<bool> m_taken;
};
