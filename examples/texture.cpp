// texture: shows a tiled floor that repeats one small image, without interpolation on the left and with it on
// the right, a box of bricks, and a hill coloured by height. The colours of the hill come from one row of
// pixels. Shows how to draw faces with a two-dimensional texture, and strips with a one-dimensional one.

#include <algorithm>
#include <array>
#include <cmath>

#include "shared/Stage.h"

namespace {

constexpr int kWidth = 800;
constexpr int kHeight = 500;
GLDATA_POINT g_up{0, 1, 0};

GLPtr<IGLPixmap> NewImage(int aSide, GLDATA_RGBA4B (*aColorAt)(int aX, int aY)) {
  auto image = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  image->Initialize(aSide, aSide, {});
  for (int y = 0; y < aSide; ++y) {
    for (int x = 0; x < aSide; ++x) image->SetPixel(x, y, aColorAt(x, y));
  }
  return image;
}

GLPtr<IGLPixmap> NewTiles() {
  return NewImage(32, [](int aX, int aY) {
    const bool joint = aX % 16 == 0 || aY % 16 == 0;
    const bool dark = (aX / 16 + aY / 16) % 2 == 0;
    return joint  ? GLDATA_RGBA4B{70, 70, 75, 255}
           : dark ? GLDATA_RGBA4B{120, 130, 150, 255}
                  : GLDATA_RGBA4B{225, 220, 205, 255};
  });
}

GLPtr<IGLPixmap> NewBricks() {
  return NewImage(64, [](int aX, int aY) {
    const int row = aY / 16;
    const int x = (aX + row % 2 * 16) % 64;
    if (aY % 16 < 2 || x % 32 < 2) return GLDATA_RGBA4B{200, 195, 185, 255};
    const int shade = (x / 32 * 23 + row * 37) % 40;
    return GLDATA_RGBA4B{static_cast<std::uint8_t>(150 + shade), static_cast<std::uint8_t>(60 + shade / 2),
                         45, 255};
  });
}

/// Creates a row of pixels with the colours of water, sand, grass, rock and snow, from left to right.
GLPtr<IGLPixmap> NewHeights() {
  std::array<GLDATA_RGBA4B, 8> colors{{{40, 90, 170, 255},
                                       {215, 200, 140, 255},
                                       {120, 170, 80, 255},
                                       {70, 130, 60, 255},
                                       {60, 110, 55, 255},
                                       {125, 115, 105, 255},
                                       {160, 155, 150, 255},
                                       {250, 250, 255, 255}}};
  auto row = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  row->Initialize(static_cast<int>(colors.size()), 1, {});
  row->SetPixels(static_cast<int>(colors.size()), colors.data());
  return row;
}

template <class Texture>
GLPtr<Texture> NewTexture(const CLSID& aClass, const GLPtr<IGLPixmap>& aImage) {
  auto texture = GLCreate<Texture>(aClass);
  texture->Initialize(aImage.Get());
  return texture;
}

class TexturePainter final : public GLPainterBase {
 public:
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer*) noexcept override {
    aCanvas->SetDrawAttributes(m_attributes.Get());
    DrawQuad(aContext, *m_tiles.Get(), 0, {{{-8, 0, 6}, {0, 0, 6}, {0, 0, -22}, {-8, 0, -22}}}, g_up, 8, 28);
    DrawQuad(aContext, *m_tiles.Get(), 1, {{{0, 0, 6}, {8, 0, 6}, {8, 0, -22}, {0, 0, -22}}}, g_up, 8, 28);
    DrawBox(aContext);
    DrawHill(aContext);
    return S_OK;
  }

 private:
  /// Draws a face. Its image repeats aAcross times along the first side and aUp times along the second.
  /// @param aSmooth 1 interpolates between pixels and between levels, 0 does not
  static void DrawQuad(IGLContext* aContext, IGLTexture2D& aTexture, LONG aSmooth,
                       std::array<GLDATA_POINT, 4> aCorners, GLDATA_POINT aNormal, float aAcross, float aUp) {
    aTexture.BeginDraw(aContext, GLTM_MODULATE, aSmooth, aSmooth, 1, &aNormal, nullptr);
    aTexture.Draw(0, 0, aCorners.data());
    aTexture.Draw(aAcross, 0, &aCorners[1]);
    aTexture.Draw(aAcross, aUp, &aCorners[2]);
    aTexture.Draw(0, aUp, &aCorners[3]);
    aTexture.EndDraw();
  }

  void DrawBox(IGLContext* aContext) {
    IGLTexture2D& bricks = *m_bricks.Get();
    DrawQuad(aContext, bricks, 1, {{{-4, 0, 1}, {-2, 0, 2}, {-2, 2, 2}, {-4, 2, 1}}}, {-0.447, 0, 0.894}, 2,
             2);
    DrawQuad(aContext, bricks, 1, {{{-2, 0, 2}, {-1, 0, 0}, {-1, 2, 0}, {-2, 2, 2}}}, {0.894, 0, 0.447}, 2,
             2);
    DrawQuad(aContext, bricks, 1, {{{-4, 2, 1}, {-2, 2, 2}, {-1, 2, 0}, {-3, 2, -1}}}, g_up, 2, 2);
  }

  static GLDATA_POINT OnHill(int aX, int aZ) {
    const double x = aX * 0.2 - 3, z = aZ * 0.2 - 3;
    return {x + 3.7, 2.6 * std::exp(-0.35 * (x * x + z * z)) * (1 + 0.15 * std::cos(3 * x)), z};
  }

  void DrawHill(IGLContext* aContext) {
    for (int z = 0; z < 30; ++z) {
      m_heights->BeginDraw(aContext, GLTM_MODULATE, 1, 1, 0, &g_up, nullptr);
      for (int x = 0; x <= 30; ++x) {
        GLDATA_POINT back = OnHill(x, z), front = OnHill(x, z + 1);
        m_heights->Draw(&back, HeightToImage(back), &front, HeightToImage(front));
      }
      m_heights->EndDraw();
    }
  }
  static float HeightToImage(const GLDATA_POINT& aPoint) {
    return static_cast<float>(std::clamp(aPoint.y / 3, 0.06, 0.94));
  }

  GLPtr<IGLDrawAttr> m_attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  GLPtr<IGLTexture2D> m_tiles = NewTexture<IGLTexture2D>(CLSID_GLTexture2D, NewTiles());
  GLPtr<IGLTexture2D> m_bricks = NewTexture<IGLTexture2D>(CLSID_GLTexture2D, NewBricks());
  GLPtr<IGLTexture1D> m_heights = NewTexture<IGLTexture1D>(CLSID_GLTexture1D, NewHeights());
};

Picture DrawTextures() {
  const Stage stage(kWidth, kHeight);
  IGLContext& context = stage.Context();
  GLDATA_RGBA sky{0.55f, 0.7f, 0.85f, 1};
  context.SetBackgroundColor(&sky);
  stage.AddViewer({0, 3.4, 9}, 0.22).SetEyeFovy_DEG(45);
  stage.AddDistantLight({-0.5, -1, -0.6});
  context.AttachPainter(GLMake<TexturePainter>().Get());
  return stage.Read();
}

}  // namespace

int main(int argc, char** argv) { return RunExample(argc, argv, DrawTextures); }
