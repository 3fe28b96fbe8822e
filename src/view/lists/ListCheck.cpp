// ListCheck: pick volumes outside of a box, and GL's state before and after.
//
// The clip coordinate w of a vertex is its distance from a side of the box, exact for the vertices on it. x
// and y are so small beside w that every vertex with w above 0 is inside, and large enough for a face to have
// a front: culling drops a face without one. The modelview matrix turns the sign of w: the sign shows
// geometry for which a host loads another matrix, wherever it lies.

#include "view/lists/ListCheck.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "component/Module.h"
#include "platform/GL.h"
#include "view/lists/CompiledList.h"

namespace {

constexpr GLuint kProbe = 0x50524F42;  // an identifier that stands for what was set before the run
constexpr float kLargest = 1e30f;      // of a coordinate, so that no product overflows
constexpr float kSmallest = 1e-30f;    // distance from 0; GL may take smaller numbers for 0
constexpr int kHalf = 512;             // of a viewport's side
constexpr float kTiny = 1e-15f;        // of x and y beside w
constexpr int kClipPlanes = 8;
constexpr GLenum kDepths[] = {GL_MODELVIEW_STACK_DEPTH, GL_PROJECTION_STACK_DEPTH, GL_TEXTURE_STACK_DEPTH,
                              GL_ATTRIB_STACK_DEPTH, GL_NAME_STACK_DEPTH};

/// What a run must leave as it was, but for the recorded hit state. Compared byte by byte.
struct State {
  GLint m_aiDepths[std::size(kDepths)];
  GLint m_iMatrixMode, m_iListBase;
  GLfloat m_afModelview[16], m_afProjection[16], m_afTexture[16], m_afDepthRange[2], m_afRaster[4];
  GLint m_aiClip[kClipPlanes], m_iRasterValid;
  GLdouble m_adClip[kClipPlanes][4];
};

int ClipPlanes() noexcept { return std::min(static_cast<int>(g_iMaxClipPlanes), kClipPlanes); }

State Read() noexcept {
  State state;
  std::memset(&state, 0, sizeof state);
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

// x and y come from directions in which no face of a model is likely to be seen from its edge.
void LoadRow(const std::array<float, 4>& aRow, float aFront = 1.0f) noexcept {
  constexpr float kX[] = {0.577f * kTiny, 0.311f * kTiny, 0.755f * kTiny};
  constexpr float kY[] = {-0.411f * kTiny, 0.862f * kTiny, 0.297f * kTiny};
  GLfloat matrix[16] = {};
  for (std::size_t column = 0; column < 3; ++column) {
    matrix[column * 4] = aFront * kX[column];
    matrix[column * 4 + 1] = kY[column];
  }
  for (std::size_t column = 0; column < 4; ++column) matrix[column * 4 + 3] = aRow[column];
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixf(matrix);
  glMatrixMode(GL_MODELVIEW);
}

// The fourth row for the points beyond one of the six sides; w arrives with its sign turned.
std::array<float, 4> Beyond(const Box& aBox, int aSide) noexcept {
  const auto axis = static_cast<std::size_t>(aSide / 2);
  const bool high = aSide % 2 == 0;
  std::array<float, 4> row{};
  if (aBox.IsEmpty()) {
    row[3] = high ? -1.0f : 1.0f;  // everywhere; also if the host loads a matrix
    return row;
  }
  float limit = high ? std::nextafter(aBox.m_afHigh[axis], Box::kInfinity)
                     : std::nextafter(aBox.m_afLow[axis], -Box::kInfinity);
  if (std::fabs(limit) < kSmallest) limit = high ? kSmallest : -kSmallest;
  row[axis] = high ? 1.0f : -1.0f;
  row[3] = high ? limit : -limit;
  return row;
}

// A hit, whatever the modelview matrix: all of space is inside.
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

ListCheck::ListCheck(int aHeight) noexcept : m_iHeight(aHeight) {
  for (std::size_t i = 0; i < m_anDepths.size(); ++i) glGetIntegerv(kDepths[i], &m_anDepths[i]);
  glPushAttrib(GL_ALL_ATTRIB_BITS);
  for (const GLenum mode : {GL_TEXTURE, GL_PROJECTION, GL_MODELVIEW}) {
    glMatrixMode(mode);
    glPushMatrix();
  }
}

// A run that fails may have left the stacks deeper.
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
  if (!IsInRange(aRun.m_Box)) return true;  // the tree does not leave it out
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
  // Culling that the run itself enables shows one side of a face only: then each side in turn, with the
  // middle of the viewport where the driver has 0, since tiny differences are lost elsewhere. Drivers count
  // rows from the lower edge of the surface or from the upper one.
  const int variants = aRun.m_bCulls ? 4 : 1;
  for (int drawing = 0; drawing < variants * kDrawings; ++drawing) {
    const int variant = drawing / kDrawings;
    glViewport(-kHalf, (variant < 2 ? 0 : m_iHeight) - kHalf, 2 * kHalf, 2 * kHalf);
    LoadRow(Beyond(aRun.m_Box, drawing % kDrawings), variant % 2 == 0 ? 1.0f : -1.0f);
    glCallList(aRun.m_uList);
    if (drawing == 0) {
      HitProbe();
      glLoadName(kProbe);
    }
  }
  const State after = Read();
  const HitState state = HitState::Current();
  const int hits = glRenderMode(GL_RENDER);
  // Culling that was on before the run and that the run does not touch is still off.
  if (state.m_uCulling == HitState::kOff && aAfter.m_State.m_uCulling == aRun.m_State.m_uCulling) {
    expected.m_uCulling = HitState::kOff;
  }

  // The probe before the run, and the one after it under the run's last identifier. Without an identifier GL
  // makes one record of both.
  const bool names = records[3] == kProbe && (named ? hits == 2 && records[7] == aAfter.m_uName : hits == 1);
  return names && state == expected && std::memcmp(&before, &after, sizeof before) == 0;
}
