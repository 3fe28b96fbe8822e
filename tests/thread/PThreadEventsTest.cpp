// The event queue of a worker: order, who deletes what, removal at any moment.

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "thread/PThread.h"

using namespace std::chrono_literals;

namespace {

constexpr DWORD kLong = 3'600'000;

template <class Condition>
bool Eventually(Condition aHolds) {
  for (int i = 0; i < 10'000; ++i) {
    if (aHolds()) return true;
    std::this_thread::sleep_for(1ms);
  }
  return false;
}

/// What happened, in order: a capital where an event ran, a small letter where it was deleted.
class Journal {
 public:
  void Write(char aLetter) {
    const std::lock_guard lock(m_Lock);
    m_Text += aLetter;
  }
  std::string Text() {
    const std::lock_guard lock(m_Lock);
    return m_Text;
  }
  bool Becomes(const std::string& aText) {
    return Eventually([&] { return Text() == aText; });
  }

 private:
  std::mutex m_Lock;
  std::string m_Text;
};

struct Events : testing::Test {
  class Event final : public PEvent {
   public:
    Event(Journal& aJournal, char aLetter, const void* aOwner, bool aActive, bool aKeep,
          std::function<void()> aWork = {})
        : PEvent(aOwner, aActive, aKeep),
          m_Journal(aJournal),
          m_cLetter(aLetter),
          m_pfnWork(std::move(aWork)) {}
    ~Event() override { m_Journal.Write(static_cast<char>(m_cLetter - 'A' + 'a')); }
    void Run() override {
      m_Journal.Write(m_cLetter);
      if (m_pfnWork) m_pfnWork();
      m_bActive = false;
    }

   private:
    Journal& m_Journal;
    const char m_cLetter;
    const std::function<void()> m_pfnWork;
  };

  PEvent* Once(char aLetter, std::function<void()> aWork = {}, const void* aOwner = nullptr) {
    return new Event(m_Journal, aLetter, aOwner, true, false, std::move(aWork));
  }
  PEvent* Kept(char aLetter, std::function<void()> aWork = {}, const void* aOwner = nullptr) {
    return new Event(m_Journal, aLetter, aOwner, true, true, std::move(aWork));
  }
  /// Starts the worker: controlled, so that nothing but a post or a trigger makes a further cycle.
  void Start() {
    m_Thread.SetControlled(true, kLong);
    ASSERT_TRUE(m_Thread.Start(kLong, kLong, 0, false));
  }
  static void Cycle(void* aTest) { ++static_cast<Events*>(aTest)->m_iCycles; }
  bool OneMoreCycle() {
    const int before = m_iCycles;
    m_Thread.Trigger();
    return Eventually([&] { return m_iCycles > before; });
  }

  Journal m_Journal;
  std::atomic<int> m_iCycles{0};
  int m_Mine = 0, m_Other = 0;  // owners
  PThread m_Thread{&Cycle, this};
};

}  // namespace

TEST_F(Events, RunInTheOrderOfPostingAndAreDeletedAfterwards) {
  EXPECT_FALSE(m_Thread.PostEvent(nullptr));
  PEvent* first = Once('A');
  EXPECT_TRUE(m_Thread.PostEvent(first));
  EXPECT_TRUE(m_Thread.PostEvent(first)) << "already queued";
  for (char c = 'B'; c <= 'L'; ++c) EXPECT_TRUE(m_Thread.PostEvent(Once(c)));
  EXPECT_TRUE(m_Thread.PostEvent(new Event(m_Journal, 'M', nullptr, false, false)));
  Start();
  EXPECT_TRUE(m_Journal.Becomes("AaBbCcDdEeFfGgHhIiJjKkLlm")) << m_Journal.Text();
  EXPECT_TRUE(m_Thread.PostEvent(Once('N'))) << "wakes the waiting worker";
  EXPECT_TRUE(m_Journal.Becomes("AaBbCcDdEeFfGgHhIiJjKkLlmNn")) << m_Journal.Text();
}

TEST_F(Events, OneThatIsPostedByAnotherRunsInTheNextCycle) {
  int cycleOfA = -1, cycleOfB = -1;
  m_Thread.PostEvent(Once('A', [&] {
    cycleOfA = m_iCycles;
    m_Thread.PostEvent(Once('B', [&] { cycleOfB = m_iCycles; }));
  }));
  Start();
  EXPECT_TRUE(m_Journal.Becomes("AaBb")) << m_Journal.Text();
  m_Thread.Stop();
  EXPECT_EQ(cycleOfB, cycleOfA + 1);
}

TEST_F(Events, AKeptOneRunsOnceAndStaysUntilItIsRemoved) {
  m_Thread.PostEvent(Kept('A', {}, &m_Mine));
  Start();
  EXPECT_TRUE(m_Journal.Becomes("A"));
  EXPECT_TRUE(OneMoreCycle());
  EXPECT_TRUE(OneMoreCycle());
  EXPECT_EQ(m_Journal.Text(), "A");
  m_Thread.RemoveEvents(&m_Other);
  EXPECT_EQ(m_Journal.Text(), "A");
  m_Thread.RemoveEvents(&m_Mine);
  EXPECT_EQ(m_Journal.Text(), "Aa");
}

TEST_F(Events, RemovalTakesAllOfAnOwnerUnrun) {
  PEvent* single = Kept('D', {}, &m_Other);
  m_Thread.PostEvent(Once('A', {}, &m_Mine));
  m_Thread.PostEvent(Once('B', {}, &m_Other));
  m_Thread.PostEvent(Kept('C', {}, &m_Mine));
  m_Thread.PostEvent(single);
  m_Thread.RemoveEvents(&m_Mine);
  EXPECT_EQ(m_Journal.Text(), "ac");
  m_Thread.RemoveEvent(single);
  m_Thread.RemoveEvent(nullptr);
  EXPECT_EQ(m_Journal.Text(), "acd");
  Start();
  EXPECT_TRUE(m_Journal.Becomes("acdBb")) << m_Journal.Text();
}

TEST_F(Events, RemovalFromElsewhereWaitsForTheRunningOneAndTakesTheRestOfThePass) {
  for (const bool kept : {false, true}) {
    std::atomic<bool> running = false;
    m_Thread.RemoveEvents(&m_Mine);
    const std::string before = m_Journal.Text();
    const auto work = [&] {
      running = true;
      std::this_thread::sleep_for(50ms);
      m_Journal.Write('!');
    };
    m_Thread.PostEvent(kept ? Kept('A', work, &m_Mine) : Once('A', work, &m_Mine));
    m_Thread.PostEvent(Once('B', {}, &m_Mine));
    m_Thread.PostEvent(Once('C', {}, &m_Other));
    if (!kept) Start();
    ASSERT_TRUE(Eventually([&] { return running.load(); }));
    m_Thread.RemoveEvents(&m_Mine);
    const std::string after = m_Journal.Text().substr(before.size());
    EXPECT_EQ(after.substr(0, 3), "A!a") << "its end was waited for";
    EXPECT_NE(after.find('b'), std::string::npos) << "deleted when the removal returns";
    EXPECT_EQ(after.find('B'), std::string::npos) << "without having run";
    EXPECT_TRUE(Eventually([&] {
      return m_Journal.Text().ends_with("Cc") || m_Journal.Text().ends_with("Ccb");
    })) << m_Journal.Text();
  }
}

TEST_F(Events, RemovalOnTheWorkerLeavesTheRunningOneToIt) {
  for (const bool kept : {false, true}) {
    const auto work = [&] { m_Thread.RemoveEvents(&m_Mine); };
    const std::string before = m_Journal.Text();
    m_Thread.PostEvent(kept ? Kept('A', work, &m_Mine) : Once('A', work, &m_Mine));
    m_Thread.PostEvent(Once('B', {}, &m_Mine));
    if (!kept) Start();
    EXPECT_TRUE(m_Journal.Becomes(before + "Aba") || m_Journal.Becomes(before + "AaBb")) << m_Journal.Text();
    EXPECT_TRUE(OneMoreCycle());
  }
}

TEST_F(Events, AStopDeletesWhatIsLeftAndRefusesWhatComesLater) {
  Start();
  m_Thread.RequestSuspend();
  m_Thread.Trigger();
  ASSERT_TRUE(Eventually([&] { return m_Thread.IsParkedNow(); }));
  m_Thread.PostEvent(Once('A'));
  m_Thread.PostEvent(Kept('B'));
  std::this_thread::sleep_for(20ms);
  EXPECT_EQ(m_Journal.Text(), "") << "a parked worker runs nothing";
  m_Thread.Stop();
  EXPECT_EQ(m_Journal.Text(), "ab");
  EXPECT_FALSE(m_Thread.PostEvent(Once('C')));
  EXPECT_EQ(m_Journal.Text(), "abc");
}

TEST_F(Events, EventsMayBePostedAndRemovedFromManyThreads) {
  m_Thread.SetControlled(true, 0);
  ASSERT_TRUE(m_Thread.Start(0, 0, 0, false));
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&, owner = std::make_unique<int>(i)] {
      for (int n = 0; n < 200; ++n) {
        auto used = std::make_shared<std::atomic<bool>>(true);
        const auto work = [used] { EXPECT_TRUE(*used); };
        m_Thread.PostEvent(Once('A', work, owner.get()));
        m_Thread.PostEvent(Kept('B', work, owner.get()));
        if (n % 2 != 0) std::this_thread::sleep_for(100us);
        m_Thread.RemoveEvents(owner.get());
        *used = false;  // from here on none of them may run
      }
    });
  }
  for (auto& thread : threads) thread.join();
  m_Thread.Stop();
  const std::string text = m_Journal.Text();
  EXPECT_EQ(std::count(text.begin(), text.end(), 'a'), 600);
  EXPECT_EQ(std::count(text.begin(), text.end(), 'b'), 600);
}
