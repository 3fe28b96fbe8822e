#include "shared/model/Dragging.h"

#include <cmath>
#include <utility>

namespace {

constexpr int kClickSlack = 3;  // pixels that a click may move

}  // namespace

Dragging::Kind Dragging::KindOf(bool aLeft, bool aShift, bool aControl) {
  if (!aLeft) return Kind::Pan;
  if (aControl) return Kind::BoxInside;
  return aShift ? Kind::Box : Kind::Turn;
}

void Dragging::Press(Kind aKind) {
  if (m_kind != Kind::Idle) return;
  m_kind = aKind;
  m_startX = m_x;
  m_startY = m_y;
  m_moved = false;
}

void Dragging::Move(double aX, double aY) {
  const double right = aX - m_x;
  const double down = aY - m_y;
  m_x = aX;
  m_y = aY;
  if (m_kind == Kind::Idle) return;
  m_moved = m_moved || std::hypot(m_x - m_startX, m_y - m_startY) > kClickSlack;
  if (!m_moved) return;
  // What a view does with a drag is settled by where the drag began.
  const int x = static_cast<int>(m_startX);
  const int y = static_cast<int>(m_startY);
  if (m_kind == Kind::Turn) {
    m_scene.Turn(x, y, right, down);
  } else if (m_kind == Kind::Pan) {
    m_scene.Pan(x, y, right, down);
  } else {
    m_scene.ShowBand(Spanned());
  }
}

std::optional<PixelBox> Dragging::Release() {
  const Kind kind = std::exchange(m_kind, Kind::Idle);
  if (kind == Kind::Idle) return std::nullopt;
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
