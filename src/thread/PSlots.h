// PSlots: pointers in numbered slots; a free slot is null. It owns the slots, but not the objects that the
// pointers refer to. The classes that use it decide which slot an element gets, and guard it.

#pragma once

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

template <class T>
class PSlots {
 public:
  int Size() const noexcept { return m_iSize; }
  T*& operator[](int aSlot) noexcept { return m_ppSlots[static_cast<std::size_t>(aSlot)]; }
  T** begin() const noexcept { return m_ppSlots.get(); }
  T** end() const noexcept { return m_ppSlots.get() + m_iSize; }

  /// Returns the lowest slot with this pointer, which may be null; the number of slots if there is none.
  int Find(const T* aPointer) const noexcept {
    return static_cast<int>(std::find(begin(), end(), aPointer) - begin());
  }

  /// Moves aSlot to the next occupied slot, or out of the range.
  /// @param aStep 1 upwards, -1 downwards
  /// @return the element there; null if there is none
  T* Walk(int& aSlot, int aStep) const noexcept {
    const auto exists = [&] { return aSlot >= 0 && aSlot < m_iSize; };
    do {
      aSlot += aStep;
    } while (exists() && begin()[aSlot] == nullptr);
    return exists() ? begin()[aSlot] : nullptr;
  }

  /// Changes the number of slots. Elements keep their slots. New slots are free.
  /// @return false if memory is insufficient; nothing changes
  bool Resize(int aSize) noexcept {
    std::unique_ptr<T*[]> slots(new (std::nothrow) T*[static_cast<std::size_t>(aSize)]());
    if (slots == nullptr) return false;
    std::copy_n(begin(), std::min(aSize, m_iSize), slots.get());
    m_ppSlots = std::move(slots);
    m_iSize = aSize;
    return true;
  }

  void Swap(PSlots& aOther) noexcept {
    m_ppSlots.swap(aOther.m_ppSlots);
    std::swap(m_iSize, aOther.m_iSize);
  }

 private:
  int m_iSize = 0;
  std::unique_ptr<T*[]> m_ppSlots;
};
