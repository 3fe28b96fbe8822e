// The viewer's values and its conversions between the world and the screen. No GL.

#include <gllib/GLClasses.h>
#include <gllib/IGLCollection.h>
#include <gllib/IGLCoord.h>
#include <gllib/IGLViewer.h>
#include <gllib/IGLViewerGauge.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "component/CreateObject.h"
#include "component/Module.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr float kNaNf = std::numeric_limits<float>::quiet_NaN();

GLPtr<IGLViewer> NewViewer() { return CreateObject<IGLViewer>(CLSID_GLViewer); }

/// All that a host can read of a viewer, in slot order.
std::vector<double> ValuesOf(IGLViewer& v) {
  LONG flags[6];
  v.IsVisible(&flags[0]), v.IsOrtho(&flags[1]), v.AreGaugesVisible(&flags[2]);
  v.IsClipped(&flags[3]), v.IsClipScaled(&flags[4]), v.IsClipFrameVisible(&flags[5]);
  double fovy, zNear, zFar, aspect;
  v.GetEyeFovy_DEG(&fovy), v.GetEyeZNear(&zNear), v.GetEyeZFar(&zFar), v.GetEyeAspect(&aspect);
  GLDATA_POINT low, high;
  v.GetOrthoExtents(&low, &high);
  int clip[4];
  v.GetClipX(&clip[0]), v.GetClipY(&clip[1]), v.GetClipWidth(&clip[2]), v.GetClipHeight(&clip[3]);
  GLDATA_RGBA color;
  float thickness, offset;
  v.GetFrameColor(&color), v.GetFrameThickness(&thickness), v.GetFrameOffset(&offset);
  std::vector<double> values(flags, flags + 6);
  values.insert(values.end(), {fovy, zNear, zFar, aspect, low.x, low.y, low.z, high.x, high.y, high.z});
  values.insert(values.end(), clip, clip + 4);
  values.insert(values.end(),
                {color.m_fRed, color.m_fGreen, color.m_fBlue, color.m_fAlpha, thickness, offset});
  return values;
}

const std::vector<double> kFresh = {1,  1,  0,    0,  1,  1,   27,  0.1, 1000, 1, -50, -50, 0,
                                    50, 50, 1000, 10, 10, 100, 100, 1,   1,    1, 1,   1,   0};

TEST(Viewer, KeepsWhatIsSetAndStartsAsPublished) {
  const auto viewer = NewViewer();
  EXPECT_EQ(ValuesOf(*viewer.Get()), kFresh);
  viewer->Show(0), viewer->SetOrtho(0), viewer->ShowGauges(-1);
  viewer->Clip(256), viewer->ScaleClip(0), viewer->ShowClipFrame(0);
  GLDATA_POINT low{3, 2, 1}, high{1, 5, 7};
  GLDATA_RGBA color{2.0f, -1.0f, 0.5f, 0.25f};
  EXPECT_EQ(viewer->SetEyeFovy_DEG(0.0), S_OK);
  EXPECT_EQ(viewer->SetEyeZNearAndFar(2.0, 3.0), S_OK);
  EXPECT_EQ(viewer->SetEyeAspect(0.5), S_OK);
  EXPECT_EQ(viewer->SetOrthoExtents(&low, &high), S_OK);
  EXPECT_EQ(viewer->SetClipRectangle(0, 1, 2, 3), S_OK);
  EXPECT_EQ(viewer->SetFrameColor(&color), S_OK);
  EXPECT_EQ(viewer->SetFrameOffset(0.75f), S_OK);
  const std::vector<double> set = {0, 0, 1, 1, 0, 0, 0, 2, 3,  0.5, 1,    2, 1,
                                   3, 5, 7, 0, 1, 2, 3, 2, -1, 0.5, 0.25, 1, 0.75};
  EXPECT_EQ(ValuesOf(*viewer.Get()), set) << "extents are sorted axis by axis";

  LONG axes = -1;
  const auto viewer2 = viewer.As<IGLViewer2>();
  viewer2->GetShowAxes(&axes);
  EXPECT_EQ(axes, 0);
  viewer2->SetShowAxes(-7);
  viewer2->GetShowAxes(&axes);
  EXPECT_EQ(axes, 1);
}

TEST(Viewer, RefusedValuesChangeNothing) {
  struct Refusal {
    const char* m_szWhat;
    std::function<HRESULT(IGLViewer&)> m_Try;
  };
  const auto extents = [](GLDATA_POINT a, GLDATA_POINT b) {
    return [a, b](IGLViewer& v) mutable { return v.SetOrthoExtents(&a, &b); };
  };
  const Refusal refusals[] = {{"field of view 180", [](IGLViewer& v) { return v.SetEyeFovy_DEG(180.0); }},
                              {"field of view -1", [](IGLViewer& v) { return v.SetEyeFovy_DEG(-1.0); }},
                              {"field of view NaN", [](IGLViewer& v) { return v.SetEyeFovy_DEG(kNaN); }},
                              {"planes 1, 1", [](IGLViewer& v) { return v.SetEyeZNearAndFar(1.0, 1.0); }},
                              {"planes 0, 1", [](IGLViewer& v) { return v.SetEyeZNearAndFar(0.0, 1.0); }},
                              {"planes -2, -1", [](IGLViewer& v) { return v.SetEyeZNearAndFar(-2.0, -1.0); }},
                              {"planes 1, NaN", [](IGLViewer& v) { return v.SetEyeZNearAndFar(1.0, kNaN); }},
                              {"aspect 0", [](IGLViewer& v) { return v.SetEyeAspect(0.0); }},
                              {"aspect NaN", [](IGLViewer& v) { return v.SetEyeAspect(kNaN); }},
                              {"extents equal in x", extents({1, 2, 3}, {1, 5, 7})},
                              {"extents equal in y", extents({1, 2, 3}, {2, 2, 7})},
                              {"extents equal in z", extents({1, 2, 3}, {2, 5, 3})},
                              {"extents NaN", extents({1, 2, kNaN}, {2, 5, 3})},
                              {"clip x -1", [](IGLViewer& v) { return v.SetClipRectangle(-1, 0, 1, 1); }},
                              {"clip y -1", [](IGLViewer& v) { return v.SetClipRectangle(0, -1, 1, 1); }},
                              {"clip width 0", [](IGLViewer& v) { return v.SetClipRectangle(0, 0, 0, 1); }},
                              {"clip height 0", [](IGLViewer& v) { return v.SetClipRectangle(0, 0, 1, 0); }},
                              {"frame offset 1", [](IGLViewer& v) { return v.SetFrameOffset(1.0f); }},
                              {"frame offset -0.1", [](IGLViewer& v) { return v.SetFrameOffset(-0.1f); }},
                              {"frame offset NaN", [](IGLViewer& v) { return v.SetFrameOffset(kNaNf); }}};
  const auto viewer = NewViewer();
  for (const auto& [what, attempt] : refusals) {
    EXPECT_EQ(attempt(*viewer.Get()), E_GL_BADVALUE) << what;
    EXPECT_EQ(ValuesOf(*viewer.Get()), kFresh) << what;
  }
}

TEST(Viewer, LimitsTheFrameToThePointSizes) {
  const auto viewer = NewViewer();
  const float before[] = {g_afPointSizeRange[0], g_afPointSizeRange[1]};
  g_afPointSizeRange[0] = 1.0f, g_afPointSizeRange[1] = 10.0f;
  for (const auto& [given, kept] : {std::pair{0.5f, 1.0f}, {20.0f, 10.0f}, {2.5f, 2.5f}, {kNaNf, 1.0f}}) {
    float thickness = -1.0f;
    EXPECT_EQ(viewer->SetFrameThickness(given), S_OK);
    viewer->GetFrameThickness(&thickness);
    EXPECT_EQ(thickness, kept) << "given " << given;
  }
  g_afPointSizeRange[0] = before[0], g_afPointSizeRange[1] = before[1];
}

/// Counts its references; the viewer here only keeps it.
class CountedGauge final : public IGLViewerGauge {
 public:
  HRESULT QueryInterface(REFIID, void**) noexcept override { return E_NOINTERFACE; }
  ULONG AddRef() noexcept override { return ++m_uReferences; }
  ULONG Release() noexcept override { return --m_uReferences; }
  HRESULT Draw(IGLCanvas*, IGLContext*) noexcept override { return S_OK; }
  HRESULT Show(LONG) noexcept override { return S_OK; }
  HRESULT IsVisible(LONG* aVisible) noexcept override { return *aVisible = 0, S_OK; }

  ULONG m_uReferences = 0;
};

TEST(Viewer, HoldsAGaugeOnceAndLetsGoOfIt) {
  CountedGauge first, second;
  {
    const auto viewer = NewViewer();
    const auto listed = CreateObject<IGLCollection>(CLSID_GLCollection);
    viewer->AddGauge(&first), viewer->AddGauge(&first), viewer->AddGauge(&second);
    listed->Add(&first), viewer->EnumGauges(listed.Get());
    int size = 0;
    listed->GetSize(&size);
    EXPECT_EQ(size, 2);
    EXPECT_EQ(first.m_uReferences, 2u);
    viewer->RemoveGauge(&second), listed->Empty();
    EXPECT_EQ(second.m_uReferences, 0u);
  }
  EXPECT_EQ(first.m_uReferences, 0u);
}

/// Where plain geometry puts a point of the eye's system: the eye stands before the screen plane z = 0 so
/// that the view's half height, 1, spans half of the field of view.
GLDATA_POINT SeenPlainly(const GLDATA_POINT& aEyePoint, double aFovyDegrees, double aAspect) {
  const double eye = 1.0 / std::tan(aFovyDegrees * M_PI / 360.0) / aAspect;
  const double shrink = eye / (eye - aEyePoint.z);
  return {aEyePoint.x * shrink, aEyePoint.y * shrink * aAspect, aEyePoint.z};
}

void ExpectNear(const GLDATA_POINT& aFound, const GLDATA_POINT& aWanted, double aMargin,
                const std::string& aWhat) {
  EXPECT_NEAR(aFound.x, aWanted.x, aMargin) << aWhat;
  EXPECT_NEAR(aFound.y, aWanted.y, aMargin) << aWhat;
  EXPECT_NEAR(aFound.z, aWanted.z, aMargin) << aWhat;
}

const GLDATA_POINT kPoints[] = {{0, 0, 0}, {0.5, -0.25, -3}, {-20, 7, 0.125}, {1, 1, -900}};

TEST(ViewerConversion, PerspectiveFollowsTheSightLine) {
  for (const double fovy : {27.0, 90.0, 150.0}) {
    for (const double aspect : {1.0, 0.5, 3.0}) {
      const auto viewer = NewViewer();
      viewer->SetOrtho(0), viewer->SetEyeFovy_DEG(fovy), viewer->SetEyeAspect(aspect);
      for (const GLDATA_POINT& local : kPoints) {
        GLDATA_POINT point = {local.x, local.y, local.z + 1.0};  // a new eye stands at (0, 0, 1), unturned
        viewer->PointWCStoSCS(&point);
        const GLDATA_POINT plain = SeenPlainly(local, fovy, aspect);
        ExpectNear(point, plain, 1e-6 * (1 + std::hypot(plain.x, plain.y)),
                   "field of view " + std::to_string(fovy));
      }
    }
  }
}

TEST(ViewerConversion, ParallelFollowsTheExtents) {
  const auto viewer = NewViewer();
  GLDATA_POINT low{-10, 0, 0}, high{30, 20, 1}, corner{30, 0, 1}, middle{10, 10, 8};
  viewer->SetOrthoExtents(&low, &high);
  viewer->PointWCStoSCS(&corner), viewer->PointWCStoSCS(&middle);
  ExpectNear(corner, {1, -1, 0}, 1e-12, "corner");
  ExpectNear(middle, {0, 0, 7}, 1e-12, "middle");
}

TEST(ViewerConversion, ComesBackFromThereFromAnyEye) {
  for (const LONG ortho : {0, 1}) {
    const auto viewer = NewViewer();
    viewer->SetOrtho(ortho), viewer->SetEyeFovy_DEG(60.0), viewer->SetEyeAspect(1.5);
    GLPtr<IGLCoord> coord;
    viewer->GetCoord(coord.Put());
    GLDATA_MATRIX6D eye{3, -2, 40, 0.3, -1.1, 2.5};
    coord->SetMatrix6d(&eye);
    for (const GLDATA_POINT& world : kPoints) {
      GLDATA_POINT point = world;
      viewer->PointWCStoSCS(&point), viewer->PointSCStoWCS(&point);
      ExpectNear(point, world, 1e-6, ortho != 0 ? "parallel" : "perspective");
    }
  }
}

TEST(ViewerConversion, HasNoSightLineToFollowAtTheEyeOrWithoutAField) {
  const auto viewer = NewViewer();
  viewer->SetOrtho(0), viewer->SetEyeFovy_DEG(0.0);
  GLDATA_POINT there{3, 4, -5}, back{0.5, 0.5, -6};
  viewer->PointWCStoSCS(&there), viewer->PointSCStoWCS(&back);
  ExpectNear(there, {0, 0, -6}, 0.0, "field of view 0");
  ExpectNear(back, {0, 0, -5}, 0.0, "field of view 0");

  viewer->SetEyeFovy_DEG(90.0);
  const double eye = 1.0 / std::tan(0.017453292 * 45.0);
  GLDATA_POINT level{3, 4, eye};
  GLPtr<IGLCoord> coord;
  viewer->GetCoord(coord.Put());
  coord->SetOrigin3d(0, 0, 0);
  viewer->PointWCStoSCS(&level);
  ExpectNear(level, {0, 0, eye}, 0.0, "level with the eye");
}

TEST(Viewer, RefusesNull) {
  const auto v = NewViewer();
  GLDATA_POINT point{};
  const HRESULT results[] = {v->IsVisible(nullptr),
                             v->GetEyeFovy_DEG(nullptr),
                             v->GetClipX(nullptr),
                             v->GetFrameColor(nullptr),
                             v->SetFrameColor(nullptr),
                             v->GetFrameOffset(nullptr),
                             v->EnumGauges(nullptr),
                             v->GetCoord(nullptr),
                             v->PointWCStoSCS(nullptr),
                             v->PointSCStoWCS(nullptr),
                             v->GetOrthoExtents(&point, nullptr),
                             v->SetOrthoExtents(nullptr, &point),
                             v.As<IGLViewer2>()->GetShowAxes(nullptr)};
  for (const HRESULT result : results) EXPECT_EQ(result, E_INVALIDARG);
  EXPECT_EQ(ValuesOf(*v.Get()), kFresh);
}

}  // namespace
