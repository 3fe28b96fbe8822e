// SceneSettings: settings of a context that apply to all viewers. Host threads write, the draw thread reads.
// Each number is atomic; a colour or a size is not.

#pragma once

#include "thread/Relaxed.h"

struct SceneSettings {
  Relaxed<int> m_iViewportWidth = 1;  ///< pixels, at least 1
  Relaxed<int> m_iViewportHeight = 1;
  Relaxed<bool> m_bDepthEnabled = true;
  RelaxedColor m_sBackgroundColor{0.0f, 0.0f, 0.0f, 1.0f};
  Relaxed<bool> m_bLighting = true;
  Relaxed<bool> m_bAmbientLight = true;
  RelaxedColor m_sAmbientLight{0.2f, 0.2f, 0.2f, 1.0f};
};
