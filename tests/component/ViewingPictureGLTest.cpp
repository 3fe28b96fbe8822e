// Pictures at a zoom factor, and text that scales with them. Headless display.

#include "component/Viewing.h"

namespace {

TEST_F(Viewing, TakesZoomedPicturesOfSeveralViewers) {
  // In the window the later rectangles overlap the place of the first one in the picture at zoom 3. A clear
  // at that position would erase parts of the first viewer. The second rectangle extends beyond the window.
  const struct {
    int ortho, x, y, width, height, scaled;
  } places[] = {{0, 3, 2, 40, 50, 1}, {1, 30, 10, 200, 150, 0}, {1, 5, 40, 30, 15, 0}};
  // In drawing order: the viewer that was created last is drawn first.
  std::vector<IGLViewer*> viewers = {AddViewer(1), AddViewer(1), m_pViewer};
  AddBackdrop();
  std::swap(viewers[0], viewers[1]);
  for (int i = 0; i < 3; ++i) {
    IGLViewer& viewer = *viewers[static_cast<std::size_t>(i)];
    const auto& place = places[i];
    viewer.SetOrtho(place.ortho);
    viewer.Clip(1);
    viewer.ScaleClip(place.scaled);
    viewer.SetClipRectangle(place.x, place.y, place.width, place.height);
    viewer.SetFrameOffset(0.05f);
    GLDATA_RGBA color{1, 1, 0, 1};
    viewer.SetFrameColor(&color);
    GLDATA_POINT low{-4, -4, 1}, high{4, 4, 50};
    viewer.SetOrthoExtents(&low, &high);
    viewer.SetEyeZNearAndFar(1, 50);
    EyeOf(viewer)->SetOrigin3d(0, 0, 15);
  }
  const auto attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  attributes->EnableDrawMode(static_cast<eGLDrawMode>(GLDM_SHOW_FRONT | GLDM_SHOW_BACK), 1);
  std::atomic<int> seen{0};
  GLDATA_RGBA hidden{1, 0, 1, 1};
  Paint([&](Scene& scene) {
    int x = 0;
    scene.Viewer().GetClipX(&x);
    seen += x == 3 || x == 30 || x == 5 ? 0 : 1;
    IGLCanvas& canvas = scene.Canvas();
    const auto draw = [&](HRESULT (IGLCanvas::*aBegin)() noexcept, GLDATA_RGBA aColor,
                          std::initializer_list<GLDATA_POINT> aPoints) {
      canvas.SetVertexColor(&aColor);
      (canvas.*aBegin)();
      for (GLDATA_POINT point : aPoints) canvas.Vertex(&point);
      canvas.EndDrawVertices();
    };
    attributes->SetLineWidth(1.0f), attributes->SetLineWidth(2.0f);  // a changed object is applied in full
    canvas.SetDrawAttributes(attributes.Get());
    draw(&IGLCanvas::BeginDrawTriangles, {1, 0, 0, 1}, {{-3, -2, -0.5}, {3, -2.3, -0.5}, {0.4, 3, -0.5}});
    canvas.SetVertexColor(&hidden);
    canvas.BeginDrawTriangles();
    for (const auto& [x, y] : {std::pair(-2.0, -1.5), {2.0, -1.5}, {0.3, 2.0}}) canvas.Vertex3d(x, y, -1);
    canvas.EndDrawVertices();
    draw(&IGLCanvas::BeginDrawLines, {0, 1, 0, 1}, {{-2.9, -2.2, 1}, {2.1, 2.4, 1}});
    canvas.SetVertexLineStipple(0x0F0F, 1);
    draw(&IGLCanvas::BeginDrawLines, {0, 1, 1, 1}, {{-2.9, 2.2, 1}, {2.1, 2.2, 1}});
    canvas.SetVertexPointSize(4);
    draw(&IGLCanvas::BeginDrawPoints, {0, 0, 1, 1}, {{0.2, 0.3, 1}});
  });
  GLCaptureRequest request;
  request.m_sBackground = {0.5f, 0.5f, 0.5f, 1};
  const Picture once = Take(request);
  request.m_fZoom = 3;
  const Picture whole = Take(request);
  ASSERT_EQ(std::pair(whole.Width(), whole.Height()), std::pair(3 * once.Width(), 3 * once.Height()));
  int moved = 0;  // the middle pixel of nine corresponds to one pixel
  for (int y = 0; y < once.Height(); ++y) {
    for (int x = 0; x < once.Width(); ++x) moved += once.At(x, y) != whole.At(3 * x + 1, 3 * y + 1);
  }
  EXPECT_LE(moved, 100) << "pixels of " << once.Width() * once.Height() << "; edges of lines differ";
  for (const std::uint32_t color : {0xFF0000FFu, 0x00FF00FFu, 0x00FFFFFFu, 0x0000FFFFu, 0xFFFF00FFu}) {
    const auto area = [&](const Picture& p) { return p.Width() * p.Height() - p.CountOther(color); };
    EXPECT_GT(area(once), 10) << std::hex << color;
    EXPECT_NEAR(area(whole) / 9.0, area(once), 0.2 * area(once)) << std::hex << color;
  }
  EXPECT_EQ(whole.CountOther(0xFF00FFFF), whole.Width() * whole.Height()) << "a triangle behind another one";
  EXPECT_EQ(seen, 0) << "the clip rectangles of the viewers do not change";

  GLCaptureRequest part = request;
  part.m_iX = 20, part.m_iY = 10, part.m_iWidth = 33, part.m_iHeight = 400;
  const Picture cut = Take(part);
  ASSERT_EQ(cut.Width(), 33 * 3);
  ASSERT_EQ(cut.Height(), 50 * 3);
  int different = 0;
  for (int y = 0; y < cut.Height(); ++y) {
    for (int x = 0; x < cut.Width(); ++x) different += cut.At(x, y) != whole.At(x + 60, y + 30);
  }
  EXPECT_EQ(different, 0);

  const auto refused = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  for (const float zoom : {0.5f, 1e9f, NAN}) {
    part.m_fZoom = zoom;
    EXPECT_FALSE(m_Viewing->TakePicture(refused.Get(), part).get()) << zoom;
  }
  part.m_fZoom = 1, part.m_iX = 90;
  EXPECT_FALSE(m_Viewing->TakePicture(refused.Get(), part).get());
}

TEST_F(Viewing, PrintsTextThatScalesWithThePicture) {
  GLRasterText text(GLString("DejaVu Sans"), -12);
  Paint([&](Scene& scene) {
    const double scale = m_Viewing->Scale();
    const GLOverlay overlay(GLOverlayUnits::Pixels, scale);
    glColor4f(1, 1, 1, 1);
    EXPECT_EQ(text.Print(scene.Context(), GLString("HHH"), {5, 40, 0}, scale), S_OK);
  });
  // The extents of the text: left, top, right and bottom.
  const auto extents = [](const Picture& aPicture) {
    std::array<int, 4> e = {9999, 9999, 0, 0};
    for (int y = 0; y < aPicture.Height(); ++y) {
      for (int x = 0; x < aPicture.Width(); ++x) {
        if (aPicture.At(x, y) == kBlack) continue;
        e = {std::min(e[0], x), std::min(e[1], y), std::max(e[2], x), std::max(e[3], y)};
      }
    }
    return e;
  };
  const auto once = extents(Take({.m_fZoom = 1})), thrice = extents(Take({.m_fZoom = 3}));
  ASSERT_GT(once[2], once[0] + 10);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(thrice[i], 3 * once[i] + 1, 5) << i;
  m_Context->DetachPainter();
  text.Destroy(*m_Context.Get());
}

}  // namespace
