// Turns of the draw threads on Mesa's software renderer, which doesn't bear two contexts at the same time.

#include "platform/RenderingTurn.h"

#include "platform/GL.h"
#include "support/Scene.h"
#include "support/Test.h"

namespace {

using namespace std::chrono_literals;

/// A thread that takes a turn and ends it at once.
std::future<void> TakeTurn() {
  return std::async(std::launch::async, [] { const RenderingTurn turn; });
}

bool Served(const std::future<void>& aTurn, std::chrono::milliseconds aWithin) {
  return aTurn.wait_for(aWithin) == std::future_status::ready;
}

}  // namespace

TEST(RenderingTurn, KeepsOtherThreadsOutOfAFrameUnlessItsThreadWaits) {
  ContextFixture fixture(16, 16);
  fixture.Frame([&](Scene&) {
    if (std::strstr(reinterpret_cast<const char*>(glGetString(GL_RENDERER)), "llvmpipe") == nullptr) return;
    auto first = TakeTurn();
    EXPECT_FALSE(Served(first, 50ms)) << "while the painter draws";
    auto second = TakeTurn();
    {
      const RenderingBreak others;
      EXPECT_TRUE(Served(first, 1s));
      EXPECT_TRUE(Served(second, 1s));
    }
    auto third = TakeTurn();
    EXPECT_FALSE(Served(third, 50ms)) << "the painter has its turn again";
    EXPECT_TRUE(Served(third, 10s)) << "no wait is for ever";
  });
}
