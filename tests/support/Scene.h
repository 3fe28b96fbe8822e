// Contexts under test with painters made of functions: one on the headless display, driven frame by frame,
// and one that draws by itself; captures and fonts for them. Draw threads run painters and read pictures;
// the test's thread waits for them.

#pragma once

#include <gllib/GLLibHost.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>

#include "support/Picture.h"

/// What a painter is given. On the draw thread, for the length of the call.
class Scene {
 public:
  Scene(IGLCanvas& aCanvas, IGLContext& aContext, IGLViewer& aViewer)
      : m_Canvas(aCanvas), m_Context(aContext), m_Viewer(aViewer) {}

  IGLCanvas& Canvas() const { return m_Canvas; }
  IGLContext& Context() const { return m_Context; }
  IGLViewer& Viewer() const { return m_Viewer; }
  /// The canvas by another of its interfaces.
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

/// A painter over a function.
class TestPainter : public GLPainterBase {
 public:
  explicit TestPainter(DrawFunction aDraw) : m_Draw(std::move(aDraw)) {}
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer* aViewer) noexcept override;

 private:
  DrawFunction m_Draw;
};

/// An initialised context with one visible viewer in parallel projection. It draws when Frame asks for it,
/// and may draw at other times, then without the frame's function. Every wait ends after 20 s with a failure.
class ContextFixture {
 public:
  ContextFixture(int aWidth, int aHeight);
  ~ContextFixture();
  ContextFixture(const ContextFixture&) = delete;
  ContextFixture& operator=(const ContextFixture&) = delete;

  IGLContext& Context() const { return *m_Context; }
  /// The context by another of its interfaces.
  template <class Interface>
  GLPtr<Interface> ContextAs() const {
    return m_Context.As<Interface>();
  }
  IGLViewer& Viewer() const { return *m_Viewer; }

  /// Draws a whole frame, in which the painter calls a function once a visible viewer, and waits for its end.
  /// A GL error that the frame left fails the running test.
  void Frame(const DrawFunction& aDraw = [](Scene&) {});
  /// As Frame. @return the window's picture, overlays included
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

/// An initialised context with one viewer in parallel projection, which draws by itself.
struct FreeContext {
  explicit FreeContext(DrawFunction aDraw = {}, int aWidth = 32, int aHeight = 32, ULONG_PTR aParent = 0);

  /// Expects so many more frames.
  void Await(int aFrames) const;

  GLPtr<IGLContext> context = GLCreate<IGLContext>(CLSID_GLContext);
  IGLViewer* viewer = nullptr;
  std::shared_ptr<std::atomic<int>> frames = std::make_shared<std::atomic<int>>(0);  // with the painter's
};

/// Takes one picture when asked, and keeps what it was told.
class TestCapture : public GLCaptureBase {
 public:
  HRESULT OnData(LONG aSuccess) noexcept override {
    answer = aSuccess;
    return S_OK;
  }
  /// Asks for a picture of the next frame. @return what OnData was told; -1 without an answer
  LONG Take();

  GLPtr<IGLPixmap> target = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  GLCaptureRequest request;
  std::atomic<LONG> answer{-1};
};

/// A font of each kind: of the system, of an atlas, of pixels and of outlines. The latter two take long.
using Fonts = std::array<GLPtr<IGLFont>, 4>;
Fonts MakeFonts(IGLContext& aContext);
/// The first two only.
Fonts MakeQuickFonts(IGLContext& aContext);
