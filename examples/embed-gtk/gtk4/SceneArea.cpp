// SceneArea for GTK 4, where only a top-level window is an X11 window. The scene's window is a child of the
// top-level window and follows the widget's position. Host's thread.

#include "embed-gtk/SceneArea.h"

#include <gdk/x11/gdkx.h>

#include <cmath>
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
  listen(
      "realize", [](GtkWidget*, SceneArea* aSelf) { aSelf->OnRealize(); }, G_CONNECT_AFTER);
  listen(
      "unrealize", [](GtkWidget*, SceneArea* aSelf) { aSelf->OnUnrealize(); }, GConnectFlags(0));
  listen(
      "destroy", [](GtkWidget*, SceneArea* aSelf) { delete aSelf; }, GConnectFlags(0));
}

void SceneArea::ListenToPointer() {
  GtkGesture* const click = gtk_gesture_click_new();
  gtk_gesture_single_set_button(GTK_GESTURE_SINGLE(click), 0);  // 0: any button
  const auto press = +[](GtkGesture* aClick, int, double aX, double aY, SceneArea* aSelf) {
    const auto state = gtk_event_controller_get_current_event_state(GTK_EVENT_CONTROLLER(aClick));
    const guint button = gtk_gesture_single_get_current_button(GTK_GESTURE_SINGLE(aClick));
    const auto kind = Dragging::KindOf(button == GDK_BUTTON_PRIMARY, (state & GDK_SHIFT_MASK) != 0,
                                       (state & GDK_CONTROL_MASK) != 0);
    aSelf->m_view.Press(kind, aX * aSelf->Scale(), aY * aSelf->Scale());
  };
  const auto release = +[](GtkGesture*, int, double aX, double aY, SceneArea* aSelf) {
    aSelf->m_view.Release(aX * aSelf->Scale(), aY * aSelf->Scale());
  };
  // Unlike the click gesture, the motion controller also reports movement over a long distance.
  const auto move = +[](GtkEventController*, double aX, double aY, SceneArea* aSelf) {
    aSelf->m_view.Move(aX * aSelf->Scale(), aY * aSelf->Scale());
  };
  const auto scroll = +[](GtkEventController*, double, double aDown, SceneArea* aSelf) -> gboolean {
    aSelf->m_view.Wheel(aDown);
    return TRUE;
  };
  g_signal_connect(click, "pressed", G_CALLBACK(press), this);
  g_signal_connect(click, "released", G_CALLBACK(release), this);
  GtkEventController* const motion = gtk_event_controller_motion_new();
  g_signal_connect(motion, "motion", G_CALLBACK(move), this);
  GtkEventController* const wheel = gtk_event_controller_scroll_new(GTK_EVENT_CONTROLLER_SCROLL_VERTICAL);
  g_signal_connect(wheel, "scroll", G_CALLBACK(scroll), this);
  for (GtkEventController* controller : {GTK_EVENT_CONTROLLER(click), motion, wheel}) {
    gtk_widget_add_controller(m_widget, controller);  // takes the reference
  }
}

void SceneArea::OnRealize() {
  GdkSurface* const surface = gtk_native_get_surface(gtk_widget_get_native(m_widget));
  try {
    m_view.Enter(gdk_x11_display_get_xdisplay(gdk_surface_get_display(surface)),
                 gdk_x11_surface_get_xid(surface));
  } catch (const std::exception& reason) {
    return m_failed(reason.what());
  }
  // GTK 4 has no signal for a widget's position. The handler compares the position after each frame of the
  // window.
  const auto follow = +[](GdkFrameClock*, SceneArea* aSelf) { aSelf->Follow(); };
  m_place = {};
  m_following =
      g_signal_connect(gdk_surface_get_frame_clock(surface), "after-paint", G_CALLBACK(follow), this);
}

void SceneArea::OnUnrealize() {
  GdkSurface* const surface = gtk_native_get_surface(gtk_widget_get_native(m_widget));
  if (m_following != 0) g_signal_handler_disconnect(gdk_surface_get_frame_clock(surface), m_following);
  m_following = 0;
  m_view.Leave();
}

void SceneArea::Follow() {
  GtkNative* const native = gtk_widget_get_native(m_widget);
  graphene_rect_t bounds;
  if (!gtk_widget_compute_bounds(m_widget, GTK_WIDGET(native), &bounds)) return;
  double left = 0;  // of the content, inside the shadow that GTK draws
  double top = 0;
  gtk_native_get_surface_transform(native, &left, &top);
  const auto pixels = [this](double aLength) { return static_cast<int>(std::lround(aLength * Scale())); };
  const cairo_rectangle_int_t place = {pixels(left + bounds.origin.x), pixels(top + bounds.origin.y),
                                       pixels(bounds.size.width), pixels(bounds.size.height)};
  if (gdk_rectangle_equal(&place, &m_place)) return;
  m_place = place;
  m_view.Place(place.x, place.y, place.width, place.height);
}
