// SceneView: a scene in a child window, and the actions of pointer and keys in it. Independent of GTK. Host's
// thread only.

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "embed-gtk/ChildWindow.h"
#include "shared/model/Dragging.h"
#include "shared/model/Scene.h"

class SceneView {
 public:
  /// Receives the names of the picked parts, each after " - "; an empty text if the pick hits none.
  using Picked = std::function<void(const std::string&)>;

  SceneView(std::shared_ptr<const Model> aModel, Picked aPicked);

  /// Shows the scene in a window of GTK. The first call creates the scene.
  /// @throws std::runtime_error if no context can be created
  void Enter(_XDisplay* aDisplay, unsigned long aParent);
  /// Sets position and size in that window, in pixels of the window system.
  void Place(int aX, int aY, int aWidth, int aHeight);
  /// Takes the scene out of the window. Must be called before GTK destroys the window.
  void Leave() { m_window.Leave(); }

  // Positions are pixels of the window system, from the scene's top left.
  void Press(Dragging::Kind aKind, double aX, double aY);
  void Move(double aX, double aY);
  void Release(double aX, double aY);
  /// @param aDown steps of the wheel, positive toward the user
  void Wheel(double aDown);
  /// @param aKey a digit or a lower-case letter
  void Key(char aKey);

 private:
  const std::shared_ptr<const Model> m_model;
  const Picked m_picked;
  ChildWindow m_window;  // declared first: outlives the scene in it
  std::optional<Scene> m_scene;
  std::optional<Dragging> m_dragging;
};
