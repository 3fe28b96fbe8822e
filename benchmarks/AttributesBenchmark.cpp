// AttributesBenchmark: applies draw attributes and materials through the canvas, compared with the GL calls
// that they make.

#include <benchmark/benchmark.h>
#include <gllib/GLClasses.h>
#include <gllib/IGLCanvas.h>
#include <gllib/IGLDrawAttr.h>
#include <gllib/IGLMaterial.h>

#include "PlainContext.h"
#include "component/CreateObject.h"

namespace {

void PlainAttributes() {
  glFrontFace(GL_CCW);
  glShadeModel(GL_SMOOTH);
  glPolygonMode(GL_FRONT, GL_FILL);
  glPolygonMode(GL_BACK, GL_FILL);
  glDisable(GL_LINE_SMOOTH);
  glDisable(GL_POINT_SMOOTH);
  glDisable(GL_POLYGON_OFFSET_LINE);
  glDisable(GL_POLYGON_OFFSET_FILL);
  glEnable(GL_CULL_FACE);
  glCullFace(GL_BACK);
  glPointSize(1.0f);
  glDisable(GL_LINE_STIPPLE);
  glLineWidth(1.0f);
  glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
}

void PlainMaterial() {
  static constexpr float kAmbient[] = {0.2f, 0.2f, 0.2f, 1.0f};
  static constexpr float kDiffuse[] = {0.8f, 0.8f, 0.8f, 1.0f};
  static constexpr float kBlack[] = {0.0f, 0.0f, 0.0f, 1.0f};
  glMaterialfv(GL_FRONT, GL_AMBIENT, kAmbient);
  glMaterialfv(GL_FRONT, GL_DIFFUSE, kDiffuse);
  glMaterialfv(GL_FRONT, GL_SPECULAR, kBlack);
  glMaterialfv(GL_FRONT, GL_EMISSION, kBlack);
  glMaterialf(GL_FRONT, GL_SHININESS, 0.0f);
  if (glIsEnabled(GL_LIGHTING)) glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 1);
}

void AttributesShortThroughCanvas(benchmark::State& aState) {
  const PlainContext context;
  const auto canvas = CreateObject<IGLCanvas>(CLSID_GLCanvas);
  const auto attributes = CreateObject<IGLDrawAttr>(CLSID_GLDrawAttr);
  canvas->SetDrawAttributes(attributes.Get());
  for (auto _ : aState) canvas->SetDrawAttributes(attributes.Get());
}

void AttributesShortPlainGL(benchmark::State& aState) {
  const PlainContext context;
  for (auto _ : aState) glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
}

void AttributesFullThroughCanvas(benchmark::State& aState) {
  const PlainContext context;
  const auto canvas = CreateObject<IGLCanvas>(CLSID_GLCanvas);
  // Two objects alternate, so that each application sets the full state.
  const GLPtr<IGLDrawAttr> attributes[] = {CreateObject<IGLDrawAttr>(CLSID_GLDrawAttr),
                                           CreateObject<IGLDrawAttr>(CLSID_GLDrawAttr)};
  for (auto _ : aState) {
    canvas->SetDrawAttributes(attributes[0].Get());
    canvas->SetDrawAttributes(attributes[1].Get());
  }
  aState.SetItemsProcessed(aState.iterations() * 2);
}

void AttributesFullPlainGL(benchmark::State& aState) {
  const PlainContext context;
  for (auto _ : aState) {
    PlainAttributes();
    PlainAttributes();
  }
  aState.SetItemsProcessed(aState.iterations() * 2);
}

void MaterialThroughCanvas(benchmark::State& aState) {
  const PlainContext context;
  const auto canvas = CreateObject<IGLCanvas>(CLSID_GLCanvas);
  const auto material = CreateObject<IGLMaterial>(CLSID_GLMaterial);
  glEnable(GL_LIGHTING);
  for (auto _ : aState) canvas->SetMaterial(material.Get());
}

void MaterialPlainGL(benchmark::State& aState) {
  const PlainContext context;
  glEnable(GL_LIGHTING);
  for (auto _ : aState) PlainMaterial();
}

BENCHMARK(AttributesShortThroughCanvas);
BENCHMARK(AttributesShortPlainGL);
BENCHMARK(AttributesFullThroughCanvas);
BENCHMARK(AttributesFullPlainGL);
BENCHMARK(MaterialThroughCanvas);
BENCHMARK(MaterialPlainGL);

}  // namespace
