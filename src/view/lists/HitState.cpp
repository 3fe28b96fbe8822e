// HitState: reads the state from GL and sends it to GL. Draw thread, with GL current.

#include "view/lists/HitState.h"

#include <initializer_list>

#include "platform/GL.h"

void HitState::Apply() const noexcept {
  if (m_uFrontMode != 0) glPolygonMode(GL_FRONT, m_uFrontMode);
  if (m_uBackMode != 0) glPolygonMode(GL_BACK, m_uBackMode);
  if (m_uCulling == kOff) glDisable(GL_CULL_FACE);
  if (m_uCulling == GL_CULL_FACE) glEnable(GL_CULL_FACE);
  if (m_uCullFace != 0) glCullFace(m_uCullFace);
  if (m_uFrontFace != 0) glFrontFace(m_uFrontFace);
  if (m_uEdgeFlag != 0) glEdgeFlag(m_uEdgeFlag == kOn ? GL_TRUE : GL_FALSE);
}

void HitState::Overlay(const HitState& aLater) noexcept {
  for (const auto member : {&HitState::m_uFrontMode, &HitState::m_uBackMode, &HitState::m_uCulling,
                            &HitState::m_uCullFace, &HitState::m_uFrontFace, &HitState::m_uEdgeFlag}) {
    if (aLater.*member != 0) this->*member = aLater.*member;
  }
}

HitState HitState::Current() noexcept {
  GLint modes[2] = {}, cullFace = 0, frontFace = 0;
  GLboolean edge = GL_TRUE;
  glGetIntegerv(GL_POLYGON_MODE, modes);
  glGetIntegerv(GL_CULL_FACE_MODE, &cullFace);
  glGetIntegerv(GL_FRONT_FACE, &frontFace);
  glGetBooleanv(GL_EDGE_FLAG, &edge);
  const auto word = [](GLint aValue) { return static_cast<std::uint16_t>(aValue); };
  return {word(modes[0]), word(modes[1]),  glIsEnabled(GL_CULL_FACE) != GL_FALSE ? word(GL_CULL_FACE) : kOff,
          word(cullFace), word(frontFace), edge != GL_FALSE ? kOn : kOff};
}
