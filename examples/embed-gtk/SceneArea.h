// SceneArea: a widget with a scene. The scene follows size, scale and window of the widget and ends with it.
// GTK 3 and GTK 4 have separate implementations. Host's thread only.

#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <string>

#include "embed-gtk/SceneView.h"

class SceneArea {
 public:
  /// Receives the error message if no scene can be created.
  using Failed = std::function<void(const std::string&)>;

  /// Creates a widget, which owns the object.
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
  /// Moves the scene's window to the widget's current position and size.
  void Follow();
  /// Pixels of the window system per GTK pixel.
  double Scale() const { return gtk_widget_get_scale_factor(m_widget); }

  GtkWidget* m_widget;  // owns the object
  const Failed m_failed;
  SceneView m_view;
  cairo_rectangle_int_t m_place{};  // position and size of the scene's window at the last Follow, in pixels
  gulong m_following = 0;           // GTK 4: handler of the frame clock that calls Follow; 0 for none
};
