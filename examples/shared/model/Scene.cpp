// Scene: set-up of the context, its views, lights and fog. Host's thread.

#include "shared/model/Scene.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace {

constexpr GLDATA_RGBA kAmbient{0.22f, 0.22f, 0.25f, 1.0f};
constexpr GLDATA_RGBA kFrame{0.35f, 0.38f, 0.44f, 1.0f};
constexpr float kFrameOffset = 0.006f;  // share of half a view: a few pixels, so that all edges show
constexpr double kDegree = std::numbers::pi / 180;
constexpr ULONG kLongestWait = 1000;   // ms between frames if nothing changes
constexpr double kFieldOfView = 30.0;  // degrees, along the shorter side

}  // namespace

Scene::Scene(std::shared_ptr<const Model> aModel, const SceneOptions& aOptions, ULONG_PTR aParent)
    : m_model(std::move(aModel)),
      m_yaw(aOptions.yaw * kDegree),
      m_pitch(aOptions.pitch * kDegree),
      m_context(GLCreate<IGLContext>(CLSID_GLContext)),
      m_background(aOptions.background),
      m_width(aOptions.width),
      m_height(aOptions.height),
      m_count(aOptions.views),
      m_shade(aOptions.shade),
      m_fog(aOptions.fog),
      m_axes(aOptions.axes) {
  if (m_context && aOptions.samples > 1) {
    const auto smooth = m_context.As<IGLContext14_3>();
    smooth->put_bFSAA(1);
    smooth->put_lFSAAMaxSamples(aOptions.samples);
  }
  if (!m_context || FAILED(m_context->Initialize(aParent))) {
    throw std::runtime_error("cannot create a drawing context");
  }
  m_control = m_context.As<IGLContext2>();
  m_context->SetBackgroundColor(&m_background);
  m_viewing = GLMake<GLViewing>(*m_context.Get());
  AddView(Direction::Free, aOptions.ortho ? Projection::Parallel : Projection::Perspective);
  AddView(Direction::Front, Projection::Parallel);
  AddView(Direction::Right, Projection::Parallel);
  AddView(Direction::Top, Projection::Parallel);
  AddLights();
  SetAxes(m_axes);
  SetText(aOptions.text);
  SetSize(m_width, m_height);
  ResetCamera();
  m_painter = GLMake<ModelPainter>(m_clock, m_progress, m_measure, m_viewing);
  m_painter->SetModel(m_model);
  m_painter->SetShade(m_shade);
  m_viewing->AttachPainter(m_painter.Get());
  SetSection(aOptions.section);
}

void Scene::AddView(Direction aDirection, Projection aProjection) {
  View view;
  view.direction = aDirection;
  if (FAILED(m_context->CreateViewer(0, aProjection == Projection::Parallel ? 1 : 0, &view.viewer)))
    throw std::runtime_error("no viewer");
  const bool last = aDirection == Direction::Free;
  view.overlay = GLMake<Overlay>(m_viewing, last ? &m_clock : nullptr, last ? &m_progress : nullptr);
  view.viewer->AddGauge(view.overlay.Get());
  view.viewer->ShowGauges(1);
  GLDATA_RGBA color = kFrame;
  view.viewer->SetFrameColor(&color);
  view.viewer->SetFrameOffset(kFrameOffset);
  m_views.push_back(view);
}

void Scene::AddLights() {
  GLDATA_RGBA ambient = kAmbient;
  m_context->SetAmbientLight(&ambient);
  AddLight({0.55, -0.7, -1.0}, {0.82f, 0.80f, 0.76f, 1.0f}, 0.9f);  // key light, from the upper left
  AddLight({-0.9, 0.15, -0.6}, {0.22f, 0.25f, 0.32f, 1.0f}, 0.0f);  // fill light, from the right
}

void Scene::AddLight(const GLDATA_POINT& aDirection, GLDATA_RGBA aColor, float aShine) {
  IGLLight* light = nullptr;
  if (FAILED(m_context->CreateLight(&light))) throw std::runtime_error("no light");
  GLDATA_RGBA black{0, 0, 0, 1};
  GLDATA_RGBA shine{aShine, aShine, aShine, 1};
  GLDATA_POINT direction = aDirection;
  light->SetAsSpotlight(0);
  light->SetAmbientLight(&black);
  light->SetDiffuseLight(&aColor);
  light->SetSpecularLight(&shine);
  light->SetDirection(&direction);
  // The light shares the eye of the free view, so it moves with it.
  GLPtr<IGLCoord> eye;
  m_views.front().viewer->GetCoord(eye.Put());
  light->AttachCoord(eye.Get());
  light->Enable(1);
}

void Scene::SetSize(int aWidth, int aHeight) {
  m_width = std::max(aWidth, 1);
  m_height = std::max(aHeight, 1);
  m_context->SetViewport(0, 0, m_width, m_height);
  Layout();
}

void Scene::SetViews(int aCount) {
  m_count = aCount;
  Layout();
}

void Scene::Layout() {
  const int left = m_width / 2;
  const int lower = m_height / 2;
  const int right = m_width - left;
  const int upper = m_height - lower;
  for (View& view : m_views) {
    const bool quarter = m_count == 4;
    const bool onRight = view.direction == Direction::Free || view.direction == Direction::Right;
    const bool above = view.direction == Direction::Free || view.direction == Direction::Top;
    const int width = std::max(quarter ? (onRight ? right : left) : m_width, 1);
    const int height = std::max(quarter ? (above ? upper : lower) : m_height, 1);
    view.viewer->SetClipRectangle(quarter && onRight ? left : 0, quarter && above ? lower : 0, width, height);
    view.viewer->Clip(quarter ? 1 : 0);
    view.viewer->Show(quarter || view.direction == Direction::Free ? 1 : 0);
    // The component's field of view is vertical. A tall view widens it, to keep the horizontal one constant.
    const double aspect = std::min(static_cast<double>(width) / height, 1.0);
    view.viewer->SetEyeFovy_DEG(2 * std::atan(std::tan(kFieldOfView / 2 * kDegree) / aspect) / kDegree);
  }
  Refresh();
}

void Scene::SetShade(Shade aShade) {
  m_shade = aShade;
  m_painter->SetShade(aShade);
  Redraw();
}

void Scene::SetFog(bool aOn) {
  m_fog = aOn;
  Refresh();
}

void Scene::SetBackground(const GLDATA_RGBA& aColor) {
  m_background = aColor;
  m_context->SetBackgroundColor(&m_background);
  Refresh();  // the fog has its colour
}

void Scene::SetAxes(bool aOn) {
  m_axes = aOn;
  for (View& view : m_views) {
    GLPtr<IGLViewer>::FromBorrowed(view.viewer).As<IGLViewer2>()->SetShowAxes(aOn ? 1 : 0);
  }
  Redraw();
}

void Scene::SetText(bool aOn) {
  m_text = aOn;
  for (View& view : m_views) view.overlay->SetLabel(aOn ? m_model->name : std::string());
  Redraw();
}

void Scene::SetTextures(bool aOn) {
  m_textures = aOn;
  m_painter->SetTextures(aOn);
  Redraw();
}

SceneCapture Scene::Capture(int aZoom) { return {*m_viewing.Get(), aZoom, m_background}; }

void Scene::SetModel(std::shared_ptr<const Model> aModel) {
  m_model = std::move(aModel);
  m_painter->SetModel(m_model);
  m_measure.Clear();
  SetText(m_text);
  ResetCamera();
}

void Scene::ShowReading(float aShare) {
  m_progress.reading = aShare;
  Redraw();
}

void Scene::Refresh() {
  GLPtr<IGLFog> fog;
  m_context->GetFog(fog.Put());
  const GLDATA_POINT eye = GeometryOf(m_views.front()).m_Eye.m_sOrigin;
  const double distance = GLVector::Length(GLVector::Difference(m_model->centre, eye));
  const double start = std::max(distance - m_model->radius, 0.0);
  fog->SetCalcMode(GLFM_CALCULATE_LINEAR);
  fog->SetFogStartAndEnd(static_cast<float>(start), static_cast<float>(start + 2.4 * m_model->radius));
  fog->SetFogColor(&m_background);
  fog->Enable(m_fog ? 1 : 0);
  Redraw();
}

void Scene::Redraw() { m_control->TriggerDrawThread(); }

void Scene::DrawOnRequest() {
  m_onRequest = true;
  m_painter->CompileInSteps();
  m_control->SetControlledDrawThread(1, kLongestWait);
}

void Scene::MoveTo(ULONG_PTR aParent) {
  if (FAILED(m_context->Initialize(aParent))) return;  // nothing is shown there; the next move may succeed
  if (m_onRequest) DrawOnRequest();                    // a new draw thread has default settings
  SetSize(m_width, m_height);
}
