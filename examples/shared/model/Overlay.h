// Overlay: what stands above a view: the rubber band and a line of text, drawn as a gauge, which also makes
// the axes appear. The host's thread sets it; Draw runs on the context's draw thread.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <mutex>
#include <optional>
#include <string>

#include "shared/model/FrameClock.h"

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

  /// Shows a line of text in the upper left corner, or none for an empty one.
  void SetLabel(const std::string& aText);

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext) noexcept override;

 private:
  void DrawBand(IGLCanvas& aCanvas, const Band& aBand);
  void DrawLabel(IGLCanvas& aCanvas, IGLContext& aContext, const GLString& aLabel);

  FrameClock* m_clock;
  GLPtr<IGLDrawAttr> m_fill;
  GLPtr<IGLDrawAttr> m_edge;
  GLPtr<IGLFont> m_font;  // made at the first label, on the draw thread
  std::mutex m_lock;      // guards m_band and m_label
  std::optional<Band> m_band;
  GLString m_label;
};
