// Dragging: what the pointer does in a scene: drags turn, pan or span a box, a click or a box picks.
// A host feeds it with its toolkit's events; the host's thread only.

#pragma once

#include <optional>

#include "shared/model/Scene.h"

class Dragging {
 public:
  enum class Kind { Idle, Turn, Pan, Box, BoxInside, Slide };

  /// What a drag does by the button and the keys that are held with it.
  static Kind KindOf(bool aLeft, bool aShift, bool aControl);

  explicit Dragging(Scene& aScene) : m_scene(aScene) {}

  /// Begins a drag at the pointer's place, unless one is going on.
  void Press(Kind aKind);
  /// The wheel has turned at the pointer's place.
  /// @param aUp steps, away from the user
  void Wheel(double aUp);
  /// The pointer has moved; pixels from the window's top left.
  void Move(double aX, double aY);
  /// Ends the drag.
  /// @return what is to be picked: a point after a click, a box after its drag
  std::optional<PixelBox> Release();

 private:
  PixelBox Spanned() const;
  /// The point that the wheel zooms to; the last one while it is still there.
  GLDATA_POINT PointUnderPointer();

  Scene& m_scene;
  Kind m_kind = Kind::Idle;
  double m_startX = 0, m_startY = 0;     // of the drag
  double m_x = 0, m_y = 0;               // of the pointer
  bool m_moved = false;                  // further than a click does
  std::optional<GLDATA_POINT> m_pivot;   // of the drag: the point of the model where it began
  std::optional<GLDATA_POINT> m_zoomed;  // by the wheel last
};
