// Toolkit for GTK 3. Host's thread.

#include "embed-gtk/Toolkit.h"

bool StartToolkit() {
  gdk_set_allowed_backends("x11");
  return gtk_init_check(nullptr, nullptr) != FALSE;
}

GtkWindow* MakeWindow() { return GTK_WINDOW(gtk_window_new(GTK_WINDOW_TOPLEVEL)); }

void SetContent(GtkWindow* aWindow, GtkWidget* aContent) {
  gtk_container_add(GTK_CONTAINER(aWindow), aContent);
}

void Append(GtkWidget* aBox, GtkWidget* aChild) { gtk_container_add(GTK_CONTAINER(aBox), aChild); }

void RemoveFromParent(GtkWidget* aWidget) {
  gtk_container_remove(GTK_CONTAINER(gtk_widget_get_parent(aWidget)), aWidget);
}

void Show(GtkWindow* aWindow) { gtk_widget_show_all(GTK_WIDGET(aWindow)); }

void Destroy(GtkWindow* aWindow) { gtk_widget_destroy(GTK_WIDGET(aWindow)); }

void ListenToKeys(GtkWindow* aWindow, const std::function<void(guint)>* aHandler) {
  const auto press =
      +[](GtkWidget*, GdkEventKey* aEvent, const std::function<void(guint)>* aCall) -> gboolean {
    (*aCall)(aEvent->keyval);
    return FALSE;
  };
  g_signal_connect(aWindow, "key-press-event", G_CALLBACK(press),
                   const_cast<std::function<void(guint)>*>(aHandler));
}

void ListenToClose(GtkWindow* aWindow, const std::function<void()>* aHandler) {
  const auto close = +[](GtkWidget*, GdkEvent*, const std::function<void()>* aCall) -> gboolean {
    (*aCall)();
    return TRUE;
  };
  g_signal_connect(aWindow, "delete-event", G_CALLBACK(close), const_cast<std::function<void()>*>(aHandler));
}
