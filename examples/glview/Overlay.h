// Overlay: what stands above a view: the rubber band, drawn as a gauge, which also makes the axes appear.
// The host's thread sets it; Draw runs on the context's draw thread.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <mutex>
#include <optional>

#include "glview/FrameClock.h"

/// A rectangle of a view, each coordinate from -1 at the left or lower edge to 1.
struct Band {
  GLDATA_POINT from, to;
};

class Overlay final : public GLViewerGaugeBase {
 public:
  /// @param aClock stopped at the end of the view; null for a view that isn't the last one drawn
  explicit Overlay(FrameClock* aClock);

  /// Shows a rubber band, or none.
  void SetBand(std::optional<Band> aBand);

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext) noexcept override;

 private:
  void DrawBand(IGLCanvas& aCanvas, const Band& aBand);

  FrameClock* m_clock;
  GLPtr<IGLDrawAttr> m_fill;
  GLPtr<IGLDrawAttr> m_edge;
  std::mutex m_lock;  // guards m_band
  std::optional<Band> m_band;
};
