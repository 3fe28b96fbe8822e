// ModelSet: reads several files and places their models. Any thread.

#include "glview/ModelSet.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "glview/ReaderProcess.h"

namespace {

constexpr double kSpacing = 2.2;  // between centres, in radii

/// Moves a model to a position and scales it to a radius of 1.
void Place(Model& aModel, double aX, double aY) {
  const auto moved = [&](float aValue, double aCentre, double aPlace) {
    return static_cast<float>((aValue - aCentre) / aModel.radius + aPlace);
  };
  for (Part& part : aModel.parts) {
    for (auto& [point, normal] : part.vertices) {
      point = {moved(point[0], aModel.centre.x, aX), moved(point[1], aModel.centre.y, aY),
               moved(point[2], aModel.centre.z, 0)};
    }
  }
}

void LaySideBySide(std::vector<Model>& aModels) {
  const auto columns = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(aModels.size()))));
  for (std::size_t i = 0; i < aModels.size(); ++i) {
    const std::size_t row = i / columns;
    Place(aModels[i], kSpacing * static_cast<double>(i % columns), -kSpacing * static_cast<double>(row));
  }
}

/// Joins several models. The names of the parts contain the names of their models.
Model Join(std::vector<Model> aModels) {
  Model all;
  for (Model& model : aModels) {
    all.name += (all.name.empty() ? "" : ", ") + model.name;
    for (Part& part : model.parts) {
      part.name = model.name + ": " + part.name;
      part.id = static_cast<ULONG>(all.parts.size() + 1);
      all.parts.push_back(std::move(part));
    }
  }
  return all;
}

}  // namespace

Model LoadModels(const std::vector<std::string>& aPaths, const ReadLimits& aLimits, bool aTogether,
                 const ReadProgress& aProgress) {
  std::vector<Model> models;
  for (const std::string& path : aPaths) {
    const auto before = static_cast<float>(models.size());
    models.push_back(LoadModelWithin(aLimits, path, [&](float aShare) {
      if (aProgress) aProgress((before + aShare) / static_cast<float>(aPaths.size()));
    }));
  }
  if (models.size() == 1) return std::move(models.front());
  if (!aTogether) LaySideBySide(models);
  Model all = Join(std::move(models));
  Measure(all);
  return all;
}
