// Contexts under test with painters made of functions: one on the headless display, driven frame by frame,
// and a free-running one; captures and fonts for them. Draw threads run painters and read pictures; the
// test's thread waits for them.

#pragma once

#include "platform/GL.h"
#include "support/Picture.h"
#include "support/Test.h"

/// Arguments of a painter. Draw thread; valid during the call.
class Scene {
 public:
  Scene(IGLCanvas& aCanvas, IGLContext& aContext, IGLViewer& aViewer)
      : m_Canvas(aCanvas), m_Context(aContext), m_Viewer(aViewer) {}

  IGLCanvas& Canvas() const { return m_Canvas; }
  IGLContext& Context() const { return m_Context; }
  IGLViewer& Viewer() const { return m_Viewer; }
  /// Returns another interface of the canvas.
  template <class Interface>
  GLPtr<Interface> CanvasAs() const {
    GLPtr<Interface> result;
    m_Canvas.QueryInterface(Interface::Identifier, result.PutVoid());
    return result;
  }

 private:
  IGLCanvas& m_Canvas;
  IGLContext& m_Context;
  IGLViewer& m_Viewer;
};

using DrawFunction = std::function<void(Scene&)>;

/// A painter that calls a function.
class TestPainter : public GLPainterBase {
 public:
  explicit TestPainter(DrawFunction aDraw) : m_Draw(std::move(aDraw)) {}
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer* aViewer) noexcept override;

 private:
  DrawFunction m_Draw;
};

/// An initialised context with one visible viewer in parallel projection. It draws when Frame requests it,
/// and may draw at other times without the frame's function. Each wait ends after 20 s with a failure.
class ContextFixture {
 public:
  ContextFixture(int aWidth, int aHeight);
  ~ContextFixture();
  ContextFixture(ContextFixture&&) = delete;

  IGLContext& Context() const { return *m_Context; }
  /// Returns another interface of the context.
  template <class Interface>
  GLPtr<Interface> ContextAs() const {
    return m_Context.As<Interface>();
  }
  IGLViewer& Viewer() const { return *m_Viewer; }

  /// Draws a frame, in which the painter calls a function once per visible viewer, and waits for its end. A
  /// GL error fails the running test.
  void Frame(const DrawFunction& aDraw = [](Scene&) {});
  /// Like Frame. @return the window's picture, with overlays
  Picture FramePicture(const DrawFunction& aDraw = [](Scene&) {});

 private:
  struct Shared;
  class FrameEnd;

  enum class Reading { kNothing, kPicture };
  Picture Run(const DrawFunction& aDraw, Reading aReading);

  int m_iWidth, m_iHeight;
  std::shared_ptr<Shared> m_Shared;
  GLPtr<IGLContext> m_Context;
  GLPtr<IGLViewer> m_Viewer;
};

/// An initialised free-running context with one viewer in parallel projection.
struct FreeContext {
  explicit FreeContext(DrawFunction aDraw = {}, int aWidth = 32, int aHeight = 32, ULONG_PTR aParent = 0);

  /// Waits for a number of further calls of the painter.
  void Await(int aFrames) const;

  GLPtr<IGLContext> context = GLCreate<IGLContext>(CLSID_GLContext);
  IGLViewer* viewer = nullptr;
  /// Number of calls of the painter: frames, captures and selections. The painter shares it.
  std::shared_ptr<std::atomic<int>> frames = std::make_shared<std::atomic<int>>(0);
};

/// Takes one picture per request, and keeps the result.
class TestCapture : public GLCaptureBase {
 public:
  HRESULT OnData(LONG aSuccess) noexcept override {
    answer = aSuccess;
    return S_OK;
  }
  /// Requests a picture of the next frame. @return the argument of OnData; -1 if it was not called
  LONG Take();

  GLPtr<IGLPixmap> target = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  GLCaptureRequest request;
  std::atomic<LONG> answer{-1};
};

/// Returns the coordinate system of a viewer's eye.
GLPtr<IGLCoord> EyeOf(IGLViewer& aViewer);

/// Draws a rectangle that is parallel to the screen.
void DrawRectangle(IGLCanvas& aCanvas, double aX1, double aY1, double aX2, double aY2, double aZ = 0);

struct Selection {
  HRESULT result;
  std::vector<ULONG> ids;
};
struct PickOptions {
  bool closest = false, enclosed = false;
  int capacity = 64;  ///< of the host's array
};
/// Selects in a box. Unless only enclosed identifiers are kept, the rest of the host's array must be 0.
Selection Pick(IGLContext& aContext, IGLViewer& aViewer, GLDATA_POINT aFirst, GLDATA_POINT aSecond,
               PickOptions aOptions = {});

/// Creates a font of each kind: system, atlas, raster and outlines. The latter two take long.
using Fonts = std::array<GLPtr<IGLFont>, 4>;
Fonts MakeFonts(IGLContext& aContext);
/// Creates the first two.
Fonts MakeQuickFonts(IGLContext& aContext);
