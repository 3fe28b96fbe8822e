// KeptBuffer: memory that is kept from one use to the next. One thread at a time.

#pragma once

#include <cstddef>
#include <memory>
#include <new>

/// Only grows: its size is that of the largest use. Its contents are not kept when it grows.
template <class T>
class KeptBuffer {
 public:
  /// @return room for so many elements, not initialised; null without memory
  T* Reserve(std::size_t aCount) noexcept {
    if (aCount > m_uCount) {
      m_uCount = 0;
      m_pElements.reset();  // before the larger one is asked for
      m_pElements.reset(new (std::nothrow) T[aCount]);
      if (m_pElements != nullptr) m_uCount = aCount;
    }
    return m_pElements.get();
  }

 private:
  std::size_t m_uCount = 0;
  std::unique_ptr<T[]> m_pElements;
};
