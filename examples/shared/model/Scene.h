// Scene: a model in a context, with views, lights, fog and picking. glview and the toolkit hosts use it.
// Host's thread only.

#pragma once

#include <gllib/GLNavigation.h>
#include <gllib/GLViewing.h>

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
  /// Creates a context in a window, with initial settings.
  /// @param aParent handle of the parent window; 0 without a display
  /// @throws std::runtime_error if no context can be created
  Scene(std::shared_ptr<const Model> aModel, const SceneOptions& aOptions, ULONG_PTR aParent);
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  /// Shows another model, from the initial camera position.
  void SetModel(std::shared_ptr<const Model> aModel);
  /// Shows the progress of reading files, from 0 to 1; Progress::kIdle hides it.
  void ShowReading(float aShare);
  /// Moves to another window, for toolkits that recreate the window of a widget.
  void MoveTo(ULONG_PTR aParent);
  /// Draws after changes and once per second, not continuously.
  void DrawOnRequest();
  /// Requests a frame.
  void Redraw();
  /// Sets the size of the window, in pixels. The host calls it after each change.
  void SetSize(int aWidth, int aHeight);
  /// @param aCount 1 or 4
  void SetViews(int aCount);
  /// Adds a gauge to the view that is drawn last. When it draws, the frame is complete except for the axes.
  void AddGauge(IGLViewerGauge& aGauge) { m_views.front().viewer->AddGauge(&aGauge); }
  void SetShade(Shade aShade);
  void SetFog(bool aOn);
  void SetAxes(bool aOn);
  void SetBackground(const GLDATA_RGBA& aColor);
  /// Shows or hides the model's name.
  void SetText(bool aOn);
  Shade GetShade() const { return m_shade; }
  bool HasFog() const { return m_fog; }
  bool HasAxes() const { return m_axes; }
  bool HasText() const { return m_text; }
  /// Shows or hides the images of surfaces.
  void SetTextures(bool aOn);
  bool HasTextures() const { return m_textures; }

  /// Cuts the model by a section plane, with a slider at the right edge of the free view.
  void SetSection(const Section& aSection);
  const Section& GetSection() const { return m_section; }
  /// Returns whether a pixel lies on the slider. Pixels count from the top left, y down.
  bool IsOnSlider(const GLPixelPlace& aPixel) const;
  /// Moves the section to the dragged position of the slider.
  void DragSlider(const GLPixelPlace& aPixel);
  /// Adds the point of the model under a pixel to the measurement. @return false if there is no point
  bool MeasureAt(int aX, int aY);
  void EndMeasuring();
  std::string Measured() const { return m_measure.Text(); }

  // Navigation. Pixels count from the top left, y down.

  /// Returns the point of the model under a pixel. Without one, returns the point of the pixel's ray that is
  /// closest to the model's centre. Waits for a frame.
  GLDATA_POINT PointUnder(int aX, int aY);
  /// Returns the point of the model under a pixel, or nothing. Waits for a frame.
  std::optional<GLDATA_POINT> PointHit(int aX, int aY);
  /// Returns whether a point appears at a pixel, in the view at this pixel.
  bool Shows(const GLDATA_POINT& aPoint, const GLPixelPlace& aPixel);
  /// Turns the view at a pixel about a point. A view of fixed direction is panned instead.
  void Turn(const GLPixelPlace& aFrom, const GLPixelPlace& aTo, const GLPixelPlace& aView,
            const GLDATA_POINT& aPivot);
  /// Turns the free view about the model's centre, in radians. A positive angle moves the eye to the right.
  void Spin(double aRight);
  /// Pans the view at a pixel so that a point appears at another pixel.
  void Pan(const GLPixelPlace& aTo, const GLPixelPlace& aView, const GLDATA_POINT& aPoint);
  /// Zooms the view at a pixel. The given point keeps its position in the picture.
  /// @param aFactor less than 1 zooms in
  void Zoom(const GLPixelPlace& aView, const GLDATA_POINT& aPoint, double aFactor);
  /// Moves the eye of the free view by shares of the model's radius, and turns it left in radians.
  void Walk(double aForward, double aUp, double aLeft);
  /// Turns the free view to a standard direction in a short animation.
  void GoTo(GLStandardView aDirection);
  /// Continues the animation of GoTo.
  void Animate();
  bool IsAnimated() const { return m_transition.has_value(); }
  /// Resets all views to their initial position.
  void ResetCamera();

  /// Shows a rubber band in the view where it starts; no value hides it.
  void ShowBand(const std::optional<PixelBox>& aBox);
  /// Returns the parts that a click or box hits, each once.
  std::vector<ULONG> Pick(const PixelBox& aBox);
  /// Draws these parts in the mark colour, and no others.
  void Mark(const std::vector<ULONG>& aIds);
  /// Returns the names of parts.
  std::vector<std::string> NamesOf(const std::vector<ULONG>& aIds) const;

  double FrameMilliseconds() const { return m_clock.Milliseconds(); }
  /// Requests a picture of the current view. @param aZoom size of the picture relative to the window
  SceneCapture Capture(int aZoom);

 private:
  enum class Direction { Free, Front, Right, Top };
  struct View {
    Direction direction = Direction::Free;
    IGLViewer* viewer = nullptr;  // borrowed: the context owns it
    GLPtr<Overlay> overlay;
  };
  using Clock = std::chrono::steady_clock;

  enum class Projection { Perspective, Parallel };
  void AddView(Direction aDirection, Projection aProjection);
  void AddLights();
  void AddLight(const GLDATA_POINT& aDirection, GLDATA_RGBA aColor, float aShine);
  void Layout();
  /// Adjusts the fog to the eye and requests a frame.
  void Refresh();
  View& ViewAt(const GLPixelPlace& aPixel);
  GLViewGeometry GeometryOf(const View& aView) const {
    return GLViewGeometry::Of(*m_context.Get(), *aView.viewer);
  }
  /// Sets a view's geometry, with clip distances that contain the model.
  void Send(const View& aView, GLViewGeometry aGeometry);
  /// Returns the initial geometry of a view.
  GLViewGeometry FirstGeometry(const View& aView) const;

  std::shared_ptr<const Model> m_model;
  FrameClock m_clock;
  Progress m_progress;
  Measuring m_measure;
  const double m_yaw, m_pitch;  // initial angles of the free view, radians
  GLPtr<IGLContext> m_context;  // its end stops the draw thread, which uses the members above
  GLPtr<IGLContext2> m_control;
  GLPtr<ModelPainter> m_painter;
  GLPtr<GLViewing> m_viewing;
  std::optional<GLTransition> m_transition;  // running animation of the free view
  Clock::time_point m_transitionStart;
  std::vector<View> m_views;  // the free view is first, so it is drawn last
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
