// ClientCheck: the stacks, and the comparison. Draw thread, with GL current.

#include "diagnostics/ClientCheck.h"

#include "diagnostics/GLErrors.h"
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

/// The differences that were reported last. A painter that leaves one does so in each frame.
thread_local std::array<int, std::size(kStackNames) + 1> t_aiReported{};

}  // namespace

// Between glBegin and glEnd GL leaves the values as they are.
void ClientCheck::Read(Depths& aDepths) noexcept {
  for (std::size_t i = 0; i < kStacks; ++i) glGetIntegerv(kStackNames[i].m_uDepth, &aDepths[i]);
  glGetIntegerv(GL_LIST_INDEX, &aDepths[kStacks]);
}

void ClientCheck::Report() const noexcept {
  CheckGLErrors(m_szClient);  // before the questions, which GL refuses between glBegin and glEnd
  Depths after = m_aiBefore;
  Read(after);
  for (std::size_t i = 0; i < after.size(); ++i) {
    const int more = after[i] - m_aiBefore[i];
    if (more == 0 || more == t_aiReported[i]) continue;
    t_aiReported[i] = more;
    if (i == kStacks) {
      LogWarning("%s left a display list open: what is drawn now goes into that list", m_szClient);
    } else {
      LogWarning("%s left the %s stack %d %s than it was", m_szClient, kStackNames[i].m_szName,
                 more > 0 ? more : -more, more > 0 ? "deeper" : "shallower");
    }
  }
}
