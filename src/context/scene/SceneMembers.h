// SceneMembers: the objects that a context is drawn with. Made with the context and released at its end; in
// between each is safe to use on any thread.

#pragma once

#include <gllib/GLPtr.h>
#include <gllib/IGLCanvas.h>
#include <gllib/IGLCollection.h>
#include <gllib/IGLFog.h>
#include <gllib/IGLFont.h>

struct SceneMembers {
  /// Whether there was memory for all of them.
  bool IsComplete() const noexcept { return m_pCanvas && m_pFog && m_pViewers && m_pLights && m_pFonts; }

  GLPtr<IGLCanvas> m_pCanvas;
  GLPtr<IGLFog> m_pFog;
  GLPtr<IGLCollection> m_pViewers;
  GLPtr<IGLCollection> m_pLights;
  GLPtr<IGLCollection> m_pFonts;
  IGLFont* m_pDefaultFont = nullptr;  ///< one of the fonts, not counted; guarded by the context's lock
};
