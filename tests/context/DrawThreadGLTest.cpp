// The draw thread as a host steers it, and the ways in which contexts come and go.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <initializer_list>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "component/Module.h"
#include "context/window/ContextList.h"
#include "platform/Window.h"
#include "support/Eventually.h"
#include "support/Scene.h"

namespace {

using namespace std::chrono_literals;

constexpr ULONG kForever = 0xFFFFFFFF;

GLPtr<IGLContext> NewContext() { return GLCreate<IGLContext>(CLSID_GLContext); }

}  // namespace

TEST(Context, WantsItsDrawThreadForWhatSteersIt) {
  const auto context = NewContext();
  int priority = 7;
  ULONG preferred = 7, mustSleep = 7;
  EXPECT_EQ(context->GetDrawThreadPars(&priority, &preferred, &mustSleep), E_GL_BADSTATE);
  EXPECT_EQ(priority, 7);
  EXPECT_EQ(context->SetDrawThreadPars(0, 40, 10), E_GL_BADSTATE);
  const auto control = context.As<IGLContext2>();
  EXPECT_EQ(control->SetControlledDrawThread(1, 0), E_GL_BADSTATE);
  EXPECT_EQ(control->TriggerDrawThread(), E_GL_BADSTATE);
  const auto suspension = context.As<IGLContext12>();
  EXPECT_EQ(suspension->SuspendDrawThread(), E_GL_BADSTATE);
  EXPECT_EQ(suspension->ResumeDrawThread(), E_GL_BADSTATE);
}

TEST(DrawThread, LimitsItsParameters) {
  const FreeContext painted;
  struct {
    int priority;
    ULONG preferred, mustSleep;
    int gotPriority;
    ULONG gotPreferred, gotMustSleep;
  } const cases[] = {
      {0, 1, 1, 0, 5, 5}, {0, 6000, 6000, 0, 5000, 5000}, {3, 40, 10, 0, 40, 10}, {-2, 50, 20, -2, 50, 20}};
  int priority = 0;
  ULONG preferred = 0, mustSleep = 0;
  EXPECT_EQ(painted.context->GetDrawThreadPars(&priority, &preferred, &mustSleep), S_OK);
  EXPECT_EQ(priority, 2);
  EXPECT_EQ(preferred, 40u);
  EXPECT_EQ(mustSleep, 10u);
  for (const auto& c : cases) {
    EXPECT_EQ(painted.context->SetDrawThreadPars(c.priority, c.preferred, c.mustSleep), S_OK);
    painted.context->GetDrawThreadPars(&priority, &preferred, &mustSleep);
    EXPECT_EQ(priority, c.gotPriority);
    EXPECT_EQ(preferred, c.gotPreferred);
    EXPECT_EQ(mustSleep, c.gotMustSleep);
  }
}

TEST(DrawThread, DrawsOnRequestAloneWhenControlled) {
  const FreeContext painted;
  const auto control = painted.context.As<IGLContext2>();
  control->SetControlledDrawThread(1, kForever);
  std::this_thread::sleep_for(150ms);  // what was under way has ended
  const int before = *painted.frames;
  std::this_thread::sleep_for(150ms);
  EXPECT_EQ(*painted.frames, before) << "no frame without a trigger";
  control->TriggerDrawThread();
  EXPECT_TRUE(Eventually([&] { return *painted.frames == before + 1; }));
}

TEST(DrawThread, DrawsNoFrameForTasksAlone) {
  std::atomic<int> draws{0};
  ContextFixture fixture(32, 32);
  IGLContext& context = fixture.Context();
  context.AttachPainter(GLMake<TestPainter>([&](Scene&) { ++draws; }).Get());
  GLDATA_POINT point{};
  int size = 1;
  ULONG id = 0;
  const auto select = [&] {
    EXPECT_EQ(context.Select(&fixture.Viewer(), &point, &point, 0, 0, &size, &id), S_OK);
  };
  for (int n = 1; n <= 20; ++n) {
    context.ResetClipPlanes();
    size = 1;
    select();  // serves the reset too
    EXPECT_EQ(draws, n) << "one call per selection, and none by a frame";
  }
  GLPtr<IGLFont> font;
  context.CreateSystemFont(font.Put());
  float width = 0;
  EXPECT_TRUE(Eventually([&] { return font->GetStringWidth(GLString("a"), &width) == S_OK; })) << "built";
  EXPECT_EQ(draws, 20);
  fixture.ContextAs<IGLContext2>()->TriggerDrawThread();
  EXPECT_TRUE(Eventually([&] { return draws == 21; }));
}

TEST(DrawThread, EndsItsPauseForAPainterAndServesTasksWithinIt) {
  const auto context = NewContext();
  ASSERT_EQ(context->Initialize(0), S_OK);
  context->SetDrawThreadPars(0, 5000, 5000);  // from the cycle after the next on
  IGLViewer* viewer = nullptr;
  context->CreateViewer(1, 1, &viewer);
  std::atomic<int> draws{0};
  const auto attach = [&] { context->AttachPainter(GLMake<TestPainter>([&](Scene&) { ++draws; }).Get()); };
  attach();
  EXPECT_TRUE(Eventually([&] { return draws > 0; }));
  std::this_thread::sleep_for(100ms);  // what follows falls into a pause of 5 s
  const int before = draws;
  const auto start = std::chrono::steady_clock::now();
  GLDATA_POINT point{};
  int size = 1;
  ULONG id = 0;
  EXPECT_EQ(context->Select(viewer, &point, &point, 0, 0, &size, &id), S_OK);
  EXPECT_EQ(draws, before + 1) << "the selection alone";
  attach();
  EXPECT_TRUE(Eventually([&] { return draws > before + 1; }));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 4s);
  context->SetDrawThreadPars(0, 5, 5);
  attach();  // the end of the context would wait for the pause
}

TEST(DrawThread, StandsStillFromSuspensionToResumption) {
  const FreeContext painted;
  ASSERT_TRUE(Eventually([&] { return *painted.frames > 0; }));
  const auto suspension = painted.context.As<IGLContext12>();
  suspension->SuspendDrawThread();
  suspension->SuspendDrawThread();
  const int parked = *painted.frames;
  std::this_thread::sleep_for(150ms);
  EXPECT_EQ(*painted.frames, parked);
  suspension->ResumeDrawThread();
  EXPECT_TRUE(Eventually([&] { return *painted.frames > parked; })) << "suspensions aren't counted";
}

TEST(Context, ReplacesWindowAndThreadAtAFurtherInitialize) {
  const FreeContext painted;
  painted.context->SetDrawThreadPars(0, 100, 50);
  ULONG_PTR first = 0, second = 0;
  painted.context->GetWindow(&first);
  const ULONG generation = g_uListGeneration;
  EXPECT_EQ(painted.context->Initialize(0), S_OK);
  painted.context->GetWindow(&second);
  EXPECT_NE(first, second);
  EXPECT_NE(g_uListGeneration, generation) << "no key may name a list of the new rendering context";
  int priority = 0;
  ULONG preferred = 0, mustSleep = 0;
  painted.context->GetDrawThreadPars(&priority, &preferred, &mustSleep);
  EXPECT_EQ(preferred, 40u);
  const int before = *painted.frames;
  EXPECT_TRUE(Eventually([&] { return *painted.frames > before; })) << "viewers and painter stay";
}

// The procedure and the replacement of its window want the same locks, and each waits for the other's end.
TEST(Context, IsInitialisedAnewWhileItsWindowGetsMessages) {
  const FreeContext drawn;
  std::atomic<bool> done{false};
  std::thread messages([&] {
    while (!done) {
      ULONG_PTR window = 0;
      drawn.context->GetWindow(&window);
      for (const UINT message : {WM_QUERYNEWPALETTE, WM_SYSCOLORCHANGE, WM_PALETTECHANGED})
        PostMessageA(reinterpret_cast<HWND>(window), message, 0, 0);
      std::this_thread::sleep_for(1ms);
    }
  });
  for (int i = 0; i < 20; ++i) EXPECT_EQ(drawn.context->Initialize(0), S_OK) << i;
  done = true;
  messages.join();
  const int before = *drawn.frames;
  EXPECT_TRUE(Eventually([&] { return *drawn.frames > before; }));
}

TEST(Context, ExchangesNoPainterDuringAFrame) {
  std::atomic<bool> inside{false};
  const FreeContext slow([&](Scene&) {
    inside = true;
    std::this_thread::sleep_for(50ms);
    inside = false;
  });
  ASSERT_TRUE(Eventually([&] { return inside.load(); }));
  slow.context->AttachPainter(GLMake<TestPainter>([](Scene&) {}).Get());
  EXPECT_FALSE(inside);
}

TEST(Context, ForgetsADefaultFontThatIsDestroyed) {
  const auto context = NewContext();
  GLPtr<IGLFont> font, found;
  ASSERT_EQ(context->CreateSystemFont(font.Put()), S_OK);
  EXPECT_EQ(context->SetDefaultFont(font.Get()), S_OK);
  EXPECT_EQ(context->GetDefaultFont(found.Put()), S_OK);
  EXPECT_EQ(found, font);
  context->DestroyFont(font.Get());
  EXPECT_EQ(context->GetDefaultFont(found.Put()), S_OK);
  EXPECT_FALSE(found);
  EXPECT_EQ(context->SetDefaultFont(font.Get()), E_FAIL) << "it isn't the context's any more";
}

TEST(Context, EndsWhileItsPainterDrawsAndByItsPainter) {
  std::atomic<bool> inside{false};
  {
    FreeContext slow([&](Scene&) {
      inside = true;
      std::this_thread::sleep_for(200ms);
    });
    ASSERT_TRUE(Eventually([&] { return inside.load(); }));
  }  // the last reference goes in the middle of a frame
  const LONG locks = g_iModuleLocks;
  {
    std::atomic<bool> released{false};
    FreeContext own;
    IGLContext* const last = own.context.Detach();
    const auto painter = GLMake<TestPainter>([&](Scene& scene) {
      if (!released.exchange(true)) scene.Context().Release();
    });
    last->AttachPainter(painter.Get());
    EXPECT_TRUE(Eventually([&] { return released && g_iModuleLocks <= locks; })) << "the context has gone";
  }
  {
    FreeContext one, other;  // each ends by the other's painter, while both draw
    std::atomic<int> inside{0};
    for (auto [here, last] : {std::pair(&one, other.context.Get()), std::pair(&other, one.context.Get())}) {
      const auto painter = GLMake<TestPainter>([&inside, last = last, released = false](Scene&) mutable {
        if (std::exchange(released, true)) return;
        ++inside;
        EXPECT_TRUE(Eventually([&] { return inside == 2; }));
        last->Release();
      });
      here->context->AttachPainter(painter.Get());
    }
    one.context.Detach();
    other.context.Detach();
    EXPECT_TRUE(Eventually([&] { return inside == 2 && g_iModuleLocks <= locks; })) << "both have gone";
  }
}

TEST(Context, AnswersItsPainterInEveryOperation) {
  std::atomic<bool> done{false};
  FreeContext painted([&](Scene& scene) {
    if (done) return;
    IGLContext& context = scene.Context();
    const auto control = GLPtr<IGLContext>::FromBorrowed(&context).As<IGLContext2>();
    EXPECT_EQ(context.Initialize(0), E_GL_BADSTATE);
    context.SetViewport(0, 0, 40, 40);
    context.SetDrawThreadPars(0, 20, 5);
    control->SetControlledDrawThread(0, 0);
    control->TriggerDrawThread();
    IGLViewer* viewer = nullptr;
    EXPECT_EQ(context.CreateViewer(1, 0, &viewer), S_OK);
    context.DestroyViewer(viewer);
    GLDATA_POINT a{0, 0, 0}, b{1, 0, 0}, c{0, 1, 0};
    EXPECT_EQ(context.ClipPlane(&a, &b, &c), S_OK);
    EXPECT_EQ(context.ClipPlane(&a, &b, &b), E_GL_BADVALUE);
    context.ResetClipPlanes();
    IGLFont* font = nullptr;
    EXPECT_EQ(context.CreateSystemFont(&font), S_OK);
    context.DestroyFont(font);
    if (font != nullptr) font->Release();
    int size = 4;
    ULONG ids[4] = {};
    EXPECT_EQ(context.Select(&scene.Viewer(), &a, &b, 0, 0, &size, ids), E_GL_BADSTATE);
    EXPECT_EQ(size, 0);
    context.DetachPainter();
    done = true;
  });
  EXPECT_TRUE(Eventually([&] { return done.load(); }));
}

TEST(Context, ServesSixThreadsWhileItsWorkerNeverPauses) {
  const FreeContext painted;
  painted.context.As<IGLContext2>()->SetControlledDrawThread(1, 0);
  std::vector<std::thread> callers;
  std::atomic<int> rounds{0};
  for (int i = 0; i < 6; ++i) {
    callers.emplace_back([&] {
      for (int round = 0; round < 20; ++round, ++rounds) {
        painted.context->SetViewport(0, 0, 32 + round, 32);
        painted.context->SetDrawThreadPars(0, 5 + static_cast<ULONG>(round), 5);
        painted.context.As<IGLContext12>()->ResumeDrawThread();
        GLDATA_POINT a{0, 0, 0}, b{1, 0, 0}, c{0, 1, 0};
        painted.context->ClipPlane(&a, &b, &c);
        painted.context->ResetClipPlanes();
        IGLViewer* viewer = nullptr;
        painted.context->CreateViewer(0, 1, &viewer);
        painted.context->DestroyViewer(viewer);
      }
    });
  }
  for (std::thread& caller : callers) caller.join();
  EXPECT_EQ(rounds, 120);
}

TEST(DrawThread, IsSteeredByAPainterOfAnotherContextAtOnce) {
  const FreeContext steered([](Scene&) { std::this_thread::sleep_for(20ms); });
  steered.context.As<IGLContext2>()->SetControlledDrawThread(1, 0);  // without a pause
  ASSERT_TRUE(Eventually([&] { return *steered.frames > 0; }));
  std::atomic<bool> done{false};
  std::chrono::steady_clock::duration longest{};
  const FreeContext steering([&](Scene&) {
    if (done) return;
    const auto suspension = steered.context.As<IGLContext12>();
    for (const auto& call : std::initializer_list<std::function<HRESULT()>>{
             [&] { return steered.context->SetDrawThreadPars(0, 20, 5); },
             [&] { return suspension->SuspendDrawThread(); },
             [&] { return suspension->ResumeDrawThread(); }}) {
      const auto start = std::chrono::steady_clock::now();
      EXPECT_EQ(call(), S_OK);
      longest = std::max(longest, std::chrono::steady_clock::now() - start);
    }
    done = true;
  });
  ASSERT_TRUE(Eventually([&] { return done.load(); }));
  EXPECT_LT(longest, 1s);
  const int before = *steered.frames;
  EXPECT_TRUE(Eventually([&] { return *steered.frames > before; }));
}

TEST(Context, ReleasesClientsWithNoLockHeld) {
  // The painter's or capture's end suspends the draw thread, which needs the context's lock to come to a
  // park.
  struct Ending {
    IGLContext* m_pContext;
    std::chrono::steady_clock::duration* m_pLength;
    ~Ending() {
      const auto start = std::chrono::steady_clock::now();
      const auto suspension = GLPtr<IGLContext>::FromBorrowed(m_pContext).As<IGLContext12>();
      suspension->SuspendDrawThread();
      *m_pLength = std::chrono::steady_clock::now() - start;
      suspension->ResumeDrawThread();
    }
  };
  struct EndingPainter final : TestPainter {
    explicit EndingPainter(const Ending& aEnding) : TestPainter([](Scene&) {}), m_Ending(aEnding) {}
    Ending m_Ending;
  };
  struct EndingCapture final : TestCapture {
    explicit EndingCapture(const Ending& aEnding) : m_Ending(aEnding) {}
    Ending m_Ending;
  };
  const FreeContext drawn;
  drawn.context.As<IGLContext2>()->SetControlledDrawThread(1, 0);
  IGLContext& context = *drawn.context;
  const std::function<void()> ends[] = {
      [&] { context.DetachPainter(); },
      [&] { context.AttachPainter(GLMake<TestPainter>([](Scene&) {}).Get()); },
      [&] { context.DetachCapture(); }, [&] { context.AttachCapture(GLMake<TestCapture>().Get()); }};
  for (std::size_t i = 0; i < std::size(ends); ++i) {
    SCOPED_TRACE(i);
    std::chrono::steady_clock::duration length = 10s;
    const Ending ending{&context, &length};
    if (i < 2) {
      context.AttachPainter(GLPtr<EndingPainter>::FromCounted(new EndingPainter(ending)).Get());
    } else {
      context.AttachCapture(GLPtr<EndingCapture>::FromCounted(new EndingCapture(ending)).Get());
    }
    ends[i]();
    EXPECT_LT(length, 2s) << "the draw thread doesn't park";
  }
}

TEST(Context, EndsAPainterThatDetachesItselfWithNoLockHeld) {
  struct Ending final : GLPainterBase {
    explicit Ending(std::atomic<int>& aLockFree) : m_LockFree(aLockFree) {}
    // Another thread of the host wants the context's lock meanwhile.
    ~Ending() {
      auto set = std::make_shared<std::promise<void>>();
      auto done = set->get_future();
      std::thread([context = m_pContext, set] {
        context->SetViewport(0, 0, 9, 9);
        set->set_value();
      }).detach();
      m_LockFree = done.wait_for(5s) == std::future_status::ready ? 1 : 0;
    }
    HRESULT Draw(IGLCanvas*, IGLContext* aContext, IGLViewer*) noexcept override {
      m_pContext = GLPtr<IGLContext>::FromBorrowed(aContext);
      return aContext->DetachPainter();
    }
    std::atomic<int>& m_LockFree;
    GLPtr<IGLContext> m_pContext;
  };
  const FreeContext drawn;
  std::atomic<int> lockFree{-1};
  drawn.context->AttachPainter(GLPtr<Ending>::FromCounted(new Ending(lockFree)).Get());
  ASSERT_TRUE(Eventually([&] { return lockFree >= 0; }));
  EXPECT_EQ(lockFree, 1);
}

TEST(Context, IsInitialisedByAPainterThatItsOwnPainterInitialises) {
  std::array<std::atomic<HRESULT>, 2> results{S_FALSE, S_FALSE};
  std::atomic<bool> start{false};
  std::atomic<int> inside{0};
  std::array<std::unique_ptr<FreeContext>, 2> sides;
  for (std::size_t i = 0; i < 2; ++i) {
    sides[i] = std::make_unique<FreeContext>([&, i, tried = false](Scene&) mutable {
      if (!start || std::exchange(tried, true)) return;
      ++inside;
      EXPECT_TRUE(Eventually([&] { return inside == 2; }));
      results[i] = sides[1 - i]->context->Initialize(0);
    });
  }
  start = true;
  ASSERT_TRUE(Eventually([&] { return results[0] != S_FALSE && results[1] != S_FALSE; }));
  for (const HRESULT result : results) EXPECT_TRUE(result == S_OK || result == E_GL_BADSTATE) << result;
}

TEST(Context, TakesTheMessageHookAlongWhenTwoEndAtOnce) {
  int left = 0;
  for (int round = 0; round < 1000; ++round) {
    std::array<GLPtr<IGLContext>, 2> contexts{NewContext(), NewContext()};
    InstallMessageHook();
    std::atomic<int> ready{0};
    const auto end = [&](std::size_t i) {
      ++ready;
      while (ready < 2) {
      }
      contexts[i].Reset();
    };
    std::thread other([&] { end(1); });
    end(0);
    other.join();
    const HHOOK own = SetWindowsHookExA(
        WH_CALLWNDPROCRET, [](int, WPARAM, LPARAM) noexcept -> LRESULT { return 0; }, nullptr, 0);
    left += own == nullptr ? 1 : 0;
    if (own != nullptr) UnhookWindowsHookEx(own);
  }
  EXPECT_EQ(left, 0) << "the component's hook is in the way";
}
