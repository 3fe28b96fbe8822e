// SceneView: forwards window changes, pointer and keys to the scene. Host's thread.

#include "embed-gtk/SceneView.h"

#include <utility>

SceneView::SceneView(std::shared_ptr<const Model> aModel, Picked aPicked)
    : m_model(std::move(aModel)), m_picked(std::move(aPicked)) {}

void SceneView::Enter(_XDisplay* aDisplay, unsigned long aParent) {
  m_window.Enter(aDisplay, aParent);
  if (m_scene) return m_scene->Redraw();
  m_scene.emplace(m_model, SceneOptions(), static_cast<ULONG_PTR>(m_window.Id()));
  m_scene->DrawOnRequest();
  m_dragging.emplace(*m_scene);
}

void SceneView::Place(int aX, int aY, int aWidth, int aHeight) {
  m_window.Place(aX, aY, aWidth, aHeight);
  if (m_scene) m_scene->SetSize(aWidth, aHeight);
}

void SceneView::Press(Dragging::Kind aKind, double aX, double aY) {
  if (!m_dragging) return;
  m_dragging->Move(aX, aY);
  m_dragging->Press(aKind);
}

void SceneView::Move(double aX, double aY) {
  if (m_dragging) m_dragging->Move(aX, aY);
}

void SceneView::Release(double aX, double aY) {
  if (!m_dragging) return;
  m_dragging->Move(aX, aY);
  const auto box = m_dragging->Release();
  if (!box) return;
  const auto ids = m_scene->Pick(*box);
  m_scene->Mark(ids);
  std::string names;
  for (const std::string& name : m_scene->NamesOf(ids)) names += " - " + name;
  m_picked(names);
}

void SceneView::Wheel(double aDown) {
  if (m_dragging) m_dragging->Wheel(-aDown);
}

void SceneView::Key(char aKey) {
  if (!m_scene) return;
  if (aKey == 'r') m_scene->ResetCamera();
  if (aKey == 'w') m_scene->SetShade(m_scene->GetShade() == Shade::Wire ? Shade::Shaded : Shade::Wire);
  if (aKey == '1' || aKey == '4') m_scene->SetViews(aKey - '0');
}
