// The event queue of PThread: order, ownership, and removal at each moment. No display.

#include "support/Test.h"
#include "thread/PThread.h"

using namespace std::chrono_literals;

namespace {

constexpr DWORD kMaximumWait = 3'600'000;  // a test that waits this long has failed

/// A worker that only a post or a trigger wakes, and a journal in order: an upper-case letter for an event
/// that ran, a lower-case letter for its deletion.
struct Events : testing::Test {
  class Event final : public PEvent {
   public:
    Event(Events& aTest, char aLetter, Lifetime aLifetime, const void* aOwner, std::function<void()> aWork)
        : PEvent(aOwner, aLifetime), m_Test(aTest), m_cLetter(aLetter), m_pfnWork(std::move(aWork)) {
      Activate();
    }
    ~Event() override { m_Test.Write(static_cast<char>(std::tolower(m_cLetter))); }
    void Run() override {
      m_Test.Write(m_cLetter);
      if (m_pfnWork) m_pfnWork();
      m_bActive = false;
    }

   private:
    Events& m_Test;
    const char m_cLetter;
    const std::function<void()> m_pfnWork;
  };

  bool Post(char aLetter, std::function<void()> aWork = {}, const void* aOwner = nullptr,
            PEvent::Lifetime aLifetime = PEvent::Lifetime::kOneRun) {
    return m_Thread.PostEvent(new Event(*this, aLetter, aLifetime, aOwner, std::move(aWork)));
  }
  void Start() {
    m_Thread.SetControlled(true, PClock::kForever);
    ASSERT_TRUE(m_Thread.Start(0, 0, 0));
  }
  void Write(char aLetter) {
    const std::lock_guard lock(m_JournalLock);
    m_Journal += aLetter;
  }
  std::string Journal() {
    const std::lock_guard lock(m_JournalLock);
    return m_Journal;
  }
  bool Becomes(const std::string& aText) {
    return Eventually([&] { return Journal() == aText; });
  }
  static void Cycle(void* aTest, unsigned) { ++static_cast<Events*>(aTest)->m_iCycles; }

  std::mutex m_JournalLock;
  std::string m_Journal;
  std::atomic<int> m_iCycles{0};
  const int m_Mine = 0, m_Other = 0;  // owners
  PThread m_Thread{&Cycle, this};
};

}  // namespace

TEST_F(Events, RunOnceInOrder) {
  EXPECT_FALSE(m_Thread.PostEvent(nullptr));
  auto* first = new Event(*this, 'A', PEvent::Lifetime::kOneRun, nullptr, {});
  EXPECT_TRUE(m_Thread.PostEvent(first));
  EXPECT_TRUE(m_Thread.PostEvent(first)) << "queued before";
  int cycleOfB = -1, cycleOfC = -1;
  Post('B', [&] {
    cycleOfB = m_iCycles;
    Post('C', [&] { cycleOfC = m_iCycles; });
  });
  Post('D', {}, &m_Mine, PEvent::Lifetime::kReusable);
  auto* asleep = new Event(*this, 'E', PEvent::Lifetime::kOneRun, nullptr, {});
  asleep->Deactivate();
  m_Thread.PostEvent(asleep);
  Start();
  EXPECT_TRUE(Becomes("AaBbDeCc")) << Journal();
  EXPECT_TRUE(Post('F')) << "wakes the waiting worker";
  EXPECT_TRUE(Becomes("AaBbDeCcFf")) << Journal();
  m_Thread.RemoveEvents(&m_Mine);
  EXPECT_EQ(Journal(), "AaBbDeCcFfd") << "a reusable event runs once, and is deleted when it is removed";
  m_Thread.Stop();
  EXPECT_EQ(cycleOfC, cycleOfB + 1);
}

TEST_F(Events, RemovalWaitsForTheRunningEvent) {
  using Lifetime = PEvent::Lifetime;
  for (const Lifetime lifetime : {Lifetime::kOneRun, Lifetime::kReusable}) {
    std::atomic<bool> running = false;
    const auto work = [&] {
      running = true;
      std::this_thread::sleep_for(30ms);
      Write('!');
    };
    const std::size_t before = Journal().size();
    Post('A', work, &m_Mine, lifetime);
    Post('B', {}, &m_Mine);
    Post('C', {}, &m_Other);
    if (lifetime == Lifetime::kOneRun) Start();
    ASSERT_TRUE(Eventually([&] { return running.load(); }));
    m_Thread.RemoveEvents(&m_Mine);
    const std::string after = Journal().substr(before);
    EXPECT_EQ(after.substr(0, 3), "A!a");
    EXPECT_NE(after.find('b'), std::string::npos);
    EXPECT_EQ(after.find('B'), std::string::npos);
    EXPECT_TRUE(Eventually([&] { return Journal().find("Cc", before) != std::string::npos; })) << Journal();
  }
  // On the worker, removal skips the running event.
  const std::string before = Journal();
  m_Thread.RequestSuspend();
  Post(
      'A', [&] { m_Thread.RemoveEvents(&m_Mine); }, &m_Mine, PEvent::Lifetime::kReusable);
  Post('B', {}, &m_Mine);
  m_Thread.Resume();
  m_Thread.Trigger();
  EXPECT_TRUE(Becomes(before + "Aba")) << Journal();
}

TEST_F(Events, StopDeletesAndRefusesEvents) {
  m_Thread.RequestSuspend();
  Start();
  ASSERT_TRUE(Eventually([&] { return m_Thread.IsParkedNow(); }));
  auto* single = new Event(*this, 'B', PEvent::Lifetime::kReusable, &m_Mine, {});
  Post('A');
  m_Thread.PostEvent(single);
  Post('C', {}, &m_Mine, PEvent::Lifetime::kReusable);
  m_Thread.RemoveEvent(single);
  EXPECT_EQ(Journal(), "b") << "a parked worker runs no event";
  m_Thread.Stop();
  EXPECT_EQ(Journal(), "bac");
  EXPECT_FALSE(Post('D'));
  EXPECT_EQ(Journal(), "bacd");
}

TEST_F(Events, RunDuringASleep) {
  ASSERT_TRUE(m_Thread.Start(kMaximumWait, kMaximumWait, 0));
  ASSERT_TRUE(Eventually([&] { return m_iCycles > 0; }));
  Post('A');
  EXPECT_TRUE(Becomes("Aa"));
  m_Thread.SetControlled(true, PClock::kForever);
  Post('B');
  EXPECT_TRUE(Becomes("AaBb"));
}

TEST_F(Events, DoNotRunAfterTheirRemoval) {
  m_Thread.SetControlled(true, 0);
  ASSERT_TRUE(m_Thread.Start(0, 0, 0));
  std::thread threads[3];
  for (auto& thread : threads) {
    thread = std::thread([&, owner = std::make_unique<int>()] {
      for (int n = 0; n < 200; ++n) {
        const auto used = std::make_shared<std::atomic<bool>>(true);
        const auto work = [used] { EXPECT_TRUE(*used); };
        Post('A', work, owner.get());
        Post('B', work, owner.get(), PEvent::Lifetime::kReusable);
        if (n % 2 != 0) std::this_thread::sleep_for(100us);
        m_Thread.RemoveEvents(owner.get());
        *used = false;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  m_Thread.Stop();
  const std::string text = Journal();
  EXPECT_EQ(std::count(text.begin(), text.end(), 'a'), 600);
  EXPECT_EQ(std::count(text.begin(), text.end(), 'b'), 600);
}
