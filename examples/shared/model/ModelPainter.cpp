#include "shared/model/ModelPainter.h"

#include <GL/gl.h>

#include <algorithm>

namespace {

constexpr GLDATA_RGBA kMarkColor{1.0f, 0.55f, 0.1f, 1.0f};
constexpr float kPointSize = 2.0f;
constexpr int kAllModes = 0xFFF;
constexpr int kBothSides = GLDM_SHOW_FRONT | GLDM_SHOW_BACK;
constexpr int kFaces = kBothSides | GLDM_SMOOTH_LIGHTING;
constexpr int kLines = kBothSides | GLDM_LINE_FRONT | GLDM_LINE_BACK;
constexpr int kPoints = kFaces | GLDM_POINT_FRONT | GLDM_POINT_BACK;

/// Tells a pick pass from a frame: only in a frame does an overlay projection report its extents.
bool IsPickPass(IGLCanvas& aCanvas) {
  GLDATA_POINT extents{};
  aCanvas.PushProjectionMatrix(1, &extents);
  aCanvas.PopProjectionMatrix();
  return extents.z == 0;
}

void EmitVertex(IGLCanvas& aCanvas, const Vertex& aVertex) {
  aCanvas.SetVertexNormal3f(aVertex.normal[0], aVertex.normal[1], aVertex.normal[2]);
  aCanvas.Vertex3f(aVertex.point[0], aVertex.point[1], aVertex.point[2]);
}

/// Compiles a part's triangles. @return the key; 0 when there is no list to be had
int CompilePart(IGLCanvas& aCanvas, const Part& aPart, bool aColored) {
  const auto texture = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas14_4>();
  int key = 0;
  if (FAILED(aCanvas.BeginCompileList(&key))) return 0;
  aCanvas.BeginDrawTriangles();
  for (const auto& triangle : aPart.triangles) {
    for (const std::uint32_t index : triangle) {
      if (aColored) {
        GLDATA_RGBA color = aPart.colors[index];
        aCanvas.SetVertexColor(&color);
      }
      if (!aPart.places.empty()) texture->TexCoord2f(aPart.places[index][0], aPart.places[index][1]);
      EmitVertex(aCanvas, aPart.vertices[index]);
    }
  }
  aCanvas.EndDrawVertices();
  aCanvas.EndCompileList();
  return key;
}

/// Makes a material that acts on both sides alike. Ambient and diffuse come with the colour.
GLPtr<IGLMaterial> MaterialOf(const Surface& aSurface) {
  const auto material = GLCreate<IGLMaterial>(CLSID_GLMaterial);
  GLDATA_RGBA specular = aSurface.specular;
  for (const LONG front : {1, 0}) {
    material->SetSpecularReflectance(front, &specular);
    material->SetShininess(front, aSurface.shininess);
  }
  material->EnableDrawMode(
      static_cast<eGLMatDrawMode>(GLMM_ENABLE_FRONT | GLMM_ENABLE_BACK | GLMM_LIGHT_MODEL_LOCAL_VIEWER |
                                  GLMM_LIGHT_MODEL_TWO_SIDE),
      1);
  return material;
}

GLPtr<IGLTexture2D> TextureOf(const GLPtr<IGLPixmap>& aImage) {
  if (!aImage) return {};
  auto texture = GLCreate<IGLTexture2D>(CLSID_GLTexture2D);
  texture->Initialize(aImage.Get());
  return texture;
}

GLDATA_POINT PointOf(const std::array<float, 3>& aValue) { return {aValue[0], aValue[1], aValue[2]}; }

}  // namespace

ModelPainter::ModelPainter(const Model& aModel, FrameClock& aClock)
    : m_model(aModel), m_clock(aClock), m_mode(GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr)) {
  m_mode->SetPointSize(kPointSize);
}

void ModelPainter::SetShade(Shade aShade) {
  const std::lock_guard lock(m_lock);
  m_look.shade = aShade;
}

void ModelPainter::SetTextures(bool aOn) {
  const std::lock_guard lock(m_lock);
  m_look.textures = aOn;
}

void ModelPainter::SetMarked(const std::vector<ULONG>& aIds) {
  std::vector<bool> marked(m_model.parts.size() + 1, false);
  for (const ULONG id : aIds) {
    if (id < marked.size()) marked[id] = true;
  }
  const std::lock_guard lock(m_lock);
  m_look.marked = std::move(marked);
}

HRESULT ModelPainter::Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer* aViewer) noexcept {
  Compile(*aCanvas);
  if (IsPickPass(*aCanvas)) {
    DrawForPicking(*aCanvas);
    return S_OK;
  }
  m_clock.Start();
  glEnable(GL_DEPTH_TEST);  // the axes figure of the viewer before leaves it off for the rest of the frame
  glDepthFunc(GL_LEQUAL);   // a capture starts with GL's own, which drops edges on faces square to the eye
  Look look;
  {
    const std::lock_guard lock(m_lock);
    look = m_look;
  }
  look.marked.resize(m_model.parts.size() + 1);
  switch (look.shade) {
    case Shade::Shaded:
      DrawShaded(*aCanvas, *aContext, look);
      DrawTransparent(*aCanvas, *aViewer, look);
      break;
    case Shade::Wire:
      DrawUnlit(*aCanvas, look);
      break;
    case Shade::Hidden:
      DrawHiddenLine(*aCanvas, *aContext, look);
      break;
    case Shade::Points:
      DrawPoints(*aCanvas, look);
      break;
  }
  return S_OK;
}

void ModelPainter::Compile(IGLCanvas& aCanvas) {
  LONG valid = 0;
  if (!m_compiled.empty()) aCanvas.IsCompiledList(m_compiled.front().plain, &valid);
  if (valid != 0) return;
  // The first pass, or the rendering context has been replaced and its lists are gone.
  m_compiled.clear();
  for (const Part& part : m_model.parts) {
    m_compiled.push_back({CompilePart(aCanvas, part, false),
                          part.colors.empty() ? 0 : CompilePart(aCanvas, part, true),
                          MaterialOf(part.surface), TextureOf(part.image)});
  }
  if (m_panes.empty()) StoreTransparent(aCanvas);
}

void ModelPainter::StoreTransparent(IGLCanvas& aCanvas) {
  const auto store = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas13_1>();
  std::vector<const Part*> owners;
  store->ClearTransparentTriangles();
  for (const Part& part : m_model.parts) {
    if (!part.IsTransparent()) continue;
    for (const auto& triangle : part.triangles) {
      GLDATA_POINT points[3];
      GLDATA_POINT normals[3];
      GLDATA_RGBA colors[3];
      for (int i = 0; i < 3; ++i) {
        const std::uint32_t index = triangle[static_cast<std::size_t>(i)];
        points[i] = PointOf(part.vertices[index].point);
        normals[i] = PointOf(part.vertices[index].normal);
        colors[i] = part.colors.empty() ? part.surface.diffuse : part.colors[index];
        colors[i].m_fAlpha *= part.colors.empty() ? 1.0f : part.surface.diffuse.m_fAlpha;
      }
      store->AddTransparentTriangle3(points, colors, normals);
      owners.push_back(&part);
    }
  }
  // The store hands its triangles out in the order in which they came, with their centroids.
  std::vector<GLDATA_TRANS_TRIANGLE> triangles(owners.size());
  if (triangles.empty()) return;
  store->GetTransparentTriangles(0, static_cast<LONG>(triangles.size()), triangles.data());
  store->ClearTransparentTriangles();
  for (std::size_t i = 0; i < triangles.size(); ++i) m_panes.push_back({triangles[i], owners[i]});
  for (Pane& pane : m_panes) m_order.push_back(&pane);
}

void ModelPainter::DrawForPicking(IGLCanvas& aCanvas) {
  // Faces always, so that a click on a wire model finds the face that it goes through.
  ApplyMode(aCanvas, kFaces, kMarkColor);
  for (const Part& part : m_model.parts) {
    aCanvas.SetTestID(part.id);
    DrawPart(aCanvas, part, false);
  }
}

void ModelPainter::DrawShaded(IGLCanvas& aCanvas, IGLContext& aContext, const Look& aLook) {
  for (const Part& part : m_model.parts) {
    if (part.IsTransparent()) continue;
    const bool marked = aLook.marked[part.id];
    ApplyMode(aCanvas, kFaces, marked ? kMarkColor : part.surface.diffuse);
    aCanvas.SetMaterial(m_compiled[part.id - 1].material.Get());
    if (part.image && aLook.textures && !marked) {
      DrawTextured(aCanvas, aContext, part);
    } else {
      DrawPart(aCanvas, part, !marked);
    }
  }
}

// The face that a texture opens loads the image; closed again without vertices, it draws nothing itself.
void ModelPainter::DrawTextured(IGLCanvas& aCanvas, IGLContext& aContext, const Part& aPart) {
  IGLTexture2D& texture = *m_compiled[aPart.id - 1].texture.Get();
  const auto enable = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas14_4>();
  GLDATA_POINT normal{0, 0, 1};
  texture.BeginDraw(&aContext, GLTM_MODULATE, 1, 1, 1, &normal, nullptr);
  texture.EndDraw();
  enable->Enable(GLE_TEXTURE_2D);
  DrawPart(aCanvas, aPart, true);
  enable->Disable(GLE_TEXTURE_2D);
}

void ModelPainter::DrawTransparent(IGLCanvas& aCanvas, IGLViewer& aViewer, const Look& aLook) {
  if (m_panes.empty()) return;
  GLPtr<IGLCoord> eye;
  GLDATA_POINT from;
  aViewer.GetCoord(eye.Put());
  eye->GetOrigin(&from);
  for (Pane& pane : m_panes) {
    const GLDATA_POINT& c = pane.triangle.m_sCentroid;
    pane.triangle.m_dMidDistance =
        (c.x - from.x) * (c.x - from.x) + (c.y - from.y) * (c.y - from.y) + (c.z - from.z) * (c.z - from.z);
  }
  std::sort(m_order.begin(), m_order.end(), [](const Pane* a, const Pane* b) {
    return a->triangle.m_dMidDistance > b->triangle.m_dMidDistance;
  });

  const auto depth = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas13_1>();
  depth->PushDepthMask(0);
  ApplyMode(aCanvas, kFaces, kMarkColor);
  const Part* current = nullptr;
  for (const Pane* pane : m_order) {
    if (pane->part != current) {  // a material can't change inside a run of vertices
      if (current != nullptr) aCanvas.EndDrawVertices();
      current = pane->part;
      aCanvas.SetMaterial(m_compiled[current->id - 1].material.Get());
      aCanvas.BeginDrawTriangles();
    }
    for (int i = 0; i < 3; ++i) {
      GLDATA_RGBA color = aLook.marked[current->id] ? kMarkColor : pane->triangle.m_sColors[i];
      color.m_fAlpha = pane->triangle.m_sColors[i].m_fAlpha;
      GLDATA_POINT normal = pane->triangle.m_sNormals[i];
      GLDATA_POINT point = pane->triangle.m_sPoints[i];
      aCanvas.SetVertexColor(&color);
      aCanvas.SetVertexNormal(&normal);
      aCanvas.Vertex(&point);
    }
  }
  aCanvas.EndDrawVertices();
  aCanvas.PopDepthAttribute();
}

void ModelPainter::DrawHiddenLine(IGLCanvas& aCanvas, IGLContext& aContext, const Look& aLook) {
  GLDATA_RGBA background;
  aContext.GetBackgroundColor(&background);
  aCanvas.PushLightAttribute();
  ApplyMode(aCanvas, kFaces | GLDM_POLYGON_OFFSET, background);
  for (const Part& part : m_model.parts) DrawPart(aCanvas, part, false);
  aCanvas.PopLightAttribute();
  DrawUnlit(aCanvas, aLook);
}

void ModelPainter::DrawUnlit(IGLCanvas& aCanvas, const Look& aLook) {
  aCanvas.PushLightAttribute();
  for (const Part& part : m_model.parts) {
    const bool marked = aLook.marked[part.id];
    GLDATA_RGBA color = marked ? kMarkColor : part.surface.diffuse;
    color.m_fAlpha = 1.0f;
    ApplyMode(aCanvas, kLines, color);
    DrawPart(aCanvas, part, !marked);
  }
  aCanvas.PopLightAttribute();
}

void ModelPainter::DrawPoints(IGLCanvas& aCanvas, const Look& aLook) {
  for (const Part& part : m_model.parts) {
    const bool marked = aLook.marked[part.id];
    ApplyMode(aCanvas, kPoints, marked ? kMarkColor : part.surface.diffuse);
    aCanvas.SetMaterial(m_compiled[part.id - 1].material.Get());
    DrawPart(aCanvas, part, !marked);
  }
}

void ModelPainter::DrawPart(IGLCanvas& aCanvas, const Part& aPart, bool aColored) {
  const Compiled& compiled = m_compiled[aPart.id - 1];
  aCanvas.DrawCompiledList(aColored && compiled.colored != 0 ? compiled.colored : compiled.plain);
}

void ModelPainter::ApplyMode(IGLCanvas& aCanvas, int aMode, const GLDATA_RGBA& aColor) {
  GLDATA_RGBA color = aColor;
  m_mode->EnableDrawMode(static_cast<eGLDrawMode>(kAllModes & ~aMode), 0);
  m_mode->EnableDrawMode(static_cast<eGLDrawMode>(aMode), 1);
  m_mode->SetColor(&color);
  aCanvas.SetDrawAttributes(m_mode.Get());
}
