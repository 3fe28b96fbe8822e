// KeptBuffer: memory that is reused by later calls. One thread at a time.

#pragma once

#include <cstddef>
#include <memory>
#include <new>

/// Grows to the size of the largest request. Growing discards the contents.
template <class T>
class KeptBuffer {
 public:
  /// Returns uninitialised memory for aCount elements; null if memory is insufficient.
  T* Reserve(std::size_t aCount) noexcept {
    if (aCount > m_uCount) {
      m_uCount = 0;
      m_pElements.reset();  // freed before the larger allocation
      m_pElements.reset(new (std::nothrow) T[aCount]);
      if (m_pElements != nullptr) m_uCount = aCount;
    }
    return m_pElements.get();
  }

 private:
  std::size_t m_uCount = 0;
  std::unique_ptr<T[]> m_pElements;
};
