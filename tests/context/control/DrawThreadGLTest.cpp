// The draw thread under the control of a host, and contexts that are created and destroyed. Headless display.

#include "component/Module.h"
#include "component/ModuleThreads.h"
#include "platform/Window.h"
#include "support/Scene.h"

namespace {

using namespace std::chrono_literals;

GLPtr<IGLContext> NewContext() { return GLCreate<IGLContext>(CLSID_GLContext); }

}  // namespace

TEST(Context, RefusesThreadControlWithoutAThread) {
  const auto context = NewContext();
  const auto control = context.As<IGLContext2>();
  const auto suspension = context.As<IGLContext12>();
  int priority = 7;
  ULONG preferred = 7, mustSleep = 7;
  for (const HRESULT result :
       {context->GetDrawThreadPars(&priority, &preferred, &mustSleep), context->SetDrawThreadPars(0, 40, 10),
        control->SetControlledDrawThread(1, 0), control->TriggerDrawThread(), suspension->SuspendDrawThread(),
        suspension->ResumeDrawThread()}) {
    EXPECT_EQ(result, E_GL_BADSTATE);
  }
  EXPECT_EQ(priority, 7);
}

TEST(DrawThread, LimitsItsParameters) {
  const FreeContext painted;
  using Parameters = std::tuple<int, ULONG, ULONG>;
  const auto read = [&] {
    Parameters p;
    EXPECT_EQ(painted.context->GetDrawThreadPars(&std::get<0>(p), &std::get<1>(p), &std::get<2>(p)), S_OK);
    return p;
  };
  EXPECT_EQ(read(), Parameters(2, 40, 10));
  for (const auto& [set, got] : {std::pair{Parameters{0, 1, 1}, Parameters{0, 5, 5}},
                                 {{0, 6000, 6000}, {0, 5000, 5000}},
                                 {{3, 40, 10}, {0, 40, 10}},
                                 {{-2, 50, 20}, {-2, 50, 20}}}) {
    EXPECT_EQ(painted.context->SetDrawThreadPars(std::get<0>(set), std::get<1>(set), std::get<2>(set)), S_OK);
    EXPECT_EQ(read(), got);
  }
}

TEST(DrawThread, RunsTasksWithoutAFrame) {
  std::atomic<int> draws{0};
  ContextFixture fixture(32, 32);
  IGLContext& context = fixture.Context();
  context.AttachPainter(GLMake<TestPainter>([&](Scene&) { ++draws; }).Get());
  for (int n = 1; n <= 20; ++n) {
    context.ResetClipPlanes();
    EXPECT_EQ(Pick(context, fixture.Viewer(), {}, {}).result, S_OK);  // also resets the clip planes
    EXPECT_EQ(draws, n) << "one call per selection, and no frame";
  }
  GLPtr<IGLFont> font;
  context.CreateSystemFont(font.Put());
  float width = 0;
  EXPECT_TRUE(Eventually([&] { return font->GetStringWidth(GLString("a"), &width) == S_OK; })) << "built";
  EXPECT_EQ(draws, 20);
  fixture.ContextAs<IGLContext2>()->TriggerDrawThread();
  EXPECT_TRUE(Eventually([&] { return draws == 21; }));
}

TEST(DrawThread, EndsAPauseForAPainterAndRunsTasksInIt) {
  const auto context = NewContext();
  ASSERT_EQ(context->Initialize(0), S_OK);
  context->SetDrawThreadPars(0, 5000, 5000);  // takes effect after the next cycle
  IGLViewer* viewer = nullptr;
  context->CreateViewer(1, 1, &viewer);
  std::atomic<int> draws{0};
  const auto attach = [&] { context->AttachPainter(GLMake<TestPainter>([&](Scene&) { ++draws; }).Get()); };
  attach();
  EXPECT_TRUE(Eventually([&] { return draws > 0; }));
  std::this_thread::sleep_for(100ms);  // the following steps fall into a pause of 5 s
  const int before = draws;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Pick(*context, *viewer, {}, {}).result, S_OK);
  EXPECT_EQ(draws, before + 1) << "only the selection drew";
  attach();
  EXPECT_TRUE(Eventually([&] { return draws > before + 1; }));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 4s);
}

TEST(Context, ReplacesWindowAndThreadAtASecondInitialize) {
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
  painted.Await(1);  // viewers and painter are still attached
}

// The window procedure and the replacement of its window need the same locks, and each waits for the other.
TEST(Context, CanBeInitialisedAgainDuringMessages) {
  const FreeContext drawn;
  {
    const std::jthread messages([&](const std::stop_token& stop) {
      while (!stop.stop_requested()) {
        ULONG_PTR window = 0;
        drawn.context->GetWindow(&window);
        for (const UINT message : {WM_QUERYNEWPALETTE, WM_SYSCOLORCHANGE, WM_PALETTECHANGED})
          PostMessageA(reinterpret_cast<HWND>(window), message, 0, 0);
        std::this_thread::sleep_for(1ms);
      }
    });
    for (int i = 0; i < 20; ++i) EXPECT_EQ(drawn.context->Initialize(0), S_OK) << i;
  }
  drawn.Await(1);
}

TEST(Context, DropsADestroyedDefaultFont) {
  const auto context = NewContext();
  GLPtr<IGLFont> font, found;
  ASSERT_EQ(context->CreateSystemFont(font.Put()), S_OK);
  EXPECT_EQ(context->SetDefaultFont(font.Get()), S_OK);
  EXPECT_EQ(context->GetDefaultFont(found.Put()), S_OK);
  EXPECT_EQ(found, font);
  context->DestroyFont(font.Get());
  EXPECT_EQ(context->GetDefaultFont(found.Put()), S_OK);
  EXPECT_FALSE(found);
  EXPECT_EQ(context->SetDefaultFont(font.Get()), E_FAIL) << "the font has left the context";
}

TEST(Context, CanBeReleasedByThePainterOfAnother) {
  const LONG locks = g_iModuleLocks;
  {
    FreeContext one, other;
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
    EXPECT_TRUE(Eventually([&] { return inside == 2 && g_iModuleLocks <= locks; })) << "both ended";
  }
  JoinEndedModuleThreads();  // otherwise the thread sanitizer reports them as leaks
}

TEST(Context, ReleasesClientsWithoutLocks) {
  // The destructor of the painter or capture suspends the draw thread, which needs the context's lock before
  // it can park. It runs on this thread, or later on the draw thread if that still holds the client.
  using Length = std::chrono::steady_clock::duration;
  struct Ending {
    IGLContext* m_pContext;
    std::atomic<Length>* m_pLength;
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
    std::atomic<Length> length = Length::max();
    const Ending ending{&context, &length};
    if (i < 2) {
      context.AttachPainter(GLPtr<EndingPainter>::FromCounted(new EndingPainter(ending)).Get());
    } else {
      context.AttachCapture(GLPtr<EndingCapture>::FromCounted(new EndingCapture(ending)).Get());
    }
    ends[i]();
    EXPECT_TRUE(Eventually([&] { return length.load() != Length::max(); }));
    EXPECT_LT(length.load(), 2s) << "the draw thread did not park";
  }
}

TEST(Context, ReleasesAPainterThatDetachesItselfWithoutLocks) {
  struct Ending final : GLPainterBase {
    explicit Ending(std::atomic<int>& aLockFree) : m_LockFree(aLockFree) {}
    // Meanwhile another thread of the host needs the context's lock.
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
