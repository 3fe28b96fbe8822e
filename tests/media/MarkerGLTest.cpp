// Bitmaps and pixmaps in GL: what they send, and where their pixels land.

#include <gllib/GLClasses.h>
#include <gllib/GLLib.h>
#include <gtest/gtest.h>

#include "component/CreateObject.h"
#include "support/GLRecorder.h"
#include "support/PlainGL.h"

namespace {

/// Draws in window pixels and records the calls.
Picture Draw(std::vector<std::string>& aCalls, const std::function<void()>& aDraw) {
  return DrawPlainGL(32, 32, [&] {
    glOrtho(0, 32, 0, 32, -1, 1);
    const GLRecorder recorder;
    aDraw();
    aCalls = recorder.Calls();
  });
}

}  // namespace

TEST(MarkerGL, BitmapKeepsItsPlaceAndTouchesBlendingOnlyWhenSeeThrough) {
  const auto bitmap = CreateObject<IGLBitmap>(CLSID_GLBitmap);
  GLDATA_POINT origin = {10.5, 20.5, 0};
  std::vector<std::string> calls, seeThrough;
  Draw(calls, [&] { EXPECT_EQ(bitmap->Draw(nullptr, &origin, 0, 0), S_OK); });
  EXPECT_TRUE(calls.empty()) << "an empty bitmap draws nothing";

  bitmap->Initialize(40, 2, 0);
  bitmap->SetPixel(3, 1, 1);
  bitmap->SetPixel(8, 0, 1);
  GLDATA_RGBA color = {1, 0, 1, 1};
  bitmap->SetColor(&color);
  const Picture ours = Draw(calls, [&] { bitmap->Draw(nullptr, &origin, 3, -1); });
  EXPECT_EQ(ours.CountOther(0x000000FF), 2);
  EXPECT_EQ(ours.At(10, 31 - 21), 0xFF00FFFF) << "three to the left of it, one below: the bottom row's";
  EXPECT_EQ(ours.At(15, 31 - 22), 0xFF00FFFF);
  const std::vector<std::string> expected = {"glColor4f(1, 0, 1, 1)",
                                             "glPixelStorei(GL_UNPACK_ALIGNMENT, 4)",
                                             "glPixelStorei(GL_UNPACK_ROW_LENGTH, 64)",
                                             "glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0)",
                                             "glPixelStorei(GL_UNPACK_SKIP_ROWS, 0)",
                                             "glRasterPos3d(10.5, 20.5, 0)",
                                             "glBitmap(40, 2, 3, -1, 0, 0, data)"};
  EXPECT_EQ(calls, expected);

  color.m_fAlpha = 0.5f;
  bitmap->SetColor(&color);
  Draw(seeThrough, [&] { bitmap->Draw(nullptr, &origin, 3, -1); });
  ASSERT_EQ(seeThrough.size(), calls.size() + 2);
  EXPECT_EQ(seeThrough[0], "glEnable(GL_BLEND)");
  EXPECT_EQ(seeThrough[1], "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)");
}

TEST(MarkerGL, PixmapDrawsItsClipFromTheOriginUp) {
  const auto pixmap = CreateObject<IGLPixmap>(CLSID_GLPixmap);
  GLDATA_POINT origin = {4, 8, 0};
  std::vector<std::string> calls;
  Draw(calls, [&] { EXPECT_EQ(pixmap->Draw(nullptr, &origin), S_OK); });
  EXPECT_TRUE(calls.empty()) << "an empty pixmap draws nothing";

  pixmap->Initialize(20, 100, {0, 0, 255, 255});
  pixmap->SetPixel(5, 9, {255, 0, 0, 255});  // lower left of the clip
  pixmap->SetPixel(7, 0, {0, 255, 0, 255});  // upper right
  pixmap->SetClip(5, 0, 3, 10);
  pixmap->SetZoom(2, 1);
  const Picture ours = Draw(calls, [&] { pixmap->Draw(nullptr, &origin); });
  EXPECT_EQ(ours.CountOther(0x000000FF), 2 * 3 * 10);
  for (const int x : {4, 5}) EXPECT_EQ(ours.At(x, 31 - 8), 0xFF0000FF);
  for (const int x : {8, 9}) EXPECT_EQ(ours.At(x, 31 - 17), 0x00FF00FF);
  const std::vector<std::string> expected = {"glEnable(GL_BLEND)",
                                             "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
                                             "glPixelStorei(GL_UNPACK_ALIGNMENT, 4)",
                                             "glPixelStorei(GL_UNPACK_ROW_LENGTH, 20)",
                                             "glPixelStorei(GL_UNPACK_SKIP_PIXELS, 5)",
                                             "glPixelStorei(GL_UNPACK_SKIP_ROWS, 90)",
                                             "glPixelZoom(2, 1)",
                                             "glRasterPos3d(4, 8, 0)",
                                             "glDrawPixels(3, 10, GL_RGBA, GL_UNSIGNED_BYTE, data)"};
  EXPECT_EQ(calls, expected);
}
