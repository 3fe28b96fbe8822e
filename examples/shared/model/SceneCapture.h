// SceneCapture: a picture of a scene that has been asked for. The host's thread asks whether it is there.

#pragma once

#include <gllib/GLViewing.h>

#include <future>
#include <optional>

#include "shared/Picture.h"

class SceneCapture {
 public:
  /// None is asked for.
  SceneCapture() = default;
  /// Asks for one.
  /// @param aZoom       times the window's size
  /// @param aBackground behind the model
  SceneCapture(GLViewing& aViewing, int aZoom, const GLDATA_RGBA& aBackground);

  /// Whether one is asked for that has not been taken yet.
  bool IsAsked() const { return m_taken.valid(); }
  /// Waits. @return whether Take would not wait any more
  bool IsThere(std::chrono::milliseconds aPatience) const {
    return m_taken.wait_for(aPatience) == std::future_status::ready;
  }
  /// Waits for the picture. @return nothing when it can't be made, for its size or for lack of memory
  std::optional<Picture> Take();

 private:
  GLPtr<IGLPixmap> m_pixmap;
  std::future<bool> m_taken;
};
