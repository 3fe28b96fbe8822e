// Scene: the model in a context: its views, lights and fog, and picking in them.
// The host's thread only; the window and the picture without a display are both shown through it.

#pragma once

#include <gllib/GLNavigation.h>
#include <gllib/GLViewing.h>

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "shared/model/FrameClock.h"
#include "shared/model/Measuring.h"
#include "shared/model/Model.h"
#include "shared/model/ModelPainter.h"
#include "shared/model/Overlay.h"
#include "shared/model/Progress.h"
#include "shared/model/SceneCapture.h"
#include "shared/model/SceneOptions.h"

class Scene {
 public:
  /// Starts a context under a window.
  /// @param aParent the window's id; 0 with no display
  /// @throws std::runtime_error when it can't be had
  Scene(std::shared_ptr<const Model> aModel, const SceneOptions& aOptions, ULONG_PTR aParent);
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  /// Shows another model, from where the camera was at first.
  void SetModel(std::shared_ptr<const Model> aModel);
  /// Shows how far the reading of files is, from 0 to 1; Progress::kIdle for none.
  void ShowReading(float aShare);
  /// Goes to another window, for a toolkit that gives its widget a new one.
  void MoveTo(ULONG_PTR aParent);
  /// Draws when something changes, not all the time.
  void DrawOnRequest();
  void Redraw();
  void SetSize(int aWidth, int aHeight);
  void SetViews(int aCount);
  /// Adds a gauge to the view that is drawn last. It finds all of the frame but the axes.
  void AddGauge(IGLViewerGauge& aGauge) { m_views.front().viewer->AddGauge(&aGauge); }
  void SetShade(Shade aShade);
  void SetFog(bool aOn);
  void SetAxes(bool aOn);
  void SetBackground(const GLDATA_RGBA& aColor);
  /// Shows the model's name.
  void SetText(bool aOn);
  Shade GetShade() const { return m_shade; }
  bool HasFog() const { return m_fog; }
  bool HasAxes() const { return m_axes; }
  bool HasText() const { return m_text; }
  /// Shows the images of surfaces.
  void SetTextures(bool aOn);
  bool HasTextures() const { return m_textures; }

  /// Cuts the model open, with a slider at the right edge of the free view.
  void SetSection(const Section& aSection);
  const Section& GetSection() const { return m_section; }
  /// Whether a pixel lies on the slider. From the top left, y down.
  bool IsOnSlider(const GLPixelPlace& aPixel) const;
  /// Moves the section to where the slider is dragged to.
  void DragSlider(const GLPixelPlace& aPixel);
  /// Measures from one more point of the model. @return false with no point under the pixel
  bool MeasureAt(int aX, int aY);
  void EndMeasuring();
  std::string Measured() const { return m_measure.Text(); }

  // Navigation. Pixels count from the top left, y down.

  /// The point of the model under a pixel; where there is none, the point of the pixel's ray that is closest
  /// to the model's middle. Waits for a frame.
  GLDATA_POINT PointUnder(int aX, int aY);
  /// The point of the model under a pixel, or nothing. Waits for a frame.
  std::optional<GLDATA_POINT> PointHit(int aX, int aY);
  /// Whether a point appears in a pixel of the view that is seen there.
  bool Shows(const GLDATA_POINT& aPoint, const GLPixelPlace& aPixel);
  /// Turns the view at a pixel about a point; a view of a fixed direction is moved instead.
  void Turn(const GLPixelPlace& aFrom, const GLPixelPlace& aTo, const GLPixelPlace& aView,
            const GLDATA_POINT& aPivot);
  /// Turns the free view about the model's middle; radians, above 0 the eye goes to the right.
  void Spin(double aRight);
  /// Moves the view at a pixel so that a point appears at a place.
  void Pan(const GLPixelPlace& aTo, const GLPixelPlace& aView, const GLDATA_POINT& aPoint);
  /// Zooms the view at a pixel, where a point stays in its place.
  /// @param aFactor below 1 brings the model nearer
  void Zoom(const GLPixelPlace& aView, const GLDATA_POINT& aPoint, double aFactor);
  /// Flies the free view's eye: shares of the model's radius, and radians to the left.
  void Walk(double aForward, double aUp, double aLeft);
  /// Turns the free view to a standard direction, over a moment.
  void GoTo(GLStandardView aDirection);
  /// Moves on what GoTo began, while it goes on.
  void Animate();
  bool IsAnimated() const { return m_transition.has_value(); }
  /// Goes back to where all eyes were at first.
  void ResetCamera();

  /// Shows a rubber band in the view that it starts in, or none.
  void ShowBand(const std::optional<PixelBox>& aBox);
  /// The parts that a click or box meets, each once.
  std::vector<ULONG> Pick(const PixelBox& aBox);
  void Mark(const std::vector<ULONG>& aIds);
  /// The names of parts.
  std::vector<std::string> NamesOf(const std::vector<ULONG>& aIds) const;

  double FrameMilliseconds() const { return m_clock.Milliseconds(); }
  /// Asks for a picture of what is shown. @param aZoom times the window's size
  SceneCapture Capture(int aZoom);

 private:
  enum class Direction { Free, Front, Right, Top };
  struct View {
    Direction direction = Direction::Free;
    IGLViewer* viewer = nullptr;  // borrowed, the context's
    GLPtr<Overlay> overlay;
  };
  using Clock = std::chrono::steady_clock;

  void AddView(Direction aDirection, bool aOrtho);
  void AddLights();
  void AddLight(const GLDATA_POINT& aDirection, GLDATA_RGBA aColor, float aShine);
  void Layout();
  /// Lets the fog follow the eye and asks for a frame.
  void Refresh();
  View& ViewAt(const GLPixelPlace& aPixel);
  GLViewGeometry GeometryOf(const View& aView) const {
    return GLViewGeometry::Of(*m_context.Get(), *aView.viewer);
  }
  /// Sends a view's new eye, with planes that hold the model.
  void Send(const View& aView, GLViewGeometry aGeometry);
  /// Where a view looks from at first.
  GLViewGeometry FirstGeometry(const View& aView) const;

  std::shared_ptr<const Model> m_model;
  FrameClock m_clock;
  Progress m_progress;
  Measuring m_measure;
  const double m_yaw, m_pitch;  // of the free eye at first, radians
  GLPtr<IGLContext> m_context;  // goes after all that stands below, and with it the draw thread
  GLPtr<IGLContext2> m_control;
  GLPtr<ModelPainter> m_painter;
  GLPtr<GLViewing> m_viewing;
  std::optional<GLTransition> m_transition;  // of the free view
  Clock::time_point m_transitionStart;
  std::vector<View> m_views;  // the free one first, which is so drawn last
  GLDATA_RGBA m_background;
  int m_width;
  int m_height;
  int m_count;
  Shade m_shade;
  bool m_fog;
  bool m_axes;
  bool m_text = false;
  bool m_textures = true;
  bool m_onRequest = false;
  Section m_section;
};
