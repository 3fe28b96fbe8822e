// Toolkit: functions that differ between GTK 3 and GTK 4. Host's thread only.

#pragma once

#include <gtk/gtk.h>

#include <functional>

/// Starts GTK on an X server; under Wayland that is XWayland. @return false if there is no X server
bool StartToolkit();

GtkWindow* MakeWindow();
void SetContent(GtkWindow* aWindow, GtkWidget* aContent);
void Append(GtkWidget* aBox, GtkWidget* aChild);
/// Removes a widget from a box or window. The widget is destroyed if there is no other reference.
void RemoveFromParent(GtkWidget* aWidget);
void Show(GtkWindow* aWindow);
void Destroy(GtkWindow* aWindow);

// The handlers must outlive the window.

/// Calls the handler for each key press, with the GDK key value.
void ListenToKeys(GtkWindow* aWindow, const std::function<void(guint)>* aHandler);
/// Calls the handler when the user wants to close the window. The window stays open.
void ListenToClose(GtkWindow* aWindow, const std::function<void()>* aHandler);
