// A context under test on the headless display, driven frame by frame, with a painter made of a function.
// The context's draw thread runs painters and reads pictures; the test's thread waits for it.

#pragma once

#include <gllib/GLLibHost.h>

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
  std::thread::id DrawThread() const;

  /// Draws a whole frame, in which the painter calls a function once a visible viewer, and waits for its end.
  /// A GL error that the frame left fails the running test.
  void Frame(const DrawFunction& aDraw = [](Scene&) {});
  /// As Frame. @return the window's picture, overlays included
  Picture FramePicture(const DrawFunction& aDraw = [](Scene&) {});

 private:
  struct Shared;
  class FrameEnd;

  Picture Run(const DrawFunction& aDraw, bool aReads);

  int m_iWidth, m_iHeight;
  std::shared_ptr<Shared> m_Shared;
  GLPtr<IGLContext> m_Context;
  GLPtr<IGLViewer> m_Viewer;
};

/// One frame of a context made for it, with the viewer as a context makes it.
Picture DrawThroughContext(int aWidth, int aHeight, const DrawFunction& aDraw);
