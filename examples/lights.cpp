// lights: lights a floor with eight coloured spotlights, the most that a process can use. On the left a
// ninth, white spotlight exists too, but waits. On the right one of the eight has been destroyed, and the
// ninth shines in the middle. Shows how to set up spotlights, and how a light waits for one of GL's lights.

#include <algorithm>
#include <cmath>
#include <numbers>

#include "shared/Shapes.h"
#include "shared/Stage.h"

namespace {

constexpr int kHalfWidth = 480;
constexpr int kHeight = 480;
constexpr double kPi = std::numbers::pi;
constexpr GLDATA_RGBA kFloorColor{0.8f, 0.8f, 0.8f, 1.0f};
constexpr GLDATA_RGBA kColors[8] = {{1, 0.1f, 0.1f, 1},     {1, 0.6f, 0.1f, 1}, {0.9f, 0.9f, 0.1f, 1},
                                    {0.2f, 1, 0.2f, 1},     {0.1f, 1, 0.9f, 1}, {0.2f, 0.5f, 1, 1},
                                    {0.4f, 0.25f, 1, 1.0f}, {1, 0.3f, 0.9f, 1}};

/// Draws a floor with a ball in the middle.
class FloorPainter final : public GLPainterBase {
 public:
  FloorPainter() {
    GLDATA_RGBA color = kFloorColor;
    m_attributes->SetColor(&color);
  }

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    aCanvas->SetDrawAttributes(m_attributes.Get());
    DrawFloor(*aCanvas, 0, 8, 128);
    DrawSphere(*aCanvas, {0, 0.7, 0}, 0.7);
    return S_OK;
  }

 private:
  GLPtr<IGLDrawAttr> m_attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
};

/// Creates a spotlight above a position on the floor, directed straight down.
IGLLight* HangLight(IGLContext& aContext, double aX, double aZ, GLDATA_RGBA aColor) {
  IGLLight* light = nullptr;
  Require(aContext.CreateLight(&light), "cannot create a light");
  GLDATA_RGBA black{0, 0, 0, 1};
  GLDATA_POINT down{0, -1, 0};
  light->SetAmbientLight(&black);
  light->SetDiffuseLight(&aColor);
  light->SetSpecularLight(&black);
  light->SetDirection(&down);
  light->SetCutOffAngle_DEG(24);
  light->SetSpotExponent(12);
  GLPtr<IGLCoord> place;
  light->GetCoord(place.Put());
  place->SetOrigin3d(aX, 4, aZ);  // the light's position is a little in front of the origin of its system
  light->Enable(1);
  return light;
}

/// Joins two pictures of equal size side by side.
Picture SideBySide(const Picture& aLeft, const Picture& aRight) {
  Picture both(aLeft.width + aRight.width, aLeft.height);
  for (int y = 0; y < both.height; ++y) {
    std::copy_n(aLeft.At(0, y), 4 * aLeft.width, both.At(0, y));
    std::copy_n(aRight.At(0, y), 4 * aRight.width, both.At(aLeft.width, y));
  }
  return both;
}

Picture DrawLights() {
  const Stage stage(kHalfWidth, kHeight);
  IGLContext& context = stage.Context();
  GLDATA_RGBA dusk{0.13f, 0.13f, 0.16f, 1};
  context.SetAmbientLight(&dusk);
  stage.AddViewer({0, 15, 12.5}, 0.9).SetEyeFovy_DEG(36);
  context.AttachPainter(GLMake<FloorPainter>().Get());

  IGLLight* first = nullptr;
  for (int i = 0; i < 8; ++i) {
    const double turn = 2 * kPi * i / 8;
    IGLLight* light = HangLight(context, 4 * std::sin(turn), 4 * std::cos(turn), kColors[i]);
    if (i == 0) first = light;
  }
  // A light takes one of GL's lights in its first pass. Here the eight take all of them.
  stage.Read();
  HangLight(context, 0, 0, {1, 1, 1, 1});
  const Picture eight = stage.Read();
  context.DestroyLight(first);
  return SideBySide(eight, stage.Read());
}

}  // namespace

int main(int argc, char** argv) { return RunExample(argc, argv, DrawLights); }
