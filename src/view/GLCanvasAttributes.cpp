// GLCanvas: translates draw attributes and materials to GL state. Draw thread.
// GL keeps the values until they are set again. The order of the calls is part of the contract.

#include <utility>

#include "component/Output.h"
#include "diagnostics/GLErrorCheck.h"
#include "platform/GL.h"
#include "state/GLDrawAttr.h"
#include "view/GLCanvas.h"
#include "view/lists/ListRecorder.h"

namespace {

void Switch(GLenum aCapability, bool aOn) noexcept {
  if (aOn) {
    glEnable(aCapability);
  } else {
    glDisable(aCapability);
  }
}

/// Lines have priority over points, and points over filling.
std::uint16_t PolygonMode(bool aLines, bool aPoints) noexcept {
  return aLines ? GL_LINE : aPoints ? GL_POINT : GL_FILL;
}

/// Enabling one kind of offset does not disable the other. If neither bit is set, both are disabled.
void ApplyPolygonOffset(bool aOffset, bool aReverse) noexcept {
  if (aReverse) {
    glEnable(GL_POLYGON_OFFSET_LINE);
    glPolygonOffset(-1.0f, 0.0f);
  } else if (aOffset) {
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1.0f, 0.0f);
  } else {
    glDisable(GL_POLYGON_OFFSET_LINE);
    glDisable(GL_POLYGON_OFFSET_FILL);
  }
}

/// Culls front faces only if back faces are requested and front faces are not.
void ApplyCulling(bool aShowFront, bool aShowBack, HitState& aState) noexcept {
  if (aShowFront && aShowBack) {
    glDisable(GL_CULL_FACE);
    aState.m_uCulling = HitState::kOff;
    return;
  }
  glEnable(GL_CULL_FACE);
  aState.m_uCulling = GL_CULL_FACE;
  aState.m_uCullFace = aShowBack ? GL_FRONT : GL_BACK;
  glCullFace(aState.m_uCullFace);
}

/// Applies a draw mode. Returns the part of the state that decides about hits.
HitState ApplyMode(int aMode) noexcept {
  const auto has = [aMode](eGLDrawMode aBit) { return (aMode & aBit) != 0; };
  HitState state;
  state.m_uFrontFace = GL_CCW;
  state.m_uFrontMode = PolygonMode(has(GLDM_LINE_FRONT), has(GLDM_POINT_FRONT));
  state.m_uBackMode = PolygonMode(has(GLDM_LINE_BACK), has(GLDM_POINT_BACK));
  glFrontFace(GL_CCW);
  glShadeModel(has(GLDM_SMOOTH_LIGHTING) ? GL_SMOOTH : GL_FLAT);
  glPolygonMode(GL_FRONT, state.m_uFrontMode);
  glPolygonMode(GL_BACK, state.m_uBackMode);
  Switch(GL_LINE_SMOOTH, has(GLDM_SMOOTH_LINE));
  Switch(GL_POINT_SMOOTH, has(GLDM_SMOOTH_POINT));
  ApplyPolygonOffset(has(GLDM_POLYGON_OFFSET), has(GLDM_POLYGON_OFFSET_REVERSE));
  ApplyCulling(has(GLDM_SHOW_FRONT), has(GLDM_SHOW_BACK), state);
  return state;
}

void ApplyStipple(const GLDrawAttr& aAttributes) noexcept {
  constexpr std::uint16_t kSolid = 0xFFFF;
  const std::uint16_t pattern = aAttributes.LineStipplePattern();
  if (pattern == kSolid) {
    glDisable(GL_LINE_STIPPLE);
    return;
  }
  glEnable(GL_LINE_STIPPLE);
  glLineStipple(aAttributes.LineStippleFactor(), pattern);
}

void ApplyColor(const GLDATA_RGBA& aColor) noexcept {
  glColor4f(aColor.m_fRed, aColor.m_fGreen, aColor.m_fBlue, aColor.m_fAlpha);
}

void ApplyFace(IGLMaterial& aMaterial, GLenum aFace) noexcept {
  constexpr float kShininessToGL = 128.0f;
  const LONG front = aFace == GL_FRONT ? 1 : 0;
  GLDATA_RGBA color{};
  float shininess = 0.0f;
  aMaterial.GetAmbientReflectance(front, &color);
  glMaterialfv(aFace, GL_AMBIENT, &color.m_fRed);
  aMaterial.GetDiffuseReflectance(front, &color);
  glMaterialfv(aFace, GL_DIFFUSE, &color.m_fRed);
  aMaterial.GetSpecularReflectance(front, &color);
  glMaterialfv(aFace, GL_SPECULAR, &color.m_fRed);
  aMaterial.GetEmissionLight(front, &color);
  glMaterialfv(aFace, GL_EMISSION, &color.m_fRed);
  aMaterial.GetShininess(front, &shininess);
  glMaterialf(aFace, GL_SHININESS, shininess * kShininessToGL);
}

/// Stores a reference to the applied object. An object that is already stored is not counted again.
template <class Interface>
void Remember(GLPtr<Interface>& aCurrent, Interface* aApplied) noexcept {
  if (aCurrent.Get() != aApplied) aCurrent = GLPtr<Interface>::FromBorrowed(aApplied);
}

}  // namespace

void GLCanvas::NoteRenderingContext(ULONG aNumber) noexcept {
  if (std::exchange(m_uRenderingContext, aNumber) != aNumber) m_uAppliedVersion = 0;
}

HRESULT GLCanvas::SetDrawAttributes(IGLDrawAttr* aI) noexcept {
  const GLErrorCheck check("IGLCanvas::SetDrawAttributes");
  if (aI == nullptr) return E_INVALIDARG;
  auto& attributes = static_cast<GLDrawAttr&>(*aI);    // always an object of the component's class
  const std::uint32_t version = attributes.Version();  // read before the values, to detect later changes
  if (aI == m_pCurrentDrawAttr.Get() && version == m_uAppliedVersion) {
    ApplyColor(attributes.Color());
    return S_OK;
  }

  const HitState state = ApplyMode(attributes.DrawMode());
  glPointSize(attributes.PointSize());
  ApplyStipple(attributes);
  glLineWidth(attributes.LineWidth());
  ApplyColor(attributes.Color());
  if (m_pRecorder != nullptr) m_pRecorder->State(state);

  m_uAppliedVersion = version;
  Remember(m_pCurrentDrawAttr, aI);
  return S_OK;
}

HRESULT GLCanvas::SetMaterial(IGLMaterial* aMaterial) noexcept {
  if (aMaterial == nullptr) return E_INVALIDARG;
  int mode = 0;
  aMaterial->GetDrawMode(&mode);
  const bool front = (mode & GLMM_ENABLE_FRONT) != 0;
  const bool back = (mode & GLMM_ENABLE_BACK) != 0;
  if (!front && !back) return S_OK;

  if (front) ApplyFace(*aMaterial, GL_FRONT);
  if (back) ApplyFace(*aMaterial, GL_BACK);
  if (glIsEnabled(GL_LIGHTING)) {
    glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, (mode & GLMM_LIGHT_MODEL_LOCAL_VIEWER) != 0 ? 1 : 0);
    if (back) glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, (mode & GLMM_LIGHT_MODEL_TWO_SIDE) != 0 ? 1 : 0);
  }
  Remember(m_pCurrentMaterial, aMaterial);
  return S_OK;
}

HRESULT GLCanvas::GetDrawAttributes(IGLDrawAttr** aI) noexcept {
  return OutputObject(aI, m_pCurrentDrawAttr);
}

HRESULT GLCanvas::GetMaterial(IGLMaterial** aMaterial) noexcept {
  return OutputObject(aMaterial, m_pCurrentMaterial);
}
