// glview: shows models in a window, or draws them to a file without a display. Shows how a larger host
// separates its parts: the toolkit (Window), the actions of the user (Viewing), and the scene (shared/model).

#include <gllib/GLLibHost.h>

#include <cstdio>
#include <exception>
#include <stdexcept>

#include "glview/ModelSet.h"
#include "glview/Options.h"
#include "glview/ProgressLine.h"
#include "glview/ReaderProcess.h"
#include "glview/Snapshot.h"
#include "glview/Window.h"

namespace {

constexpr int kFailed = 1;
constexpr int kRefused = 2;  // exit status for an invalid command line or model

int Complain(const std::exception& aReason, int aStatus) {
  std::fprintf(stderr, "glview: %s\n", aReason.what());
  return aStatus;
}

std::shared_ptr<const Model> LoadWithProgressLine(const Options& aOptions) {
  ProgressLine line;
  return std::make_shared<const Model>(LoadModels(aOptions.models, aOptions.limits, aOptions.together,
                                                  [&](float aShare) { line.Show(aShare); }));
}

}  // namespace

int main(int argc, char** argv) {
  GLKeepFreedMemory();    // Mesa's software renderer frees memory in every frame
  RunReader(argc, argv);  // does not return in the process that reads a model
  try {
    const Options options = ParseOptions(argc, argv);
    if (options.help) {
      std::fputs(HelpText().c_str(), stdout);
    } else if (options.out.empty() && !options.pick && options.measure.empty()) {
      ShowWindow(options);
    } else {
      TakeSnapshot(LoadWithProgressLine(options), options);
    }
    if (std::fflush(stdout) != 0) throw std::runtime_error("cannot write to the standard output");
    return 0;
  } catch (const UsageError& error) {
    return Complain(error, kRefused);
  } catch (const ModelError& error) {
    return Complain(error, kRefused);
  } catch (const std::exception& error) {
    return Complain(error, kFailed);
  }
}
