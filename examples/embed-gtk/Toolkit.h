// Toolkit: what the two versions of GTK call differently. The host's thread only.

#pragma once

#include <gtk/gtk.h>

#include <functional>

/// Starts GTK on an X server; under Wayland that is XWayland. @return false when there is none
bool StartToolkit();

GtkWindow* MakeWindow();
void SetContent(GtkWindow* aWindow, GtkWidget* aContent);
void Append(GtkWidget* aBox, GtkWidget* aChild);
/// Removes a widget from a box or window; it ends unless somebody holds it.
void RemoveFromParent(GtkWidget* aWidget);
void Show(GtkWindow* aWindow);
void Destroy(GtkWindow* aWindow);

/// Calls back for keys, by their values in GDK.
void ListenToKeys(GtkWindow* aWindow, const std::function<void(guint)>* aHandler);
/// Calls back in place of closing when the user closes the window.
void ListenToClose(GtkWindow* aWindow, const std::function<void()>* aHandler);
