// SoakHost: what a host does in a round, and what its painter draws: lists, text of all kinds, a textured
// face and a transparent triangle.

#include "soak/SoakHost.h"

#include <gllib/IGLFog.h>
#include <gllib/IGLLight.h>

#include <chrono>
#include <thread>

namespace {

constexpr int kSide = 128;

}  // namespace

SoakHost::SoakHost() : m_Drawn([this](Scene& scene) { Draw(scene); }, kSide, kSide) {
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
  m_Scene.Draw(aScene);
  if (Frames() % 200 == 199) m_Scene.DropList(aScene);
  GLDATA_POINT corners[] = {{-1, -1, 0.2}, {1, -1, 0.2}, {0, 1, 0.2}};
  GLDATA_RGBA color{0, 0, 1, 0.3f};
  const auto triangles = aScene.CanvasAs<IGLCanvas13_1>();
  triangles->ClearTransparentTriangles();
  triangles->AddTransparentTriangle(corners, &color);
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
