// Overlay: a gauge that draws the rubber band, a line of text, a progress bar and the section's slider over a
// view. A viewer draws its axes figure only if it draws a gauge or a clip frame. The host's thread changes
// the overlay; Draw runs on the context's draw thread.

#pragma once

#include <gllib/GLViewing.h>

#include <mutex>
#include <optional>
#include <string>

#include "shared/model/FrameClock.h"
#include "shared/model/Progress.h"
#include "shared/model/Section.h"

/// A rectangle in a view. Each coordinate runs from -1 at the left or lower edge to 1.
struct Band {
  GLDATA_POINT from, to;
};

class Overlay final : public GLViewerGaugeBase {
 public:
  /// @param aViewing returns the scale of the running pass
  /// @param aClock stopped at the end of the view; null if the view is not the last one drawn
  /// @param aProgress shown while it is active; null for a view without a bar
  Overlay(GLPtr<GLViewing> aViewing, FrameClock* aClock, const Progress* aProgress);

  /// Shows a rubber band; no value hides it.
  void SetBand(std::optional<Band> aBand);

  /// Shows a line of text in the upper left corner; an empty text hides it.
  void SetLabel(const std::string& aText);

  /// Shows the slider of a section while the section is active.
  void SetSection(const Section& aSection);

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext) noexcept override;

 private:
  void DrawBand(IGLCanvas& aCanvas, const Band& aBand);
  void DrawLabel(IGLContext& aContext, const GLString& aLabel, const GLDATA_POINT& aPlace);
  void DrawSlider(const Section& aSection);
  void DrawProgress(IGLCanvas& aCanvas, IGLContext& aContext);

  const GLPtr<GLViewing> m_viewing;
  FrameClock* m_clock;
  const Progress* m_progress;
  GLPtr<IGLDrawAttr> m_fill;
  GLPtr<IGLDrawAttr> m_edge;
  GLPtr<IGLDrawAttr> m_bar;
  GLRasterText m_text;  // draw thread only
  std::mutex m_lock;    // guards the members below
  std::optional<Band> m_band;
  GLString m_label;
  Section m_section;
};
