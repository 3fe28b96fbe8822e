// GLBitmap without GL: sizes, pixels and colour. No display.

#include "support/Test.h"

namespace {

constexpr int kMax = std::numeric_limits<int>::max();

class Bitmap : public testing::Test {
 protected:
  /// All pixels from the top, one line per row.
  std::string Bits() const {
    int width = 0, height = 0;
    m_Bitmap->GetWidth(&width);
    m_Bitmap->GetHeight(&height);
    std::string text;
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        LONG opaque = -1;
        EXPECT_EQ(m_Bitmap->GetPixel(x, y, &opaque), S_OK);
        text += opaque == 1 ? '#' : opaque == 0 ? '.' : '?';
      }
      text += '\n';
    }
    return text;
  }

  GLPtr<IGLBitmap> m_Bitmap = GLCreate<IGLBitmap>(CLSID_GLBitmap);
};

}  // namespace

TEST_F(Bitmap, RequiresWidthsOfWholeBytes) {
  for (const auto& [width, height] : {std::pair{8, 4}, {40, 1}, {16, 3}})
    EXPECT_EQ(m_Bitmap->Initialize(width, height, 0), S_OK) << width << " by " << height;
  m_Bitmap->Initialize(8, 2, 5);
  for (const auto& [width, height] :
       {std::pair{12, 4}, {0, 4}, {-8, 4}, {8, 0}, {8, -1}, {kMax - 7, 1}, {8, kMax}, {1 << 20, 1 << 15}}) {
    EXPECT_EQ(m_Bitmap->Initialize(width, height, 0), E_GL_BADVALUE) << width << " by " << height;
  }
  EXPECT_EQ(Bits(), "########\n########\n") << "a refused size changes nothing";
}

TEST_F(Bitmap, SetPixelsFillsFromTheTop) {
  unsigned char array[] = {0x80, 0x00, 0x00, 0x01, 0xFF};
  const std::string empty = "................\n", first = "#...............\n", last = "...............#\n";
  for (const auto& [size, bits] :
       {std::pair{-1, empty + empty}, {1, first + empty}, {4, first + last}, {5, first + last}}) {
    m_Bitmap->Initialize(16, 2, 0);
    EXPECT_EQ(m_Bitmap->SetPixels(size, array), S_OK);
    EXPECT_EQ(Bits(), bits) << size << " bytes";
  }
  m_Bitmap->Initialize(16, 2, 1);
  EXPECT_EQ(m_Bitmap->SetPixels(3, array), S_OK);
  EXPECT_EQ(Bits(), "#...............\n........########\n") << "a row may end in the middle";
  EXPECT_EQ(m_Bitmap->SetPixels(4, nullptr), S_OK);
}

TEST_F(Bitmap, PixelsAreSetWithinTheImage) {
  m_Bitmap->Initialize(8, 2, 0);
  for (const auto& [x, y, opaque] : {std::array{1, 0, -4}, {7, 1, 1}, {6, 1, 1}, {7, 1, 0}})
    EXPECT_EQ(m_Bitmap->SetPixel(x, y, opaque), S_OK);
  EXPECT_EQ(Bits(), ".#......\n......#.\n");
  LONG opaque = 0;
  for (const auto& [x, y] : {std::pair{-1, 0}, {0, -1}, {8, 0}, {0, 2}}) {
    EXPECT_EQ(m_Bitmap->GetPixel(x, y, &opaque), E_GL_BADVALUE) << x << ", " << y;
    EXPECT_EQ(m_Bitmap->SetPixel(x, y, 1), E_GL_BADVALUE) << x << ", " << y;
  }
}

TEST_F(Bitmap, EmptyBitmapIsRefused) {
  LONG opaque = 0;
  unsigned char byte = 0;
  EXPECT_EQ(m_Bitmap->GetPixel(0, 0, &opaque), E_GL_BADSTATE);
  EXPECT_EQ(m_Bitmap->SetPixel(0, 0, 1), E_GL_BADSTATE);
  EXPECT_EQ(m_Bitmap->SetPixels(1, &byte), E_GL_BADSTATE);
}

TEST_F(Bitmap, ColorIsLimitedAndKeptByInitialize) {
  GLDATA_RGBA color = {-1.0f, 2.0f, 0.5f, std::numeric_limits<float>::quiet_NaN()};
  EXPECT_EQ(m_Bitmap->SetColor(&color), S_OK);
  m_Bitmap->Initialize(8, 1, 1);
  EXPECT_EQ(m_Bitmap->GetColor(&color), S_OK);
  EXPECT_EQ((std::array{color.m_fRed, color.m_fGreen, color.m_fBlue, color.m_fAlpha}),
            (std::array{0.0f, 1.0f, 0.5f, 0.0f}));
}
