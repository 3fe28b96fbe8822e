// markers: draws a spiral of stations, each with a marker whose size does not depend on its distance. A
// marker is a one-bit image in one colour, transparent for stations that are out of use. In the corner a
// gauge draws a badge, an image with a transparent outside, and beside it the badge's lower half at twice the
// size. Shows how to draw bitmaps and pixmaps, with zoom and clip, and how to add a gauge.

#include <cmath>

#include "shared/Shapes.h"
#include "shared/Stage.h"

namespace {

constexpr int kWidth = 720;
constexpr int kHeight = 480;
constexpr int kStations = 40;
constexpr int kMarkerSide = 16;

// A flag with its pole at the station. Two bytes per row, top row first.
unsigned char g_flag[2 * kMarkerSide] = {0xC0, 0x00, 0xFC, 0x00, 0xFF, 0xC0, 0xFF, 0xFC, 0xFF, 0xFF, 0xFF,
                                         0xFC, 0xFF, 0xC0, 0xFC, 0x00, 0xC0, 0x00, 0xC0, 0x00, 0xC0, 0x00,
                                         0xC0, 0x00, 0xC0, 0x00, 0xC0, 0x00, 0xC0, 0x00, 0xC0, 0x00};

/// Creates a round badge with a transparent outside.
GLPtr<IGLPixmap> NewBadge() {
  constexpr int kSide = 48;
  auto badge = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  badge->Initialize(kSide, kSide, {});
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      const double radius = std::hypot(x - 23.5, y - 23.5);
      if (radius > 23) continue;
      const auto shade = static_cast<std::uint8_t>(255 - 3 * y);
      badge->SetPixel(x, y,
                      radius > 19 ? GLDATA_RGBA4B{225, 235, 245, 255} : GLDATA_RGBA4B{255, shade, 60, 255});
    }
  }
  return badge;
}

class MarkerPainter final : public GLPainterBase {
 public:
  MarkerPainter() {
    GLDATA_RGBA ground{0.35f, 0.42f, 0.36f, 1};
    m_attributes->SetColor(&ground);
    m_flag->Initialize(kMarkerSide, kMarkerSide, 0);
    m_flag->SetPixels(sizeof(g_flag), g_flag);
  }

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer*) noexcept override {
    aCanvas->SetDrawAttributes(m_attributes.Get());
    DrawFloor(*aCanvas, 0, 12, 24);
    aCanvas->PushLightAttribute();  // markers are unlit: the colour is the one set
    for (int i = kStations - 1; i >= 0; --i) DrawStation(aContext, i);
    aCanvas->PopLightAttribute();
    return S_OK;
  }

 private:
  static GLDATA_POINT StationAt(int aNumber) {
    const double turn = 0.45 * aNumber, radius = 1 + 0.25 * aNumber;
    return {radius * std::sin(turn), 0.02, radius * std::cos(turn)};
  }

  void DrawStation(IGLContext* aContext, int aNumber) {
    const float share = static_cast<float>(aNumber) / kStations;
    const bool inUse = aNumber % 5 != 0;
    GLDATA_RGBA color{1, 0.9f - 0.7f * share, 0.1f, inUse ? 1.0f : 0.35f};
    GLDATA_POINT place = StationAt(aNumber);
    m_flag->SetColor(&color);
    m_flag->Draw(aContext, &place, 0, 0);
  }

  GLPtr<IGLDrawAttr> m_attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  GLPtr<IGLBitmap> m_flag = GLCreate<IGLBitmap>(CLSID_GLBitmap);
};

/// Draws the badge over the view. Coordinates run from -1 to 1 in both directions.
class BadgeGauge final : public GLViewerGaugeBase {
 public:
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext) noexcept override {
    GLDATA_POINT place{-0.95, 0.72, 0}, beside{-0.78, 0.72, 0};
    aCanvas->PushDepthAttribute();
    m_badge->SetZoom(1, 1);
    m_badge->SetClip(0, 0, 48, 48);
    m_badge->Draw(aContext, &place);
    m_badge->SetZoom(2, 2);
    m_badge->SetClip(0, 24, 48, 24);
    m_badge->Draw(aContext, &beside);
    aCanvas->PopDepthAttribute();
    return S_OK;
  }

 private:
  GLPtr<IGLPixmap> m_badge = NewBadge();
};

Picture DrawMarkers() {
  const Stage stage(kWidth, kHeight);
  IGLContext& context = stage.Context();
  GLDATA_RGBA dusk{0.13f, 0.15f, 0.19f, 1};
  context.SetBackgroundColor(&dusk);
  IGLViewer& viewer = stage.AddViewer({0, 7, 15}, 0.5);
  viewer.SetEyeFovy_DEG(45);
  stage.AddDistantLight({0.2, -1, -0.4});
  context.AttachPainter(GLMake<MarkerPainter>().Get());
  viewer.AddGauge(GLMake<BadgeGauge>().Get());
  viewer.ShowGauges(1);
  return stage.Read();
}

}  // namespace

int main(int argc, char** argv) { return RunExample(argc, argv, DrawMarkers); }
