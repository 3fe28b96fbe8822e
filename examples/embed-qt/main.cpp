// embed-qt: shows a model inside a Qt program, beside the tree of its parts. Shows how to draw in a widget's
// native window, to follow the widget into another window, and to end the context before it. Host's thread
// only.

#include <gllib/GLLibHost.h>

#include <QApplication>
#include <cstdio>
#include <exception>

#include "embed-qt/MainWindow.h"
#include "shared/model/Model.h"

namespace {

int Run(QApplication& aApplication, const char* aModel) {
  const auto model = std::make_shared<const Model>(LoadModel(aModel));
  MainWindow window(model);
  window.show();
  return aApplication.exec();
}

}  // namespace

int main(int argc, char** argv) {
  GLKeepFreedMemory();  // Mesa's software renderer frees memory in every frame
  // The component draws into X11 windows. Under Wayland, Qt creates them through XWayland.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "xcb");
  QApplication application(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: embed-qt MODEL\n");
    return 2;
  }
  try {
    const int status = Run(application, argv[1]);
    // The window is closed. S_OK: the component has no object and no draw thread left.
    return status != 0 ? status : DllCanUnloadNow() == S_OK ? 0 : 1;
  } catch (const ModelError& error) {
    std::fprintf(stderr, "embed-qt: %s\n", error.what());
    return 2;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "embed-qt: %s\n", error.what());
    return 1;
  }
}
