// Model: triangles in named parts. Constant after loading; any thread.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <array>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

struct Vertex {
  std::array<float, 3> point;
  std::array<float, 3> normal;
};

/// Material of a part's surface.
struct Surface {
  GLDATA_RGBA diffuse{0.72f, 0.70f, 0.66f, 1.0f};  ///< alpha is the opacity
  GLDATA_RGBA specular{0.18f, 0.18f, 0.18f, 1.0f};
  float shininess = 0.2f;  ///< from 0 to 1
};

/// One mesh of the model, in world coordinates. A mesh used by several nodes is several parts.
struct Part {
  ULONG id = 0;  ///< from 1
  std::string name;
  Surface surface;
  std::vector<Vertex> vertices;
  std::vector<GLDATA_RGBA> colors;  ///< one per vertex, or empty
  GLPtr<IGLPixmap> image;           ///< texture; null for none
  std::vector<std::array<float, 2>>
      places;  ///< texture coordinates from the image's lower left; one per vertex, or empty
  std::vector<std::array<std::uint32_t, 3>> triangles;

  bool IsTransparent() const { return surface.diffuse.m_fAlpha < 1.0f; }
};

struct Model {
  std::string name;
  std::vector<Part> parts;
  GLDATA_POINT centre{};
  double radius = 1;  ///< of the bounding sphere

  std::size_t CountTriangles() const;
  /// Returns the part with an identifier; null if there is none.
  const Part* Find(ULONG aId) const;
};

/// Computes the bounding sphere. Its centre is the middle of the bounding box; its radius reaches the
/// farthest vertex.
/// @return false if a coordinate is not a number
bool Measure(Model& aModel);

/// A model that is missing or cannot be read; what() is one line for the user.
struct ModelError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Receives the progress of a read, from 0 to 1. May throw to cancel the read.
using ReadProgress = std::function<void(float)>;

/// Reads a model.
/// @throws ModelError, and any exception of aProgress
Model LoadModel(const std::string& aPath, const ReadProgress& aProgress = {});
