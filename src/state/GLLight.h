// GLLight: one light, and its use of one of the eight GL light numbers of the process. Written by host
// threads, read by the draw thread. A colour may be read half written; a point or direction may not.

#pragma once

#include <gllib/IGLCanvas.h>
#include <gllib/IGLCoord.h>
#include <gllib/IGLLight.h>

#include "component/GLObject.h"
#include "platform/GL.h"
#include "state/LightNumbers.h"
#include "thread/Guarded.h"
#include "thread/PCriticalSection.h"
#include "thread/Relaxed.h"

class GLLight final : public GLObject<GLLight, IGLLight> {
 public:
  /// Name of a light without a number: one below GL_LIGHT0.
  static constexpr int kNoName = GL_LIGHT0 - 1;

  /// Throws std::bad_alloc if the coordinate system cannot be created.
  GLLight();
  /// Frees the number without a GL call. The context disables the lights of its last pass that are missing in
  /// the next one.
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

  /// Sends the light to GL. Draw thread, with GL current and the eye in the model-view matrix.
  /// @return the light's GL name, whether enabled or not; kNoName if all eight are taken: no GL call was made
  int ApplyLight(IGLCanvas* aCanvas) noexcept;

 private:
  struct Direction {
    GLDATA_POINT m_sVector;
    // Rotation from +z to the direction that the light comes from: a unit axis, and degrees.
    GLDATA_POINT m_sAxis;
    double m_dAngle;
  };

  GLPtr<IGLCoord> Coord() noexcept;
  void SendColors(GLenum aName) const noexcept;
  void SendSpotlight(GLenum aName) const noexcept;
  void SendDistantLight(GLenum aName) const noexcept;

  Relaxed<bool> m_bEnabled{false};
  Relaxed<bool> m_bSpotlight{true};
  RelaxedColor m_sAmbient{0.5f, 0.5f, 0.5f, 1.0f};
  RelaxedColor m_sDiffuse{0.5f, 0.5f, 0.5f, 1.0f};
  RelaxedColor m_sSpecular{1.0f, 1.0f, 1.0f, 1.0f};
  Guarded<GLDATA_POINT> m_SpotPosition{{0.0, 0.0, 1.0}};
  Relaxed<float> m_fCutOff{180.0f};  // degrees: 0 to 90, or 180 for light in all directions
  Relaxed<float> m_fSpotExponent{0.0f};
  Relaxed<float> m_fConstantAttenuation{1.0f};
  Relaxed<float> m_fLinearAttenuation{0.0f};
  Relaxed<float> m_fQuadraticAttenuation{0.0f};
  PCriticalSection m_CoordLock;  // held while a reference is added to the pointer
  GLPtr<IGLCoord> m_pCoord;
  Guarded<Direction> m_Direction{{{0.0, 0.0, -1.0}, {0.0, 0.0, 0.0}, 0.0}};
  bool m_bDark = false;                      // the last pass found no free number; draw thread only
  int m_iLightNumber = LightNumbers::kNone;  // guarded by the lock of LightNumbers
};
