// The lit scene: its painter on the draw thread, the rest on the thread that asks for the picture.

#include "support/LitScene.h"

#include <gllib/GLLibHost.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <future>

#include "shared/Shapes.h"
#include "support/BitmapBytes.h"

namespace {

constexpr int kWidth = 160, kHeight = 120;

class ScenePainter final : public GLPainterBase {
 public:
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    const auto color = [&](GLDATA_RGBA aColor) { aCanvas->SetVertexColor(&aColor); };
    color({0.75f, 0.75f, 0.7f, 1});
    DrawFloor(*aCanvas, -1, 3, 30);
    color({0.85f, 0.3f, 0.2f, 1});
    DrawSphere(*aCanvas, {-0.4, 0, 0}, 1);
    color({0.2f, 0.35f, 0.7f, 1});
    DrawBox(*aCanvas, {1.4, -0.5, 0.6}, {0.5, 0.5, 0.5});
    return S_OK;
  }
};

class Camera final : public GLCaptureBase {
 public:
  HRESULT OnData(LONG aSuccess) noexcept override {
    m_Done.set_value(aSuccess != 0);
    return S_OK;
  }
  std::promise<bool> m_Done;
};

IGLLight& AddLight(IGLContext& aContext, GLDATA_POINT aDirection, GLDATA_RGBA aColor) {
  GLDATA_RGBA none{0, 0, 0, 1};
  IGLLight* light = nullptr;
  aContext.CreateLight(&light);
  light->SetDirection(&aDirection);
  light->SetAmbientLight(&none);
  light->SetDiffuseLight(&aColor);
  light->Enable(1);
  return *light;
}

void SetUp(IGLContext& aContext) {
  aContext.SetViewport(0, 0, kWidth, kHeight);
  IGLViewer* viewer = nullptr;
  aContext.CreateViewer(1, 0, &viewer);
  viewer->SetEyeFovy_DEG(45);
  GLPtr<IGLCoord> eye;
  viewer->GetCoord(eye.Put());
  eye->SetOrigin3d(0, 2.2, 5.6);
  eye->RotateAboutX_RAD(-0.34);

  AddLight(aContext, {0.7, -0.6, -0.7}, {0.5f, 0.5f, 0.5f, 1}).SetAsSpotlight(0);
  IGLLight& spot = AddLight(aContext, {-0.4, -1, -0.3}, {0.6f, 0.5f, 0.1f, 1});
  GLDATA_POINT place{2, 3.5, 2};
  spot.SetSpotPosition(&place);
  spot.SetCutOffAngle_DEG(25);
  spot.SetSpotExponent(8);

  GLPtr<IGLFog> fog;
  aContext.GetFog(fog.Put());
  GLDATA_RGBA grey{0.5f, 0.55f, 0.6f, 1};
  fog->SetFogColor(&grey);
  fog->SetCalcMode(GLFM_CALCULATE_LINEAR);
  fog->SetFogStartAndEnd(5, 12);
  fog->Enable(1);
  aContext.AttachPainter(GLMake<ScenePainter>().Get());
}

bool Take(IGLContext& aContext, IGLPixmap& aTarget) {
  const auto camera = GLMake<Camera>();
  auto done = camera->m_Done.get_future();
  GLCaptureRequest request;
  request.m_sBackground = {0.5f, 0.55f, 0.6f, 1};
  camera->Request(&aTarget, request);
  aContext.AttachCapture(camera.Get());
  const bool came = done.wait_for(std::chrono::seconds(20)) == std::future_status::ready;
  aContext.DetachCapture();
  return came && done.get();
}

GLDATA_RGBA4B PixelAt(IGLPixmap& aPixmap, int aX, int aY) {
  GLDATA_RGBA4B pixel{};
  aPixmap.GetPixel(aX, aY, &pixel);
  return pixel;
}

}  // namespace

bool SaveLitScene(IGLContext& aContext, IGLPixmap& aTaken, const std::string& aFile) {
  SetUp(aContext);
  if (!Take(aContext, aTaken)) return false;
  BitmapBytes bitmap;
  bitmap.m_iWidth = kWidth;
  bitmap.m_iHeight = kHeight;
  for (int y = kHeight - 1; y >= 0; --y) {
    for (int x = 0; x < kWidth; ++x) {
      const GLDATA_RGBA4B pixel = PixelAt(aTaken, x, y);
      bitmap.m_Pixels.insert(bitmap.m_Pixels.end(), {pixel.m_bBlue, pixel.m_bGreen, pixel.m_bRed});
    }
  }
  const Bytes bytes = bitmap.File();
  std::ofstream file(aFile, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return file.good();
}

double MeanGreyDifference(IGLPixmap& a, IGLPixmap& b) {
  int width = 0, height = 0, otherWidth = 0, otherHeight = 0;
  a.GetWidth(&width);
  a.GetHeight(&height);
  b.GetWidth(&otherWidth);
  b.GetHeight(&otherHeight);
  if (width != otherWidth || height != otherHeight) return 255.0;
  long sum = 0;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const GLDATA_RGBA4B p = PixelAt(a, x, y), q = PixelAt(b, x, y);
      sum +=
          std::abs(p.m_bRed - q.m_bRed) + std::abs(p.m_bGreen - q.m_bGreen) + std::abs(p.m_bBlue - q.m_bBlue);
    }
  }
  return static_cast<double>(sum) / (3.0 * width * height);
}
