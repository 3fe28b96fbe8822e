// RenderingTurn on Linux. Draw threads; NoteRenderingDriver on any thread.
// Mesa's software renderer (seen with 22.3.6) reads freed memory when two threads draw with contexts of one
// display. docs/driver/ContextRace.cpp reproduces it with plain EGL and GL. On this driver draw
// threads take turns.

#include "platform/RenderingTurn.h"

#include <atomic>
#include <chrono>
#include <cstring>
#include <utility>

#include "platform/FifoMutex.h"
#include "platform/GL.h"
#include "platform/ProcessWide.h"

namespace {

constexpr auto kLongestWait = std::chrono::seconds(2);

enum class Driver { kUnknown, kBearsThreads, kNeedsTurns };
std::atomic<Driver> g_Driver{Driver::kUnknown};

// Never destroyed, since a draw thread may wait in it while the process exits. A forked child gets its own
// lock: the holder of the turn may be a thread that does not exist there.
constinit ProcessWide<FifoMutex> g_Turn;

thread_local int t_iDepth = 0;
thread_local bool t_bHasTurn = false;

void Take() noexcept {
  if (g_Driver == Driver::kNeedsTurns) t_bHasTurn = g_Turn.Get().TryLockFor(kLongestWait);
}

void Give() noexcept {
  if (std::exchange(t_bHasTurn, false)) g_Turn.Get().Unlock();
}

}  // namespace

RenderingTurn::RenderingTurn() noexcept {
  if (t_iDepth++ == 0) Take();
}

RenderingTurn::~RenderingTurn() {
  if (--t_iDepth == 0) Give();
}

RenderingBreak::RenderingBreak() noexcept : m_iDepth(std::exchange(t_iDepth, 0)) { Give(); }

RenderingBreak::~RenderingBreak() {
  t_iDepth = m_iDepth;
  if (m_iDepth > 0) Take();
}

void NoteRenderingDriver() noexcept {
  if (g_Driver != Driver::kUnknown) return;
  const auto* name = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
  if (name == nullptr) return;
  const bool software = std::strstr(name, "llvmpipe") != nullptr || std::strstr(name, "softpipe") != nullptr;
  g_Driver = software ? Driver::kNeedsTurns : Driver::kBearsThreads;
}
