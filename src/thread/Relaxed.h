// Relaxed: members that host threads write and the draw thread reads without a lock.
// Each value is atomic. A group of values is not: one pass may see it partly changed (see Guarded.h).

#pragma once

#include <gllib/GLTypes.h>

#include <atomic>

// Assignments return the value or nothing, like those of std::atomic.
// NOLINTBEGIN(misc-unconventional-assign-operator)

/// An atomic value. Readers may see an older value, but never a torn one.
template <class T>
class Relaxed {
 public:
  constexpr Relaxed(T aValue = T()) noexcept : m_Value(aValue) {}
  Relaxed(const Relaxed&) = delete;
  Relaxed& operator=(const Relaxed&) = delete;
  T operator=(T aValue) noexcept {
    m_Value.store(aValue, std::memory_order_relaxed);
    return aValue;
  }
  operator T() const noexcept { return m_Value.load(std::memory_order_relaxed); }

 private:
  std::atomic<T> m_Value;
};

/// A colour. Each component is atomic.
class RelaxedColor {
 public:
  constexpr RelaxedColor(float aRed, float aGreen, float aBlue, float aAlpha) noexcept
      : m_fRed(aRed), m_fGreen(aGreen), m_fBlue(aBlue), m_fAlpha(aAlpha) {}
  void operator=(const GLDATA_RGBA& aColor) noexcept {
    m_fRed = aColor.m_fRed;
    m_fGreen = aColor.m_fGreen;
    m_fBlue = aColor.m_fBlue;
    m_fAlpha = aColor.m_fAlpha;
  }
  operator GLDATA_RGBA() const noexcept { return {m_fRed, m_fGreen, m_fBlue, m_fAlpha}; }

  Relaxed<float> m_fRed, m_fGreen, m_fBlue, m_fAlpha;
};

// NOLINTEND(misc-unconventional-assign-operator)
