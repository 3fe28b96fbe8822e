// Model: bounds, look-up and loading. Any thread.

#include "shared/model/Model.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>

#include "shared/model/ModelReader.h"

std::size_t Model::CountTriangles() const {
  std::size_t count = 0;
  for (const Part& part : parts) count += part.triangles.size();
  return count;
}

const Part* Model::Find(ULONG aId) const {
  return aId >= 1 && aId <= parts.size() ? &parts[aId - 1] : nullptr;
}

bool Measure(Model& aModel) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  std::array<float, 3> low{kInfinity, kInfinity, kInfinity};
  std::array<float, 3> high{-kInfinity, -kInfinity, -kInfinity};
  for (const Part& part : aModel.parts) {
    for (const Vertex& vertex : part.vertices) {
      for (std::size_t axis = 0; axis < 3; ++axis) {
        if (!std::isfinite(vertex.point[axis])) return false;
        low[axis] = std::min(low[axis], vertex.point[axis]);
        high[axis] = std::max(high[axis], vertex.point[axis]);
      }
    }
  }
  const auto middle = [&](std::size_t aAxis) { return (double{low[aAxis]} + double{high[aAxis]}) / 2; };
  aModel.centre = {middle(0), middle(1), middle(2)};
  double radius = 0;
  for (const Part& part : aModel.parts) {
    for (const Vertex& vertex : part.vertices) {
      radius =
          std::max(radius, std::hypot(vertex.point[0] - aModel.centre.x, vertex.point[1] - aModel.centre.y,
                                      vertex.point[2] - aModel.centre.z));
    }
  }
  aModel.radius = radius > 0 ? radius : 1;
  return true;
}

Model LoadModel(const std::string& aPath, const ReadProgress& aProgress) {
  std::error_code error;
  if (!std::filesystem::exists(aPath, error)) throw ModelError("no such file: " + aPath);
  if (std::filesystem::is_directory(aPath, error)) throw ModelError("a folder, not a model: " + aPath);
  if (!std::filesystem::is_regular_file(aPath, error)) throw ModelError("not a file: " + aPath);
  Model model;
  model.name = std::filesystem::path(aPath).filename().string();
  try {
    model.parts = ReadParts(aPath, aProgress);
  } catch (const ModelError& reason) {
    throw ModelError("cannot read " + aPath + ": " + reason.what());
  }
  if (model.parts.empty()) throw ModelError("no triangles in " + aPath);
  for (Part& part : model.parts) {
    part.id = static_cast<ULONG>(&part - model.parts.data() + 1);
    if (part.name.empty()) part.name = "part " + std::to_string(part.id);
  }
  if (!Measure(model)) throw ModelError("a coordinate is not a number in " + aPath);
  return model;
}
