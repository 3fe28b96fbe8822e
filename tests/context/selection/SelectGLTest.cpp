// Selections: results compared with plain geometry, and the order in which callers are served. Headless
// display.

#include "support/Counting.h"
#include "support/LogLines.h"
#include "support/Scene.h"

namespace {

constexpr ULONG kForever = 0xFFFFFFFF;

using Ids = std::vector<ULONG>;

/// A square in the plane z, in the units of Select.
struct Square {
  ULONG id;
  double x1, y1, x2, y2, z;
};

void Draw(IGLCanvas& aCanvas, const std::vector<Square>& aSquares) {
  for (const auto& [id, x1, y1, x2, y2, z] : aSquares) {
    if (id != 0) aCanvas.SetTestID(id);
    DrawRectangle(aCanvas, x1, y1, x2, y2, z);
  }
}

/// Draws squares in a free-running context, which serves selections at once. The eye is at the origin.
class Picking {
 public:
  Picking(
      int aWidth, int aHeight, std::vector<Square> aSquares, DrawFunction aBefore = [](Scene&) {})
      : m_Squares(std::move(aSquares)),
        m_Before(std::move(aBefore)),
        m_Drawn(
            [this](Scene& scene) {
              m_Before(scene);
              const std::scoped_lock lock(m_Lock);
              Draw(scene.Canvas(), m_Squares);
            },
            aWidth, aHeight) {
    GLDATA_POINT low{-1, -1, -10}, high{1, 1, 10};
    Viewer().SetOrthoExtents(&low, &high);
    EyeOf(Viewer())->SetOrigin3d(0, 0, 0);
  }
  ~Picking() { m_Drawn.context->DetachPainter(); }

  IGLContext& Context() const { return *m_Drawn.context; }
  IGLViewer& Viewer() const { return *m_Drawn.viewer; }
  Ids At(GLDATA_POINT aFirst, GLDATA_POINT aSecond, PickOptions aOptions = {}) const {
    return Pick(Context(), Viewer(), aFirst, aSecond, aOptions).ids;
  }
  void Show(std::vector<Square> aSquares) {
    const std::scoped_lock lock(m_Lock);
    m_Squares = std::move(aSquares);
  }

 private:
  std::mutex m_Lock;
  std::vector<Square> m_Squares;
  const DrawFunction m_Before;
  const FreeContext m_Drawn;
};

}  // namespace

TEST(Select, FindsIdentifiersInDrawingOrder) {
  const Picking picking(
      100, 100, {{7, -0.5, -0.5, 0.5, 0.5, -5}, {9, -0.2, -0.2, 0.2, 0.2, 5}, {4, 0.6, 0.6, 0.9, 0.9, 0}});
  EXPECT_EQ(picking.At({0, 0, 0}, {0, 0, 0}), (Ids{7, 9}));
  EXPECT_EQ(picking.At({0, 0, 0}, {0, 0, 0}, {.closest = true}), (Ids{9})) << "the nearest";
  EXPECT_EQ(picking.At({0.75, 0.75, 0}, {0.75, 0.75, 0}), (Ids{4}));
  EXPECT_EQ(picking.At({-0.9, 0.9, 0}, {-0.9, 0.9, 0}), (Ids{}));
  EXPECT_EQ(picking.At({-1, -1, 0}, {1, 1, 0}), (Ids{7, 9, 4}));
  EXPECT_EQ(picking.At({1, 1, 0}, {-1, -1, 0}), (Ids{7, 9, 4})) << "corners in reversed order";
  EXPECT_EQ(picking.At({0.55, -0.5, 0}, {0.55, 0.5, 0}), (Ids{})) << "a box without width is one pixel wide";
  EXPECT_EQ(picking.At({0.495, -0.5, 0}, {0.495, 0.5, 0}), (Ids{7}));
}

TEST(Select, CountsRecordsAndSkipsIdentifierZero) {
  const LogLines log(LogLevel::kWarning);
  const Picking none(64, 64, {{0, -1, -1, 1, 1, 0}});
  EXPECT_EQ(none.At({0, 0, 0}, {0, 0, 0}), (Ids{}));
  const Picking four(
      64, 64, {{1, -1, -1, 1, 1, 0}, {2, -1, -1, 1, 1, 0}, {3, -1, -1, 1, 1, 0}, {2, -1, -1, 1, 1, 0}});
  EXPECT_EQ(four.At({0, 0, 0}, {0, 0, 0}), (Ids{1, 2, 3, 2}));
  EXPECT_EQ(four.At({0, 0, 0}, {0, 0, 0}, {.capacity = 3}), (Ids{})) << "an overflow returns no partial list";
  EXPECT_EQ(log.Count("a selection found more identifiers than the host's array holds, 3", "warning"), 1);
  EXPECT_EQ(four.At({0, 0, 0}, {0, 0, 0}, {.closest = true, .capacity = 1}), (Ids{}));
  EXPECT_EQ(four.At({0, 0, 0}, {0, 0, 0}, {.closest = true}), (Ids{1})) << "the first drawn of equal depths";
  EXPECT_EQ(Pick(four.Context(), four.Viewer(), {0, 0, 0}, {0, 0, 0}, {.capacity = 0}).result, S_OK);
}

TEST(Select, TakesTheInnermostOfNestedNames) {
  const FreeContext drawn([](Scene& scene) {
    scene.Canvas().SetTestID(3);
    glPushName(5);
    DrawRectangle(scene.Canvas(), -40, -40, 40, 40, 0);
    glPopName();
    glPopName();
    DrawRectangle(scene.Canvas(), -40, -40, 40, 40, -1);  // has no name
    glPushName(0);
    scene.Canvas().SetTestID(9);
    DrawRectangle(scene.Canvas(), -40, -40, 40, 40, -2);
  });
  EXPECT_EQ(Pick(*drawn.context, *drawn.viewer, {}, {}).ids, (Ids{5, 9}));
  EXPECT_EQ(Pick(*drawn.context, *drawn.viewer, {}, {}, {.closest = true}).ids, (Ids{5}));
}

TEST(Select, KeepsOnlyEnclosedIdentifiers) {
  // 2 crosses the left edge, 5 the top edge.
  const Picking picking(200, 200,
                        {{1, -0.4, -0.4, -0.3, -0.3, 0},
                         {2, -0.7, 0.0, -0.4, 0.1, 0},
                         {3, 0.1, 0.1, 0.2, 0.2, 0},
                         {4, 0.3, 0.3, 0.4, 0.4, 0},
                         {5, 0.0, 0.4, 0.1, 0.9, 0}});
  const GLDATA_POINT low{-0.5, -0.5, 0}, high{0.5, 0.5, 0};
  EXPECT_EQ(picking.At(low, high), (Ids{1, 2, 3, 4, 5}));
  EXPECT_EQ(picking.At(low, high, {.enclosed = true}), (Ids{1, 4, 3}))
      << "the last one replaces a removed one";
  EXPECT_EQ(picking.At(high, low, {.enclosed = true}), (Ids{1, 4, 3}));
  EXPECT_EQ(picking.At(low, high, {.closest = true, .enclosed = true}), (Ids{1})) << "the nearest of the box";
}

TEST(Select, UsesTheClipRectangle) {
  for (const LONG scaled : {1, 0}) {
    SCOPED_TRACE(scaled);
    const Picking picking(200, 100, {{1, -0.1, -0.1, 0.1, 0.1, 0}, {2, 0.8, -0.1, 1.0, 0.1, 0}});
    picking.Viewer().Clip(1);
    picking.Viewer().SetClipRectangle(100, 0, 100, 100);
    picking.Viewer().ScaleClip(scaled);
    // With scaling the world's origin is in the middle of the rectangle. Without it the origin is in the
    // middle of the window, and the rectangle's square aspect is stretched.
    const double middle = scaled != 0 ? 0.0 : -1.0, right = scaled != 0 ? 0.9 : 0.8;
    EXPECT_EQ(picking.At({middle + 0.01, 0, 0}, {middle + 0.01, 0, 0}), (Ids{1}));
    EXPECT_EQ(picking.At({right, 0, 0}, {right, 0, 0}), (Ids{2}));
    EXPECT_EQ(picking.At({0.5, 0, 0}, {0.5, 0, 0}), (Ids{}));
  }
}

TEST(Select, IsRefusedWithoutAThreadToServeIt) {
  const LogLines log(LogLevel::kDebug);
  const Picking picking(32, 32, {{1, -1, -1, 1, 1, 0}}), other(32, 32, {});
  GLDATA_POINT point{};
  IGLContext& context = picking.Context();
  const auto refuses = [&](IGLContext& from, IGLViewer& viewer, HRESULT result) {
    const Selection got = Pick(from, viewer, point, point);
    EXPECT_EQ(got.result, result);
    EXPECT_TRUE(got.ids.empty());
  };
  refuses(context, other.Viewer(), E_INVALIDARG);
  const auto unborn = GLCreate<IGLContext>(CLSID_GLContext);
  IGLViewer* viewer = nullptr;
  unborn->CreateViewer(1, 1, &viewer);
  refuses(*unborn, *viewer, E_GL_BADSTATE);
  const auto suspension = GLPtr<IGLContext>::FromBorrowed(&context).As<IGLContext12>();
  suspension->SuspendDrawThread();
  refuses(context, picking.Viewer(), E_GL_BADSTATE);
  EXPECT_EQ(log.Count("Select is refused", "debug"), 2) << log.Joined();
  suspension->ResumeDrawThread();
  EXPECT_EQ(picking.At(point, point), (Ids{1}));
}

TEST(Select, RefusesACircleOfWaitingPainters) {
  const LogLines log(LogLevel::kWarning);
  constexpr int kContexts = 3;
  std::array<std::atomic<HRESULT>, kContexts> results{S_FALSE, S_FALSE, S_FALSE};
  std::array<std::unique_ptr<FreeContext>, kContexts> sides;
  std::atomic<int> inside{0};
  std::atomic<bool> start{false};
  for (std::size_t i = 0; i < kContexts; ++i) {
    sides[i] = std::make_unique<FreeContext>([&, i, tried = false](Scene&) mutable {
      if (!start || std::exchange(tried, true)) return;
      ++inside;
      EXPECT_TRUE(Eventually([&] { return inside == kContexts; }));
      const FreeContext& next = *sides[(i + 1) % kContexts];
      results[i] = Pick(*next.context, *next.viewer, {}, {}).result;
    });
  }
  start = true;
  const auto count = [&](HRESULT result) { return std::count(results.begin(), results.end(), result); };
  ASSERT_TRUE(Eventually([&] { return count(S_FALSE) == 0; }));
  EXPECT_EQ(count(E_GL_BADSTATE), 1);
  EXPECT_EQ(count(S_OK), kContexts - 1) << "the others are served after it returns";
  EXPECT_EQ(log.Count("a wait for context ", "warning"), 1) << log.Joined();
}

// The expected results are computed from the fact that a square that faces the eye is a square in the
// picture.
TEST(Select, AgreesWithGeometry) {
  constexpr int kScenes = 1000, kSquares = 8, kSide = 200;
  constexpr double kTolerance = 0.05;  // pixels by which float arithmetic may differ from this test
  constexpr double kFovy = 50, kHalf = 10;
  std::mt19937 random(20240501);
  const auto between = [&](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  Picking picking(kSide, kSide, {});
  IGLViewer& viewer = picking.Viewer();
  GLDATA_POINT low{-kHalf, -kHalf, 1}, high{kHalf, kHalf, 100};
  viewer.SetOrthoExtents(&low, &high);
  viewer.SetEyeFovy_DEG(kFovy);
  viewer.SetEyeZNearAndFar(1.0, 100.0);
  // A selection wakes the draw thread.
  GLPtr<IGLContext>::FromBorrowed(&picking.Context()).As<IGLContext2>()->SetControlledDrawThread(1, kForever);
  int nearEdges = 0, hits = 0, enclosed = 0;
  for (int n = 0; n < kScenes; ++n) {
    const bool ortho = n % 2 == 0, point = n % 3 == 0, inside = n % 3 == 2;
    std::vector<Square> squares;
    for (ULONG id = 1; id <= kSquares; ++id) {
      const double x = between(-8, 8), y = between(-8, 8), width = between(0.2, 3), height = between(0.2, 3);
      squares.push_back({id, x - width, y - height, x + width, y + height, between(-60, -15)});
    }
    picking.Show(squares);
    viewer.SetOrtho(ortho ? 1 : 0);
    const GLDATA_POINT first{between(-1, 1), between(-1, 1), 0};
    const GLDATA_POINT second = point ? first : GLDATA_POINT{between(-1, 1), between(-1, 1), 0};
    const Selection got = Pick(picking.Context(), viewer, first, second, {.enclosed = inside});
    ASSERT_EQ(got.result, S_OK);
    // In pixels from the middle.
    const auto [left, right] = std::minmax({first.x * kSide / 2, second.x * kSide / 2});
    const auto [bottom, top] = std::minmax({first.y * kSide / 2, second.y * kSide / 2});
    const double widen = point ? 0.5 : 0.0;  // the size of a point is one pixel
    for (const auto& [id, x1, y1, x2, y2, z] : squares) {
      const double scale = kSide / 2 / (ortho ? kHalf : std::tan(kFovy * std::numbers::pi / 360) * -z);
      // Distance between box and square, and the part of the square outside the box; negative if there is
      // none.
      const double gap =
          std::max({x1 * scale - right, left - x2 * scale, y1 * scale - top, bottom - y2 * scale});
      const double outside =
          std::max({left - x1 * scale, x2 * scale - right, bottom - y1 * scale, y2 * scale - top});
      if (std::fabs(gap - widen) < kTolerance || (inside && std::fabs(outside) < kTolerance)) {
        ++nearEdges;
        continue;
      }
      const bool expected = gap < widen && (!inside || outside < 0);
      hits += expected ? 1 : 0;
      enclosed += expected && inside ? 1 : 0;
      EXPECT_EQ(std::count(got.ids.begin(), got.ids.end(), id), expected ? 1 : 0)
          << "scene " << n << ", square " << id << ", gap " << gap;
    }
  }
  EXPECT_LT(nearEdges, kScenes * kSquares / 50) << "too many cases are near an edge";
  EXPECT_GT(hits, 500);
  EXPECT_GT(enclosed, 20);
}

TEST(Select, EndsBeforeItsPainterIsDetached) {
  std::atomic<int> inside{0}, calls{0};
  std::atomic<bool> picks{false};
  ContextFixture fixture(32, 32);
  const auto painter = GLMake<TestPainter>([&](Scene&) {
    if (!picks) return;
    ++inside;
    ++calls;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    --inside;
  });
  fixture.Context().AttachPainter(painter.Get());
  picks = true;
  std::thread host([&] {
    Pick(fixture.Context(), fixture.Viewer(), {-0.9, -0.9, 0}, {0.9, 0.9, 0}, {.enclosed = true});
  });
  ASSERT_TRUE(Eventually([&] { return inside == 1; }));
  fixture.Context().DetachPainter();
  const int ended = calls;
  EXPECT_EQ(inside, 0) << "detached while it draws";
  host.join();
  EXPECT_EQ(calls, ended) << "called after it was detached";
}

TEST(Select, AllocatesNothingAfterTheFirstCalls) {
  std::size_t allocations = 0;  // of the draw thread, when the painter begins
  const Picking picking(64, 64, {{1, -0.2, -0.2, 0.2, 0.2, 0}, {2, 0.1, 0.1, 0.9, 0.9, 0}},
                        [&](Scene&) { allocations = AllocationsOfThisThread(); });
  GLPtr<IGLContext>::FromBorrowed(&picking.Context()).As<IGLContext2>()->SetControlledDrawThread(1, kForever);
  GLDATA_POINT a{-1, 0, 0}, b{-1, 1, 0}, c{-1, 0, 1};
  picking.Context().ClipPlane(&a, &b, &c);
  std::size_t warm = 0;
  for (int round = 0; round < 6; ++round) {
    for (const bool enclosed : {false, true}) {
      GLDATA_POINT low{-0.5, -0.5, 0}, high{0.5, 0.5, 0};
      ULONG ids[8] = {};
      int size = 8;
      const std::size_t before = AllocationsOfThisThread();
      picking.Context().Select(&picking.Viewer(), &low, &high, 0, enclosed ? 1 : 0, &size, ids);
      const std::size_t here = AllocationsOfThisThread() - before;
      EXPECT_EQ(size, enclosed ? 1 : 2);
      if (round > 1) {
        EXPECT_EQ(here, 0u) << "on the host's thread";
        EXPECT_EQ(allocations, warm) << "on the draw thread";
      }
      warm = allocations;
    }
  }
  EXPECT_GT(warm, 0u) << "the allocations of the draw thread are counted";
}

TEST(Select, UsesAResetOfClipPlanesBeforeAFrameDoes) {
  ContextFixture fixture(32, 32);
  IGLContext& context = fixture.Context();
  const auto painter = GLMake<TestPainter>([](Scene& scene) {
    Draw(scene.Canvas(), {{1, -9, -9, 9, 9, -10}});
  });
  context.AttachPainter(painter.Get());
  const auto found = [&] { return Pick(context, fixture.Viewer(), {}, {}).ids; };
  ASSERT_EQ(found(), Ids{1});
  GLDATA_POINT a{20, 0, 0}, b{20, 1, 0}, c{20, 0, 1};
  context.ClipPlane(&a, &b, &c);  // keeps x above 20
  std::atomic<bool> drawn{false};
  const auto seen = GLMake<TestPainter>([&](Scene& scene) {
    Draw(scene.Canvas(), {{1, -9, -9, 9, 9, -10}});
    drawn = true;
  });
  context.AttachPainter(seen.Get());
  fixture.ContextAs<IGLContext2>()->TriggerDrawThread();
  ASSERT_TRUE(Eventually([&] { return drawn.load(); }));
  ASSERT_EQ(found(), Ids{});
  fixture.Viewer().Show(0);  // so no viewer pass applies the reset
  {
    const ExhaustedHeap heap(0);  // so no task applies it
    context.ResetClipPlanes();
  }
  EXPECT_EQ(found(), Ids{1});
}
