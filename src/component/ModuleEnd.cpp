// ModuleEnd: the registered steps, and the order of an end. Any thread.

#include "component/ModuleEnd.h"

#include <algorithm>
#include <array>
#include <mutex>

#include "component/Module.h"
#include "component/ModuleThreads.h"
#include "platform/ModuleFile.h"
#include "platform/ProcessWide.h"

namespace {

struct End {
  std::mutex m_Lock;  // held during a whole end
  std::mutex m_StepsLock;
  std::array<ModuleEnd::Step, 8> m_Steps{};  // the first free slot is null
};

constinit ProcessWide<End> g_End;

void RunSteps(End& aEnd) noexcept {
  std::array<ModuleEnd::Step, 8> steps{};
  {
    const std::scoped_lock lock(aEnd.m_StepsLock);
    steps = aEnd.m_Steps;
  }
  std::for_each(steps.rbegin(), steps.rend(), [](ModuleEnd::Step aStep) {
    if (aStep != nullptr) aStep();
  });
}

// Runs if a host unloads the module without calling DllCanUnloadNow. The steps return window classes and
// other names to the system.
void OnDetach() noexcept { RunSteps(g_End.Get()); }

}  // namespace

void ModuleEnd::Register(Step aStep) noexcept {
  End& end = g_End.Get();
  {
    const std::scoped_lock lock(end.m_StepsLock);
    const auto slot = std::find_if(end.m_Steps.begin(), end.m_Steps.end(),
                                   [&](Step aKnown) { return aKnown == aStep || aKnown == nullptr; });
    if (slot == end.m_Steps.end() || *slot == aStep) return;
    *slot = aStep;
    if (slot != end.m_Steps.begin()) return;
  }
  RunAtDetach(OnDetach);
}

void ModuleEnd::KeepLoaded() noexcept {
  const std::scoped_lock lock(g_End.Get().m_Lock);
  KeepModuleLoaded();
}

// The order follows the dependencies: threads use parts, parts use windows, windows use the display.
bool ModuleEnd::TryEnd() noexcept {
  End& end = g_End.Get();
  const std::scoped_lock lock(end.m_Lock);
  if (g_iModuleLocks != 0) return false;
  JoinEndedModuleThreads();
  RunSteps(end);
  EndPlatform();
  ReleaseModule();
  return true;
}
