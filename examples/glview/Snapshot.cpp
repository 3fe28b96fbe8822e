#include "glview/Snapshot.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "glview/Scene.h"
#include "shared/Picture.h"

void TakeSnapshot(const Model& aModel, const Options& aOptions) {
  setenv("GLLIB_DISPLAY", "headless", 1);
  Scene scene(aModel, aOptions, 0);
  if (aOptions.pick) {
    const auto ids = scene.Pick(*aOptions.pick);
    for (const std::string& name : scene.NamesOf(ids)) std::printf("%s\n", name.c_str());
    scene.Mark(ids);
    if (!aOptions.pick->point) scene.ShowBand(aOptions.pick);
  }
  if (aOptions.out.empty()) return;
  Picture picture;
  if (!scene.Read(picture)) throw std::runtime_error("no frame came");
  if (!WritePng(picture, aOptions.out)) throw std::runtime_error("can't write " + aOptions.out);
}
