// GLCoord: copies the numbers under the lock, calculates without it, and writes back under the lock. Any
// thread.

#include "geometry/GLCoord.h"

#include "component/Catalogue.h"
#include "component/Output.h"
#include "platform/ProcessWide.h"
#include "thread/PCriticalSection.h"

namespace {

/// Guards the six numbers of all GLCoord objects. Held only while they are copied.
constinit ProcessWide<PCriticalSection> g_CoordLock;

}  // namespace

HRESULT CreateGLCoord(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLCoord>(aOuter, riid, ppv);
}

GCoord GLCoord::Load() const noexcept {
  const PLock lock(g_CoordLock.Get());
  return m_Coord;
}

void GLCoord::Store(const GCoord& aCoord) noexcept {
  const PLock lock(g_CoordLock.Get());
  m_Coord = aCoord;
}

template <class Change>
HRESULT GLCoord::Modify(const Change& aChange) noexcept {
  GCoord coord = Load();
  aChange(coord);
  Store(coord);
  return S_OK;
}

HRESULT GLCoord::Convert(GLDATA_POINT* aPoint, Conversion aConversion) const noexcept {
  if (aPoint == nullptr) return E_INVALIDARG;
  *aPoint = (Load().*aConversion)(GPoint(*aPoint)).As<GLDATA_POINT>();
  return S_OK;
}

HRESULT GLCoord::GetOrigin(GLDATA_POINT* aPoint) noexcept {
  return Output(aPoint, Load().Origin().As<GLDATA_POINT>());
}

HRESULT GLCoord::SetOrigin(GLDATA_POINT* aPoint) noexcept {
  if (aPoint == nullptr) return E_INVALIDARG;
  return SetOrigin3d(aPoint->x, aPoint->y, aPoint->z);
}

HRESULT GLCoord::SetOrigin3d(double aX, double aY, double aZ) noexcept {
  const PLock lock(g_CoordLock.Get());
  m_Coord = GPoint(aX, aY, aZ);
  return S_OK;
}

HRESULT GLCoord::MoveOrigin(GLDATA_POINT* aPoint) noexcept {
  if (aPoint == nullptr) return E_INVALIDARG;
  return MoveOrigin3d(aPoint->x, aPoint->y, aPoint->z);
}

HRESULT GLCoord::MoveOrigin3d(double aX, double aY, double aZ) noexcept {
  return Modify([&](GCoord& coord) { coord = coord.Origin() + GPoint(aX, aY, aZ); });
}

HRESULT GLCoord::MoveRight(double aDistance) noexcept {
  return Modify([&](GCoord& coord) { coord.MoveRight(aDistance); });
}

HRESULT GLCoord::MoveUp(double aDistance) noexcept {
  return Modify([&](GCoord& coord) { coord.MoveUp(aDistance); });
}

HRESULT GLCoord::MoveForward(double aDistance) noexcept {
  return Modify([&](GCoord& coord) { coord.MoveForward(aDistance); });
}

HRESULT GLCoord::RotateAboutX_RAD(double aAngle) noexcept {
  return Modify([&](GCoord& coord) { coord.RotateAboutX_RAD(aAngle); });
}

HRESULT GLCoord::RotateAboutY_RAD(double aAngle) noexcept {
  return Modify([&](GCoord& coord) { coord.RotateAboutY_RAD(aAngle); });
}

HRESULT GLCoord::RotateAboutZ_RAD(double aAngle) noexcept {
  return Modify([&](GCoord& coord) { coord.RotateAboutZ_RAD(aAngle); });
}

HRESULT GLCoord::Rotate_RAD(double aAngle, GLDATA_POINT* aAxis, GLDATA_POINT* aOrigin) noexcept {
  if (aAxis == nullptr || aOrigin == nullptr) return E_INVALIDARG;
  const GPoint axis(*aAxis);
  const GPoint pivot(*aOrigin);
  return Modify([&](GCoord& coord) { coord.Rotate_RAD(aAngle, axis, pivot); });
}

HRESULT GLCoord::ResetRotation() noexcept {
  const PLock lock(g_CoordLock.Get());
  m_Coord.ResetRotation();
  return S_OK;
}

HRESULT GLCoord::VectorPCStoLCS(GLDATA_POINT* aVector) noexcept {
  return Convert(aVector, &GCoord::VectorPCStoLCS);
}

HRESULT GLCoord::VectorLCStoPCS(GLDATA_POINT* aVector) noexcept {
  return Convert(aVector, &GCoord::VectorLCStoPCS);
}

HRESULT GLCoord::PointPCStoLCS(GLDATA_POINT* aPoint) noexcept {
  return Convert(aPoint, &GCoord::PointPCStoLCS);
}

HRESULT GLCoord::PointLCStoPCS(GLDATA_POINT* aPoint) noexcept {
  return Convert(aPoint, &GCoord::PointLCStoPCS);
}

HRESULT GLCoord::GetMatrix6d(GLDATA_MATRIX6D* aMatrix) noexcept {
  return Output(aMatrix, Load().As<GLDATA_MATRIX6D>());
}

HRESULT GLCoord::SetMatrix6d(GLDATA_MATRIX6D* aMatrix) noexcept {
  if (aMatrix == nullptr) return E_INVALIDARG;
  Store(GCoord(*aMatrix));
  return S_OK;
}

HRESULT GLCoord::GetMatrix16d(GLDATA_MATRIX16D* aMatrix) noexcept try {
  if (aMatrix == nullptr) return E_INVALIDARG;
  Load().GetMatrix16d(&aMatrix->m[0][0]);
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT GLCoord::SetMatrix16d(GLDATA_MATRIX16D* aMatrix) noexcept try {
  if (aMatrix == nullptr) return E_INVALIDARG;
  GCoord coord;
  coord.SetMatrix16d(&aMatrix->m[0][0]);
  Store(coord);
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}
