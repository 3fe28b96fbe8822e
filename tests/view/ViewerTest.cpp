// Values of a viewer, and its conversions between world and screen. No display, no GL.

#include "component/Module.h"
#include "support/Counting.h"
#include "support/Test.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr float kNaNf = std::numeric_limits<float>::quiet_NaN();

GLPtr<IGLViewer> NewViewer() { return GLCreate<IGLViewer>(CLSID_GLViewer); }

/// All values that a host can read from a viewer.
std::vector<double> ValuesOf(IGLViewer& v) {
  using I = IGLViewer;
  std::vector<double> values;
  const auto read = [&]<class... T>(HRESULT (I::*... aGets)(T*) noexcept) {
    ([&](T aValue) { (v.*aGets)(&aValue), values.push_back(static_cast<double>(aValue)); }(T()), ...);
  };
  read(&I::IsVisible, &I::IsOrtho, &I::AreGaugesVisible, &I::IsClipped, &I::IsClipScaled,
       &I::IsClipFrameVisible, &I::GetEyeFovy_DEG, &I::GetEyeZNear, &I::GetEyeZFar, &I::GetEyeAspect,
       &I::GetClipX, &I::GetClipY, &I::GetClipWidth, &I::GetClipHeight, &I::GetFrameThickness,
       &I::GetFrameOffset);
  GLDATA_POINT low, high;
  GLDATA_RGBA color;
  v.GetOrthoExtents(&low, &high), v.GetFrameColor(&color);
  values.insert(values.end(), {low.x, low.y, low.z, high.x, high.y, high.z});
  values.insert(values.end(), {color.m_fRed, color.m_fGreen, color.m_fBlue, color.m_fAlpha});
  return values;
}

const std::vector<double> kDefaults = {1,   1, 0, 0,   1,   1, 27, 0.1, 1000, 1, 10, 10, 100,
                                       100, 1, 0, -50, -50, 0, 50, 50,  1000, 1, 1,  1,  1};

TEST(Viewer, StoresValuesAndHasDocumentedDefaults) {
  const auto viewer = NewViewer();
  EXPECT_EQ(ValuesOf(*viewer.Get()), kDefaults);
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
  const std::vector<double> set = {0, 0, 1,    1, 0, 0, 0, 2, 3, 0.5, 0,  1,   2,
                                   3, 1, 0.75, 1, 2, 1, 3, 5, 7, 2,   -1, 0.5, 0.25};
  EXPECT_EQ(ValuesOf(*viewer.Get()), set) << "extents are sorted per axis";
}

TEST(Viewer, RefusedValuesChangeNothing) {
  using V = IGLViewer;
  const auto extents = [](GLDATA_POINT a, GLDATA_POINT b) {
    return [a, b](V& v) mutable { return v.SetOrthoExtents(&a, &b); };
  };
  const std::pair<const char*, std::function<HRESULT(V&)>> rows[] = {
      {"field of view 180", [](V& v) { return v.SetEyeFovy_DEG(180.0); }},
      {"field of view -1", [](V& v) { return v.SetEyeFovy_DEG(-1.0); }},
      {"field of view NaN", [](V& v) { return v.SetEyeFovy_DEG(kNaN); }},
      {"planes 1, 1", [](V& v) { return v.SetEyeZNearAndFar(1.0, 1.0); }},
      {"planes 0, 1", [](V& v) { return v.SetEyeZNearAndFar(0.0, 1.0); }},
      {"planes 1, NaN", [](V& v) { return v.SetEyeZNearAndFar(1.0, kNaN); }},
      {"aspect 0", [](V& v) { return v.SetEyeAspect(0.0); }},
      {"aspect NaN", [](V& v) { return v.SetEyeAspect(kNaN); }},
      {"extents equal in x", extents({1, 2, 3}, {1, 5, 7})},
      {"extents equal in y", extents({1, 2, 3}, {2, 2, 7})},
      {"extents equal in z", extents({1, 2, 3}, {2, 5, 3})},
      {"extents NaN", extents({1, 2, kNaN}, {2, 5, 3})},
      {"clip x -1", [](V& v) { return v.SetClipRectangle(-1, 0, 1, 1); }},
      {"clip height 0", [](V& v) { return v.SetClipRectangle(0, 0, 1, 0); }},
      {"frame offset 1", [](V& v) { return v.SetFrameOffset(1.0f); }},
      {"frame offset NaN", [](V& v) { return v.SetFrameOffset(kNaNf); }}};
  const auto viewer = NewViewer();
  for (const auto& [what, attempt] : rows) {
    EXPECT_EQ(attempt(*viewer.Get()), E_GL_BADVALUE) << what;
    EXPECT_EQ(ValuesOf(*viewer.Get()), kDefaults) << what;
  }
}

TEST(Viewer, ReportsMissingMemoryForGauges) {
  struct Gauge final : GLViewerGaugeBase {
    HRESULT Draw(IGLCanvas*, IGLContext*) noexcept override { return S_OK; }
  };
  const auto viewer = NewViewer();
  const auto gauges = GLCreate<IGLCollection>(CLSID_GLCollection);
  const auto gauge = GLMake<Gauge>();
  {
    const ExhaustedHeap heap(0);
    EXPECT_EQ(viewer->AddGauge(gauge.Get()), E_FAIL);
    EXPECT_EQ(viewer->EnumGauges(gauges.Get()), E_OUTOFMEMORY);
  }
  EXPECT_EQ(viewer->AddGauge(gauge.Get()), S_OK);
  EXPECT_EQ(viewer->EnumGauges(gauges.Get()), S_OK);
  int size = 0;
  gauges->GetSize(&size);
  EXPECT_EQ(size, 1);
}

TEST(Viewer, LimitsTheFrameToPointSizes) {
  const auto viewer = NewViewer();
  const float before[] = {g_afPointSizeRange[0], g_afPointSizeRange[1]};
  g_afPointSizeRange[0] = 1.0f, g_afPointSizeRange[1] = 10.0f;
  for (const auto& [given, kept] : {std::pair{0.5f, 1.0f}, {20.0f, 10.0f}, {2.5f, 2.5f}, {kNaNf, 1.0f}}) {
    float thickness = -1.0f;
    EXPECT_EQ(viewer->SetFrameThickness(given), S_OK);
    viewer->GetFrameThickness(&thickness);
    EXPECT_EQ(thickness, kept) << "for " << given;
  }
  g_afPointSizeRange[0] = before[0], g_afPointSizeRange[1] = before[1];
}

void ExpectNear(const GLDATA_POINT& aFound, const GLDATA_POINT& aWanted, double aMargin,
                const std::string& aWhat) {
  EXPECT_NEAR(aFound.x, aWanted.x, aMargin) << aWhat;
  EXPECT_NEAR(aFound.y, aWanted.y, aMargin) << aWhat;
  EXPECT_NEAR(aFound.z, aWanted.z, aMargin) << aWhat;
}

const GLDATA_POINT kPoints[] = {{0, 0, 0}, {0.5, -0.25, -3}, {-20, 7, 0.125}, {1, 1, -900}};

TEST(ViewerConversion, SurvivesARoundTripFromAnyEye) {
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

TEST(ViewerConversion, ReturnsTheMiddleWithoutASightLine) {
  const auto viewer = NewViewer();
  viewer->SetOrtho(0), viewer->SetEyeFovy_DEG(0.0);
  GLDATA_POINT there{3, 4, -5}, back{0.5, 0.5, -6}, level{3, 4, 1.0 + 1.0 / std::tan(0.017453292 * 45.0)};
  viewer->PointWCStoSCS(&there), viewer->PointSCStoWCS(&back);
  ExpectNear(there, {0, 0, -6}, 0.0, "field of view 0");
  ExpectNear(back, {0, 0, -5}, 0.0, "field of view 0");
  viewer->SetEyeFovy_DEG(90.0), viewer->PointWCStoSCS(&level);
  ExpectNear(level, {0, 0, level.z}, 0.0, "level with the eye");
}

TEST(ViewerConversion, ParallelFollowsTheExtents) {
  const auto viewer = NewViewer();
  GLDATA_POINT low{-10, 0, 0}, high{30, 20, 1}, corner{30, 0, 1};
  viewer->SetOrthoExtents(&low, &high), viewer->PointWCStoSCS(&corner);
  ExpectNear(corner, {1, -1, 0}, 1e-12, "corner");
  EXPECT_EQ(viewer->PointWCStoSCS(nullptr), E_INVALIDARG);
}

}  // namespace
