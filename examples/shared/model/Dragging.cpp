// Dragging: turns pointer events into navigation and picks. Host's thread.

#include "shared/model/Dragging.h"

#include <cmath>
#include <utility>

namespace {

constexpr int kClickSlack = 3;  // pixels that the pointer may move during a click
constexpr double kWheelStep = 0.9;

}  // namespace

Dragging::Kind Dragging::KindOf(bool aLeft, bool aShift, bool aControl) {
  if (!aLeft) return Kind::Pan;
  if (aControl) return Kind::BoxInside;
  return aShift ? Kind::Box : Kind::Turn;
}

void Dragging::Press(Kind aKind) {
  if (m_kind != Kind::Idle) return;
  m_kind = m_scene.IsOnSlider({m_x, m_y}) ? Kind::Slide : aKind;
  m_startX = m_x;
  m_startY = m_y;
  m_moved = false;
  m_pivot.reset();
  if (m_kind == Kind::Slide) m_scene.DragSlider({m_x, m_y});
}

void Dragging::Wheel(double aUp) { m_scene.Zoom({m_x, m_y}, PointUnderPointer(), std::pow(kWheelStep, aUp)); }

GLDATA_POINT Dragging::PointUnderPointer() {
  if (!m_zoomed || !m_scene.Shows(*m_zoomed, {m_x, m_y}))
    m_zoomed = m_scene.PointUnder(static_cast<int>(m_x), static_cast<int>(m_y));
  return *m_zoomed;
}

void Dragging::Move(double aX, double aY) {
  const GLPixelPlace from = {m_x, m_y}, to = {aX, aY};
  m_x = aX;
  m_y = aY;
  if (m_kind == Kind::Idle) return;
  if (m_kind == Kind::Slide) return m_scene.DragSlider(to);
  const bool wasMoved =
      std::exchange(m_moved, m_moved || std::hypot(m_x - m_startX, m_y - m_startY) > kClickSlack);
  if (!m_moved) return;
  if (m_kind != Kind::Turn && m_kind != Kind::Pan) return m_scene.ShowBand(Spanned());
  // The drag acts on the view in which it began.
  const GLPixelPlace start = {m_startX, m_startY};
  if (!m_pivot) m_pivot = m_scene.PointUnder(static_cast<int>(m_startX), static_cast<int>(m_startY));
  if (m_kind == Kind::Turn) {
    m_scene.Turn(wasMoved ? from : start, to, start, *m_pivot);
  } else {
    m_scene.Pan({aX + 0.5, aY + 0.5}, start, *m_pivot);  // centre of the pixel, like the pivot
  }
}

std::optional<PixelBox> Dragging::Release() {
  const Kind kind = std::exchange(m_kind, Kind::Idle);
  if (kind == Kind::Idle || kind == Kind::Slide) return std::nullopt;
  PixelBox box = Spanned();
  if (!m_moved && kind != Kind::Pan) {
    box.x2 = box.x1;
    box.y2 = box.y1;
    box.point = true;
    return box;
  }
  if (kind != Kind::Box && kind != Kind::BoxInside) return std::nullopt;
  box.inside = kind == Kind::BoxInside;
  m_scene.ShowBand(std::nullopt);
  return box;
}

PixelBox Dragging::Spanned() const {
  return {static_cast<int>(m_startX), static_cast<int>(m_startY), static_cast<int>(m_x),
          static_cast<int>(m_y)};
}
