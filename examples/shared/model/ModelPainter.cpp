// ModelPainter: draws the model, its marked parts and its transparent triangles.

#include "shared/model/ModelPainter.h"

#include <algorithm>

namespace {

constexpr GLDATA_RGBA kMarkColor{1.0f, 0.55f, 0.1f, 1.0f};
constexpr float kPointSize = 2.0f;
constexpr GLenum kSectionPlane = GL_CLIP_PLANE0;  // free: the context defines no clip planes
constexpr int kAllModes = 0xFFF;
constexpr int kBothSides = GLDM_SHOW_FRONT | GLDM_SHOW_BACK;
constexpr int kFaces = kBothSides | GLDM_SMOOTH_LIGHTING;
constexpr int kLines = kBothSides | GLDM_LINE_FRONT | GLDM_LINE_BACK;
constexpr int kPoints = kFaces | GLDM_POINT_FRONT | GLDM_POINT_BACK;

GLDATA_POINT PointOf(const std::array<float, 3>& aValue) { return {aValue[0], aValue[1], aValue[2]}; }

}  // namespace

ModelPainter::ModelPainter(FrameClock& aClock, Progress& aProgress, Measuring& aMeasure,
                           GLPtr<GLViewing> aViewing)
    : m_clock(aClock),
      m_progress(aProgress),
      m_measure(aMeasure),
      m_viewing(std::move(aViewing)),
      m_mode(GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr)) {
  m_mode->SetPointSize(kPointSize);
}

void ModelPainter::SetModel(std::shared_ptr<const Model> aModel) {
  auto next = std::make_unique<Shown>(std::move(aModel));
  const std::lock_guard lock(m_lock);
  m_next.swap(next);  // the replaced model is destroyed outside the lock
  m_look.marked.clear();
}

void ModelPainter::SetShade(Shade aShade) {
  const std::lock_guard lock(m_lock);
  m_look.shade = aShade;
}

void ModelPainter::SetTextures(bool aOn) {
  const std::lock_guard lock(m_lock);
  m_look.textures = aOn;
}

void ModelPainter::SetSection(const Section& aSection) {
  const std::lock_guard lock(m_lock);
  m_look.section = aSection;
}

void ModelPainter::SetMarked(const std::vector<ULONG>& aIds) {
  std::vector<bool> marked;
  for (const ULONG id : aIds) {
    if (id >= marked.size()) marked.resize(id + 1);
    marked[id] = true;
  }
  const std::lock_guard lock(m_lock);
  m_look.marked = std::move(marked);
}

HRESULT ModelPainter::Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer* aViewer) noexcept {
  const Look look = TakeLook(*aCanvas);
  if (!m_shown) return S_OK;
  const GLPassKind pass = m_viewing->Pass();
  Prepare(*aCanvas, *aContext, pass);
  Cut(look);
  if (pass == GLPassKind::Selection) {
    DrawForPicking(*aCanvas);
  } else {
    DrawModel(*aCanvas, *aContext, *aViewer, look);
  }
  glDisable(kSectionPlane);
  // An overlay writes no depth, so GLViewing::PointUnder still finds the points of the model.
  if (pass != GLPassKind::Selection) m_measure.Draw(*aCanvas, *aContext, m_viewing->Scale());
  return S_OK;
}

void ModelPainter::Cut(const Look& aLook) const {
  if (!aLook.section.IsOn()) return;
  glClipPlane(kSectionPlane, aLook.section.Equation(*m_shown->model).data());
  glEnable(kSectionPlane);
}

void ModelPainter::DrawModel(IGLCanvas& aCanvas, IGLContext& aContext, IGLViewer& aViewer,
                             const Look& aLook) {
  m_clock.Start();
  glEnable(GL_DEPTH_TEST);  // the axes figure of the previous viewer leaves it disabled
  // A capture starts with GL_LESS, which drops edges on faces perpendicular to the view.
  glDepthFunc(GL_LEQUAL);
  switch (aLook.shade) {
    case Shade::Shaded:
      DrawShaded(aCanvas, aContext, aLook);
      DrawTransparent(aCanvas, aViewer, aLook);
      break;
    case Shade::Wire:
      DrawUnlit(aCanvas, aLook);
      break;
    case Shade::Hidden:
      DrawHiddenLine(aCanvas, aContext, aLook);
      break;
    case Shade::Points:
      DrawPoints(aCanvas, aLook);
      break;
  }
}

ModelPainter::Look ModelPainter::TakeLook(IGLCanvas& aCanvas) {
  std::unique_ptr<Shown> next;
  Look look;
  {
    const std::lock_guard lock(m_lock);
    next = std::move(m_next);
    look = m_look;
  }
  if (next) {
    if (m_shown) m_shown->lists.Delete(aCanvas);
    m_shown = std::move(next);
    StoreTransparent(aCanvas);
  }
  if (m_shown) look.marked.resize(m_shown->model->parts.size() + 1);
  return look;
}

// Selections and captures compile the whole model. Frames compile in steps.
void ModelPainter::Prepare(IGLCanvas& aCanvas, IGLContext& aContext, GLPassKind aPass) {
  const bool everything = !m_stepwise || aPass != GLPassKind::Frame;
  const float share = m_shown->lists.Compile(aCanvas, everything);
  m_progress.preparing = share < 1 ? share : Progress::kIdle;
  if (share < 1) GLPtr<IGLContext>::FromBorrowed(&aContext).As<IGLContext2>()->TriggerDrawThread();
}

void ModelPainter::StoreTransparent(IGLCanvas& aCanvas) {
  const auto store = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas13_1>();
  std::vector<const Part*> owners;
  store->ClearTransparentTriangles();
  for (const Part& part : m_shown->model->parts) {
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
  // The store returns its triangles in the order of insertion, with their centroids.
  std::vector<GLDATA_TRANS_TRIANGLE> triangles(owners.size());
  if (triangles.empty()) return;
  store->GetTransparentTriangles(0, static_cast<LONG>(triangles.size()), triangles.data());
  store->ClearTransparentTriangles();
  for (std::size_t i = 0; i < triangles.size(); ++i) m_shown->panes.push_back({triangles[i], owners[i]});
  for (Pane& pane : m_shown->panes) m_shown->order.push_back(&pane);
}

void ModelPainter::DrawForPicking(IGLCanvas& aCanvas) {
  // Always draws faces, so that a click inside a wireframe hits the face.
  ApplyMode(aCanvas, kFaces, kMarkColor);
  for (const Part& part : m_shown->model->parts) {
    aCanvas.SetTestID(part.id);
    m_shown->lists.Draw(aCanvas, part, Coloring::Current);
  }
}

void ModelPainter::DrawShaded(IGLCanvas& aCanvas, IGLContext& aContext, const Look& aLook) {
  for (const Part& part : m_shown->model->parts) {
    if (part.IsTransparent()) continue;
    const bool marked = aLook.marked[part.id];
    ApplyMode(aCanvas, kFaces, marked ? kMarkColor : part.surface.diffuse);
    aCanvas.SetMaterial(m_shown->lists.Material(part));
    if (part.image && aLook.textures && !marked) {
      DrawTextured(aCanvas, aContext, part);
    } else {
      m_shown->lists.Draw(aCanvas, part, marked ? Coloring::Current : Coloring::Own);
    }
  }
}

// BeginDraw loads the image into GL's current texture. A face without vertices draws nothing.
void ModelPainter::DrawTextured(IGLCanvas& aCanvas, IGLContext& aContext, const Part& aPart) {
  IGLTexture2D& texture = *m_shown->lists.Texture(aPart);
  const auto enable = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas14_4>();
  GLDATA_POINT normal{0, 0, 1};
  texture.BeginDraw(&aContext, GLTM_MODULATE, 1, 1, 1, &normal, nullptr);
  texture.EndDraw();
  enable->Enable(GLE_TEXTURE_2D);
  m_shown->lists.Draw(aCanvas, aPart, Coloring::Own);
  enable->Disable(GLE_TEXTURE_2D);
}

void ModelPainter::DrawTransparent(IGLCanvas& aCanvas, IGLViewer& aViewer, const Look& aLook) {
  if (m_shown->panes.empty()) return;
  GLPtr<IGLCoord> eye;
  GLDATA_POINT from{};
  aViewer.GetCoord(eye.Put());
  eye->GetOrigin(&from);
  for (Pane& pane : m_shown->panes) {
    const GLDATA_POINT& c = pane.triangle.m_sCentroid;
    pane.triangle.m_dMidDistance =
        (c.x - from.x) * (c.x - from.x) + (c.y - from.y) * (c.y - from.y) + (c.z - from.z) * (c.z - from.z);
  }
  std::sort(m_shown->order.begin(), m_shown->order.end(), [](const Pane* aLeft, const Pane* aRight) {
    return aLeft->triangle.m_dMidDistance > aRight->triangle.m_dMidDistance;
  });

  const auto depth = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas13_1>();
  depth->PushDepthMask(0);
  ApplyMode(aCanvas, kFaces, kMarkColor);
  const Part* current = nullptr;
  for (const Pane* pane : m_shown->order) {
    if (pane->part != current) {  // a material cannot change between BeginDraw... and EndDrawVertices
      if (current != nullptr) aCanvas.EndDrawVertices();
      current = pane->part;
      aCanvas.SetMaterial(m_shown->lists.Material(*current));
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
  GLDATA_RGBA background{};
  aContext.GetBackgroundColor(&background);
  aCanvas.PushLightAttribute();
  ApplyMode(aCanvas, kFaces | GLDM_POLYGON_OFFSET, background);
  for (const Part& part : m_shown->model->parts) m_shown->lists.Draw(aCanvas, part, Coloring::Current);
  aCanvas.PopLightAttribute();
  DrawUnlit(aCanvas, aLook);
}

void ModelPainter::DrawUnlit(IGLCanvas& aCanvas, const Look& aLook) {
  aCanvas.PushLightAttribute();
  for (const Part& part : m_shown->model->parts) {
    const bool marked = aLook.marked[part.id];
    GLDATA_RGBA color = marked ? kMarkColor : part.surface.diffuse;
    color.m_fAlpha = 1.0f;
    ApplyMode(aCanvas, kLines, color);
    m_shown->lists.Draw(aCanvas, part, marked ? Coloring::Current : Coloring::Own);
  }
  aCanvas.PopLightAttribute();
}

void ModelPainter::DrawPoints(IGLCanvas& aCanvas, const Look& aLook) {
  for (const Part& part : m_shown->model->parts) {
    const bool marked = aLook.marked[part.id];
    ApplyMode(aCanvas, kPoints, marked ? kMarkColor : part.surface.diffuse);
    aCanvas.SetMaterial(m_shown->lists.Material(part));
    m_shown->lists.Draw(aCanvas, part, marked ? Coloring::Current : Coloring::Own);
  }
}

void ModelPainter::ApplyMode(IGLCanvas& aCanvas, int aMode, const GLDATA_RGBA& aColor) {
  GLDATA_RGBA color = aColor;
  m_mode->EnableDrawMode(static_cast<eGLDrawMode>(kAllModes & ~aMode), 0);
  m_mode->EnableDrawMode(static_cast<eGLDrawMode>(aMode), 1);
  m_mode->SetColor(&color);
  aCanvas.SetDrawAttributes(m_mode.Get());
}
