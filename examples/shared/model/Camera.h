// Camera: where the eye stands for each direction that the model is looked at from. The host's thread only.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

enum class Direction { Free, Front, Right, Top };

/// Turns about a target; all directions share the target and the zoom.
class Camera {
 public:
  /// Frames a sphere.
  Camera(const GLDATA_POINT& aCentre, double aRadius);

  /// Turns the free direction, in radians.
  void Turn(double aYaw, double aPitch);
  /// Moves the picture by a part of the view's shorter side, right and up.
  void Pan(Direction aDirection, double aRight, double aUp);
  /// Brings the model nearer (below 1) or further away.
  void Zoom(double aFactor);

  /// Sends eye and projection to a viewer.
  /// @param aAspect width of the view over its height
  void Apply(IGLViewer& aViewer, Direction aDirection, double aAspect) const;

  /// How far the eye is from the target.
  double Distance() const;
  double Radius() const { return m_radius; }

 private:
  /// Turns the helper system to a direction, with its origin on the target.
  void Aim(Direction aDirection) const;

  GLPtr<IGLCoord> m_system;  // works out placements away from the viewers', which the draw thread reads
  GLDATA_POINT m_centre;
  GLDATA_POINT m_target;
  double m_radius;
  double m_yaw = 0;
  double m_pitch = 0;
  double m_zoom = 1;
};
