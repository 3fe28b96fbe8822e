// What a frame of a scene with everything in it takes of the heap, once it is warm: nothing.

#include <gllib/IGLCoord.h>
#include <gllib/IGLFog.h>
#include <gllib/IGLFont.h>
#include <gllib/IGLLight.h>
#include <gtest/gtest.h>

#include "support/Counting.h"
#include "support/Scene.h"

namespace {

/// Draws a cross in front of everything.
class CrossGauge : public GLViewerGaugeBase {
 public:
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*) noexcept override {
    aCanvas->BeginDrawLines();
    for (const auto& [x, y] : {std::pair{-0.1f, 0.0f}, {0.1f, 0.0f}, {0.0f, -0.1f}, {0.0f, 0.1f}}) {
      aCanvas->Vertex2f(x, y);
    }
    aCanvas->EndDrawVertices();
    return S_OK;
  }
};

/// A context with lights, fog, a clip plane, two viewers with frames, axes and gauges, and a font a kind.
class FullScene {
 public:
  FullScene() {
    IGLContext& context = m_Fixture.Context();
    for (IGLLight*& light : m_apLights) context.CreateLight(&light);
    GLPtr<IGLFog> fog;
    context.GetFog(fog.Put());
    fog->Enable(1);
    GLDATA_POINT a{0, 0, 0.5}, b{1, 0, 0.5}, c{0, 1, 0.5};
    context.ClipPlane(&a, &b, &c);
    IGLViewer* second = nullptr;
    context.CreateViewer(1, 0, &second);
    for (IGLViewer* viewer : {&m_Fixture.Viewer(), second}) {
      viewer->Clip(1);
      viewer->SetClipRectangle(viewer == second ? 100 : 0, 0, 100, 100);
      viewer->AddGauge(GLMake<CrossGauge>().Get());
      GLPtr<IGLViewer>::FromBorrowed(viewer).As<IGLViewer2>()->SetShowAxes(1);
    }
    m_Fonts = MakeFonts(context);
  }

  /// Draws a frame. @return what the draw thread's count of allocations stood at when its painter began
  std::size_t Frame() {
    std::size_t allocations = 0;
    m_Fixture.Frame([&](Scene& scene) {
      if (&scene.Viewer() == &m_Fixture.Viewer()) allocations = AllocationsOfThisThread();
      Draw(scene);
    });
    return allocations;
  }

 private:
  void Draw(Scene& aScene) {
    IGLCanvas& canvas = aScene.Canvas();
    canvas.SetDrawAttributes(m_pAttributes.Get());
    canvas.SetMaterial(m_pMaterial.Get());
    LONG compiled = 0;
    canvas.IsCompiledList(m_iList, &compiled);
    if (compiled == 0) {
      canvas.BeginCompileList(&m_iList);
      canvas.BeginDrawTriangles();
      for (const auto& [x, y] : {std::pair{0.0f, 0.0f}, {1.0f, 0.0f}, {0.0f, 1.0f}}) canvas.Vertex2f(x, y);
      canvas.EndDrawVertices();
      canvas.EndCompileList();
    }
    canvas.DrawCompiledList(m_iList);
    GLDATA_POINT start{-0.5, -0.5, 0};
    for (const auto& font : m_Fonts) font->Print(m_Text, &start);
  }

  ContextFixture m_Fixture{200, 100};
  IGLLight* m_apLights[2] = {};
  Fonts m_Fonts;
  GLPtr<IGLDrawAttr> m_pAttributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  GLPtr<IGLMaterial> m_pMaterial = GLCreate<IGLMaterial>(CLSID_GLMaterial);
  GLString m_Text{"label 12.5"};
  int m_iList = 0;
};

}  // namespace

TEST(Frame, TakesNothingOfTheHeapOnceWarm) {
  FullScene scene;
  for (int i = 0; i < 20; ++i) scene.Frame();  // the driver compiles what it needs, fonts and lists are built
  const std::size_t warm = scene.Frame();
  ASSERT_GT(warm, 0u) << "the draw thread's allocations are counted";
  for (int i = 0; i < 10; ++i) EXPECT_EQ(scene.Frame(), warm);
}
