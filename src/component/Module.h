// The values that the whole module shares: its lock count, the generation of display lists, GL's limits.
// All are atomic; any thread.

#pragma once

#include <gllib/GLPlatform.h>

#include <atomic>

/// Objects that live and server locks that stand. The module may go when it is 0.
extern std::atomic<LONG> g_iModuleLocks;

/// Keeps the module for the length of a scope.
class ModuleLock {
 public:
  ModuleLock() noexcept { ++g_iModuleLocks; }
  ~ModuleLock() { --g_iModuleLocks; }
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;
};

/// Generation of display lists. A list key from another generation is dead.
extern std::atomic<ULONG> g_uListGeneration;
/// Makes all keys stale. The reason is a literal, for the log. @return the new generation
ULONG RaiseListGeneration(const char* aReason) noexcept;
/// The reason of the last change; null before one.
const char* ListsReason() noexcept;

// GL's limits, overwritten by every creation of a rendering context; the last one read stands.
extern std::atomic<float> g_afPointSizeRange[2];
extern std::atomic<float> g_fPointSizeGranularity;
extern std::atomic<float> g_afLineWidthRange[2];
extern std::atomic<float> g_fLineWidthGranularity;
/// GL_MAX_CLIP_PLANES; 6, which OpenGL 1.1 guarantees, before the first rendering context.
extern std::atomic<int> g_iMaxClipPlanes;
/// GL_MAX_VIEWPORT_DIMS: how wide and how high GL draws.
extern std::atomic<int> g_aiMaxViewport[2];
