// SceneView: a scene in a window of the host's own, with what pointer and keys do in it; nothing of GTK. The
// host's thread only.

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
  /// Takes the names of the parts that the user points at.
  using Picked = std::function<void(const std::string&)>;

  SceneView(std::shared_ptr<const Model> aModel, Picked aPicked);

  /// Shows the scene in a window of GTK; the first call makes the scene.
  /// @throws std::runtime_error when no context can be made
  void Enter(_XDisplay* aDisplay, unsigned long aParent);
  /// Covers a part of that window, in pixels of the window system.
  void Place(int aX, int aY, int aWidth, int aHeight);
  /// Leaves the window, which is about to go.
  void Leave() { m_window.Leave(); }

  // Pixels of the window system, from the scene's top left.
  void Press(Dragging::Kind aKind, double aX, double aY);
  void Move(double aX, double aY);
  void Release(double aX, double aY);
  /// @param aDown steps of the wheel, toward the user
  void Wheel(double aDown);
  /// @param aKey a digit or a small letter
  void Key(char aKey);

 private:
  const std::shared_ptr<const Model> m_model;
  const Picked m_picked;
  ChildWindow m_window;  // outlives the scene in it
  std::optional<Scene> m_scene;
  std::optional<Dragging> m_dragging;
};
