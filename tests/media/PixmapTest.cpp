// GLPixmap without GL: image, file and colours. No display.

#include "support/BitmapFiles.h"

constexpr bool operator==(const GLDATA_RGBA4B& a, const GLDATA_RGBA4B& b) {
  return std::memcmp(&a, &b, sizeof(a)) == 0;
}

namespace {

using Pixel = GLDATA_RGBA4B;
using Image = std::vector<Pixel>;
constexpr Pixel kGrey = {9, 9, 9, 9};
constexpr int kMax = std::numeric_limits<int>::max();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

class Pixmap : public testing::Test {
 protected:
  std::pair<Pixel*, int> Access() const {
    std::pair<Pixel*, int> data;
    m_Pixmap->AccessPixmapData(&data.second, &data.first);
    return data;
  }
  /// Returns the stored pixels, from the bottom row.
  Image Store() const {
    const auto [pixels, size] = Access();
    return Image(pixels, pixels + size);
  }
  /// Width, height, zoom, clip and address of the pixels: unchanged by an operation that fails.
  auto Shape() const {
    int width, height, x = -1, y = -1, w = -1, h = -1;
    float zoomX, zoomY;
    m_Pixmap->GetWidth(&width);
    m_Pixmap->GetHeight(&height);
    m_Pixmap->GetZoom(&zoomX, &zoomY);
    m_Pixmap->GetClip(&x, &y, &w, &h);
    return std::tuple(width, height, zoomX, zoomY, x, y, w, h, Access().first);
  }
  /// Returns the result of a colour operation on an image.
  Image After(Image aImage, const std::function<HRESULT()>& aOperation) {
    m_Pixmap->Initialize(static_cast<int>(aImage.size()), 1, kGrey);
    m_Pixmap->SetPixels(static_cast<int>(aImage.size()), aImage.data());
    EXPECT_EQ(aOperation(), S_OK);
    return Store();
  }

  GLPtr<IGLPixmap> m_Pixmap = GLCreate<IGLPixmap>(CLSID_GLPixmap);
};

/// Returns an image with every value of a channel, in a different order per channel.
Image EveryValue() {
  Image image;
  for (int i = 0; i < 256; ++i)
    image.push_back({std::uint8_t(i), std::uint8_t(i * 7), std::uint8_t(255 - i), std::uint8_t(i * 31)});
  return image;
}

}  // namespace

TEST_F(Pixmap, InitializeRefusesInvalidSizesAndKeepsItsBlock) {
  ASSERT_EQ(m_Pixmap->Initialize(2, 8, {}), S_OK);
  m_Pixmap->SetClip(1, 1, 1, 7);
  m_Pixmap->SetZoom(3, -4);
  const auto before = Shape();
  for (const auto& [width, height] : {std::pair{0, 1}, {1, 0}, {-1, -1}, {65536, 65536}, {32768, 32768}})
    EXPECT_EQ(m_Pixmap->Initialize(width, height, kGrey), E_GL_BADVALUE) << width << " by " << height;
  EXPECT_EQ(Shape(), before);
  m_Pixmap->Initialize(4, 4, kGrey);
  EXPECT_EQ(Shape(), std::tuple(4, 4, 1.0f, 1.0f, 0, 0, 4, 4, std::get<Pixel*>(before)));
  EXPECT_EQ(Store(), Image(16, kGrey));
}

TEST_F(Pixmap, SetPixelsWritesWholeRowsFromTheTop) {
  Pixel array[] = {{1, 0, 0, 0}, {2, 0, 0, 0}, {3, 0, 0, 0}, {4, 0, 0, 0}, {5, 0, 0, 0}};
  const auto [a, b, c, d, e] = array;
  const Image untouched(4, kGrey), firstRow = {kGrey, kGrey, a, b}, whole = {c, d, a, b};
  for (const auto& [size, expected] :
       {std::pair{-5, untouched}, {1, untouched}, {3, firstRow}, {4, whole}, {5, whole}}) {
    m_Pixmap->Initialize(2, 2, kGrey);
    EXPECT_EQ(m_Pixmap->SetPixels(size, array), S_OK);
    EXPECT_EQ(Store(), expected) << size << " pixels";
  }
}

TEST_F(Pixmap, PixelsAndClipCountFromTheTopLeft) {
  m_Pixmap->Initialize(3, 2, kGrey);
  Pixel pixel = {1, 2, 3, 4};
  EXPECT_EQ(m_Pixmap->SetPixel(2, 0, pixel), S_OK);
  EXPECT_EQ(Store(), (Image{kGrey, kGrey, kGrey, kGrey, kGrey, pixel}));
  for (const auto& [x, y] : {std::pair{-1, 0}, {0, -1}, {3, 0}, {0, 2}}) {
    EXPECT_EQ(m_Pixmap->GetPixel(x, y, &pixel), E_GL_BADVALUE) << x << ", " << y;
    EXPECT_EQ(m_Pixmap->SetPixel(x, y, kGrey), E_GL_BADVALUE) << x << ", " << y;
  }
  EXPECT_EQ(m_Pixmap->SetClip(1, 1, 2, 1), S_OK);
  const auto before = Shape();
  const int refused[][4] = {{-1, 0, 1, 1}, {0, -1, 1, 1}, {0, 0, 0, 1},       {0, 0, 1, 0},
                            {0, 0, 4, 1},  {1, 1, 1, 2},  {kMax, 0, kMax, 1}, {0, kMax, 1, kMax}};
  for (const auto& [x, y, w, h] : refused)
    EXPECT_EQ(m_Pixmap->SetClip(x, y, w, h), E_GL_BADVALUE) << x << ' ' << y << ' ' << w << ' ' << h;
  EXPECT_EQ(Shape(), before);
}

TEST_F(Pixmap, ScaleColorIsLimitedToWhite) {
  for (const float factor : {0.0f, 0.1f, 0.7f, 1.0f, 2.0f, 1e30f}) {
    GLDATA_RGBA scale = {factor, 1, 2, factor};
    Image expected = EveryValue();
    const auto scaled = [](float aValue, float aFactor) {
      return std::uint8_t(std::fmin(255.0f, aValue * aFactor));
    };
    for (Pixel& p : expected)
      p = {scaled(p.m_bRed, factor), p.m_bGreen, scaled(p.m_bBlue, 2), scaled(p.m_bAlpha, factor)};
    EXPECT_EQ(After(EveryValue(), [&] { return m_Pixmap->ScaleColor(&scale); }), expected) << factor;
  }
  GLDATA_RGBA infinite = {kInfinity, kInfinity, kInfinity, 1};
  EXPECT_EQ(After({{0, 1, 255, 5}}, [&] { return m_Pixmap->ScaleColor(&infinite); }),
            (Image{{0, 255, 255, 5}}));
  for (GLDATA_RGBA bad : {GLDATA_RGBA{-0.1f, 1, 1, 1}, {1, 1, 1, -1}, {1, kNaN, 1, 1}})
    EXPECT_EQ(m_Pixmap->ScaleColor(&bad), E_GL_BADVALUE);
  EXPECT_EQ(Store(), (Image{{0, 255, 255, 5}})) << "a refused factor changes nothing";
}

TEST_F(Pixmap, ScaleColor256KeepsTheLowByte) {
  std::vector<float> table(256, 1.0f);
  const auto scale = [&] { return m_Pixmap->ScaleColor256(256, table.data()); };
  EXPECT_EQ(After(EveryValue(), scale), EveryValue());
  const std::pair<float, int> products[] = {{2.0f, 144},  {0.5f, 100},     {0.001f, 0},     {-1.0f, 56},
                                            {-0.004f, 0}, {-0.0051f, 255}, {8388.61f, 154}, {1e30f, 0},
                                            {-1e30f, 0},  {kInfinity, 0},  {kNaN, 0}};
  for (const auto& [factor, expected] : products) {
    table[200] = factor;
    const auto value = static_cast<std::uint8_t>(expected);
    EXPECT_EQ(After({{200, 7, 200, 200}}, scale), (Image{{value, 7, value, 200}})) << factor;
  }
  EXPECT_EQ(m_Pixmap->ScaleColor256(255, table.data()), E_GL_BADSTATE);
}

TEST_F(Pixmap, CreatesNegativesAndMonochromes) {
  const Image image = {{0, 100, 255, 3}, {255, 255, 255, 200}};
  const auto negative = [&](LONG aAlpha) {
    return After(image, [&] { return m_Pixmap->MakeNegative(aAlpha); });
  };
  EXPECT_EQ(negative(0), (Image{{255, 155, 0, 3}, {0, 0, 0, 200}}));
  EXPECT_EQ(negative(-1), (Image{{255, 155, 0, 252}, {0, 0, 0, 55}}));
  const auto monochrome = [&](Pixel aColor) {
    return After(image, [&] { return m_Pixmap->MakeMonochrome(aColor); });
  };
  EXPECT_EQ(monochrome({255, 255, 255, 9}), (Image{{39, 39, 39, 3}, {85, 85, 85, 200}}));
  EXPECT_EQ(monochrome({0, 0, 0, 255}), (Image{{39, 39, 39, 3}, {84, 84, 84, 200}}));
  EXPECT_EQ(monochrome({7, 0, 0, 255}), (Image{{118, 0, 0, 3}, {255, 0, 0, 200}}));
}

TEST_F(Pixmap, KeepsItsImageIfAFileCannotBeLoaded) {
  const TestFolder folder;
  const Bytes file = BitmapBytes{2, -1, 24, {}, {3, 2, 1, 6, 5, 4, 0, 0}}.File();
  const BitmapBytes badLastRow{1, 2, 8, {0, 0, 0, 0}, {0, 0, 0, 0, 1, 0, 0, 0}};
  m_Pixmap->Initialize(5, 5, kGrey);
  m_Pixmap->SetZoom(2, 2);
  const std::u16string good = folder.Put(u"K\u00fcste \u6d77 \U0001F41F.bmp", file).u16string();
  EXPECT_EQ(LoadFrom(*m_Pixmap, good), S_OK);
  EXPECT_EQ(Shape(), std::tuple(2, 1, 1.0f, 1.0f, 0, 0, 2, 1, Access().first));

  const auto before = Shape();
  for (const std::u16string& name :
       {folder.Put(u"late", badLastRow.File()).u16string(), (folder.Path() / "missing").u16string(),
        folder.Path().u16string(), std::u16string(), good + u'\0' + u'x',
        std::u16string(1, char16_t{0xD800})}) {
    EXPECT_EQ(LoadFrom(*m_Pixmap, name), E_FAIL) << std::string(name.begin(), name.end());
  }
  EXPECT_EQ(m_Pixmap->LoadImageFile(nullptr), E_FAIL);
  EXPECT_EQ(Shape(), before);
  EXPECT_EQ(Store(), (Image{{1, 2, 3, 255}, {4, 5, 6, 255}}));
}

TEST_F(Pixmap, LoadsTheValidFilesOfTheCorpus) {
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(GLLIB_SOURCE_DIR "/fuzz/corpus/bitmapfile")) {
    const bool good = entry.path().filename().string().starts_with("ok-");
    EXPECT_EQ(LoadFrom(*m_Pixmap, entry.path().u16string()), good ? S_OK : E_FAIL) << entry.path().filename();
    ++files;
  }
  EXPECT_GE(files, 60);
}
