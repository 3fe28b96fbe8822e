// Dragging: pointer actions in a scene. A drag turns, pans, spans a box or moves the section's slider; a
// click or a box picks. The host passes the events of its toolkit. Host's thread only.

#pragma once

#include <optional>

#include "shared/model/Scene.h"

class Dragging {
 public:
  enum class Kind { Idle, Turn, Pan, Box, BoxInside, Slide };

  /// Returns the action of a drag from its button and the modifier keys.
  static Kind KindOf(bool aLeft, bool aShift, bool aControl);

  explicit Dragging(Scene& aScene) : m_scene(aScene) {}

  /// Begins a drag at the pointer, unless a drag is running. On the slider it drags the slider.
  void Press(Kind aKind);
  /// Zooms about the point under the pointer.
  /// @param aUp steps of the wheel, positive away from the user
  void Wheel(double aUp);
  /// Moves the pointer; pixels from the window's top left.
  void Move(double aX, double aY);
  /// Ends the drag.
  /// @return the place to pick: a point after a click, a box after its drag; nothing after other drags
  std::optional<PixelBox> Release();

 private:
  PixelBox Spanned() const;
  /// Returns the point to zoom about: the last one while it is still under the pointer, else a new one.
  GLDATA_POINT PointUnderPointer();

  Scene& m_scene;
  Kind m_kind = Kind::Idle;
  double m_startX = 0, m_startY = 0;     // pointer at the start of the drag
  double m_x = 0, m_y = 0;               // pointer
  bool m_moved = false;                  // the pointer has moved farther than a click allows
  std::optional<GLDATA_POINT> m_pivot;   // point of the model where the drag began
  std::optional<GLDATA_POINT> m_zoomed;  // last point that the wheel zoomed about
};
