// glview: shows a model in a window, or draws it to a file with no display.

#include <cstdio>
#include <exception>

#include "glview/Options.h"
#include "glview/Snapshot.h"
#include "glview/Window.h"
#include "shared/model/Model.h"

namespace {

constexpr int kFailed = 1;
constexpr int kRefused = 2;  // the command line or the model is no good

int Complain(const std::exception& aReason, int aStatus) {
  std::fprintf(stderr, "glview: %s\n", aReason.what());
  return aStatus;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const Options options = ParseOptions(argc, argv);
    if (options.help) {
      std::fputs(kHelp, stdout);
      return 0;
    }
    const Model model = LoadModel(options.model);
    if (options.out.empty() && !options.pick) {
      ShowWindow(model, options);
    } else {
      TakeSnapshot(model, options);
    }
    return 0;
  } catch (const UsageError& error) {
    return Complain(error, kRefused);
  } catch (const ModelError& error) {
    return Complain(error, kRefused);
  } catch (const std::exception& error) {
    return Complain(error, kFailed);
  }
}
