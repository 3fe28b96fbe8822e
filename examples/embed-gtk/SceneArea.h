// SceneArea: a widget with a scene, which follows the widget's size, scale and window and ends with the
// widget. The two versions of GTK have an implementation each. The host's thread only.

#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <string>

#include "embed-gtk/SceneView.h"

class SceneArea {
 public:
  /// Takes the reason why there is no scene.
  using Failed = std::function<void(const std::string&)>;

  /// Makes a widget, which owns the object.
  static SceneArea& Make(std::shared_ptr<const Model> aModel, SceneView::Picked aPicked, Failed aFailed);
  SceneArea(const SceneArea&) = delete;
  SceneArea& operator=(const SceneArea&) = delete;

  GtkWidget* Widget() const { return m_widget; }
  SceneView& View() { return m_view; }

 private:
  SceneArea(std::shared_ptr<const Model> aModel, SceneView::Picked aPicked, Failed aFailed);
  ~SceneArea();

  void ListenToWidget();
  void ListenToPointer();
  void OnRealize();
  void OnUnrealize();
  /// Goes to where the widget is.
  void Follow();
  /// Pixels of the window system in one of GTK's.
  double Scale() const { return gtk_widget_get_scale_factor(m_widget); }

  GtkWidget* m_widget;  // owns the object
  const Failed m_failed;
  SceneView m_view;
  cairo_rectangle_int_t m_place{};  // of the widget, when the scene went there last
  gulong m_following = 0;           // the handler that calls Follow, where it isn't the widget's
};
