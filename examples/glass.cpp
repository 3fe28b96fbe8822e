// glass: draws coloured transparent panes that overlap and cross. On the left their triangles are drawn in
// the order of creation, on the right from the farthest centroid to the nearest. Shows how to get triangles
// with centroids from the canvas's store, and why a painter must sort transparent triangles.

#include <algorithm>
#include <array>
#include <vector>

#include "shared/Shapes.h"
#include "shared/Stage.h"

namespace {

constexpr int kHalfWidth = 480;
constexpr int kHeight = 480;
constexpr int kCells = 24;  // squares per side of a pane; smaller triangles sort better
constexpr GLDATA_RGBA kColors[5] = {{0.95f, 0.25f, 0.2f, 0.5f},
                                    {0.2f, 0.7f, 0.3f, 0.5f},
                                    {0.2f, 0.4f, 0.95f, 0.5f},
                                    {0.95f, 0.8f, 0.2f, 0.5f},
                                    {0.7f, 0.3f, 0.85f, 0.5f}};

/// Stores an upright pane, two triangles per cell.
void StorePane(IGLCanvas13_1& aStore, const GLDATA_POINT& aCentre, const GLDATA_POINT& aSide,
               GLDATA_RGBA aColor) {
  const auto corner = [&](int aColumn, int aRow) {
    const double along = 2.0 * aColumn / kCells - 1;
    const double up = 2.0 * aRow / kCells - 1;
    return GLDATA_POINT{aCentre.x + along * aSide.x, aCentre.y + up * aSide.y, aCentre.z + along * aSide.z};
  };
  for (int row = 0; row < kCells; ++row) {
    for (int column = 0; column < kCells; ++column) {
      GLDATA_POINT lower[3] = {corner(column, row), corner(column + 1, row), corner(column + 1, row + 1)};
      GLDATA_POINT upper[3] = {corner(column, row), corner(column + 1, row + 1), corner(column, row + 1)};
      aStore.AddTransparentTriangle(lower, &aColor);
      aStore.AddTransparentTriangle(upper, &aColor);
    }
  }
}

class GlassPainter final : public GLPainterBase {
 public:
  /// @param aSorted the viewer that shows the panes in sorted order
  explicit GlassPainter(IGLViewer* aSorted) : m_sorted(aSorted) {
    m_attributes->EnableDrawMode(GLDM_SHOW_BACK, 1);
    GLDATA_RGBA steel{0.35f, 0.37f, 0.4f, 1};
    m_attributes->SetColor(&steel);
  }

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer* aViewer) noexcept override {
    if (m_triangles.empty()) MakePanes(*aCanvas);
    aCanvas->SetDrawAttributes(m_attributes.Get());
    DrawSphere(*aCanvas, {0.15, 0, -0.6}, 0.5);
    std::vector<GLDATA_TRANS_TRIANGLE> triangles = m_triangles;
    if (aViewer == m_sorted) Sort(triangles, *aViewer);
    aCanvas->BeginDrawTriangles();
    for (auto& triangle : triangles) {
      for (int i = 0; i < 3; ++i) {
        aCanvas->SetVertexColor(&triangle.m_sColors[i]);
        aCanvas->SetVertexNormal(&triangle.m_sNormals[i]);
        aCanvas->Vertex(&triangle.m_sPoints[i]);
      }
    }
    aCanvas->EndDrawVertices();
    return S_OK;
  }

 private:
  void MakePanes(IGLCanvas& aCanvas) {
    const auto store = GLPtr<IGLCanvas>::FromBorrowed(&aCanvas).As<IGLCanvas13_1>();
    // The nearest pane comes first, which is the wrong order for blending. The last pane crosses the others.
    for (int i = 0; i < 4; ++i) {
      StorePane(*store, {-0.45 + 0.33 * i, 0.3 - 0.25 * i, 0.9 - 0.6 * i}, {0.7, 0.7, 0}, kColors[i]);
    }
    StorePane(*store, {0, -0.1, 0}, {0.9, 0.35, 1.2}, kColors[4]);
    LONG count = 0;
    store->GetNumTransparentTriangles(&count);
    m_triangles.resize(static_cast<std::size_t>(count));
    store->GetTransparentTriangles(0, count, m_triangles.data());
    store->ClearTransparentTriangles();  // the painter keeps its own copy
  }

  static void Sort(std::vector<GLDATA_TRANS_TRIANGLE>& aTriangles, IGLViewer& aViewer) {
    GLPtr<IGLCoord> eye;
    aViewer.GetCoord(eye.Put());
    for (auto& triangle : aTriangles) {
      GLDATA_POINT seen = triangle.m_sCentroid;
      eye->PointPCStoLCS(&seen);
      triangle.m_dMidDistance = seen.x * seen.x + seen.y * seen.y + seen.z * seen.z;
    }
    std::sort(aTriangles.begin(), aTriangles.end(), [](const auto& aLeft, const auto& aRight) {
      return aLeft.m_dMidDistance > aRight.m_dMidDistance;
    });
  }

  IGLViewer* m_sorted;
  GLPtr<IGLDrawAttr> m_attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  std::vector<GLDATA_TRANS_TRIANGLE> m_triangles;
};

Picture DrawGlass() {
  const Stage stage(2 * kHalfWidth, kHeight);
  IGLContext& context = stage.Context();
  GLDATA_RGBA background{0.93f, 0.94f, 0.96f, 1};
  GLDATA_RGBA bright{0.65f, 0.65f, 0.65f, 1};
  context.SetBackgroundColor(&background);
  context.SetAmbientLight(&bright);
  stage.AddDistantLight({0.4, -0.7, -1});
  std::array<IGLViewer*, 2> halves{};
  for (int i = 0; i < 2; ++i) {
    IGLViewer& half = stage.AddViewer({0, 1.3, 6}, 0.213);
    half.SetEyeFovy_DEG(27);
    half.SetClipRectangle(i * kHalfWidth, 0, kHalfWidth, kHeight);
    half.Clip(1);
    half.ShowClipFrame(0);
    halves[static_cast<std::size_t>(i)] = &half;
  }
  context.AttachPainter(GLMake<GlassPainter>(halves[1]).Get());
  return stage.Read();
}

}  // namespace

int main(int argc, char** argv) { return RunExample(argc, argv, DrawGlass); }
