// GLContext: control of the draw thread. Any thread. SetDrawThreadPars, SuspendDrawThread and
// ResumeDrawThread wait for a running cycle.

#include <algorithm>
#include <chrono>
#include <thread>

#include "context/GLContext.h"
#include "context/control/DrawThreadWait.h"
#include "platform/Log.h"

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto kBoundedWait = 3000ms;
constexpr auto kPollStep = 10ms;
constexpr ULONG kShortestCycle = 5, kLongestCycle = 5000;

/// Returns a priority from THREAD_PRIORITY_IDLE to THREAD_PRIORITY_TIME_CRITICAL unchanged if the platform
/// defines it, otherwise THREAD_PRIORITY_NORMAL.
int KnownPriority(int aPriority) noexcept {
  for (const int known : {-15, -2, -1, 0, 1, 2, 15}) {
    if (aPriority == known) return known;
  }
  return 0;
}

// The context whose draw thread is the current thread.
thread_local GLContext* t_pDrawnContext = nullptr;

}  // namespace

void GLContext::MarkDrawThread(GLContext* aContext) noexcept {
  t_pDrawnContext = aContext;
  SetLogContext(aContext != nullptr ? aContext->Number() : 0);
}

GLContext* GLContext::DrawnHere() noexcept { return t_pDrawnContext; }

std::shared_ptr<PThread> GLContext::DrawThread() const noexcept {
  if (IsInherited()) return nullptr;
  const std::scoped_lock lock(m_DrawThreadLock);
  return m_pDrawThread;
}

HRESULT GLContext::GetDrawThreadPars(int* aPriority, ULONG* aPreferredCycle,
                                     ULONG* aMustSleepCycle) noexcept {
  if (aPriority == nullptr || aPreferredCycle == nullptr || aMustSleepCycle == nullptr) return E_INVALIDARG;
  const auto thread = DrawThread();
  if (thread == nullptr) return E_GL_BADSTATE;
  *aPriority = KnownPriority(thread->m_iPriority);
  *aPreferredCycle = thread->m_dwPreferredCycle;
  *aMustSleepCycle = thread->m_dwMustSleepCycle;
  return S_OK;
}

HRESULT GLContext::SetDrawThreadPars(int aPriority, ULONG aPreferredCycle, ULONG aMustSleepCycle) noexcept {
  const auto thread = DrawThread();
  if (thread == nullptr) return E_GL_BADSTATE;
  const DrawThreadWait wait(*this);
  if (!wait.IsAllowed()) return E_GL_BADSTATE;
  const ULONG preferred = std::clamp(aPreferredCycle, kShortestCycle, kLongestCycle);
  const ULONG mustSleep = std::clamp(aMustSleepCycle, kShortestCycle, kLongestCycle);
  const int priority = KnownPriority(aPriority);
  if (thread->m_iPriority != priority) thread->SetPriority(priority);
  if (thread->m_dwPreferredCycle != preferred) thread->SetPreferredCycle(preferred);
  if (thread->m_dwMustSleepCycle != mustSleep) thread->SetMustSleepCycle(mustSleep);
  return S_OK;
}

HRESULT GLContext::SetControlledDrawThread(LONG bControlled, ULONG dwMaxWait) noexcept {
  const auto thread = DrawThread();
  if (thread == nullptr) return E_GL_BADSTATE;
  thread->SetControlled(bControlled != 0, dwMaxWait);
  return S_OK;
}

HRESULT GLContext::TriggerDrawThread() noexcept {
  const auto thread = DrawThread();
  if (thread == nullptr) return E_GL_BADSTATE;
  thread->Trigger();
  return S_OK;
}

HRESULT GLContext::SuspendDrawThread() noexcept {
  const auto thread = DrawThread();
  if (thread == nullptr) return E_GL_BADSTATE;
  const DrawThreadWait wait(*this);
  if (!wait.IsAllowed()) return E_GL_BADSTATE;
  const auto start = Clock::now();
  thread->RequestSuspend();
  thread->Trigger();
  if (IsDrawThread()) return S_OK;  // parks after this cycle; waiting here would deadlock
  while (!thread->IsParked() && !thread->IsStopped() && Clock::now() - start < kBoundedWait) {
    std::this_thread::sleep_for(kPollStep);
  }
  if (!thread->IsParked() && !thread->IsStopped()) {
    const LogContext log(m_uNumber);
    LogWarning("the draw thread did not park within 3 s: it still sleeps after a frame");
  }
  return S_OK;
}

// Applies a suspension that was requested before the rendering context existed.
void GLContext::AllowParks() noexcept {
  if (const auto thread = DrawThread()) thread->AllowParks();
}

HRESULT GLContext::ResumeDrawThread() noexcept {
  const auto thread = DrawThread();
  if (thread == nullptr || m_bReleased.test()) return E_GL_BADSTATE;  // the tear-down needs it parked
  const DrawThreadWait wait(*this);
  if (!wait.IsAllowed()) return E_GL_BADSTATE;
  thread->Resume();
  return S_OK;
}

bool GLContext::PostTask(PEvent* aTask) noexcept {
  const auto thread = DrawThread();
  if (thread != nullptr) return thread->PostEvent(aTask);
  delete aTask;
  return false;
}

void GLContext::StopDrawThread() noexcept {
  std::shared_ptr<PThread> thread;
  {
    const std::scoped_lock lock(m_DrawThreadLock);
    thread.swap(m_pDrawThread);
  }
  if (thread != nullptr) thread->Stop();
}

// Waits a limited time for the draw thread to destroy the rendering context, and ends the thread.
void GLContext::EndDrawThread() noexcept {
  const auto thread = DrawThread();
  if (thread == nullptr) return;
  const DrawThreadWait wait(*this);
  const auto start = Clock::now();
  m_bTearDown = true;
  thread->Resume();
  thread->Trigger();
  while (m_Window.m_Target.m_hRC != nullptr && Clock::now() - start < kBoundedWait)
    std::this_thread::sleep_for(kPollStep);
  StopDrawThread();
}
