// GLFont: creation, settings and destruction of a font. Any thread. The draw thread deletes the GL objects;
// if a font is destroyed elsewhere, a task on the draw thread does it.

#include "media/GLFont.h"

#include <gllib/GLUtf8.h>

#include <algorithm>
#include <new>
#include <string_view>
#include <utility>

#include "component/Catalogue.h"
#include "component/Output.h"
#include "thread/PEvent.h"

namespace {

/// GL objects to delete after their font is destroyed.
struct FontRemains {
  ULONG m_uListKey;
  GLuint m_uTexture;
  ULONG m_uWindowContext;

  /// Deletes the objects that belong to the current rendering context. Lists of another context are already
  /// stale.
  void Delete(GLContextSite& aSite) noexcept {
    if (aSite.IsListKeyValid(m_uListKey)) aSite.DeleteListKey(m_uListKey, GLFont::kCodes);
    m_uListKey = 0;
    if (m_uTexture == 0 || aSite.WindowContextNumber() != m_uWindowContext) return;
    glDeleteTextures(1, &m_uTexture);
    m_uTexture = 0;
  }
  bool IsEmpty() const noexcept { return m_uListKey == 0 && m_uTexture == 0; }
};

/// Deletes a font's GL objects between two frames. The task is its own owner, not the context. So it remains
/// in the queue when the tasks of the context are removed.
class DeleteFontTask final : public PEvent {
 public:
  DeleteFontTask(GLSiteLinkPtr aLink, const FontRemains& aRemains) noexcept
      : PEvent(this, Lifetime::kOneRun), m_pLink(std::move(aLink)), m_Remains(aRemains) {}

  void Run() override {
    GLContextSite* site = nullptr;
    {
      const GLSiteLink::Use use(m_pLink.get());
      if (!use) return;  // the objects are destroyed with the rendering context
      site = &*use;
    }
    // The context outlives its draw thread, which runs this task. The link must be released before the
    // context's lock is taken.
    const GLSiteLock gl(*site);
    if (site->IsCurrentHere()) m_Remains.Delete(*site);
  }

 private:
  GLSiteLinkPtr m_pLink;
  FontRemains m_Remains;
};

std::basic_string_view<GLWCHAR> NameOf(const GLWCHAR* aFace) noexcept {
  return aFace != nullptr ? aFace : std::basic_string_view<GLWCHAR>();
}

constexpr GLWCHAR kSystem[] = {'S', 'y', 's', 't', 'e', 'm', 0};

}  // namespace

HRESULT CreateGLFont(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLFont>(aOuter, riid, ppv);
}

GLFont::~GLFont() {
  FontRemains remains{m_uListKey, m_uWindowTexture, m_uWindowContext};
  if (remains.IsEmpty()) return;
  const GLSiteLink::Use site(m_pContext.get());
  if (!site) return;
  if (site->IsCurrentHere()) remains.Delete(*site);
  if (!remains.IsEmpty()) site->PostTask(new (std::nothrow) DeleteFontTask(m_pContext, remains));
}

void GLFont::Describe(GLSiteLinkPtr aSite, const GLWCHAR* aFace) noexcept {
  m_pContext = std::move(aSite);
  const auto name = NameOf(aFace);
  std::size_t length = std::min(name.size(), kFaceRoom - 1);
  if (length < name.size() && GLUtf8::IsHighSurrogate(name[length - 1])) --length;
  m_szFace[name.copy(m_szFace, length)] = 0;
}

void GLFont::InitSystemFont(GLSiteLinkPtr aSite) noexcept { Describe(std::move(aSite), kSystem); }

void GLFont::InitRasterFont(GLSiteLinkPtr aSite, const GLWCHAR* aFace, int aStyle, int aWeight,
                            float aOrientation, int aHeight, int aWidth) noexcept {
  Describe(std::move(aSite), aFace);
  m_iStyle = aStyle;
  m_iWeight = aWeight;
  m_fOrientation = aOrientation;
  m_fHeight = static_cast<float>(aHeight);
  m_fWidth = static_cast<float>(aWidth);
  m_bAverageWidth = aWidth == 0;
}

void GLFont::InitTrueTypeFont(GLSiteLinkPtr aSite, const GLWCHAR* aFace, int aStyle, int aWeight,
                              float aOrientation, bool aExtruded) noexcept {
  Describe(std::move(aSite), aFace);
  m_bTrueType = true;
  m_iStyle = aStyle;
  m_iWeight = aWeight;
  m_fOrientation = aOrientation;
  m_fExtrusionZ = aExtruded ? 1.0f : 0.0f;
}

HRESULT GLFont::InitInternalFont(GLSiteLinkPtr aSite, const GLWCHAR* aFace) noexcept {
  if (NameOf(aFace).size() >= kFaceRoom) return E_INVALIDARG;
  Describe(std::move(aSite), aFace);
  m_bInternal = true;
  return S_OK;
}

bool GLFont::IsSystem() const noexcept { return NameOf(m_szFace) == kSystem; }

HRESULT GLFont::IsTrueType(LONG* aTrueType) noexcept { return Output(aTrueType, m_bTrueType); }

HRESULT GLFont::GetFace(BSTR* aFace) noexcept {
  if (aFace == nullptr) return E_INVALIDARG;
  *aFace = SysAllocString(m_szFace);
  return *aFace != nullptr ? S_OK : E_OUTOFMEMORY;
}

HRESULT GLFont::GetStyle(int* aStyle) noexcept { return Output(aStyle, m_iStyle); }
HRESULT GLFont::GetWeight(int* aWeight) noexcept { return Output(aWeight, m_iWeight); }
HRESULT GLFont::GetOrientation(float* aOrientation) noexcept { return Output(aOrientation, m_fOrientation); }
HRESULT GLFont::GetWidth(float* aValue) noexcept { return Output(aValue, m_fWidth); }
HRESULT GLFont::GetHeight(float* aValue) noexcept { return Output(aValue, m_fHeight); }
HRESULT GLFont::GetExtrusionZ(float* aValue) noexcept { return Output(aValue, m_fExtrusionZ); }
HRESULT GLFont::GetEscapement_DEG(float* aValue) noexcept { return Output(aValue, m_fEscapement); }

// The comparisons are written this way to reject NaN.
HRESULT GLFont::SetWidth(float aValue) noexcept {
  if (!m_bTrueType) return E_GL_BADSTATE;
  if (!(aValue > 0.0f)) return E_GL_BADVALUE;
  m_fWidth = aValue;
  return S_OK;
}

HRESULT GLFont::SetHeight(float aValue) noexcept {
  if (!m_bTrueType) return E_GL_BADSTATE;
  if (!(aValue > 0.0f)) return E_GL_BADVALUE;
  m_fHeight = aValue;
  return S_OK;
}

HRESULT GLFont::SetExtrusionZ(float aValue) noexcept {
  if (!m_bTrueType) return E_GL_BADSTATE;
  if (!(aValue >= 0.0f)) return E_GL_BADVALUE;
  m_fExtrusionZ = aValue;
  return S_OK;
}

HRESULT GLFont::SetEscapement_DEG(float aValue) noexcept {
  if (!IsPlacedByMatrix()) return E_GL_BADSTATE;
  m_fEscapement = aValue;
  return S_OK;
}
