// ModelPainter: draws the model into every viewer. The host's thread changes the settings; Draw runs on the
// context's draw thread.

#pragma once

#include <gllib/GLViewing.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "shared/model/FrameClock.h"
#include "shared/model/Measuring.h"
#include "shared/model/Model.h"
#include "shared/model/ModelLists.h"
#include "shared/model/Progress.h"
#include "shared/model/SceneOptions.h"

class ModelPainter final : public GLPainterBase {
 public:
  /// @param aClock    started when a frame begins to draw the model; must outlive the painter
  /// @param aProgress receives the progress of compiling a large model; must outlive the painter
  /// @param aMeasure  drawn over the model; must outlive the painter
  /// @param aViewing  returns the kind of the running pass
  ModelPainter(FrameClock& aClock, Progress& aProgress, Measuring& aMeasure, GLPtr<GLViewing> aViewing);

  /// Sets the model to draw from the next frame on, with no part marked.
  void SetModel(std::shared_ptr<const Model> aModel);
  /// Allows frames that show the compiled part of a large model while the rest is compiled.
  void CompileInSteps() { m_stepwise = true; }
  void SetShade(Shade aShade);
  /// Shows the images of surfaces, or only their colours.
  void SetTextures(bool aOn);
  /// Cuts the model by a section plane.
  void SetSection(const Section& aSection);
  /// Draws these parts in the mark colour.
  void SetMarked(const std::vector<ULONG>& aIds);

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer* aViewer) noexcept override;

 private:
  /// Settings that the host's thread may change at any time.
  struct Look {
    Shade shade = Shade::Shaded;
    bool textures = true;
    Section section;
    std::vector<bool> marked;  // index: identifier
  };
  /// A transparent triangle and its part.
  struct Pane {
    GLDATA_TRANS_TRIANGLE triangle;
    const Part* part;
  };
  /// A model with the data derived from it.
  struct Shown {
    explicit Shown(std::shared_ptr<const Model> aModel) : model(std::move(aModel)), lists(*model) {}
    const std::shared_ptr<const Model> model;
    ModelLists lists;
    std::vector<Pane> panes;
    std::vector<Pane*> order;  // panes, farthest first
  };

  /// Enables the section plane, in the painter's coordinates.
  void Cut(const Look& aLook) const;
  void DrawModel(IGLCanvas& aCanvas, IGLContext& aContext, IGLViewer& aViewer, const Look& aLook);
  /// Returns the current settings, and switches to a new model if one is set.
  Look TakeLook(IGLCanvas& aCanvas);
  void Prepare(IGLCanvas& aCanvas, IGLContext& aContext, GLPassKind aPass);
  void StoreTransparent(IGLCanvas& aCanvas);
  void DrawForPicking(IGLCanvas& aCanvas);
  void DrawShaded(IGLCanvas& aCanvas, IGLContext& aContext, const Look& aLook);
  void DrawTransparent(IGLCanvas& aCanvas, IGLViewer& aViewer, const Look& aLook);
  void DrawHiddenLine(IGLCanvas& aCanvas, IGLContext& aContext, const Look& aLook);
  void DrawUnlit(IGLCanvas& aCanvas, const Look& aLook);
  void DrawPoints(IGLCanvas& aCanvas, const Look& aLook);
  /// Draws a part's list with the part's image, in the current colour.
  void DrawTextured(IGLCanvas& aCanvas, IGLContext& aContext, const Part& aPart);
  /// Applies a mode with a colour. Sends all attributes to GL each time, because overlays change GL's state.
  void ApplyMode(IGLCanvas& aCanvas, int aMode, const GLDATA_RGBA& aColor);

  FrameClock& m_clock;
  Progress& m_progress;
  Measuring& m_measure;
  const GLPtr<GLViewing> m_viewing;
  std::atomic<bool> m_stepwise{false};
  std::mutex m_lock;  // guards m_look and m_next
  Look m_look;
  std::unique_ptr<Shown> m_next;   // set by SetModel, taken by the next frame
  std::unique_ptr<Shown> m_shown;  // draw thread only
  GLPtr<IGLDrawAttr> m_mode;
};
