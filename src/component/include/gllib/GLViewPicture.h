/// @file
/// A picture of all viewers at a scale factor, header only: GLViewing::TakePicture plans, draws and crops it.
/// A part of gllib/GLViewing.h. Draw thread, except the constructor.

#pragma once

#include <GL/gl.h>
#include <gllib/GLScaledCanvas.h>
#include <gllib/GLViewerStack.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <future>
#include <initializer_list>
#include <utility>

/// One picture, from the request to its completion.
///
/// The component clears the rectangle of a clipped viewer at its position in the window. In an enlarged
/// picture this would erase parts of other viewers. The picture is therefore drawn above and to the right of
/// all clip rectangles, on a surface larger by one window. If rectangles extend beyond the window, the
/// surface is larger by several windows.
class GLViewPicture {
 public:
  GLViewPicture() = default;
  /// @param aTarget receives the picture
  /// @param aRequest part, zoom and background of the picture
  GLViewPicture(IGLPixmap* aTarget, const GLCaptureRequest& aRequest)
      : m_pTarget(GLPtr<IGLPixmap>::FromBorrowed(aTarget)), m_Request(aRequest) {}

  /// Returns the future that Complete or Refuse sets: whether the pixmap holds the picture.
  std::future<bool> Taken() { return m_Taken.get_future(); }
  /// Reports the result to the host.
  void Complete(bool aTaken) { m_Taken.set_value(aTaken); }
  /// Reports to the host that there is no picture.
  void Refuse() { m_Taken.set_value(false); }

  /// Selects how to draw. @return false if there is nothing to draw
  bool Plan(IGLContext& aContext) noexcept {
    m_iFactor = m_Request.m_fZoom >= 1.0f && m_Request.m_fZoom < float{kTooLarge}
                    ? static_cast<int>(m_Request.m_fZoom)
                    : 0;
    aContext.GetViewportWidth(&m_iWidth);
    aContext.GetViewportHeight(&m_iHeight);
    m_iShift = m_iFactor > 1 ? (std::max)(ReachOfViewers(aContext), m_bClipsChanged ? 1 : 0) : 0;
    m_bClipsChanged = m_bCleared = false;
    m_fLineWidth = m_fPointSize = 0.0f;
    if (m_iShift > 0) m_pSurface = GLCreate<IGLPixmap>(CLSID_GLPixmap);
    return m_iFactor >= 1 && m_iShift < kTooLarge && m_pTarget && (m_iShift == 0 || m_pSurface) &&
           m_Request.m_iX >= 0 && m_Request.m_iY >= 0 && m_Request.m_iX < m_iWidth &&
           m_Request.m_iY < m_iHeight && m_Request.m_iWidth >= 1 && m_Request.m_iHeight >= 1;
  }

  // Values for the component's capture.

  /// Returns the pixmap; borrowed.
  IGLPixmap* Pixmap() const noexcept { return m_iShift > 0 ? m_pSurface.Get() : m_pTarget.Get(); }
  /// Returns the zoom.
  float Zoom() const noexcept { return static_cast<float>(m_iFactor + m_iShift); }
  /// Returns the part of the window.
  GLCaptureRequest Rectangle() const noexcept { return m_iShift > 0 ? GLCaptureRequest() : m_Request; }
  /// Returns the background colour.
  const GLDATA_RGBA& Background() const noexcept { return m_Request.m_sBackground; }
  /// Returns the scale factor from window to picture.
  int Factor() const noexcept { return m_iFactor; }

  /// Draws one viewer with the host's painter.
  HRESULT Draw(IGLPainter& aPainter, IGLCanvas& aCanvas, IGLContext& aContext, IGLViewer& aViewer) noexcept {
    if (m_iFactor == 1) return aPainter.Draw(&aCanvas, &aContext, &aViewer);
    const bool clipped = glIsEnabled(GL_SCISSOR_TEST) != GL_FALSE;
    if (clipped && m_iShift == 0) m_bClipsChanged = true;
    if (m_iShift > 0) Shift(aCanvas, clipped);
    // Enlarges the sizes that the component's overlay has set since the previous viewer.
    GLfloat width = 1, size = 1;
    glGetFloatv(GL_LINE_WIDTH, &width);
    glGetFloatv(GL_POINT_SIZE, &size);
    if (width != m_fLineWidth) glLineWidth(width * static_cast<GLfloat>(m_iFactor));
    if (size != m_fPointSize) glPointSize(size * static_cast<GLfloat>(m_iFactor));
    GLScaledCanvas canvas(aCanvas, m_iFactor);
    const HRESULT result = aPainter.Draw(&canvas, &aContext, &aViewer);
    glGetFloatv(GL_LINE_WIDTH, &m_fLineWidth);
    glGetFloatv(GL_POINT_SIZE, &m_fPointSize);
    if (clipped && m_iShift > 0) DrawFrame(aViewer);
    return result;
  }

  /// Returns whether the window's size or a viewer's clip changed between plan and drawing. The next frame
  /// then tries again, a few times at most.
  bool HasToRepeat() noexcept {
    constexpr int kMostAttempts = 8;
    return (m_bClipsChanged || !FitsPlan()) && ++m_iAttempts < kMostAttempts;
  }

  /// Copies the requested part from the surface, whose rows run from the bottom up.
  bool CutOut() const noexcept {
    if (!FitsPlan()) return false;
    if (m_iShift == 0) return true;
    const int f = m_iFactor;
    const int columns = (std::min)(m_Request.m_iWidth, m_iWidth - m_Request.m_iX);
    const int rows = (std::min)(m_Request.m_iHeight, m_iHeight - m_Request.m_iY);
    int size = 0;
    GLDATA_RGBA4B *from = nullptr, *to = nullptr;
    if (FAILED(m_pTarget->Initialize(columns * f, rows * f, {0, 0, 0, 255})) ||
        FAILED(m_pSurface->AccessPixmapData(&size, &from)) ||
        FAILED(m_pTarget->AccessPixmapData(&size, &to))) {
      return false;
    }
    const std::ptrdiff_t pitch = std::ptrdiff_t{m_iWidth} * (f + m_iShift);
    const std::ptrdiff_t bottom =
        std::ptrdiff_t{m_iHeight} * m_iShift + std::ptrdiff_t{m_iHeight - m_Request.m_iY - rows} * f;
    from += bottom * pitch + std::ptrdiff_t{m_iWidth} * m_iShift + std::ptrdiff_t{m_Request.m_iX} * f;
    for (int row = 0; row < rows * f; ++row, from += pitch, to += columns * f) {
      std::copy_n(from, columns * f, to);
    }
    return true;
  }

 private:
  static constexpr int kTooLarge = 16384;  // limit of factor and shift

  /// Returns how many windows side by side contain an edge at a distance from the window's corner.
  static int Windows(int aStart, int aLength, int aWindow) noexcept {
    const std::int64_t edge = std::int64_t{aStart} + aLength;
    return static_cast<int>(std::min<std::int64_t>((edge + aWindow - 1) / aWindow, kTooLarge));
  }
  /// Returns how many windows contain a clip rectangle, at least 1.
  int Reach(const GLint* aBox) const noexcept {
    return (std::max)({1, Windows(aBox[0], aBox[2], m_iWidth), Windows(aBox[1], aBox[3], m_iHeight)});
  }
  /// Returns the greatest reach of the viewers that are drawn; 0 if none is clipped. The first one counts as
  /// 1: the component clears its rectangle before anything is drawn.
  int ReachOfViewers(IGLContext& aContext) const noexcept try {
    int reach = 0;
    bool first = true;
    for (const auto& viewer : GLViewersOf(aContext)) {
      LONG visible = 0, clipped = 0;
      viewer->IsVisible(&visible);
      viewer->IsClipped(&clipped);
      if (visible == 0) continue;
      GLint box[4] = {};
      if (!std::exchange(first, false)) {
        viewer->GetClipX(&box[0]);
        viewer->GetClipY(&box[1]);
        viewer->GetClipWidth(&box[2]);
        viewer->GetClipHeight(&box[3]);
      }
      if (clipped != 0) reach = (std::max)(reach, Reach(box));
    }
    return reach;
  } catch (...) {
    return 1;
  }

  /// Returns whether the component used the window size of the plan.
  bool FitsPlan() const noexcept {
    if (m_iShift == 0) return true;
    int width = 0, height = 0;
    m_pSurface->GetWidth(&width);
    m_pSurface->GetHeight(&height);
    const std::int64_t windows = m_iFactor + m_iShift;
    return width == m_iWidth * windows && height == m_iHeight * windows;
  }

  /// Moves the pass of a viewer from its position in the window to its position in the picture.
  void Shift(IGLCanvas& aCanvas, bool aClipped) noexcept {
    const int f = m_iFactor;
    GLint viewport[4] = {}, box[4] = {0, 0, m_iWidth, m_iHeight};
    glGetIntegerv(GL_VIEWPORT, viewport);
    if (aClipped) glGetIntegerv(GL_SCISSOR_BOX, box);
    const GLint left = m_iWidth * m_iShift, bottom = m_iHeight * m_iShift;
    const bool whole = viewport[2] == m_iWidth * f + left && viewport[3] == m_iHeight * f + bottom;
    const GLint drawn[4] = {left + box[0] * f, bottom + box[1] * f, box[2] * f, box[3] * f};
    glEnable(GL_SCISSOR_TEST);
    if (!std::exchange(m_bCleared, true)) {  // the area outside all viewers
      glScissor(left, bottom, m_iWidth * f, m_iHeight * f);
      glClear(GL_COLOR_BUFFER_BIT);
    } else if (aClipped && Reach(box) > m_iShift) {
      m_bClipsChanged = true;
    }
    glScissor(drawn[0], drawn[1], drawn[2], drawn[3]);
    if (whole) {
      glViewport(left, bottom, m_iWidth * f, m_iHeight * f);
    } else {
      glViewport(drawn[0], drawn[1], drawn[2], drawn[3]);
    }
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    // Updates the matrices that the canvas uses for conversions.
    GLDATA_POINT point{}, window{};
    if (const auto mapping = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas3>()) {
      mapping->GetWindowCoords(&point, 0, &window);
    }
  }

  /// Draws the frame of a viewer as the component does later, but with an enlarged width.
  void DrawFrame(IGLViewer& aViewer) const noexcept {
    LONG shown = 0;
    aViewer.IsClipFrameVisible(&shown);
    if (shown == 0) return;
    GLDATA_RGBA color{};
    float offset = 0, thickness = 1;
    aViewer.GetFrameColor(&color);
    aViewer.GetFrameOffset(&offset);
    aViewer.GetFrameThickness(&thickness);
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LINE_BIT | GL_TRANSFORM_BIT);
    glDisable(GL_LIGHTING);
    glDisable(GL_LINE_STIPPLE);
    GLint planes = 0;
    glGetIntegerv(GL_MAX_CLIP_PLANES, &planes);
    for (GLint i = 0; i < planes; ++i) glDisable(GL_CLIP_PLANE0 + static_cast<GLenum>(i));
    for (const GLenum matrix : std::initializer_list<GLenum>{GL_PROJECTION, GL_MODELVIEW}) {
      glMatrixMode(matrix);
      glPushMatrix();
      glLoadIdentity();
    }
    const GLfloat edge = 1.0f - offset;
    glLineWidth(thickness * static_cast<GLfloat>(m_iFactor));
    glColor4f(color.m_fRed, color.m_fGreen, color.m_fBlue, color.m_fAlpha);
    glBegin(GL_LINE_LOOP);
    glVertex2f(-edge, -edge);
    glVertex2f(edge, -edge);
    glVertex2f(edge, edge);
    glVertex2f(-edge, edge);
    glEnd();
    for (const GLenum matrix : std::initializer_list<GLenum>{GL_PROJECTION, GL_MODELVIEW}) {
      glMatrixMode(matrix);
      glPopMatrix();
    }
    glPopAttrib();
  }

  GLPtr<IGLPixmap> m_pTarget;
  GLCaptureRequest m_Request;
  std::promise<bool> m_Taken;
  int m_iAttempts = 0;
  int m_iFactor = 1;
  int m_iWidth = 0, m_iHeight = 0;  // window size
  int m_iShift = 0;  // windows between the surface's corner and the picture; 0 if no viewer is clipped
  bool m_bCleared = false;
  bool m_bClipsChanged = false;                // a viewer was drawn that the plan has no place for
  GLPtr<IGLPixmap> m_pSurface;                 // surface of a shifted picture
  GLfloat m_fLineWidth = 0, m_fPointSize = 0;  // after the painter
};
