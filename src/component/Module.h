// Values that the whole module shares: its lock count, the generation of display lists, GL's limits.
// All are atomic; any thread.

#pragma once

#include <gllib/GLPlatform.h>

#include <atomic>

/// Number of live objects, class factories that hosts use, server locks and ModuleLock scopes. The module may
/// be unloaded when it is 0.
extern std::atomic<LONG> g_iModuleLocks;

/// Keeps the module loaded during a scope.
class ModuleLock {
 public:
  ModuleLock() noexcept { ++g_iModuleLocks; }
  ~ModuleLock() { --g_iModuleLocks; }
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;
};

/// Generation of display lists. List keys of other generations are invalid.
extern std::atomic<ULONG> g_uListGeneration;
/// Makes all list keys stale.
/// @param aReason a string literal, for the log
/// @return the new generation
ULONG RaiseListGeneration(const char* aReason) noexcept;
/// Returns the reason of the last RaiseListGeneration; null before the first one.
const char* ListsReason() noexcept;

// GL's limits. Each creation of a window's rendering context overwrites them. 0 before the first one, except
// where noted.
extern std::atomic<float> g_afPointSizeRange[2];
extern std::atomic<float> g_fPointSizeGranularity;
extern std::atomic<float> g_afLineWidthRange[2];
extern std::atomic<float> g_fLineWidthGranularity;
/// GL_MAX_CLIP_PLANES. Before the first rendering context: 6, which OpenGL 1.1 guarantees.
extern std::atomic<int> g_iMaxClipPlanes;
/// GL_MAX_VIEWPORT_DIMS: largest width and height that GL draws.
extern std::atomic<int> g_aiMaxViewport[2];
