// Snapshot: draws and picks without a display. Host's thread.

#include "glview/Snapshot.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <utility>

#include "glview/HiddenParent.h"
#include "shared/Picture.h"
#include "shared/model/Scene.h"

namespace {

constexpr auto kPatience = std::chrono::seconds(120);
constexpr auto kDeliveryPeriod = std::chrono::milliseconds(10);

Picture TakePicture(Scene& aScene, const HiddenParent& aParent, const Options& aOptions) {
  // A capture enlarges by whole factors. The window's size covers the rest of the zoom.
  const int whole = std::max(1, static_cast<int>(aOptions.zoom));
  const double rest = aOptions.zoom / whole;
  if (rest != 1) {
    aScene.SetSize(static_cast<int>(std::lround(aOptions.width * rest)),
                   static_cast<int>(std::lround(aOptions.height * rest)));
  }
  auto picture = aScene.Capture(whole);
  for (const auto end = std::chrono::steady_clock::now() + kPatience; !picture.IsReady(kDeliveryPeriod);) {
    aParent.DeliverMessages();
    if (std::chrono::steady_clock::now() > end) throw std::runtime_error("no frame was drawn");
  }
  auto result = picture.Take();
  if (!result) throw std::runtime_error("cannot take a picture of that size");
  return std::move(*result);
}

void PrintMeasured(Scene& aScene, const std::vector<int>& aPixels) {
  for (std::size_t i = 0; i < aPixels.size(); i += 2) {
    if (!aScene.MeasureAt(aPixels[i], aPixels[i + 1])) {
      throw std::runtime_error("no point of the model at " + std::to_string(aPixels[i]) + "," +
                               std::to_string(aPixels[i + 1]));
    }
  }
  std::printf("%s\n", aScene.Measured().c_str());
}

}  // namespace

void TakeSnapshot(std::shared_ptr<const Model> aModel, const Options& aOptions) {
  const HiddenParent parent;
  Scene scene(std::move(aModel), aOptions, parent.Handle());
  if (aOptions.pick) {
    const auto ids = scene.Pick(*aOptions.pick);
    for (const std::string& name : scene.NamesOf(ids)) std::printf("%s\n", name.c_str());
    scene.Mark(ids);
    if (!aOptions.pick->point) scene.ShowBand(aOptions.pick);
  }
  if (!aOptions.measure.empty()) PrintMeasured(scene, aOptions.measure);
  if (aOptions.out.empty()) return;
  const Picture picture = TakePicture(scene, parent, aOptions);
  if (!WritePng(picture, aOptions.out)) throw std::runtime_error("cannot write " + aOptions.out);
}
