// Guarded: values that one operation sets together. Host threads write them, the draw thread reads them.

#pragma once

#include "thread/PCriticalSection.h"

/// A structure of values. A reader gets the values of one write. The lock is held only while they are copied.
template <class T>
class Guarded {
 public:
  explicit Guarded(const T& aValues) noexcept : m_Values(aValues) {}

  T Load() const noexcept {
    const PLock lock(m_Lock);
    return m_Values;
  }
  void Store(const T& aValues) noexcept {
    const PLock lock(m_Lock);
    m_Values = aValues;
  }

 private:
  mutable PCriticalSection m_Lock;
  T m_Values;
};
