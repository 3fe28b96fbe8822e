// Turns of the draw threads on Mesa's software renderer, which crashes if two contexts draw at the same time.
// Headless display.

#include "platform/RenderingTurn.h"

#include "support/Scene.h"

namespace {

using namespace std::chrono_literals;

/// Takes a turn on another thread, and ends it at once.
std::future<void> TakeTurn() {
  return std::async(std::launch::async, [] { const RenderingTurn turn; });
}

bool Served(const std::future<void>& aTurn, std::chrono::milliseconds aWithin) {
  return aTurn.wait_for(aWithin) == std::future_status::ready;
}

}  // namespace

TEST(RenderingTurn, ExcludesOtherThreadsUnlessItsThreadWaits) {
  ContextFixture fixture(16, 16);
  std::string renderer;
  fixture.Frame([&](Scene&) { renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER)); });
  if (renderer.find("llvmpipe") == renderer.npos) GTEST_SKIP() << renderer << " needs no turns";
  fixture.Frame([&](Scene&) {
    auto first = TakeTurn();
    EXPECT_FALSE(Served(first, 50ms)) << "during the painter";
    auto second = TakeTurn();
    {
      const RenderingBreak others;
      EXPECT_TRUE(Served(first, 1s));
      EXPECT_TRUE(Served(second, 1s));
    }
    auto third = TakeTurn();
    EXPECT_FALSE(Served(third, 50ms)) << "the painter has its turn again";
    EXPECT_TRUE(Served(third, 10s)) << "the wait is bounded";
  });
}
