// SoakHost: what a host does in a round, and what its painter draws.

#include "soak/SoakHost.h"

#include <gllib/IGLFog.h>
#include <gllib/IGLFont.h>
#include <gllib/IGLLight.h>
#include <gllib/IGLTexture2D.h>

#include <array>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace {

constexpr int kSide = 128;

}  // namespace

/// Draws lists, text of all kinds, a textured face and a transparent triangle; counts the frames.
class SoakHost::Painter : public GLPainterBase {
 public:
  explicit Painter(IGLContext& aContext) {
    const auto image = GLCreate<IGLPixmap>(CLSID_GLPixmap);
    image->Initialize(32, 32, {200, 120, 40, 255});
    m_Texture->Initialize(image.Get());
    MakeFonts(aContext);
  }

  void MakeFonts(IGLContext& aContext) {
    const GLString face("DejaVu Sans");
    IGLFont *raster = nullptr, *outline = nullptr;
    aContext.CreateRasterFont(face, 0, 400, 0, -12, 0, &raster);
    m_apFonts[0] = GLPtr<IGLFont>::FromBorrowed(raster);
    aContext.CreateSystemFont(m_apFonts[1].Put());
    aContext.CreateTrueTypeFont(face, 0, 400, 0, 1, &outline);
    m_apFonts[2] = GLPtr<IGLFont>::FromBorrowed(outline);
    GLPtr<IGLContext>::FromBorrowed(&aContext).As<IGLContext2>()->CreateInternalFont(GLString("HAND"),
                                                                                     m_apFonts[3].Put());
  }

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer*) noexcept override {
    aCanvas->SetDrawAttributes(m_Attributes.Get());
    aCanvas->SetMaterial(m_Material.Get());
    DrawList(*aCanvas);
    GLDATA_POINT start{-0.5, -0.5, 0};
    for (const auto& font : m_apFonts) {
      font->Print(m_Text, &start);
    }
    DrawFace(*aContext);
    DrawTransparent(*aCanvas);
    ++m_iFrames;
    return S_OK;
  }

  std::atomic<long> m_iFrames{0};

 private:
  static void DrawBars(IGLCanvas& aCanvas) {
    for (ULONG id = 1; id <= 50; ++id) {
      aCanvas.SetTestID(id);
      aCanvas.BeginDrawTriangles();
      const float x = static_cast<float>(id) / 25.0f - 1.0f;
      aCanvas.SetVertexNormal3f(0, 0, 1);
      aCanvas.Vertex3f(x, -1, 0);
      aCanvas.Vertex3f(x + 0.04f, -1, 0);
      aCanvas.Vertex3f(x, 1, 0);
      aCanvas.EndDrawVertices();
    }
  }

  void DrawList(IGLCanvas& aCanvas) {
    LONG compiled = 0;
    aCanvas.IsCompiledList(m_iList, &compiled);
    if (compiled == 0) {
      aCanvas.BeginCompileList(&m_iList);
      DrawBars(aCanvas);
      aCanvas.EndCompileList();
    }
    aCanvas.DrawCompiledList(m_iList);
    if (m_iFrames % 200 == 199) aCanvas.DeleteCompiledList(std::exchange(m_iList, 0));
  }

  void DrawFace(IGLContext& aContext) {
    GLDATA_POINT normal{0, 0, 1};
    std::array<GLDATA_POINT, 4> corners{{{0, 0, 0.1}, {0.5, 0, 0.1}, {0.5, 0.5, 0.1}, {0, 0.5, 0.1}}};
    m_Texture->BeginDraw(&aContext, GLTM_MODULATE, 1, 1, 1, &normal, nullptr);
    m_Texture->Draw(0, 0, &corners[0]);
    m_Texture->Draw(1, 0, &corners[1]);
    m_Texture->Draw(1, 1, &corners[2]);
    m_Texture->Draw(0, 1, &corners[3]);
    m_Texture->EndDraw();
  }

  static void DrawTransparent(IGLCanvas& aCanvas) {
    const auto canvas = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas13_1>();
    GLDATA_POINT corners[] = {{-1, -1, 0.2}, {1, -1, 0.2}, {0, 1, 0.2}};
    GLDATA_RGBA color{0, 0, 1, 0.3f};
    canvas->ClearTransparentTriangles();
    canvas->AddTransparentTriangle(corners, &color);
  }

  GLPtr<IGLDrawAttr> m_Attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  GLPtr<IGLMaterial> m_Material = GLCreate<IGLMaterial>(CLSID_GLMaterial);
  GLPtr<IGLTexture2D> m_Texture = GLCreate<IGLTexture2D>(CLSID_GLTexture2D);
  GLPtr<IGLFont> m_apFonts[4];
  GLString m_Text{"soak 12.5"};
  int m_iList = 0;
};

/// Takes the pictures that are asked for, and counts them.
class SoakHost::Capture : public GLCaptureBase {
 public:
  HRESULT OnData(LONG aSuccess) noexcept override {
    if (aSuccess != 0) ++m_iPictures;
    return S_OK;
  }
  std::atomic<int> m_iPictures{0};
};

SoakHost::SoakHost() : m_Context(GLCreate<IGLContext>(CLSID_GLContext)), m_Capture(GLMake<Capture>()) {
  if (m_Context->Initialize(0) != S_OK) throw std::runtime_error("no context");
  m_Context->SetViewport(0, 0, kSide, kSide);
  m_Context->SetDrawThreadPars(0, 10, 1);
  for (IGLViewer*& viewer : m_apViewers) m_Context->CreateViewer(1, 1, &viewer);
  m_apViewers[1]->Clip(1);
  m_apViewers[1]->SetClipRectangle(kSide / 2, kSide / 2, kSide / 2, kSide / 2);
  m_Painter = GLMake<Painter>(*m_Context.Get());
  m_Context->AttachPainter(m_Painter.Get());
  m_Context->AttachCapture(m_Capture.Get());
}

SoakHost::~SoakHost() {
  m_Context->DetachCapture();
  m_Context->DetachPainter();
}

long SoakHost::Frames() const { return m_Painter->m_iFrames; }

bool SoakHost::Round() {
  const int round = m_iRound++;
  Change(round);
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  return round % 10 != 0 || TakePicture();
}

void SoakHost::Change(int aRound) {
  GLPtr<IGLFog> fog;
  m_Context->GetFog(fog.Put());
  fog->Enable(aRound % 2);
  m_Context->ResetClipPlanes();
  GLDATA_POINT a{0, 0, 0.5}, b{0, 1, 0.5}, c{1, 0, 0.5};
  m_Context->ClipPlane(&a, &b, &c);
  m_Context->SetViewport(0, 0, kSide + aRound % 2, kSide);
  IGLLight* light = nullptr;
  IGLViewer* viewer = nullptr;
  m_Context->CreateLight(&light);
  m_Context->CreateViewer(1, 0, &viewer);
  std::this_thread::sleep_for(std::chrono::milliseconds(10));
  m_Context->DestroyViewer(viewer);
  m_Context->DestroyLight(light);
}

bool SoakHost::TakePicture() {
  const int before = m_Capture->m_iPictures;
  const auto target = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  m_Capture->Request(target.Get(), {.m_fZoom = 2.0f});
  for (int i = 0; i < 1000 && m_Capture->m_iPictures == before; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return m_Capture->m_iPictures > before;
}
