// MainWindow: the GTK window of embed-gtk, its buttons and the second window of a detached scene. Host's
// thread.

#include "embed-gtk/MainWindow.h"

#include <stdexcept>
#include <utility>

#include "embed-gtk/Toolkit.h"

namespace {

constexpr int kWidth = 500, kHeight = 360;

}  // namespace

MainWindow::MainWindow(std::shared_ptr<const Model> aModel)
    : m_model(std::move(aModel)), m_window(MakeWindow()), m_box(gtk_box_new(GTK_ORIENTATION_VERTICAL, 0)) {
  GtkWidget* const row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
  AddButton(row, "Detach (D)", [](GtkButton*, MainWindow* aSelf) { aSelf->Detach(); });
  AddButton(row, "Close scene (X)", [](GtkButton*, MainWindow* aSelf) { aSelf->CloseScene(); });
  Append(m_box, row);
  m_area = &SceneArea::Make(
      m_model, [this](const std::string& aNames) { SetTitle(aNames); },
      [this](const std::string& aReason) {
        m_failure = aReason;
        Leave();
      });
  Append(m_box, m_area->Widget());
  SetContent(m_window, m_box);
  ListenToKeys(m_window, &m_onKey);
  ListenToClose(m_window, &m_onClose);
  SetTitle("");
  gtk_window_set_default_size(m_window, kWidth, kHeight);
}

MainWindow::~MainWindow() {
  if (m_other != nullptr) Destroy(m_other);
  Destroy(m_window);
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;  // work that GTK has queued
  g_main_loop_unref(m_loop);
}

void MainWindow::Run() {
  Show(m_window);
  if (m_failure.empty()) g_main_loop_run(m_loop);
  if (!m_failure.empty()) throw std::runtime_error(m_failure);
}

void MainWindow::AddButton(GtkWidget* aRow, const char* aText, void (*aClicked)(GtkButton*, MainWindow*)) {
  GtkWidget* const button = gtk_button_new_with_label(aText);
  g_signal_connect(button, "clicked", G_CALLBACK(aClicked), this);
  gtk_widget_set_focus_on_click(button, FALSE);
  Append(aRow, button);
}

void MainWindow::OnKey(guint aKey) {
  const guint key = gdk_keyval_to_lower(aKey);
  if (key == GDK_KEY_Escape) return Leave();
  if (key == GDK_KEY_d) return Detach();
  if (key == GDK_KEY_x) return CloseScene();
  if (m_area != nullptr && key < 0x80) m_area->View().Key(static_cast<char>(key));
}

void MainWindow::Detach() {
  if (m_area == nullptr) return;
  GtkWidget* const widget = m_area->Widget();
  g_object_ref(widget);  // keeps the widget while it has no parent
  RemoveFromParent(widget);
  if (m_other == nullptr) {
    m_other = MakeWindow();
    gtk_window_set_default_size(m_other, kWidth, kHeight);
    gtk_window_set_title(m_other, (m_model->name + " - detached").c_str());
    ListenToKeys(m_other, &m_onKey);
    ListenToClose(m_other, &m_onOtherClose);
    SetContent(m_other, widget);
    Show(m_other);
  } else {
    Append(m_box, widget);
    Destroy(std::exchange(m_other, nullptr));
  }
  g_object_unref(widget);
}

void MainWindow::CloseScene() {
  if (m_area == nullptr) return;
  RemoveFromParent(std::exchange(m_area, nullptr)->Widget());
  if (m_other != nullptr) Destroy(std::exchange(m_other, nullptr));
  // S_OK: the component has no object and no draw thread left.
  SetTitle(DllCanUnloadNow() == S_OK ? " - closed" : " - closing");
}

void MainWindow::SetTitle(const std::string& aEnd) {
  gtk_window_set_title(m_window, (m_model->name + aEnd).c_str());
}
