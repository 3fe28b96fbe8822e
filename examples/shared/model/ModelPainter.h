// ModelPainter: draws the model into every viewer, in the way of the moment.
// The host's thread sets how; Draw runs on the context's draw thread.

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
  /// @param aClock    told when a frame begins; must outlive the painter
  /// @param aProgress told how far the lists of a large model are; must outlive the painter
  /// @param aMeasure  drawn over the model; must outlive the painter
  /// @param aViewing  asked what pass it is: a picture is to show all of the model
  ModelPainter(FrameClock& aClock, Progress& aProgress, Measuring& aMeasure, GLPtr<GLViewing> aViewing);

  /// Draws another model from the next frame on; nothing of it is marked.
  void SetModel(std::shared_ptr<const Model> aModel);
  /// Lets frames be drawn while a large model is still being compiled, of what is there already.
  void SetStepwise(bool aOn) { m_stepwise = aOn; }
  void SetShade(Shade aShade);
  /// Shows the images of surfaces, or their colours alone.
  void SetTextures(bool aOn);
  /// Cuts the model open.
  void SetSection(const Section& aSection);
  /// Draws these parts in the colour of what is picked.
  void SetMarked(const std::vector<ULONG>& aIds);

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer* aViewer) noexcept override;

 private:
  /// What the host's thread may change at any moment.
  struct Look {
    Shade shade = Shade::Shaded;
    bool textures = true;
    Section section;
    std::vector<bool> marked;  // by identifier
  };
  /// A triangle that is seen through, and whose it is.
  struct Pane {
    GLDATA_TRANS_TRIANGLE triangle;
    const Part* part;
  };
  /// A model with what is made of it.
  struct Shown {
    explicit Shown(std::shared_ptr<const Model> aModel) : model(std::move(aModel)), lists(*model) {}
    const std::shared_ptr<const Model> model;
    ModelLists lists;
    std::vector<Pane> panes;
    std::vector<Pane*> order;  // of the panes, farthest first
  };

  /// Switches the section's plane on, in the painter's coordinates.
  void Cut(const Look& aLook) const;
  void DrawModel(IGLCanvas& aCanvas, IGLContext& aContext, IGLViewer& aViewer, const Look& aLook);
  /// Takes what the host's thread has set, another model too.
  Look TakeLook(IGLCanvas& aCanvas);
  void Prepare(IGLCanvas& aCanvas, IGLContext& aContext, GLPassKind aPass);
  void StoreTransparent(IGLCanvas& aCanvas);
  void DrawForPicking(IGLCanvas& aCanvas);
  void DrawShaded(IGLCanvas& aCanvas, IGLContext& aContext, const Look& aLook);
  void DrawTransparent(IGLCanvas& aCanvas, IGLViewer& aViewer, const Look& aLook);
  void DrawHiddenLine(IGLCanvas& aCanvas, IGLContext& aContext, const Look& aLook);
  void DrawUnlit(IGLCanvas& aCanvas, const Look& aLook);
  void DrawPoints(IGLCanvas& aCanvas, const Look& aLook);
  /// Draws a part's list with the part's image on it, in the colour that is set.
  void DrawTextured(IGLCanvas& aCanvas, IGLContext& aContext, const Part& aPart);
  /// Applies a mode with a colour; always in full, since overlays leave other state behind.
  void ApplyMode(IGLCanvas& aCanvas, int aMode, const GLDATA_RGBA& aColor);

  FrameClock& m_clock;
  Progress& m_progress;
  Measuring& m_measure;
  const GLPtr<GLViewing> m_viewing;
  std::atomic<bool> m_stepwise{false};
  std::mutex m_lock;  // guards what the host's thread sets
  Look m_look;
  std::unique_ptr<Shown> m_next;   // from SetModel to the next frame
  std::unique_ptr<Shown> m_shown;  // the draw thread's
  GLPtr<IGLDrawAttr> m_mode;
};
