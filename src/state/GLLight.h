// GLLight: one light, and the way to one of the process's eight GL light numbers.
// Host threads write, the draw thread reads; each member is atomic on its own, the whole is not.

#pragma once

#include <gllib/IGLCanvas.h>
#include <gllib/IGLCoord.h>
#include <gllib/IGLLight.h>

#include "component/Object.h"
#include "platform/GL.h"
#include "state/LightNumbers.h"
#include "thread/PCriticalSection.h"
#include "thread/Relaxed.h"

class GLLight final : public GLObject<GLLight, IGLLight> {
 public:
  /// The name of a light that has no number: one below GL_LIGHT0.
  static constexpr int kNoName = GL_LIGHT0 - 1;

  /// Throws std::bad_alloc when the coordinate system can't be made.
  GLLight();
  /// Frees the number. No GL call: a context disables what was lit in its last pass and isn't in this one.
  ~GLLight();

  HRESULT Enable(LONG aEnable) noexcept override;
  HRESULT IsEnabled(LONG* aEnabled) noexcept override;
  HRESULT SetAsSpotlight(LONG aSet) noexcept override;
  HRESULT IsSpotlight(LONG* aSpotlight) noexcept override;
  HRESULT GetAmbientLight(GLDATA_RGBA* aLight) noexcept override;
  HRESULT SetAmbientLight(GLDATA_RGBA* aLight) noexcept override;
  HRESULT GetDiffuseLight(GLDATA_RGBA* aLight) noexcept override;
  HRESULT SetDiffuseLight(GLDATA_RGBA* aLight) noexcept override;
  HRESULT GetSpecularLight(GLDATA_RGBA* aLight) noexcept override;
  HRESULT SetSpecularLight(GLDATA_RGBA* aLight) noexcept override;
  HRESULT GetSpotPosition(GLDATA_POINT* aVector) noexcept override;
  HRESULT SetSpotPosition(GLDATA_POINT* aVector) noexcept override;
  HRESULT GetCutOffAngle_DEG(float* aAngle) noexcept override;
  HRESULT SetCutOffAngle_DEG(float aAngle) noexcept override;
  HRESULT GetSpotExponent(float* aExponent) noexcept override;
  HRESULT SetSpotExponent(float aExponent) noexcept override;
  HRESULT GetConstantAttenuation(float* aAtt) noexcept override;
  HRESULT SetConstantAttenuation(float aAtt) noexcept override;
  HRESULT GetLinearAttenuation(float* aAtt) noexcept override;
  HRESULT SetLinearAttenuation(float aAtt) noexcept override;
  HRESULT GetQuadraticAttenuation(float* aAtt) noexcept override;
  HRESULT SetQuadraticAttenuation(float aAtt) noexcept override;
  HRESULT GetCoord(IGLCoord** aCS) noexcept override;
  HRESULT AttachCoord(IGLCoord* aCS) noexcept override;
  HRESULT GetDirection(GLDATA_POINT* aVector) noexcept override;
  HRESULT SetDirection(GLDATA_POINT* aVector) noexcept override;

  /// Sends the light to GL, with the eye in the modelview matrix. Draw thread, with GL current.
  /// @return the GL light name that it has, enabled or not; kNoName when all eight are taken: no GL call was
  /// made
  int ApplyLight(IGLCanvas* aCanvas) noexcept;

 private:
  GLPtr<IGLCoord> Coord() noexcept;
  void SendColors(GLenum aName) const noexcept;
  void SendSpotlight(GLenum aName) const noexcept;
  void SendDistantLight(GLenum aName) const noexcept;

  Relaxed<bool> m_bEnabled{false};
  Relaxed<bool> m_bSpotlight{true};
  RelaxedColor m_sAmbient{0.5f, 0.5f, 0.5f, 1.0f};
  RelaxedColor m_sDiffuse{0.5f, 0.5f, 0.5f, 1.0f};
  RelaxedColor m_sSpecular{1.0f, 1.0f, 1.0f, 1.0f};
  RelaxedPoint m_sSpotPosition{0.0, 0.0, 1.0};
  Relaxed<float> m_fCutOff{180.0f};  // degrees: 0 to 90, or 180 for all round
  Relaxed<float> m_fSpotExponent{0.0f};
  Relaxed<float> m_fConstantAttenuation{1.0f};
  Relaxed<float> m_fLinearAttenuation{0.0f};
  Relaxed<float> m_fQuadraticAttenuation{0.0f};
  PCriticalSection m_CoordLock;  // the pointer, for as long as it takes to count a reference
  GLPtr<IGLCoord> m_pCoord;
  RelaxedPoint m_sDirection{0.0, 0.0, -1.0};
  // The rotation that takes +z to where the light comes from: a unit axis, and degrees.
  RelaxedPoint m_sDirAxis{0.0, 0.0, 0.0};
  Relaxed<double> m_dDirAngle{0.0};
  bool m_bDark = false;                      // no number was free last time; draw thread
  int m_iLightNumber = LightNumbers::kNone;  // guarded by the table's lock
};
