// GLLight: the operations. Any thread. Each operation rejects, clamps or maps values out of range.

#include "state/GLLight.h"

#include <gllib/GLClasses.h>

#include <cmath>
#include <limits>
#include <utility>

#include "component/Catalogue.h"
#include "component/CreateObject.h"
#include "component/Output.h"
#include "component/Values.h"
#include "geometry/GPoint.h"

HRESULT CreateGLLight(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLLight>(aOuter, riid, ppv);
}

namespace {

constexpr double kDegrees = 57.29577951308;
constexpr float kUnlimited = std::numeric_limits<float>::infinity();

/// Returns whether the vector has a direction: it is not zero and has no NaN component.
bool IsVector(const GLDATA_POINT& aVector) noexcept {
  return !(aVector.x == 0.0 && aVector.y == 0.0 && aVector.z == 0.0) && !std::isnan(aVector.x) &&
         !std::isnan(aVector.y) && !std::isnan(aVector.z);
}

}  // namespace

GLLight::GLLight() : m_pCoord(CreateObject<IGLCoord>(CLSID_GLCoord)) {
  if (!m_pCoord) throw std::bad_alloc();
}

GLLight::~GLLight() { LightNumbers::Free(m_iLightNumber); }

HRESULT GLLight::Enable(LONG aEnable) noexcept {
  m_bEnabled = aEnable != 0;
  return S_OK;
}
HRESULT GLLight::IsEnabled(LONG* aEnabled) noexcept { return Output(aEnabled, m_bEnabled); }

HRESULT GLLight::SetAsSpotlight(LONG aSet) noexcept {
  m_bSpotlight = aSet != 0;
  return S_OK;
}
HRESULT GLLight::IsSpotlight(LONG* aSpotlight) noexcept { return Output(aSpotlight, m_bSpotlight); }

HRESULT GLLight::GetAmbientLight(GLDATA_RGBA* aLight) noexcept { return Output(aLight, m_sAmbient); }
HRESULT GLLight::SetAmbientLight(GLDATA_RGBA* aLight) noexcept { return TakeOpaque(m_sAmbient, aLight); }
HRESULT GLLight::GetDiffuseLight(GLDATA_RGBA* aLight) noexcept { return Output(aLight, m_sDiffuse); }
HRESULT GLLight::SetDiffuseLight(GLDATA_RGBA* aLight) noexcept { return TakeOpaque(m_sDiffuse, aLight); }
HRESULT GLLight::GetSpecularLight(GLDATA_RGBA* aLight) noexcept { return Output(aLight, m_sSpecular); }
HRESULT GLLight::SetSpecularLight(GLDATA_RGBA* aLight) noexcept { return TakeOpaque(m_sSpecular, aLight); }

HRESULT GLLight::GetSpotPosition(GLDATA_POINT* aVector) noexcept {
  return Output(aVector, m_SpotPosition.Load());
}

HRESULT GLLight::SetSpotPosition(GLDATA_POINT* aVector) noexcept {
  if (aVector == nullptr) return E_INVALIDARG;
  if (!IsVector(*aVector)) return E_GL_BADVALUE;
  m_SpotPosition.Store(*aVector);
  return S_OK;
}

HRESULT GLLight::GetCutOffAngle_DEG(float* aAngle) noexcept { return Output(aAngle, m_fCutOff); }

HRESULT GLLight::SetCutOffAngle_DEG(float aAngle) noexcept {
  const float angle = std::fabs(aAngle);
  m_fCutOff = angle <= 90.0f ? angle : 180.0f;  // written this way to map NaN to 180
  return S_OK;
}

HRESULT GLLight::GetSpotExponent(float* aExponent) noexcept { return Output(aExponent, m_fSpotExponent); }

HRESULT GLLight::SetSpotExponent(float aExponent) noexcept {
  m_fSpotExponent = Limit(aExponent, 0.0f, 128.0f);
  return S_OK;
}

HRESULT GLLight::GetConstantAttenuation(float* aAtt) noexcept { return Output(aAtt, m_fConstantAttenuation); }

HRESULT GLLight::SetConstantAttenuation(float aAtt) noexcept {
  if (!(aAtt > 0.0f)) return E_GL_BADVALUE;  // written this way to reject NaN
  m_fConstantAttenuation = aAtt;
  return S_OK;
}

HRESULT GLLight::GetLinearAttenuation(float* aAtt) noexcept { return Output(aAtt, m_fLinearAttenuation); }

HRESULT GLLight::SetLinearAttenuation(float aAtt) noexcept {
  m_fLinearAttenuation = Limit(aAtt, 0.0f, kUnlimited);
  return S_OK;
}

HRESULT GLLight::GetQuadraticAttenuation(float* aAtt) noexcept {
  return Output(aAtt, m_fQuadraticAttenuation);
}

HRESULT GLLight::SetQuadraticAttenuation(float aAtt) noexcept {
  m_fQuadraticAttenuation = Limit(aAtt, 0.0f, kUnlimited);
  return S_OK;
}

/// Returns the coordinate system with a reference, since another thread may attach another one.
GLPtr<IGLCoord> GLLight::Coord() noexcept {
  const PLock lock(m_CoordLock);
  return m_pCoord;
}

HRESULT GLLight::GetCoord(IGLCoord** aCS) noexcept { return OutputObject(aCS, Coord()); }

HRESULT GLLight::AttachCoord(IGLCoord* aCS) noexcept {
  if (aCS == nullptr) return E_INVALIDARG;
  auto coord = GLPtr<IGLCoord>::FromBorrowed(aCS);
  const PLock lock(m_CoordLock);
  std::swap(m_pCoord, coord);
  return S_OK;
}

HRESULT GLLight::GetDirection(GLDATA_POINT* aVector) noexcept {
  return Output(aVector, m_Direction.Load().m_sVector);
}

/// Stores the direction and the rotation from the +z axis to the direction that the light comes from. The
/// rotation is computed from a scaled vector, to avoid overflow. A vector with infinite components is
/// rejected.
HRESULT GLLight::SetDirection(GLDATA_POINT* aVector) noexcept {
  if (aVector == nullptr) return E_INVALIDARG;
  if (!IsVector(*aVector) || std::isinf(aVector->x) || std::isinf(aVector->y) || std::isinf(aVector->z))
    return E_GL_BADVALUE;
  const double largest =
      std::fmax(std::fabs(aVector->x), std::fmax(std::fabs(aVector->y), std::fabs(aVector->z)));
  const GPoint zAxis(0.0, 0.0, 1.0);
  const GPoint from(-aVector->x / largest, -aVector->y / largest, -aVector->z / largest);
  const GPoint axis = zAxis.Cross(from);
  const double length = axis.Length();
  if (length > 1e-12) {  // GL rejects very short axes, so the axis gets length 1
    m_Direction.Store(
        {*aVector, {axis.x / length, axis.y / length, axis.z / length}, zAxis.Angle(from) * kDegrees});
  } else {  // parallel to z: no unique axis; x is used for a rotation by 180 degrees
    m_Direction.Store({*aVector, {1.0, 0.0, 0.0}, from.z < 0.0 ? 180.0 : 0.0});
  }
  return S_OK;
}
