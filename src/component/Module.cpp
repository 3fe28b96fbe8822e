// Values that the whole module shares. All are atomic; any thread.

#include "component/Module.h"

std::atomic<LONG> g_iModuleLocks{0};
std::atomic<ULONG> g_uListGeneration{1};
std::atomic<float> g_afPointSizeRange[2] = {0.0f, 0.0f};
std::atomic<float> g_fPointSizeGranularity{0.0f};
std::atomic<float> g_afLineWidthRange[2] = {0.0f, 0.0f};
std::atomic<float> g_fLineWidthGranularity{0.0f};
std::atomic<int> g_iMaxClipPlanes{6};
std::atomic<int> g_aiMaxViewport[2] = {0, 0};

namespace {

std::atomic<const char*> g_szListsReason{nullptr};

}  // namespace

ULONG RaiseListGeneration(const char* aReason) noexcept {
  g_szListsReason.store(aReason, std::memory_order_relaxed);
  return ++g_uListGeneration;
}

const char* ListsReason() noexcept { return g_szListsReason.load(std::memory_order_relaxed); }
