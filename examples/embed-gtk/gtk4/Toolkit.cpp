// Toolkit for GTK 4. Host's thread.

#include "embed-gtk/Toolkit.h"

bool StartToolkit() {
  gdk_set_allowed_backends("x11");
  return gtk_init_check() != FALSE;
}

GtkWindow* MakeWindow() { return GTK_WINDOW(gtk_window_new()); }

void SetContent(GtkWindow* aWindow, GtkWidget* aContent) { gtk_window_set_child(aWindow, aContent); }

void Append(GtkWidget* aBox, GtkWidget* aChild) { gtk_box_append(GTK_BOX(aBox), aChild); }

void RemoveFromParent(GtkWidget* aWidget) {
  GtkWidget* const parent = gtk_widget_get_parent(aWidget);
  if (GTK_IS_WINDOW(parent)) return gtk_window_set_child(GTK_WINDOW(parent), nullptr);
  gtk_box_remove(GTK_BOX(parent), aWidget);
}

void Show(GtkWindow* aWindow) { gtk_window_present(aWindow); }

void Destroy(GtkWindow* aWindow) { gtk_window_destroy(aWindow); }

void ListenToKeys(GtkWindow* aWindow, const std::function<void(guint)>* aHandler) {
  const auto press = +[](GtkEventControllerKey*, guint aKey, guint, GdkModifierType,
                         const std::function<void(guint)>* aCall) -> gboolean {
    (*aCall)(aKey);
    return FALSE;
  };
  GtkEventController* const keys = gtk_event_controller_key_new();
  gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);  // before buttons handle them
  g_signal_connect(keys, "key-pressed", G_CALLBACK(press), const_cast<std::function<void(guint)>*>(aHandler));
  gtk_widget_add_controller(GTK_WIDGET(aWindow), keys);
}

void ListenToClose(GtkWindow* aWindow, const std::function<void()>* aHandler) {
  const auto close = +[](GtkWindow*, const std::function<void()>* aCall) -> gboolean {
    (*aCall)();
    return TRUE;
  };
  g_signal_connect(aWindow, "close-request", G_CALLBACK(close), const_cast<std::function<void()>*>(aHandler));
}
