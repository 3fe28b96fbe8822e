// ClientCheck: the stacks that are checked, and the comparison. Draw thread, with GL current.

#include "diagnostics/ClientCheck.h"

#include "diagnostics/FirstReport.h"
#include "diagnostics/GLErrorCheck.h"
#include "platform/GL.h"

namespace {

struct Stack {
  GLenum m_uDepth;
  const char* m_szName;
};

constexpr Stack kStackNames[] = {
    {GL_MODELVIEW_STACK_DEPTH, "model-view matrix"},    {GL_PROJECTION_STACK_DEPTH, "projection matrix"},
    {GL_TEXTURE_STACK_DEPTH, "texture matrix"},         {GL_ATTRIB_STACK_DEPTH, "attribute"},
    {GL_CLIENT_ATTRIB_STACK_DEPTH, "client attribute"}, {GL_NAME_STACK_DEPTH, "name"}};

constexpr unsigned kDeeper = 1000, kShallower = 2000;  // report codes, distinct from GL's error codes

}  // namespace

// Between glBegin and glEnd GL does not change the values.
void ClientCheck::Read(Depths& aDepths) noexcept {
  for (std::size_t i = 0; i < kStacks; ++i) glGetIntegerv(kStackNames[i].m_uDepth, &aDepths[i]);
  glGetIntegerv(GL_LIST_INDEX, &aDepths[kStacks]);
}

void ClientCheck::Report() const noexcept {
  CheckGLErrors(m_szClient);  // before Read, whose queries are GL errors between glBegin and glEnd
  Depths after = m_aiBefore;
  Read(after);
  for (std::size_t i = 0; i < after.size(); ++i) {
    const int more = after[i] - m_aiBefore[i];
    const auto code = static_cast<unsigned>(i) + (more > 0 ? kDeeper : kShallower);
    if (more == 0 || !IsFirstReport(m_szClient, code)) continue;
    if (i < kStacks) {
      LogWarning("%s changed the depth of the %s stack by %+d", m_szClient, kStackNames[i].m_szName, more);
    } else if (after[i] != 0) {
      LogWarning("%s left a display list open: GL compiles later calls into that list", m_szClient);
    }
  }
}
