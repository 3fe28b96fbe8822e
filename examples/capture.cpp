// capture: compares two enlargements of a small window. On the left each pixel of the window is enlarged
// three times. On the right a capture draws the same window at three times its resolution, on white. Shows
// how to request pictures, to wait for them, and to read their pixels.

#include <algorithm>
#include <future>
#include <stdexcept>

#include "shared/Shapes.h"
#include "shared/Stage.h"

namespace {

constexpr int kSide = 160;  // width and height of the window, in pixels
constexpr int kZoom = 3;

/// Takes pictures, one at a time. The draw thread calls OnData; the host's thread waits for each picture.
class Camera final : public GLCaptureBase {
 public:
  /// @throws std::runtime_error if the capture fails
  GLPtr<IGLPixmap> Take(int aZoom, const GLDATA_RGBA& aBackground) {
    auto pixmap = GLCreate<IGLPixmap>(CLSID_GLPixmap);
    m_done = {};
    auto done = m_done.get_future();
    GLCaptureRequest request;  // by default the request covers the whole window
    request.m_fZoom = static_cast<float>(aZoom);
    request.m_sBackground = aBackground;
    Request(pixmap.Get(), request);
    if (!done.get()) throw std::runtime_error("cannot take a picture of that size");
    return pixmap;
  }
  HRESULT OnData(LONG aSuccess) noexcept override {
    m_done.set_value(aSuccess != 0);
    return S_OK;
  }

 private:
  std::promise<bool> m_done;
};

/// Draws a ball and a box on a floor, with a label. It sets all state in every pass, because each capture has
/// a new rendering context with GL's defaults.
class BallPainter final : public GLPainterBase {
 public:
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer*) noexcept override {
    SetColor(*aCanvas, {0.75f, 0.75f, 0.72f, 1});
    DrawFloor(*aCanvas, -1, 2.2, 24);
    SetColor(*aCanvas, {0.85f, 0.3f, 0.2f, 1});
    DrawSphere(*aCanvas, {0, 0, 0}, 1);
    SetColor(*aCanvas, {0.2f, 0.35f, 0.7f, 1});
    DrawBox(*aCanvas, {1.3, -0.6, 1}, {0.4, 0.4, 0.4});
    SetColor(*aCanvas, {0.15f, 0.45f, 0.25f, 1});
    PrintLabel(*aContext);
    return S_OK;
  }

 private:
  void SetColor(IGLCanvas& aCanvas, GLDATA_RGBA aColor) {
    m_attributes->SetColor(&aColor);
    aCanvas.SetDrawAttributes(m_attributes.Get());
  }
  void PrintLabel(IGLContext& aContext) {
    if (m_font == nullptr) {
      if (FAILED(aContext.CreateTrueTypeFont(GLString("DejaVu Sans"), 0, 700, 0, 0, &m_font))) return;
      m_font->SetWidth(0.5f);
      m_font->SetHeight(0.5f);
    }
    GLDATA_POINT start{-1.9, 1.35, 0};
    m_font->Print(GLString("Ball & box"), &start);
  }

  GLPtr<IGLDrawAttr> m_attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  IGLFont* m_font = nullptr;  // borrowed: the context owns it
};

/// Copies a pixmap into a picture. Each pixel becomes a square of aSquare by aSquare pixels.
void Paste(IGLPixmap& aPixmap, int aSquare, int aLeft, Picture& aPicture) {
  for (int y = 0; y < aPicture.height; ++y) {
    for (int x = 0; x < kSide * kZoom; ++x) {
      GLDATA_RGBA4B pixel{};
      aPixmap.GetPixel(x / aSquare, y / aSquare, &pixel);
      std::copy_n(&pixel.m_bRed, 4, aPicture.At(aLeft + x, y));
    }
  }
}

Picture DrawCapture() {
  const Stage stage(kSide, kSide);
  IGLContext& context = stage.Context();
  GLDATA_RGBA dusk{0.13f, 0.15f, 0.19f, 1};
  context.SetBackgroundColor(&dusk);
  stage.AddViewer({0, 2.6, 6.2}, 0.36).SetEyeFovy_DEG(45);
  stage.AddDistantLight({0.4, -0.8, -1});
  context.AttachPainter(GLMake<BallPainter>().Get());

  const auto camera = GLMake<Camera>();
  context.AttachCapture(camera.Get());
  const auto window = camera->Take(1, dusk);
  const auto print = camera->Take(kZoom, {1, 1, 1, 1});
  Picture picture(2 * kSide * kZoom, kSide * kZoom);
  Paste(*window.Get(), kZoom, 0, picture);
  Paste(*print.Get(), 1, kSide * kZoom, picture);
  return picture;
}

}  // namespace

int main(int argc, char** argv) { return RunExample(argc, argv, DrawCapture); }
