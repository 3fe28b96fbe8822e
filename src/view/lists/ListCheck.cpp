// ListCheck: draws a run with pick volumes outside of its box, and compares GL's state before and after. Draw
// thread, with GL current.
//
// The matrices give each vertex the clip coordinates (0, 0, 0, w), which are inside if w is above 0. The
// fourth row of the projection matrix computes the distance from a side of the box; it is exact for vertices
// on that side. The model-view matrix negates w. If a host loads another matrix for its drawing, w has the
// other sign. The check then finds the drawing at any position.
//
// Culling drops the faces that these matrices make. So a run that enables culling is always drawn, and not
// checked.

#include "view/lists/ListCheck.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "component/Module.h"
#include "platform/GL.h"
#include "view/lists/CompiledList.h"

namespace {

constexpr GLuint kProbe = 0x50524F42;  // represents the identifier set before the run
constexpr float kLargest = 1e30f;      // largest coordinate, so that no product overflows
constexpr float kSmallest = 1e-30f;    // smallest distance from 0; GL may treat smaller ones as 0
constexpr int kClipPlanes = 8;
constexpr GLenum kDepths[] = {GL_MODELVIEW_STACK_DEPTH, GL_PROJECTION_STACK_DEPTH, GL_TEXTURE_STACK_DEPTH,
                              GL_ATTRIB_STACK_DEPTH, GL_NAME_STACK_DEPTH};

/// State that a run must not change, apart from the hit state. Compared byte by byte.
struct State {
  GLint m_aiDepths[std::size(kDepths)];
  GLint m_iMatrixMode, m_iListBase;
  GLfloat m_afModelview[16], m_afProjection[16], m_afTexture[16], m_afDepthRange[2], m_afRaster[4];
  GLint m_aiClip[kClipPlanes], m_iRasterValid;
  GLdouble m_adClip[kClipPlanes][4];
};

int ClipPlanes() noexcept { return std::min(static_cast<int>(g_iMaxClipPlanes), kClipPlanes); }

State Read() noexcept {
  State state{};
  std::memset(&state, 0, sizeof state);  // clears the padding too
  for (std::size_t i = 0; i < std::size(kDepths); ++i) glGetIntegerv(kDepths[i], &state.m_aiDepths[i]);
  glGetIntegerv(GL_MATRIX_MODE, &state.m_iMatrixMode);
  glGetIntegerv(GL_LIST_BASE, &state.m_iListBase);
  glGetFloatv(GL_MODELVIEW_MATRIX, state.m_afModelview);
  glGetFloatv(GL_PROJECTION_MATRIX, state.m_afProjection);
  glGetFloatv(GL_TEXTURE_MATRIX, state.m_afTexture);
  glGetFloatv(GL_DEPTH_RANGE, state.m_afDepthRange);
  glGetFloatv(GL_CURRENT_RASTER_POSITION, state.m_afRaster);
  glGetIntegerv(GL_CURRENT_RASTER_POSITION_VALID, &state.m_iRasterValid);
  for (int i = 0; i < ClipPlanes(); ++i) {
    const auto plane = static_cast<GLenum>(GL_CLIP_PLANE0 + i);
    state.m_aiClip[i] = glIsEnabled(plane);
    glGetClipPlane(plane, state.m_adClip[i]);
  }
  return state;
}

void LoadRow(const std::array<float, 4>& aRow) noexcept {
  GLfloat matrix[16] = {};
  for (std::size_t column = 0; column < 4; ++column) matrix[column * 4 + 3] = aRow[column];
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixf(matrix);
  glMatrixMode(GL_MODELVIEW);
}

// Returns the fourth row that selects the points beyond one of the six sides. The model-view matrix negates
// w.
std::array<float, 4> Beyond(const Box& aBox, int aSide) noexcept {
  const auto axis = static_cast<std::size_t>(aSide / 2);
  const bool high = aSide % 2 == 0;
  std::array<float, 4> row{};
  if (aBox.IsEmpty()) {
    row[3] = high ? -1.0f : 1.0f;  // all points: of the check's matrix for a high side, else of another
    return row;
  }
  float limit = high ? std::nextafter(aBox.m_afHigh[axis], Box::kInfinity)
                     : std::nextafter(aBox.m_afLow[axis], -Box::kInfinity);
  if (std::fabs(limit) < kSmallest) limit = high ? kSmallest : -kSmallest;
  row[axis] = high ? 1.0f : -1.0f;
  row[3] = high ? limit : -limit;
  return row;
}

// Draws a point that is always hit, whatever the current matrices are.
void HitProbe() noexcept {
  GLint mode = 0;
  glGetIntegerv(GL_MATRIX_MODE, &mode);
  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  LoadRow({0, 0, 0, -1});
  glPushMatrix();
  glLoadMatrixf(std::array<GLfloat, 16>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1}.data());
  glBegin(GL_POINTS);
  glVertex3f(0, 0, 0);
  glEnd();
  glPopMatrix();
  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glMatrixMode(static_cast<GLenum>(mode));
}

bool IsInRange(const Box& aBox) noexcept {
  if (aBox.IsEmpty()) return true;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    if (!(aBox.m_afLow[axis] > -kLargest && aBox.m_afHigh[axis] < kLargest)) return false;
  }
  return true;
}

}  // namespace

ListCheck::ListCheck() noexcept {
  for (std::size_t i = 0; i < m_anDepths.size(); ++i) glGetIntegerv(kDepths[i], &m_anDepths[i]);
  glPushAttrib(GL_ALL_ATTRIB_BITS);
  for (const GLenum mode : {GL_TEXTURE, GL_PROJECTION, GL_MODELVIEW}) {
    glMatrixMode(mode);
    glPushMatrix();
  }
}

// A run that fails the check may have left the stacks deeper.
ListCheck::~ListCheck() {
  const auto popTo = [&](std::size_t aStack, auto aPop) {
    GLint depth = 0, before = -1;
    for (glGetIntegerv(kDepths[aStack], &depth); depth > m_anDepths[aStack] && depth != before;
         glGetIntegerv(kDepths[aStack], &depth)) {
      before = depth;
      aPop();
    }
  };
  constexpr GLenum kModes[] = {GL_MODELVIEW, GL_PROJECTION, GL_TEXTURE};
  for (std::size_t i = 0; i < std::size(kModes); ++i) {
    glMatrixMode(kModes[i]);
    popTo(i, [] { glPopMatrix(); });
  }
  popTo(3, [] { glPopAttrib(); });
  glMatrixMode(GL_MODELVIEW);
}

bool ListCheck::Passes(const ListRun& aRun, const ListRun& aAfter) noexcept {
  if (!IsInRange(aRun.m_Box)) return true;  // such a run is always drawn
  const bool named = aAfter.m_uNames != aRun.m_uNames;
  HitState expected{GL_FILL, GL_FILL, HitState::kOff, GL_BACK, GL_CCW, HitState::kOn};
  expected.Overlay(aRun.m_State);
  expected.m_uCulling = HitState::kOff;
  expected.Apply();
  expected.Overlay(aAfter.m_State);
  for (int i = 0; i < ClipPlanes(); ++i) glDisable(static_cast<GLenum>(GL_CLIP_PLANE0 + i));
  glLoadMatrixf(std::array<GLfloat, 16>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1}.data());
  LoadRow({0, 0, 0, -1});
  glRasterPos3f(0, 0, 0);

  GLuint records[64] = {};
  glSelectBuffer(static_cast<GLsizei>(std::size(records)), records);
  glRenderMode(GL_SELECT);
  glInitNames();
  glPushName(kProbe);
  LoadRow(Beyond(aRun.m_Box, kDrawings - 1));
  const State before = Read();
  HitProbe();
  for (int side = 0; side < kDrawings; ++side) {
    LoadRow(Beyond(aRun.m_Box, side));
    glCallList(aRun.m_uList);
    if (side == 0) {
      HitProbe();
      glLoadName(kProbe);
    }
  }
  const State after = Read();
  const HitState state = HitState::Current();
  const int hits = glRenderMode(GL_RENDER);
  // The check disabled culling. It is still disabled if the run does not set it.
  if (state.m_uCulling == HitState::kOff && aAfter.m_State.m_uCulling == aRun.m_State.m_uCulling) {
    expected.m_uCulling = HitState::kOff;
  }

  // The probe before the run must be hit. If the run sets an identifier, the probe after it must be hit under
  // the last identifier. If the run sets none, GL makes one record of both hits.
  const bool names = records[3] == kProbe && (named ? hits == 2 && records[7] == aAfter.m_uName : hits == 1);
  // Bit patterns are compared, because values may be NaN. The padding is 0.
  // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
  return names && state == expected && std::memcmp(&before, &after, sizeof before) == 0;
}
