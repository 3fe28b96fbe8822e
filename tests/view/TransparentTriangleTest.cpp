// The store of transparent triangles of the canvas. No display, no GL.

#include "support/Counting.h"
#include "support/Test.h"

namespace {

GLPtr<IGLCanvas13_1> NewCanvas() { return GLCreate<IGLCanvas13_1>(CLSID_GLCanvas); }

bool Same(const GLDATA_POINT& a, const GLDATA_POINT& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

GLDATA_POINT g_asFace[3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
GLDATA_RGBA g_asColors[3] = {{1, 0, 0, 0.5f}, {0, 1, 0, 0.25f}, {0, 0, 1, 0.125f}};

LONG CountOf(IGLCanvas13_1& aCanvas) {
  LONG count = -1;
  EXPECT_EQ(aCanvas.GetNumTransparentTriangles(&count), S_OK);
  return count;
}

TEST(TransparentTriangles, HaveNormalsAndCentroids) {
  const auto canvas = NewCanvas();
  GLDATA_POINT reversed[3] = {g_asFace[2], g_asFace[1], g_asFace[0]};
  GLDATA_POINT point[3] = {{7, 8, 9}, {7, 8, 9}, {7, 8, 9}};
  GLDATA_POINT normals[3] = {{0, 0, 5}, {2, 0, 0}, {0, 0, 0}};
  EXPECT_EQ(canvas->AddTransparentTriangle(g_asFace, &g_asColors[1]), S_OK);
  EXPECT_EQ(canvas->AddTransparentTriangle2(reversed, g_asColors), S_OK);
  EXPECT_EQ(canvas->AddTransparentTriangle2(point, g_asColors), S_OK);
  EXPECT_EQ(canvas->AddTransparentTriangle3(g_asFace, g_asColors, normals), S_OK);

  std::vector<GLDATA_TRANS_TRIANGLE> records(4);
  for (auto& record : records) record.m_dMidDistance = 99.0;
  ASSERT_EQ(canvas->GetTransparentTriangles(0, 4, records.data()), S_OK);
  const GLDATA_POINT faceNormals[] = {{0, 0, 1}, {0, 0, -1}, {0, 0, 0}};
  for (int k = 0; k < 3; ++k) {
    for (int triangle = 0; triangle < 3; ++triangle)
      EXPECT_TRUE(Same(records[triangle].m_sNormals[k], faceNormals[triangle])) << "triangle " << triangle;
    EXPECT_TRUE(Same(records[3].m_sNormals[k], normals[k])) << "normals of a client are kept";
    EXPECT_TRUE(Same(records[1].m_sPoints[k], reversed[k]));
    EXPECT_EQ(records[0].m_sColors[k].m_fGreen, 1.0f) << "one colour for all corners";
    EXPECT_EQ(records[3].m_sColors[k].m_fAlpha, g_asColors[k].m_fAlpha);
  }
  EXPECT_TRUE(Same(records[0].m_sCentroid, {1.0 / 3.0, 1.0 / 3.0, 0.0}));
  EXPECT_TRUE(Same(records[2].m_sCentroid, point[0]));
  for (const auto& record : records) EXPECT_EQ(record.m_dMidDistance, 0.0);
}

TEST(TransparentTriangles, AreReadWithinTheStore) {
  const auto canvas = NewCanvas();
  GLDATA_TRANS_TRIANGLE records[3] = {};
  EXPECT_EQ(canvas->GetTransparentTriangles(0, 0, records), E_INVALIDARG) << "an empty store";
  for (double x : {1.0, 2.0}) {
    GLDATA_POINT points[3] = {{x, 0, 0}, {x, 1, 0}, {x, 0, 1}};
    canvas->AddTransparentTriangle(points, &g_asColors[0]);
  }
  const struct {
    LONG offset, count;
    HRESULT result;
    double first;  // x-coordinate of the first record; 0 if nothing is written
  } requests[] = {{0, 2, S_OK, 1},
                  {1, 1, S_OK, 2},
                  {-5, 2, S_OK, 1},
                  {0, 0, S_OK, 0},
                  {2, 0, S_OK, 0},
                  {0, -3, S_OK, 0},
                  {1, 2, E_INVALIDARG, 0},
                  {0, 3, E_INVALIDARG, 0},
                  {3, 0, E_INVALIDARG, 0},
                  {INT_MIN, 3, E_INVALIDARG, 0},
                  {INT_MAX, INT_MAX, E_INVALIDARG, 0}};
  for (const auto& [offset, count, result, first] : requests) {
    records[0] = {};
    EXPECT_EQ(canvas->GetTransparentTriangles(offset, count, records), result) << offset << ", " << count;
    EXPECT_EQ(records[0].m_sPoints[0].x, first) << offset << ", " << count;
  }
  EXPECT_EQ(canvas->GetTransparentTriangles(0, 1, nullptr), E_INVALIDARG);
  EXPECT_EQ(canvas->AddTransparentTriangle3(g_asFace, g_asColors, nullptr), E_INVALIDARG);
  EXPECT_EQ(CountOf(*canvas.Get()), 2) << "refused triangles are not stored";

  canvas->ClearTransparentTriangles();
  EXPECT_EQ(CountOf(*canvas.Get()), 0);
  canvas->AddTransparentTriangle(g_asFace, g_asColors);
  EXPECT_EQ(canvas->GetTransparentTriangles(0, 1, records), S_OK);
  EXPECT_TRUE(Same(records[0].m_sPoints[1], g_asFace[1])) << "a cleared store starts at 0";
}

TEST(TransparentTriangles, AreStoredWholeWithoutMemory) {
  for (std::size_t left = 0; left < 8; ++left) {
    const auto canvas = NewCanvas();
    LONG added = 0;
    {
      const ExhaustedHeap heap(left);
      HRESULT result = S_OK;
      while ((result = canvas->AddTransparentTriangle(g_asFace, g_asColors)) == S_OK) ++added;
      EXPECT_EQ(result, E_OUTOFMEMORY);
    }
    GLDATA_POINT other[3] = {{5, 5, 5}, {6, 5, 5}, {5, 6, 5}};
    canvas->AddTransparentTriangle(other, g_asColors);
    EXPECT_EQ(CountOf(*canvas.Get()), added + 1);
    GLDATA_TRANS_TRIANGLE last;
    EXPECT_EQ(canvas->GetTransparentTriangles(added, 1, &last), S_OK);
    EXPECT_TRUE(Same(last.m_sPoints[0], other[0]) && Same(last.m_sNormals[2], {0, 0, 1})) << left;
  }
}

}  // namespace
