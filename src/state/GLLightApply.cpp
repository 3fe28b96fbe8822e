// GLLight: application to GL. Draw thread, with GL current and the eye in the model-view matrix.

#include "platform/Log.h"
#include "state/GLLight.h"

int GLLight::ApplyLight(IGLCanvas* aCanvas) noexcept {
  const int number = LightNumbers::Take(m_iLightNumber);
  const bool dark = number == LightNumbers::kNone;
  if (dark && !m_bDark) LogWarning("a light is off: the process uses GL's 8 lights already");
  m_bDark = dark;
  if (dark) return kNoName;
  const auto name = static_cast<GLenum>(GL_LIGHT0 + number);
  if (!m_bEnabled) {
    glDisable(name);
    return static_cast<int>(name);
  }
  glEnable(name);
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  SendColors(name);
  GLDATA_MATRIX6D placement{};
  Coord()->GetMatrix6d(&placement);
  aCanvas->SetModelview6d(&placement);
  if (m_bSpotlight) {
    SendSpotlight(name);
  } else {
    SendDistantLight(name);
  }
  glPopMatrix();
  return static_cast<int>(name);
}

void GLLight::SendColors(GLenum aName) const noexcept {
  const GLDATA_RGBA ambient = m_sAmbient, diffuse = m_sDiffuse, specular = m_sSpecular;
  glLightfv(aName, GL_AMBIENT, &ambient.m_fRed);
  glLightfv(aName, GL_DIFFUSE, &diffuse.m_fRed);
  glLightfv(aName, GL_SPECULAR, &specular.m_fRed);
}

void GLLight::SendSpotlight(GLenum aName) const noexcept {
  const GLDATA_POINT position = m_SpotPosition.Load(), direction = m_Direction.Load().m_sVector;
  const float place[] = {static_cast<float>(position.x), static_cast<float>(position.y),
                         static_cast<float>(position.z), 1.0f};
  const float way[] = {static_cast<float>(direction.x), static_cast<float>(direction.y),
                       static_cast<float>(direction.z)};
  glLightfv(aName, GL_POSITION, place);
  glLightfv(aName, GL_SPOT_DIRECTION, way);
  glLightf(aName, GL_SPOT_CUTOFF, m_fCutOff);
  glLightf(aName, GL_SPOT_EXPONENT, m_fSpotExponent);
  glLightf(aName, GL_CONSTANT_ATTENUATION, m_fConstantAttenuation);
  glLightf(aName, GL_LINEAR_ATTENUATION, m_fLinearAttenuation);
  glLightf(aName, GL_QUADRATIC_ATTENUATION, m_fQuadraticAttenuation);
}

/// Sends a light at infinity on the +z axis. GL ignores its attenuation, but would limit it to the cone that
/// a spotlight with the same GL light has set.
void GLLight::SendDistantLight(GLenum aName) const noexcept {
  constexpr float kAlongZ[] = {0.0f, 0.0f, 1.0f, 0.0f};
  const auto [vector, axis, angle] = m_Direction.Load();
  if (angle != 0.0) glRotated(angle, axis.x, axis.y, axis.z);
  glLightfv(aName, GL_POSITION, kAlongZ);
  constexpr float kNoCone = 180.0f;
  float cutOff = kNoCone;
  glGetLightfv(aName, GL_SPOT_CUTOFF, &cutOff);
  if (cutOff != kNoCone) glLightf(aName, GL_SPOT_CUTOFF, kNoCone);
}
