// GLViewer: one view of a context: eye, projection, clip rectangle with its frame, gauges, axes.
// Host threads set the values; the draw thread reads them in each pass. Each member is atomic, the whole is
// not.

#pragma once

#include <gllib/IGLCollection.h>
#include <gllib/IGLCoord.h>
#include <gllib/IGLFont.h>
#include <gllib/IGLViewer.h>
#include <gllib/IGLViewerGauge.h>

#include "component/GLObject.h"
#include "thread/Guarded.h"
#include "thread/Relaxed.h"
#include "view/ViewSetup.h"

class GLContextSite;
struct IGLCanvas;
struct IGLContext;

class GLViewer final : public GLObject<GLViewer, IGLViewer, IGLViewer2> {
 public:
  /// Throws std::bad_alloc if the coordinate system or the collection cannot be created.
  GLViewer();
  ~GLViewer();

  // IGLViewer
  HRESULT Show(LONG aShow) noexcept override;
  HRESULT IsVisible(LONG* aVisible) noexcept override;
  HRESULT SetOrtho(LONG aOrtho) noexcept override;
  HRESULT IsOrtho(LONG* aOrtho) noexcept override;
  HRESULT ShowGauges(LONG aShow) noexcept override;
  HRESULT AreGaugesVisible(LONG* aVisible) noexcept override;
  HRESULT Clip(LONG aClip) noexcept override;
  HRESULT IsClipped(LONG* aClipped) noexcept override;
  HRESULT ScaleClip(LONG aScale) noexcept override;
  HRESULT IsClipScaled(LONG* aScaled) noexcept override;
  HRESULT ShowClipFrame(LONG aShow) noexcept override;
  HRESULT IsClipFrameVisible(LONG* aVisible) noexcept override;
  HRESULT GetEyeFovy_DEG(double* aFovy) noexcept override;
  HRESULT SetEyeFovy_DEG(double aFovy) noexcept override;
  HRESULT GetEyeZNear(double* aValue) noexcept override;
  HRESULT GetEyeZFar(double* aValue) noexcept override;
  HRESULT SetEyeZNearAndFar(double aNear, double aFar) noexcept override;
  HRESULT GetEyeAspect(double* aValue) noexcept override;
  HRESULT SetEyeAspect(double aValue) noexcept override;
  HRESULT GetOrthoExtents(GLDATA_POINT* aMin, GLDATA_POINT* aMax) noexcept override;
  HRESULT SetOrthoExtents(GLDATA_POINT* aMin, GLDATA_POINT* aMax) noexcept override;
  HRESULT GetClipX(int* aValue) noexcept override;
  HRESULT GetClipY(int* aValue) noexcept override;
  HRESULT GetClipWidth(int* aValue) noexcept override;
  HRESULT GetClipHeight(int* aValue) noexcept override;
  HRESULT SetClipRectangle(int aX, int aY, int aWidth, int aHeight) noexcept override;
  HRESULT GetFrameColor(GLDATA_RGBA* aColor) noexcept override;
  HRESULT SetFrameColor(GLDATA_RGBA* aColor) noexcept override;
  HRESULT GetFrameThickness(float* aValue) noexcept override;
  HRESULT SetFrameThickness(float aValue) noexcept override;
  HRESULT GetFrameOffset(float* aValue) noexcept override;
  HRESULT SetFrameOffset(float aValue) noexcept override;
  HRESULT AddGauge(IGLViewerGauge* aGauge) noexcept override;
  HRESULT RemoveGauge(IGLViewerGauge* aGauge) noexcept override;
  HRESULT RemoveAllGauges() noexcept override;
  HRESULT EnumGauges(IGLCollection* aColl) noexcept override;
  HRESULT GetCoord(IGLCoord** aCS) noexcept override;
  HRESULT PointWCStoSCS(GLDATA_POINT* aPntWCS) noexcept override;
  HRESULT PointSCStoWCS(GLDATA_POINT* aPntSCS) noexcept override;

  // IGLViewer2
  HRESULT GetShowAxes(LONG* pbShowAxes) noexcept override;
  HRESULT SetShowAxes(LONG bShowAxes) noexcept override;

  /// Returns a copy of the values that a pass on a window or picture of aWidth x aHeight pixels draws with.
  ViewSetup Setup(int aWidth, int aHeight) noexcept;
  /// Sets the aspect of the window's view, which the point conversions use. Draw thread.
  void NoteWindowAspect(double aAspect) noexcept { m_dWindowAspect = aAspect; }

  /// Runs the overlay pass: draws clip frame, gauges and axes. Draw thread, after the painter.
  void DrawOverlay(IGLCanvas* aCanvas, IGLContext* aContext, const GLContextSite& aSite) noexcept;

 private:
  /// Distances of the planes that limit a perspective view.
  struct Planes {
    double m_dNear, m_dFar;
  };
  /// Two corners of the parallel view volume.
  struct Extents {
    GLDATA_POINT m_sLow, m_sHigh;
  };

  void DrawFrame() noexcept;
  void DrawGauges(IGLCanvas* aCanvas, IGLContext* aContext) noexcept;
  void DrawAxes(IGLContext* aContext, const GLContextSite& aSite) noexcept;
  void CreateAxisFont(IGLContext& aContext) noexcept;
  void TurnWithEye() noexcept;
  void PrintAxisNames() noexcept;
  bool HasGauges() noexcept;
  double EyeDistance() const noexcept;

  Relaxed<bool> m_bVisible = true;
  Relaxed<bool> m_bOrtho = true;
  Relaxed<bool> m_bGaugesVisible = false;
  Relaxed<bool> m_bClipped = false;
  Relaxed<bool> m_bClipScaled = true;
  Relaxed<bool> m_bClipFrameVisible = true;
  Relaxed<double> m_dEyeFovy = 27.0;  // vertical, degrees
  Guarded<Planes> m_EyeZ{{0.1, 1000.0}};
  Relaxed<double> m_dEyeAspect = 1.0;     // host's factor on the window's aspect
  Relaxed<double> m_dWindowAspect = 1.0;  // width / height at the last pass of the window
  Guarded<Extents> m_OrthoExtents{{{-50.0, -50.0, 0.0}, {50.0, 50.0, 1000.0}}};
  Guarded<ViewSetup::Rectangle> m_ClipRectangle{{10, 10, 100, 100}};
  RelaxedColor m_sFrameColor{1.0f, 1.0f, 1.0f, 1.0f};
  Relaxed<float> m_fFrameThickness = 1.0f;
  Relaxed<float> m_fFrameOffset = 0.0f;  // in normalised device units
  GLPtr<IGLCollection> m_pGauges;
  GLPtr<IGLCoord> m_pCoord;
  GLPtr<IGLFont> m_pAxisFont;  // created at first use; draw thread only
  Relaxed<bool> m_bShowAxes = false;
};
