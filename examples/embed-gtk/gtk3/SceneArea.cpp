// SceneArea for GTK 3, where any widget can have an X11 window. Host's thread.

#include "embed-gtk/SceneArea.h"

#include <gdk/gdkx.h>

#include <exception>
#include <utility>

SceneArea& SceneArea::Make(std::shared_ptr<const Model> aModel, SceneView::Picked aPicked, Failed aFailed) {
  return *new SceneArea(std::move(aModel), std::move(aPicked), std::move(aFailed));
}

SceneArea::SceneArea(std::shared_ptr<const Model> aModel, SceneView::Picked aPicked, Failed aFailed)
    : m_widget(gtk_drawing_area_new()),
      m_failed(std::move(aFailed)),
      m_view(std::move(aModel), std::move(aPicked)) {
  gtk_widget_set_size_request(m_widget, 160, 120);
  gtk_widget_set_hexpand(m_widget, TRUE);
  gtk_widget_set_vexpand(m_widget, TRUE);
  ListenToWidget();
  ListenToPointer();
}

SceneArea::~SceneArea() { g_signal_handlers_disconnect_by_data(m_widget, this); }

void SceneArea::ListenToWidget() {
  const auto listen = [this](const char* aSignal, void (*aHandler)(GtkWidget*, SceneArea*),
                             GConnectFlags aFlags) {
    g_signal_connect_data(m_widget, aSignal, G_CALLBACK(aHandler), this, nullptr, aFlags);
  };
  // OnRealize runs after GTK has created the widget's window, OnUnrealize before GTK destroys it.
  listen(
      "realize", [](GtkWidget*, SceneArea* aSelf) { aSelf->OnRealize(); }, G_CONNECT_AFTER);
  listen(
      "unrealize", [](GtkWidget*, SceneArea* aSelf) { aSelf->OnUnrealize(); }, GConnectFlags(0));
  listen(
      "destroy", [](GtkWidget*, SceneArea* aSelf) { delete aSelf; }, GConnectFlags(0));
  const auto follow = +[](GtkWidget*, void*, SceneArea* aSelf) { aSelf->Follow(); };
  g_signal_connect_after(m_widget, "size-allocate", G_CALLBACK(follow), this);
  g_signal_connect(m_widget, "notify::scale-factor", G_CALLBACK(follow), this);
  // TRUE stops GTK from drawing over the scene.
  g_signal_connect(m_widget, "draw", G_CALLBACK(+[](GtkWidget*, cairo_t*, SceneArea*) { return TRUE; }),
                   this);
}

void SceneArea::ListenToPointer() {
  gtk_widget_add_events(m_widget, GDK_BUTTON_PRESS_MASK | GDK_BUTTON_RELEASE_MASK | GDK_POINTER_MOTION_MASK |
                                      GDK_SCROLL_MASK | GDK_SMOOTH_SCROLL_MASK);
  const auto press = +[](GtkWidget*, GdkEventButton* aEvent, SceneArea* aSelf) -> gboolean {
    if (aEvent->type != GDK_BUTTON_PRESS) return TRUE;  // double clicks are reported in addition
    const auto kind =
        Dragging::KindOf(aEvent->button == GDK_BUTTON_PRIMARY, (aEvent->state & GDK_SHIFT_MASK) != 0,
                         (aEvent->state & GDK_CONTROL_MASK) != 0);
    aSelf->m_view.Press(kind, aEvent->x * aSelf->Scale(), aEvent->y * aSelf->Scale());
    return TRUE;
  };
  const auto release = +[](GtkWidget*, GdkEventButton* aEvent, SceneArea* aSelf) -> gboolean {
    aSelf->m_view.Release(aEvent->x * aSelf->Scale(), aEvent->y * aSelf->Scale());
    return TRUE;
  };
  const auto move = +[](GtkWidget*, GdkEventMotion* aEvent, SceneArea* aSelf) -> gboolean {
    aSelf->m_view.Move(aEvent->x * aSelf->Scale(), aEvent->y * aSelf->Scale());
    return TRUE;
  };
  const auto scroll = +[](GtkWidget*, GdkEventScroll* aEvent, SceneArea* aSelf) -> gboolean {
    double down = aEvent->direction == GDK_SCROLL_DOWN ? 1 : aEvent->direction == GDK_SCROLL_UP ? -1 : 0;
    if (aEvent->direction == GDK_SCROLL_SMOOTH) down = aEvent->delta_y;
    aSelf->m_view.Wheel(down);
    return TRUE;
  };
  g_signal_connect(m_widget, "button-press-event", G_CALLBACK(press), this);
  g_signal_connect(m_widget, "button-release-event", G_CALLBACK(release), this);
  g_signal_connect(m_widget, "motion-notify-event", G_CALLBACK(move), this);
  g_signal_connect(m_widget, "scroll-event", G_CALLBACK(scroll), this);
}

void SceneArea::OnRealize() {
  GdkWindow* const window = gtk_widget_get_window(m_widget);
  gdk_window_ensure_native(window);  // an X11 window, not a part of the parent's
  try {
    m_view.Enter(GDK_WINDOW_XDISPLAY(window), GDK_WINDOW_XID(window));
    m_place = {};
    Follow();
  } catch (const std::exception& reason) {
    m_failed(reason.what());
  }
}

void SceneArea::OnUnrealize() { m_view.Leave(); }

void SceneArea::Follow() {
  if (!gtk_widget_get_realized(m_widget)) return;
  const int scale = gtk_widget_get_scale_factor(m_widget);
  m_place.width = gtk_widget_get_allocated_width(m_widget) * scale;
  m_place.height = gtk_widget_get_allocated_height(m_widget) * scale;
  m_view.Place(0, 0, m_place.width, m_place.height);
}
