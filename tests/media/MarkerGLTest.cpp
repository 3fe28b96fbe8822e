// Bitmaps and pixmaps drawn by GL: places of pixels, for any pixel storage state of the host. Plain rendering
// context.

#include "support/PlainGL.h"

namespace {

/// Draws in window pixels.
Picture Draw(const std::function<void()>& aDraw) {
  return DrawPlainGL(32, 32, [&] {
    glOrtho(0, 32, 0, 32, -1, 1);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 99);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 5);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 7);
    aDraw();
  });
}

constexpr std::uint32_t kBlack = 0x000000FF;

}  // namespace

TEST(MarkerGL, BitmapBlendsOnlyIfTransparent) {
  const auto bitmap = GLCreate<IGLBitmap>(CLSID_GLBitmap);
  GLDATA_POINT origin = {10.5, 20.5, 0};
  GLDATA_RGBA color = {1, 0, 1, 1};
  const auto draw = [&] { EXPECT_EQ(bitmap->Draw(nullptr, &origin, 3, -1), S_OK); };
  EXPECT_EQ(Draw(draw).CountOther(kBlack), 0) << "an empty bitmap draws nothing";
  bitmap->Initialize(40, 2, 0);
  bitmap->SetPixel(3, 1, 1);
  bitmap->SetPixel(8, 0, 1);
  for (const float alpha : {1.0f, 0.5f}) {
    color.m_fAlpha = alpha;
    bitmap->SetColor(&color);
    const Picture ours = Draw([&] {
      draw();
      EXPECT_EQ(glIsEnabled(GL_BLEND), alpha < 1 ? GL_TRUE : GL_FALSE);
    });
    EXPECT_EQ(ours.CountOther(kBlack), 2);
    EXPECT_EQ(ours.At(10, 31 - 21) >> 31, 1u) << "the lowest row, three to the left and one below";
    EXPECT_EQ(ours.At(15, 31 - 22), alpha < 1 ? 0x800080FF : 0xFF00FFFF);
  }
}

TEST(MarkerGL, BitmapMayHaveAnyHeight) {
  const auto bitmap = GLCreate<IGLBitmap>(CLSID_GLBitmap);
  GLDATA_POINT origin = {10.5, 20.5, 0};
  constexpr int kHeight = 70000;
  bitmap->Initialize(8, kHeight, 0);
  for (const int row : {0, 16383, 16384, 69999}) {
    bitmap->SetPixel(2, kHeight - 1 - row, 1);
    const Picture ours = Draw([&] { bitmap->Draw(nullptr, &origin, 2, row); });
    EXPECT_EQ(ours.At(10, 31 - 20), 0xFFFFFFFF) << row;
    bitmap->SetPixel(2, kHeight - 1 - row, 0);
  }
}

TEST(MarkerGL, PixmapDrawsItsClipFromTheOrigin) {
  const auto pixmap = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  GLDATA_POINT origin = {4, 8, 0};
  const auto draw = [&] { EXPECT_EQ(pixmap->Draw(nullptr, &origin), S_OK); };
  EXPECT_EQ(Draw(draw).CountOther(kBlack), 0) << "an empty pixmap draws nothing";
  pixmap->Initialize(20, 100, {0, 0, 255, 128});
  pixmap->SetPixel(5, 9, {255, 0, 0, 255});  // lower left corner of the clip
  pixmap->SetPixel(7, 0, {0, 255, 0, 255});  // upper right corner
  pixmap->SetClip(5, 0, 3, 10);
  pixmap->SetZoom(2, 1);
  const Picture ours = Draw(draw);
  EXPECT_EQ(ours.CountOther(kBlack), 2 * 3 * 10);
  for (const int x : {4, 5}) EXPECT_EQ(ours.At(x, 31 - 8), 0xFF0000FF);
  for (const int x : {8, 9}) EXPECT_EQ(ours.At(x, 31 - 17), 0x00FF00FF);
  EXPECT_EQ(ours.At(6, 31 - 8), 0x000080FFu) << "blended";
}
