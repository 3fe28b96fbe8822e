// MainWindow: a scene under a row of buttons. The scene can move to a second window and back. It can be
// closed while the program continues. Host's thread only.

#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <string>

#include "embed-gtk/SceneArea.h"

class MainWindow {
 public:
  explicit MainWindow(std::shared_ptr<const Model> aModel);
  ~MainWindow();
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  /// Runs until the user closes the window. @throws std::runtime_error if no context can be created
  void Run();

 private:
  void AddButton(GtkWidget* aRow, const char* aText, void (*aClicked)(GtkButton*, MainWindow*));
  void OnKey(guint aKey);
  /// Moves the scene to the second window, or back.
  void Detach();
  /// Destroys the scene and its widget.
  void CloseScene();
  void SetTitle(const std::string& aEnd);
  void Leave() { g_main_loop_quit(m_loop); }

  const std::shared_ptr<const Model> m_model;
  GMainLoop* const m_loop = g_main_loop_new(nullptr, FALSE);
  const std::function<void(guint)> m_onKey = [this](guint aKey) { OnKey(aKey); };
  const std::function<void()> m_onClose = [this] { Leave(); };
  const std::function<void()> m_onOtherClose = [this] { Detach(); };
  GtkWindow* m_window;
  GtkWindow* m_other = nullptr;  // window of the detached scene, else null
  GtkWidget* m_box;
  SceneArea* m_area = nullptr;  // owned by its widget; null after CloseScene
  std::string m_failure;
};
