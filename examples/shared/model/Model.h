// Model: what is shown, as triangles in named parts. Read once, then only looked at; any thread.

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

/// How a part's surface takes light.
struct Surface {
  GLDATA_RGBA diffuse{0.72f, 0.70f, 0.66f, 1.0f};  ///< alpha is the opacity
  GLDATA_RGBA specular{0.18f, 0.18f, 0.18f, 1.0f};
  float shininess = 0.2f;  ///< from 0 to 1
};

/// One mesh of the model where a node of it stands.
struct Part {
  ULONG id = 0;  ///< from 1
  std::string name;
  Surface surface;
  std::vector<Vertex> vertices;
  std::vector<GLDATA_RGBA> colors;  ///< one a vertex, or none
  GLPtr<IGLPixmap> image;           ///< on the surface; null for none
  std::vector<std::array<float, 2>>
      places;  ///< in the image, from its lower left corner; one a vertex, or none
  std::vector<std::array<std::uint32_t, 3>> triangles;

  bool IsTransparent() const { return surface.diffuse.m_fAlpha < 1.0f; }
};

struct Model {
  std::string name;
  std::vector<Part> parts;
  GLDATA_POINT centre{};
  double radius = 1;  ///< of the sphere about the centre that holds everything

  std::size_t CountTriangles() const;
  /// The part of an identifier; null when there is none.
  const Part* Find(ULONG aId) const;
};

/// Finds the sphere to frame: about the middle of the extents, out to the farthest vertex.
/// @return false when a coordinate is no number
bool Measure(Model& aModel);

/// A model that is missing or can't be read; what() is one line for the user.
struct ModelError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Told how far a read is, from 0 to 1. May throw to end it.
using ReadProgress = std::function<void(float)>;

/// Reads a model.
/// @throws ModelError, and what aProgress throws
Model LoadModel(const std::string& aPath, const ReadProgress& aProgress = {});
