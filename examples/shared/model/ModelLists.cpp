// ModelLists: compiles the display lists of a model. Draw thread.

#include "shared/model/ModelLists.h"

#include <algorithm>
#include <chrono>

namespace {

constexpr std::size_t kTrianglesPerList = 20000;
constexpr auto kTimePerFrame = std::chrono::milliseconds(50);  // for compilation

void EmitVertex(IGLCanvas& aCanvas, const Vertex& aVertex) {
  aCanvas.SetVertexNormal3f(aVertex.normal[0], aVertex.normal[1], aVertex.normal[2]);
  aCanvas.Vertex3f(aVertex.point[0], aVertex.point[1], aVertex.point[2]);
}

/// Compiles some of a part's triangles. @return the key; 0 if no list can be created
int CompileTriangles(IGLCanvas& aCanvas, const Part& aPart, std::size_t aFirst, std::size_t aLast,
                     Coloring aColoring) {
  const auto texture = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas14_4>();
  int key = 0;
  if (FAILED(aCanvas.BeginCompileList(&key))) return 0;
  aCanvas.BeginDrawTriangles();
  for (std::size_t i = aFirst; i < aLast; ++i) {
    for (const std::uint32_t index : aPart.triangles[i]) {
      if (aColoring == Coloring::Own) {
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

/// Creates a material for both sides. Ambient and diffuse come from the current colour.
GLPtr<IGLMaterial> MaterialOf(const Surface& aSurface) {
  auto material = GLCreate<IGLMaterial>(CLSID_GLMaterial);
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

}  // namespace

ModelLists::ModelLists(const Model& aModel) {
  for (const Part& part : aModel.parts) {
    m_parts.push_back({{}, {}, MaterialOf(part.surface), TextureOf(part.image)});
    AddSteps(part, Coloring::Current);
    if (!part.colors.empty()) AddSteps(part, Coloring::Own);
  }
}

void ModelLists::AddSteps(const Part& aPart, Coloring aColoring) {
  for (std::size_t first = 0; first < aPart.triangles.size(); first += kTrianglesPerList) {
    m_steps.push_back(
        {&aPart, first, std::min(first + kTrianglesPerList, aPart.triangles.size()), aColoring});
  }
}

float ModelLists::Compile(IGLCanvas& aCanvas, bool aEverything) {
  LONG valid = 0;
  if (m_done > 0) aCanvas.IsCompiledList(m_first, &valid);
  if (valid == 0) Forget();  // a new rendering context: the old lists no longer exist
  const auto end = std::chrono::steady_clock::now() + kTimePerFrame;
  while (m_done < m_steps.size() && (aEverything || std::chrono::steady_clock::now() < end)) {
    const Step& step = m_steps[m_done];
    const int key = CompileTriangles(aCanvas, *step.part, step.first, step.last, step.coloring);
    Compiled& part = m_parts[step.part->id - 1];
    (step.coloring == Coloring::Own ? part.colored : part.plain).push_back(key);
    if (m_done++ == 0) m_first = key;
  }
  return m_steps.empty() ? 1.0f : static_cast<float>(m_done) / static_cast<float>(m_steps.size());
}

void ModelLists::Forget() {
  m_done = 0;
  for (Compiled& part : m_parts) {
    part.plain.clear();
    part.colored.clear();
  }
}

void ModelLists::Delete(IGLCanvas& aCanvas) {
  for (const Compiled& part : m_parts) {
    for (const int key : part.plain) aCanvas.DeleteCompiledList(key);
    for (const int key : part.colored) aCanvas.DeleteCompiledList(key);
  }
  Forget();
}

void ModelLists::Draw(IGLCanvas& aCanvas, const Part& aPart, Coloring aColoring) const {
  const Compiled& part = m_parts[aPart.id - 1];
  for (const int key : aColoring == Coloring::Own && !aPart.colors.empty() ? part.colored : part.plain) {
    aCanvas.DrawCompiledList(key);
  }
}
