/// @file
/// Drawing over the scene, header only: a scoped overlay for labels, text with a fixed size on the screen,
/// and the model point under a pixel. The functions call GL, so the host links GL (-lGL, opengl32). For
/// painters and gauges, on the draw thread.

#pragma once

#include <GL/gl.h>
#include <gllib/GLString.h>
#include <gllib/GLViewMath.h>

#include <cmath>
#include <initializer_list>
#include <optional>
#include <utility>

/// The part of the surface into which the running pass draws.
struct GLPassArea {
  GLint m_aiViewport[4];  ///< viewport of the whole picture
  GLint m_aiVisible[4];   ///< drawable part: the clip rectangle, or the whole viewport

  /// Reads the values from GL.
  static GLPassArea Current() noexcept {
    GLPassArea area{};
    glGetIntegerv(GL_VIEWPORT, area.m_aiViewport);
    glGetIntegerv(glIsEnabled(GL_SCISSOR_TEST) != GL_FALSE ? GL_SCISSOR_BOX : GL_VIEWPORT, area.m_aiVisible);
    return area;
  }
  /// Returns whether a pixel is in the drawable part. Pixels count from the lower left.
  bool Holds(GLint aX, GLint aY) const noexcept {
    const auto holds = [&](const GLint* aBox) {
      return aX >= aBox[0] && aY >= aBox[1] && aX - aBox[0] < aBox[2] && aY - aBox[1] < aBox[3];
    };
    return holds(m_aiVisible) && holds(m_aiViewport);
  }
};

/// Units of the coordinates of an overlay.
enum class GLOverlayUnits {
  World,  ///< world coordinates, as in the painter
  Pixels  ///< pixels from the top left of the viewer, y points down
};

/// A scope in which drawing covers everything: depth test, clip planes, lighting, fog, textures and culling
/// are off. The destructor restores them, the matrices and the current colour. Overlays nest like pushes.
/// Each takes one entry of the attribute stack and of both matrix stacks.
///
/// Use separate draw attributes inside. If the object applied last inside is the first one applied after the
/// overlay, the canvas sends only its colour (IGLCanvas::SetDrawAttributes). In a selection pass the position
/// of an overlay in pixels does not match the picture: do not draw it there.
class GLOverlay {
 public:
  /// @param aUnits units of the coordinates
  /// @param aScale factor of a picture larger than the window (GLViewing::Scale); units remain pixels of the
  ///               window
  explicit GLOverlay(GLOverlayUnits aUnits = GLOverlayUnits::World, double aScale = 1.0) noexcept
      : m_Area(GLPassArea::Current()), m_dScale(aScale) {
    glPushAttrib(GL_ENABLE_BIT | GL_DEPTH_BUFFER_BIT | GL_CURRENT_BIT | GL_LIGHTING_BIT | GL_LINE_BIT |
                 GL_POINT_BIT | GL_POLYGON_BIT | GL_TRANSFORM_BIT);
    for (const GLenum off : std::initializer_list<GLenum>{GL_DEPTH_TEST, GL_LIGHTING, GL_FOG, GL_TEXTURE_1D,
                                                          GL_TEXTURE_2D, GL_CULL_FACE, GL_LINE_STIPPLE,
                                                          GL_POLYGON_STIPPLE, GL_COLOR_MATERIAL}) {
      glDisable(off);
    }
    GLint planes = 0;
    glGetIntegerv(GL_MAX_CLIP_PLANES, &planes);
    for (GLint i = 0; i < planes; ++i) glDisable(GL_CLIP_PLANE0 + static_cast<GLenum>(i));
    glDepthMask(GL_FALSE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    if (aUnits == GLOverlayUnits::Pixels) SetPixels();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    if (aUnits == GLOverlayUnits::Pixels) glLoadIdentity();
  }
  ~GLOverlay() {
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glPopAttrib();
  }
  GLOverlay(const GLOverlay&) = delete;
  GLOverlay& operator=(const GLOverlay&) = delete;

  /// Returns the width of the viewer in overlay pixels.
  double Width() const noexcept { return m_Area.m_aiVisible[2] / m_dScale; }
  /// Returns the height of the viewer in overlay pixels.
  double Height() const noexcept { return m_Area.m_aiVisible[3] / m_dScale; }

  /// Converts a world point to an overlay in pixels; z is its depth from 0 to 1.
  /// @return the point; nothing for a point outside the depth range of the view volume
  std::optional<GLDATA_POINT> PlaceOf(IGLCanvas& aCanvas, GLDATA_POINT aPoint) const noexcept {
    const auto mapping = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas3>();
    GLDATA_POINT window = {0, 0, -1};
    if (mapping) mapping->GetWindowCoords(&aPoint, 1, &window);
    if (!(window.z >= 0.0 && window.z <= 1.0)) return std::nullopt;
    const GLint* visible = m_Area.m_aiVisible;
    return GLDATA_POINT{(window.x - visible[0]) / m_dScale, (visible[1] + visible[3] - window.y) / m_dScale,
                        window.z};
  }

 private:
  void SetPixels() const noexcept {
    const GLint* visible = m_Area.m_aiVisible;
    const GLint* viewport = m_Area.m_aiViewport;
    const double left = viewport[0] - visible[0], bottom = visible[1] + visible[3] - viewport[1];
    glLoadIdentity();
    glOrtho(left / m_dScale, (left + viewport[2]) / m_dScale, bottom / m_dScale,
            (bottom - viewport[3]) / m_dScale, -1.0, 1.0);
  }

  GLPassArea m_Area;
  double m_dScale;
};

/// Text of one face with a fixed size on the screen, also in pictures with a scale factor.
class GLRasterText {
 public:
  /// @param aFace, aFontStyle, aWeight, aHeight as at IGLContext::CreateRasterFont; the height must not be 0
  GLRasterText(GLString aFace, int aHeight, int aWeight = 400, int aFontStyle = 0)
      : m_Face(std::move(aFace)), m_iHeight(aHeight), m_iWeight(aWeight), m_iStyle(aFontStyle) {}

  /// Draws a text in the current colour with its lower left corner at a point. A call whose factor differs
  /// from earlier ones creates a font in the context, so no list may be open.
  /// @param aContext the running pass's context
  /// @param aText     as at IGLFont::Print
  /// @param aPlace    position in current coordinates
  /// @param aScale    as at GLOverlay
  /// @return as IGLFont::Print
  HRESULT Print(IGLContext& aContext, BSTR aText, GLDATA_POINT aPlace, double aScale = 1.0) {
    Size& size = aScale == 1.0 ? m_Window : m_Picture;
    const int height = static_cast<int>(std::lround(m_iHeight * aScale));
    if (size.font != nullptr && size.height != height)
      aContext.DestroyFont(std::exchange(size.font, nullptr));
    if (size.font == nullptr) {
      aContext.CreateRasterFont(m_Face, m_iStyle, m_iWeight, 0.0f, height, 0, &size.font);
      size.height = height;
    }
    return size.font != nullptr ? size.font->Print(aText, &aPlace) : E_FAIL;
  }
  /// Removes the fonts from their context. Without this call they exist until the context ends. Any thread.
  void Destroy(IGLContext& aContext) noexcept {
    for (Size* size : {&m_Window, &m_Picture}) {
      if (size->font != nullptr) aContext.DestroyFont(std::exchange(size->font, nullptr));
    }
  }

 private:
  struct Size {
    IGLFont* font = nullptr;  // borrowed from the context
    int height = 0;           // pixels
  };

  GLString m_Face;
  int m_iHeight, m_iWeight, m_iStyle;
  Size m_Window, m_Picture;  // the picture's font is kept for the next picture
};

/// Reads the depth buffer and returns the world point that the running pass has drawn at a pixel. Call it at
/// the end of a painter in a frame's pass. Other host code calls GLViewing::PointUnder.
/// @param aCanvas  the argument of the painter
/// @param aContext the argument of the painter
/// @param aPixel   position in the window; the middle of its pixel is used
/// @return the point; nothing if nothing was drawn there, or outside the viewer
inline std::optional<GLDATA_POINT> GLReadPoint(IGLCanvas& aCanvas, IGLContext& aContext,
                                               const GLPixelPlace& aPixel) noexcept {
  int height = 0;
  aContext.GetViewportHeight(&height);
  if (!(std::abs(aPixel.x) < 1e6 && std::abs(aPixel.y) < 1e6)) return std::nullopt;
  const auto x = static_cast<GLint>(std::floor(aPixel.x));
  const GLint y = height - 1 - static_cast<GLint>(std::floor(aPixel.y));
  if (!GLPassArea::Current().Holds(x, y)) return std::nullopt;
  const auto mapping = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas3>();
  if (!mapping) return std::nullopt;
  GLfloat depth = 1.0f;
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  glPushAttrib(GL_PIXEL_MODE_BIT);
  glPixelStorei(GL_PACK_ALIGNMENT, 4);
  for (const GLenum unset : std::initializer_list<GLenum>{GL_PACK_SWAP_BYTES, GL_PACK_ROW_LENGTH,
                                                          GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS}) {
    glPixelStorei(unset, 0);
  }
  glPixelTransferf(GL_DEPTH_SCALE, 1.0f);
  glPixelTransferf(GL_DEPTH_BIAS, 0.0f);
  glReadPixels(x, y, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
  glPopAttrib();
  glPopClientAttrib();
  if (!(depth < 1.0f)) return std::nullopt;
  GLDATA_POINT window = {x + 0.5, y + 0.5, depth}, point = {NAN, NAN, NAN};
  mapping->GetModelCoords(&window, 1, &point);
  return std::isfinite(point.x) ? std::optional(point) : std::nullopt;
}
