// ModelPainter: draws the model into every viewer, in the way of the moment.
// The host's thread sets how; Draw runs on the context's draw thread.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <mutex>
#include <vector>

#include "shared/model/FrameClock.h"
#include "shared/model/Model.h"
#include "shared/model/SceneOptions.h"

class ModelPainter final : public GLPainterBase {
 public:
  /// @param aModel  must outlive the painter
  /// @param aClock  told when a frame begins; must outlive the painter
  ModelPainter(const Model& aModel, FrameClock& aClock);

  void SetShade(Shade aShade);
  /// Shows the images of surfaces, or their colours alone.
  void SetTextures(bool aOn);
  /// Draws these parts in the colour of what is picked.
  void SetMarked(const std::vector<ULONG>& aIds);

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer* aViewer) noexcept override;

 private:
  /// What the host's thread may change at any moment.
  struct Look {
    Shade shade = Shade::Shaded;
    bool textures = true;
    std::vector<bool> marked;  // by identifier
  };
  /// A part as the rendering context has it.
  struct Compiled {
    int plain = 0;    // key of a list without colours
    int colored = 0;  // the same with the part's own, where it has any
    GLPtr<IGLMaterial> material;
    GLPtr<IGLTexture2D> texture;  // null when the part has no image
  };
  /// A triangle that is seen through, and whose it is.
  struct Pane {
    GLDATA_TRANS_TRIANGLE triangle;
    const Part* part;
  };

  void Compile(IGLCanvas& aCanvas);
  void StoreTransparent(IGLCanvas& aCanvas);
  void DrawForPicking(IGLCanvas& aCanvas);
  void DrawShaded(IGLCanvas& aCanvas, IGLContext& aContext, const Look& aLook);
  void DrawTransparent(IGLCanvas& aCanvas, IGLViewer& aViewer, const Look& aLook);
  void DrawHiddenLine(IGLCanvas& aCanvas, IGLContext& aContext, const Look& aLook);
  void DrawUnlit(IGLCanvas& aCanvas, const Look& aLook);
  void DrawPoints(IGLCanvas& aCanvas, const Look& aLook);
  /// Draws a part's list, in its own colours or in the one that is set.
  void DrawPart(IGLCanvas& aCanvas, const Part& aPart, bool aColored);
  /// Draws a part's list with the part's image on it, in the colour that is set.
  void DrawTextured(IGLCanvas& aCanvas, IGLContext& aContext, const Part& aPart);
  /// Applies a mode with a colour; always in full, since overlays leave other state behind.
  void ApplyMode(IGLCanvas& aCanvas, int aMode, const GLDATA_RGBA& aColor);

  const Model& m_model;
  FrameClock& m_clock;
  std::mutex m_lock;  // guards m_look
  Look m_look;
  std::vector<Compiled> m_compiled;  // by identifier less 1
  std::vector<Pane> m_panes;
  std::vector<Pane*> m_order;  // of the panes, farthest first
  GLPtr<IGLDrawAttr> m_mode;
};
