// GLContext: the fonts. Any thread creates fonts. The draw thread builds them: a font that is created in a
// pass at once, others in a posted task or in the next frame.

#include <gllib/GLClasses.h>
#include <gllib/IGLFont.h>

#include <new>

#include "component/CreateObject.h"
#include "component/Output.h"
#include "context/GLContext.h"
#include "context/control/ContextHold.h"
#include "context/control/PCreateFontEvent.h"
#include "media/GLFont.h"

namespace {

GLFont& FontOf(IGLFont* aFont) noexcept { return static_cast<GLFont&>(*aFont); }

}  // namespace

// Creates a font, adds it to the fonts of the context, and builds it now or by a task. aDescribe sets face,
// size and style; its failure is returned.
template <class Describe>
HRESULT GLContext::CreateFont(FontReference aReference, IGLFont** aFont, Describe aDescribe) noexcept {
  if (aFont == nullptr) return E_INVALIDARG;
  *aFont = nullptr;
  if (!m_Scene.m_pFonts) return E_GL_BADSTATE;
  GLPtr<IGLFont> font = CreateObject<IGLFont>(CLSID_GLFont);
  if (!font) return E_FAIL;
  if (const HRESULT described = aDescribe(FontOf(font.Get())); FAILED(described)) return described;
  {
    const ContextHold hold(*this, m_Lock);
    if (!hold) return E_GL_BADSTATE;
    if (FAILED(m_Scene.m_pFonts->Add(font.Get()))) return E_FAIL;
  }
  if (IsCurrentHere() && !IsListOpen()) {
    FontOf(font.Get()).EnsureLists(*this);
  } else {
    m_bFontsAdded = true;
    // If there is no draw thread, or no memory for the task, the next frame builds the font.
    if (DrawThread() != nullptr) PostTask(new (std::nothrow) PCreateFontEvent(*this, FontOf(font.Get())));
  }
  *aFont = font.Get();
  if (aReference == FontReference::kCounted) font.Detach();
  return S_OK;
}

HRESULT GLContext::CreateSystemFont(IGLFont** aFont) noexcept {
  return CreateFont(FontReference::kCounted, aFont, [&](GLFont& aNew) {
    aNew.InitSystemFont(m_pLink);
    return S_OK;
  });
}

HRESULT GLContext::CreateRasterFont(BSTR aFace, int aFontStyle, int aWeight, float aOrientation, int aHeight,
                                    int aWidth, IGLFont** aFont) noexcept {
  if (aFace == nullptr) return E_INVALIDARG;
  return CreateFont(FontReference::kBorrowed, aFont, [&](GLFont& aNew) {
    aNew.InitRasterFont(m_pLink, aFace, aFontStyle, aWeight, aOrientation, aHeight, aWidth);
    return S_OK;
  });
}

HRESULT GLContext::CreateTrueTypeFont(BSTR aFace, int aFontStyle, int aWeight, float aOrientation,
                                      LONG aExtrusionZ, IGLFont** aFont) noexcept {
  if (aFace == nullptr) return E_INVALIDARG;
  return CreateFont(FontReference::kBorrowed, aFont, [&](GLFont& aNew) {
    aNew.InitTrueTypeFont(m_pLink, aFace, aFontStyle, aWeight, aOrientation, aExtrusionZ != 0);
    return S_OK;
  });
}

HRESULT GLContext::CreateInternalFont(BSTR aFace, IGLFont** aFont) noexcept {
  if (aFace == nullptr) return E_INVALIDARG;
  return CreateFont(FontReference::kCounted, aFont,
                    [&](GLFont& aNew) { return aNew.InitInternalFont(m_pLink, aFace); });
}

bool GLContext::HasFont(IGLFont* aFont) noexcept {
  LONG has = 0;
  m_Scene.m_pFonts->Has(aFont, &has);
  return has != 0;
}

// Returns early if all fonts were visited since the last change of the list generation, and none was added.
void GLContext::BuildFonts() noexcept {
  if (!IsCurrentHere()) return;
  GLRenderTarget& target = GLPass::Here()->Target();
  const ULONG generation = target.m_Lists.Generation();
  const bool added = m_bFontsAdded.exchange(false);
  if (!added && target.m_uFontsGeneration == generation) return;
  target.m_uFontsGeneration = generation;
  GLPOSITION position{};
  GLPtr<IUnknown> member;
  for (m_Scene.m_pFonts->GetFirst(&position, member.Put()); member;
       m_Scene.m_pFonts->GetNext(&position, member.Put())) {
    FontOf(static_cast<IGLFont*>(member.Get())).EnsureLists(*this);
  }
}

HRESULT GLContext::DestroyFont(IGLFont* aFont) noexcept {
  if (aFont == nullptr) return E_INVALIDARG;
  if (!m_Scene.m_pFonts) return E_GL_BADSTATE;
  const ContextHold hold(*this, m_Lock);
  if (!hold) return E_GL_BADSTATE;
  if (m_Scene.m_pDefaultFont == aFont) m_Scene.m_pDefaultFont = nullptr;
  m_Scene.m_pFonts->Remove(aFont);
  return S_OK;
}

HRESULT GLContext::GetDefaultFont(IGLFont** aFont) noexcept {
  if (aFont == nullptr) return E_INVALIDARG;
  *aFont = nullptr;
  const ContextHold hold(*this, m_Lock);
  if (!hold) return E_GL_BADSTATE;
  return OutputObject(aFont, GLPtr<IGLFont>::FromBorrowed(m_Scene.m_pDefaultFont));
}

HRESULT GLContext::SetDefaultFont(IGLFont* aFont) noexcept {
  if (!m_Scene.m_pFonts) return E_GL_BADSTATE;
  const ContextHold hold(*this, m_Lock);
  if (!hold) return E_GL_BADSTATE;
  if (!HasFont(aFont)) return E_FAIL;  // null is not a member: the default font cannot be cleared
  m_Scene.m_pDefaultFont = aFont;
  return S_OK;
}

HRESULT GLContext::EnumFonts(IGLCollection* aColl) noexcept {
  if (aColl == nullptr) return E_INVALIDARG;
  return m_Scene.m_pFonts ? m_Scene.m_pFonts->CopyTo(aColl) : E_GL_BADSTATE;
}
