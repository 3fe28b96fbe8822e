// RichScene: creates its parts in the first frame.

#include "support/RichScene.h"

void RichScene::Draw(const Scene& aScene) {
  IGLCanvas& canvas = aScene.Canvas();
  if (!m_Fonts[0]) Make(aScene.Context());
  m_Attributes->EnableDrawMode(static_cast<eGLDrawMode>(GLDM_SHOW_FRONT | GLDM_SHOW_BACK), 1);
  canvas.SetDrawAttributes(m_Attributes.Get());
  canvas.SetMaterial(m_Material.Get());
  DrawList(canvas);
  if (m_Parts == Parts::kAll) DrawTextures(aScene.Context());
  GLDATA_RGBA white{1, 1, 1, 1};
  canvas.SetVertexColor(&white);
  GLDATA_POINT start{-45, 45, -1};
  for (const auto& font : m_Fonts) {
    start.y -= 15;
    EXPECT_TRUE(!font || font->Print(m_Text, &start) == S_OK);
  }
}

void RichScene::DropList(const Scene& aScene) {
  aScene.Canvas().DeleteCompiledList(std::exchange(m_iList, 0));
}

void RichScene::Make(IGLContext& aContext) {
  if (m_Parts == Parts::kQuick) {
    m_Fonts = MakeQuickFonts(aContext);
    return;
  }
  m_Fonts = MakeFonts(aContext);
  m_Fonts[3]->SetWidth(15);
  m_Fonts[3]->SetHeight(15);
  m_Image->Initialize(8, 8, {255, 160, 40, 255});
  for (int i = 0; i < 8; ++i) m_Image->SetPixel(i, i, {40, 80, 255, 255});
  m_Square->Initialize(m_Image.Get());
  m_Strip->Initialize(m_Image.Get());
}

void RichScene::DrawList(IGLCanvas& aCanvas) {
  LONG valid = 0;
  aCanvas.IsCompiledList(m_iList, &valid);
  if (valid == 0) {
    ++compiled;
    aCanvas.BeginCompileList(&m_iList);
    aCanvas.BeginDrawTriangles();
    GLDATA_RGBA colors[] = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}};
    for (int i = 0; i < 3; ++i) {
      aCanvas.SetVertexColor(&colors[i]);
      aCanvas.Vertex3d(i == 0 ? -60 : 60, i == 2 ? 45 : -45, -10);
    }
    aCanvas.EndDrawVertices();
    aCanvas.EndCompileList();
  }
  aCanvas.DrawCompiledList(m_iList);
}

void RichScene::DrawTextures(IGLContext& aContext) {
  GLDATA_POINT normal{0, 0, 1};
  GLDATA_POINT corners[] = {{5, -40, -5}, {40, -35, -5}, {35, -5, -5}, {0, -10, -5}};
  m_Square->BeginDraw(&aContext, GLTM_DECAL, 0, 0, 0, &normal, nullptr);
  for (int i = 0; i < 4; ++i) m_Square->Draw(i == 1 || i == 2, i > 1, &corners[i]);
  m_Square->EndDraw();
  m_Strip->BeginDraw(&aContext, GLTM_DECAL, 1, 1, 0, &normal, nullptr);
  for (auto& corner : corners) corner.y += 40;
  m_Strip->Draw(&corners[0], 0, &corners[3], 0);
  m_Strip->Draw(&corners[1], 1, &corners[2], 1);
  m_Strip->EndDraw();
}
