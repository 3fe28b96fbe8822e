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
/// the window's area, on a larger surface, so that no clip rectangle reaches it. The surface is larger by one
/// window, or by as many windows as the widest and highest clip rectangles extend over, but at most by 4.
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
    m_iFactor =
        m_Request.m_fZoom >= 1.0f && m_Request.m_fZoom < 16384.0f ? static_cast<int>(m_Request.m_fZoom) : 0;
    aContext.GetViewportWidth(&m_iWidth);
    aContext.GetViewportHeight(&m_iHeight);
    m_iShift = m_iFactor > 1 ? std::max(WindowsOfClips(aContext), m_bClippedMet ? 1 : 0) : 0;
    m_bShifted = m_iShift > 0;
    m_bClippedMet = m_bCleared = false;
    m_fLineWidth = m_fPointSize = 0.0f;
    if (m_bShifted) m_pSurface = GLCreate<IGLPixmap>(CLSID_GLPixmap);
    return m_iFactor >= 1 && m_pTarget && (!m_bShifted || m_pSurface) && m_Request.m_iX >= 0 &&
           m_Request.m_iY >= 0 && m_Request.m_iX < m_iWidth && m_Request.m_iY < m_iHeight &&
           m_Request.m_iWidth >= 1 && m_Request.m_iHeight >= 1;
  }

  // Values for the component's capture.

  /// Returns the pixmap; borrowed.
  IGLPixmap* Pixmap() const noexcept { return m_bShifted ? m_pSurface.Get() : m_pTarget.Get(); }
  /// Returns the zoom.
  float Zoom() const noexcept { return static_cast<float>(m_iFactor + m_iShift); }
  /// Returns the part of the window.
  GLCaptureRequest Rectangle() const noexcept { return m_bShifted ? GLCaptureRequest() : m_Request; }
  /// Returns the background colour.
  const GLDATA_RGBA& Background() const noexcept { return m_Request.m_sBackground; }
  /// Returns the scale factor from window to picture.
  int Factor() const noexcept { return m_iFactor; }

  /// Draws one viewer with the host's painter.
  HRESULT Draw(IGLPainter& aPainter, IGLCanvas& aCanvas, IGLContext& aContext, IGLViewer& aViewer) noexcept {
    if (m_iFactor == 1) return aPainter.Draw(&aCanvas, &aContext, &aViewer);
    const bool clipped = glIsEnabled(GL_SCISSOR_TEST) != GL_FALSE;
    if (clipped && !m_bShifted) m_bClippedMet = true;
    if (m_bShifted) Shift(aCanvas, clipped);
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
    if (clipped && m_bShifted) DrawFrame(aViewer);
    return result;
  }

  /// Returns whether the window's size or a viewer's clip changed between plan and drawing. The next frame
  /// then tries again, a few times at most.
  bool HasToRepeat() noexcept {
    constexpr int kMostAttempts = 8;
    return (m_bClippedMet || !FitsPlan()) && ++m_iAttempts < kMostAttempts;
  }

  /// Copies the requested part from the surface, whose rows run from the bottom up.
  bool CutOut() const noexcept {
    if (!FitsPlan()) return false;
    if (!m_bShifted) return true;
    const int f = m_iFactor;
    const int columns = std::min(m_Request.m_iWidth, m_iWidth - m_Request.m_iX);
    const int rows = std::min(m_Request.m_iHeight, m_iHeight - m_Request.m_iY);
    int size = 0;
    GLDATA_RGBA4B *from = nullptr, *to = nullptr;
    if (FAILED(m_pTarget->Initialize(columns * f, rows * f, {0, 0, 0, 255})) ||
        FAILED(m_pSurface->AccessPixmapData(&size, &from)) ||
        FAILED(m_pTarget->AccessPixmapData(&size, &to))) {
      return false;
    }
    const std::ptrdiff_t pitch = std::ptrdiff_t{m_iWidth} * (f + m_iShift);
    from += (m_iHeight * std::ptrdiff_t{m_iShift} + std::ptrdiff_t{m_iHeight - m_Request.m_iY - rows} * f) *
                pitch +
            m_iWidth * std::ptrdiff_t{m_iShift} + std::ptrdiff_t{m_Request.m_iX} * f;
    for (int row = 0; row < rows * f; ++row, from += pitch, to += columns * f) {
      std::copy_n(from, columns * f, to);
    }
    return true;
  }

 private:
  /// Returns the number of windows, side by side, over which the rectangles of clipped viewers extend, at
  /// most 4; 0 if no viewer is clipped.
  int WindowsOfClips(IGLContext& aContext) const noexcept try {
    constexpr std::int64_t kMost = 4;  // limits the memory of the surface
    std::int64_t windows = 0;
    for (const auto& viewer : GLViewersOf(aContext)) {
      LONG visible = 0, clipped = 0;
      viewer->IsVisible(&visible);
      viewer->IsClipped(&clipped);
      if (visible == 0 || clipped == 0) continue;
      int x = 0, y = 0, width = 0, height = 0;
      viewer->GetClipX(&x);
      viewer->GetClipY(&y);
      viewer->GetClipWidth(&width);
      viewer->GetClipHeight(&height);
      const auto extent = [](std::int64_t aEnd, std::int64_t aSize) { return (aEnd + aSize - 1) / aSize; };
      windows = std::max({windows, extent(std::int64_t{x} + width, std::max(m_iWidth, 1)),
                          extent(std::int64_t{y} + height, std::max(m_iHeight, 1))});
    }
    return static_cast<int>(std::min(windows, kMost));
  } catch (...) {
    return 1;
  }

  /// Returns whether the component used the window size of the plan.
  bool FitsPlan() const noexcept {
    if (!m_bShifted) return true;
    int width = 0, height = 0;
    m_pSurface->GetWidth(&width);
    m_pSurface->GetHeight(&height);
    return width == m_iWidth * (m_iFactor + m_iShift) && height == m_iHeight * (m_iFactor + m_iShift);
  }

  /// Moves the pass of a viewer from its position in the window to its position in the picture.
  void Shift(IGLCanvas& aCanvas, bool aClipped) noexcept {
    const int f = m_iFactor, left = m_iWidth * m_iShift, bottom = m_iHeight * m_iShift;
    GLint viewport[4] = {}, box[4] = {0, 0, m_iWidth, m_iHeight};
    glGetIntegerv(GL_VIEWPORT, viewport);
    if (aClipped) glGetIntegerv(GL_SCISSOR_BOX, box);
    const bool whole = viewport[2] == m_iWidth * (f + m_iShift) && viewport[3] == m_iHeight * (f + m_iShift);
    const GLint drawn[4] = {left + box[0] * f, bottom + box[1] * f, box[2] * f, box[3] * f};
    glEnable(GL_SCISSOR_TEST);
    if (!std::exchange(m_bCleared, true)) {  // the area outside all viewers
      glScissor(left, bottom, m_iWidth * f, m_iHeight * f);
      glClear(GL_COLOR_BUFFER_BIT);
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
  int m_iShift = 0;                 // from the window's area to that of the picture, in windows
  bool m_bShifted = false;
  bool m_bCleared = false;
  bool m_bClippedMet = false;                  // an unexpected clipped viewer was drawn
  GLPtr<IGLPixmap> m_pSurface;                 // surface of a shifted picture
  GLfloat m_fLineWidth = 0, m_fPointSize = 0;  // after the painter
};
