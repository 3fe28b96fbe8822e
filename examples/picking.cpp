// picking: picks in a grid of numbered boxes and prints the result of each kind of pick. The picture shows a
// selection frame across the grid. Boxes that it touches are orange; boxes completely inside it are red.
// Shows how a painter sets identifiers, and how Select finds them at a point and in a box.

#include <array>
#include <atomic>
#include <cstdio>
#include <vector>

#include "shared/Shapes.h"
#include "shared/Stage.h"

namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr int kColumns = 6;
constexpr int kRows = 4;
constexpr ULONG kHidden = kColumns * kRows + 1;  // number of the box behind box 9

// Positions in the view, x and y from -1 to 1: the middle of box 9, and two opposite corners of the frame.
constexpr GLDATA_POINT kPlace{-0.146, -0.195, 0};
constexpr GLDATA_POINT kFrom{-0.47, -0.62, 0};
constexpr GLDATA_POINT kTo{0.18, 0.23, 0};

enum Mark : int { Plain, Met, Inside };
constexpr GLDATA_RGBA kColors[] = {{0.62f, 0.66f, 0.72f, 1}, {1.0f, 0.6f, 0.15f, 1}, {0.9f, 0.2f, 0.15f, 1}};

/// Draws boxes 1 to 24 in rows from the lower left, and one more behind box 9.
class GridPainter final : public GLPainterBase {
 public:
  void Set(const std::vector<ULONG>& aIds, Mark aMark) {
    for (const ULONG id : aIds) m_marks[id] = aMark;
  }

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    for (int row = 0; row < kRows; ++row) {
      for (int column = 0; column < kColumns; ++column) {
        DrawNumbered(*aCanvas, static_cast<ULONG>(row * kColumns + column + 1), {column - 2.5, row - 1.5, 0});
      }
    }
    DrawNumbered(*aCanvas, kHidden, {-0.4, -0.42, -1.5});
    return S_OK;
  }

 private:
  void DrawNumbered(IGLCanvas& aCanvas, ULONG aId, const GLDATA_POINT& aCentre) {
    GLDATA_RGBA color = kColors[m_marks[aId]];
    m_attributes->SetColor(&color);
    aCanvas.SetTestID(aId);
    aCanvas.SetDrawAttributes(m_attributes.Get());
    DrawBox(aCanvas, aCentre, {0.3, 0.3, 0.3});
  }

  GLPtr<IGLDrawAttr> m_attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  std::array<std::atomic<Mark>, kHidden + 1> m_marks{};  // index: box number
};

/// Draws the frame of the box pick.
class FrameGauge final : public GLViewerGaugeBase {
 public:
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*) noexcept override {
    GLDATA_RGBA white{1, 1, 1, 1};
    aCanvas->SetVertexColor(&white);
    aCanvas->PushDepthAttribute();
    aCanvas->BeginDrawLineLoop();
    aCanvas->Vertex2d(kFrom.x, kFrom.y);
    aCanvas->Vertex2d(kTo.x, kFrom.y);
    aCanvas->Vertex2d(kTo.x, kTo.y);
    aCanvas->Vertex2d(kFrom.x, kTo.y);
    aCanvas->EndDrawVertices();
    aCanvas->PopDepthAttribute();
    return S_OK;
  }
};

enum class Which { All, Nearest, Enclosed };

/// Picks, prints the identifiers and returns them. @throws std::runtime_error
std::vector<ULONG> Pick(IGLContext& aContext, IGLViewer& aViewer, const char* aKind, GLDATA_POINT aFrom,
                        GLDATA_POINT aTo, Which aWhich) {
  int count = kHidden;  // room for every box, once
  std::vector<ULONG> ids(kHidden);
  const LONG closest = aWhich == Which::Nearest ? 1 : 0, enclosed = aWhich == Which::Enclosed ? 1 : 0;
  Require(aContext.Select(&aViewer, &aFrom, &aTo, closest, enclosed, &count, ids.data()), "cannot pick");
  ids.resize(static_cast<std::size_t>(count));
  std::printf("%s:", aKind);
  for (const ULONG id : ids) std::printf(" %u", static_cast<unsigned>(id));
  std::printf("\n");
  return ids;
}

Picture DrawPicking() {
  const Stage stage(kWidth, kHeight);
  IGLContext& context = stage.Context();
  IGLViewer& viewer = stage.AddViewer({0, 0, 11}, 0);
  GLDATA_RGBA background{0.13f, 0.15f, 0.19f, 1};
  context.SetBackgroundColor(&background);
  stage.AddDistantLight({0.4, -0.5, -1});
  const auto painter = GLMake<GridPainter>();
  context.AttachPainter(painter.Get());

  Pick(context, viewer, "under the point", kPlace, kPlace, Which::All);
  Pick(context, viewer, "nearest at the point", kPlace, kPlace, Which::Nearest);
  painter->Set(Pick(context, viewer, "touched by the box", kFrom, kTo, Which::All), Met);
  painter->Set(Pick(context, viewer, "completely inside it", kFrom, kTo, Which::Enclosed), Inside);

  viewer.AddGauge(GLMake<FrameGauge>().Get());
  viewer.ShowGauges(1);
  return stage.Read();
}

}  // namespace

int main(int argc, char** argv) { return RunExample(argc, argv, DrawPicking); }
