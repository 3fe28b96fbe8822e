// Shapes: solids as quadrilaterals with normals. Draw thread only.

#include "shared/Shapes.h"

#include <cmath>
#include <numbers>

void DrawBox(IGLCanvas& aCanvas, const GLDATA_POINT& aCentre, const GLDATA_POINT& aHalf) {
  // A face: its normal, and the signs of its corners, counter-clockwise when seen from outside.
  struct Face {
    double normal[3];
    double corners[4][3];
  };
  static constexpr Face kFaces[6] = {
      {{1, 0, 0}, {{1, -1, 1}, {1, -1, -1}, {1, 1, -1}, {1, 1, 1}}},
      {{-1, 0, 0}, {{-1, -1, -1}, {-1, -1, 1}, {-1, 1, 1}, {-1, 1, -1}}},
      {{0, 1, 0}, {{-1, 1, 1}, {1, 1, 1}, {1, 1, -1}, {-1, 1, -1}}},
      {{0, -1, 0}, {{-1, -1, -1}, {1, -1, -1}, {1, -1, 1}, {-1, -1, 1}}},
      {{0, 0, 1}, {{-1, -1, 1}, {1, -1, 1}, {1, 1, 1}, {-1, 1, 1}}},
      {{0, 0, -1}, {{1, -1, -1}, {-1, -1, -1}, {-1, 1, -1}, {1, 1, -1}}},
  };
  aCanvas.BeginDrawQuads();
  for (const Face& face : kFaces) {
    aCanvas.SetVertexNormal3d(face.normal[0], face.normal[1], face.normal[2]);
    for (const auto& sign : face.corners) {
      aCanvas.Vertex3d(aCentre.x + sign[0] * aHalf.x, aCentre.y + sign[1] * aHalf.y,
                       aCentre.z + sign[2] * aHalf.z);
    }
  }
  aCanvas.EndDrawVertices();
}

void DrawSphere(IGLCanvas& aCanvas, const GLDATA_POINT& aCentre, double aRadius) {
  constexpr int kRings = 24;
  constexpr int kSegments = 48;
  constexpr double kPi = std::numbers::pi;
  const auto emit = [&](int aRing, int aSegment) {
    const double polar = kPi * aRing / kRings;
    const double turn = 2 * kPi * aSegment / kSegments;
    const double x = std::sin(polar) * std::sin(turn);
    const double y = std::cos(polar);
    const double z = std::sin(polar) * std::cos(turn);
    aCanvas.SetVertexNormal3d(x, y, z);
    aCanvas.Vertex3d(aCentre.x + aRadius * x, aCentre.y + aRadius * y, aCentre.z + aRadius * z);
  };
  for (int ring = 0; ring < kRings; ++ring) {
    aCanvas.BeginDrawQuadStrip();
    for (int segment = 0; segment <= kSegments; ++segment) {
      emit(ring, segment);
      emit(ring + 1, segment);
    }
    aCanvas.EndDrawVertices();
  }
}

void DrawFloor(IGLCanvas& aCanvas, double aHeight, double aHalf, int aCells) {
  const double step = 2 * aHalf / aCells;
  aCanvas.SetVertexNormal3d(0, 1, 0);
  for (int row = 0; row < aCells; ++row) {
    const double back = -aHalf + row * step;
    aCanvas.BeginDrawQuadStrip();
    for (int cell = 0; cell <= aCells; ++cell) {
      const double x = -aHalf + cell * step;
      aCanvas.Vertex3d(x, aHeight, back);
      aCanvas.Vertex3d(x, aHeight, back + step);
    }
    aCanvas.EndDrawVertices();
  }
}
