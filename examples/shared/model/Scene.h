// Scene: the model in a context: its views, lights and fog, and picking in them.
// The host's thread only; the window and the picture without a display are both shown through it.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <array>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "shared/model/Camera.h"
#include "shared/model/FrameClock.h"
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

  /// Turns, pans and zooms as a drag or wheel at a pixel asks. Pixels from the top left, y down.
  void Turn(int aX, int aY, double aRight, double aDown);
  void Pan(int aX, int aY, double aRight, double aDown);
  void Zoom(double aFactor);
  /// Goes back to where the camera was at first.
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
  /// @return as SceneCapture::Take
  std::future<std::optional<Picture>> Capture(int aZoom);

 private:
  struct View {
    Direction direction = Direction::Free;
    IGLViewer* viewer = nullptr;  // borrowed, the context's
    GLPtr<Overlay> overlay;
    int x = 0, y = 0, width = 1, height = 1;  // in pixels from the lower left; the capture sends them
    bool shown = false;
  };

  void AddView(Direction aDirection, bool aOrtho);
  void AddLights();
  void AddLight(const GLDATA_POINT& aDirection, GLDATA_RGBA aColor, float aShine);
  void Layout();
  /// Sends the camera to all views and asks for a frame.
  void Refresh();
  View& ViewAt(int aX, int aY);
  /// The place of a pixel in a view, each coordinate from -1 to 1.
  GLDATA_POINT Place(const View& aView, double aX, double aY) const;

  std::shared_ptr<const Model> m_model;
  FrameClock m_clock;
  Progress m_progress;
  const double m_yaw, m_pitch;  // of the camera at first, radians
  Camera m_camera;
  GLPtr<IGLContext> m_context;  // goes after all that stands below, and with it the draw thread
  GLPtr<IGLContext2> m_control;
  GLPtr<ModelPainter> m_painter;
  GLPtr<SceneCapture> m_capture;
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
};
