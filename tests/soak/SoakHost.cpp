// SoakHost: what a host does in a round, and what its painter draws: lists, text of all kinds, a textured
// face and a transparent triangle.

#include "soak/SoakHost.h"

#include <gllib/IGLFog.h>
#include <gllib/IGLFont.h>
#include <gllib/IGLLight.h>
#include <gllib/IGLTexture2D.h>

#include <chrono>
#include <thread>

namespace {

constexpr int kSide = 128;

void DrawBars(IGLCanvas& aCanvas) {
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

}  // namespace

SoakHost::SoakHost() : m_Drawn([this](Scene& scene) { Draw(scene); }, kSide, kSide) {
  const auto image = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  image->Initialize(32, 32, {200, 120, 40, 255});
  m_Texture->Initialize(image.Get());
  m_Drawn.context->SetDrawThreadPars(0, 10, 1);
  IGLViewer* second = nullptr;
  m_Drawn.context->CreateViewer(1, 1, &second);
  second->Clip(1);
  second->SetClipRectangle(kSide / 2, kSide / 2, kSide / 2, kSide / 2);
  m_Capture->request.m_fZoom = 2.0f;
  m_Drawn.context->AttachCapture(m_Capture.Get());
}

SoakHost::~SoakHost() {
  m_Drawn.context->DetachCapture();
  m_Drawn.context->DetachPainter();
}

void SoakHost::Draw(const Scene& aScene) {
  IGLCanvas& canvas = aScene.Canvas();
  if (!m_Fonts[0]) m_Fonts = MakeFonts(aScene.Context());
  canvas.SetDrawAttributes(m_Attributes.Get());
  canvas.SetMaterial(m_Material.Get());
  DrawList(canvas);
  GLDATA_POINT start{-0.5, -0.5, 0};
  const GLString text("soak 12.5");
  for (const auto& font : m_Fonts) font->Print(text, &start);
  DrawFace(aScene.Context());
  GLDATA_POINT corners[] = {{-1, -1, 0.2}, {1, -1, 0.2}, {0, 1, 0.2}};
  GLDATA_RGBA color{0, 0, 1, 0.3f};
  const auto triangles = aScene.CanvasAs<IGLCanvas13_1>();
  triangles->ClearTransparentTriangles();
  triangles->AddTransparentTriangle(corners, &color);
}

void SoakHost::DrawList(IGLCanvas& aCanvas) {
  LONG compiled = 0;
  aCanvas.IsCompiledList(m_iList, &compiled);
  if (compiled == 0) {
    aCanvas.BeginCompileList(&m_iList);
    DrawBars(aCanvas);
    aCanvas.EndCompileList();
  }
  aCanvas.DrawCompiledList(m_iList);
  if (Frames() % 200 == 199) aCanvas.DeleteCompiledList(std::exchange(m_iList, 0));
}

void SoakHost::DrawFace(IGLContext& aContext) {
  GLDATA_POINT normal{0, 0, 1}, corners[] = {{0, 0, 0.1}, {0.5, 0, 0.1}, {0.5, 0.5, 0.1}, {0, 0.5, 0.1}};
  m_Texture->BeginDraw(&aContext, GLTM_MODULATE, 1, 1, 1, &normal, nullptr);
  for (int i = 0; i < 4; ++i) m_Texture->Draw(i == 1 || i == 2, i > 1, &corners[i]);
  m_Texture->EndDraw();
}

bool SoakHost::Round() {
  using namespace std::chrono_literals;
  const int round = m_iRound++;
  IGLContext& context = *m_Drawn.context;
  GLPtr<IGLFog> fog;
  context.GetFog(fog.Put());
  fog->Enable(round % 2);
  context.ResetClipPlanes();
  GLDATA_POINT a{0, 0, 0.5}, b{0, 1, 0.5}, c{1, 0, 0.5};
  context.ClipPlane(&a, &b, &c);
  context.SetViewport(0, 0, kSide + round % 2, kSide);
  IGLLight* light = nullptr;
  IGLViewer* viewer = nullptr;
  context.CreateLight(&light);
  context.CreateViewer(1, 0, &viewer);
  std::this_thread::sleep_for(10ms);
  context.DestroyViewer(viewer);
  context.DestroyLight(light);
  std::this_thread::sleep_for(20ms);
  return round % 10 != 0 || m_Capture->Take() == 1;
}
