// embed-gtk: shows a model inside a GTK program, for GTK 3 and for GTK 4. Shows how a scene follows the
// position, size, scale and window of a widget, moves to another window, and ends before the program. Host's
// thread only.

#include <gllib/GLLibHost.h>

#include <cstdio>
#include <exception>

#include "embed-gtk/MainWindow.h"
#include "embed-gtk/Toolkit.h"

namespace {

int Complain(const std::exception& aReason, int aStatus) {
  std::fprintf(stderr, "embed-gtk: %s\n", aReason.what());
  return aStatus;
}

}  // namespace

int main(int argc, char** argv) {
  GLKeepFreedMemory();  // Mesa's software renderer frees memory in every frame
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s MODEL\n", argv[0]);
    return 2;
  }
  try {
    const auto model = std::make_shared<const Model>(LoadModel(argv[1]));
    if (!StartToolkit()) throw std::runtime_error("no X server; under Wayland, XWayland is needed");
    MainWindow(model).Run();
    return DllCanUnloadNow() == S_OK ? 0 : 1;
  } catch (const ModelError& error) {
    return Complain(error, 2);
  } catch (const std::exception& error) {
    return Complain(error, 1);
  }
}
