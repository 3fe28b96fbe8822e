// Overlay: what stands above a view: the rubber band, a line of text and a progress bar, drawn as a gauge,
// which also makes the axes appear. The host's thread sets it; Draw runs on the context's draw thread.

#pragma once

#include <gllib/GLViewing.h>

#include <mutex>
#include <optional>
#include <string>

#include "shared/model/FrameClock.h"
#include "shared/model/Progress.h"
#include "shared/model/Section.h"

/// A rectangle of a view, each coordinate from -1 at the left or lower edge to 1.
struct Band {
  GLDATA_POINT from, to;
};

class Overlay final : public GLViewerGaugeBase {
 public:
  /// @param aViewing asked how large a picture is
  /// @param aClock stopped at the end of the view; null for a view that isn't the last one drawn
  /// @param aProgress shown while there is any; null for a view that doesn't
  Overlay(GLPtr<GLViewing> aViewing, FrameClock* aClock, const Progress* aProgress);

  /// Shows a rubber band, or none.
  void SetBand(std::optional<Band> aBand);

  /// Shows a line of text in the upper left corner, or none for an empty one.
  void SetLabel(const std::string& aText);

  /// Shows the slider of a section, while that is on.
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
  GLRasterText m_text;  // the draw thread's
  std::mutex m_lock;    // guards what follows
  std::optional<Band> m_band;
  GLString m_label;
  Section m_section;
};
