// SceneMembers: the objects of a context's scene. Created with the context and released at its end. In
// between, any thread may use each of them.

#pragma once

#include <gllib/GLPtr.h>
#include <gllib/IGLCanvas.h>
#include <gllib/IGLCollection.h>
#include <gllib/IGLFog.h>
#include <gllib/IGLFont.h>

struct SceneMembers {
  /// Returns whether all objects could be created.
  bool IsComplete() const noexcept { return m_pCanvas && m_pFog && m_pViewers && m_pLights && m_pFonts; }

  GLPtr<IGLCanvas> m_pCanvas;
  GLPtr<IGLFog> m_pFog;
  GLPtr<IGLCollection> m_pViewers;
  GLPtr<IGLCollection> m_pLights;
  GLPtr<IGLCollection> m_pFonts;
  IGLFont* m_pDefaultFont = nullptr;  ///< one of the fonts, not counted; guarded by the context's lock
};
