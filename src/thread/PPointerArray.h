// PPointerArray: a set of pointers to objects that it does not own. Each is in the lowest slot that was free.
// Any thread if the array has a lock; otherwise its owner guards it.

#pragma once

#include <algorithm>

#include "thread/PCriticalSection.h"
#include "thread/PSlots.h"

/// An element keeps its slot until it is removed or Pack moves it. A walk follows slot numbers, so elements
/// may be removed during a walk.
template <class T>
class PPointerArray {
 public:
  static constexpr int kGrowBy = 10;

  /// @param aLock held during each operation; may be null; not owned
  explicit PPointerArray(PCriticalSection* aLock = nullptr) noexcept : m_pLock(aLock) {}
  PPointerArray(const PPointerArray&) = delete;
  PPointerArray& operator=(const PPointerArray&) = delete;

  /// Stores a pointer in the lowest free slot.
  /// @return false for null, for a pointer that is already present, and if memory is insufficient
  bool Add(T* aPointer) noexcept {
    const PLock lock(m_pLock);
    if (aPointer == nullptr || Contains(aPointer)) return false;
    const int slot = m_Slots.Find(nullptr);
    if (slot == m_Slots.Size() && !m_Slots.Resize(slot + kGrowBy)) return false;
    m_Slots[slot] = aPointer;
    return true;
  }

  /// Frees the slot of a pointer. The array keeps its size.
  /// @return false if the pointer is not present
  bool Remove(const T* aPointer) noexcept {
    const PLock lock(m_pLock);
    const int slot = m_Slots.Find(aPointer);
    if (aPointer == nullptr || slot == m_Slots.Size()) return false;
    m_Slots[slot] = nullptr;
    return true;
  }

  bool Has(const T* aPointer) const noexcept {
    const PLock lock(m_pLock);
    return aPointer != nullptr && Contains(aPointer);
  }

  /// Returns the element in the lowest occupied slot; null if there is none.
  /// @param aPosition receives its slot number; the number of slots if there is none
  T* GetFirst(int& aPosition) const noexcept {
    const PLock lock(m_pLock);
    aPosition = -1;
    return Step(aPosition);
  }

  /// Returns the element in the next occupied slot above aPosition; null if there is none or aPosition is
  /// negative.
  T* GetNext(int& aPosition) const noexcept {
    const PLock lock(m_pLock);
    return aPosition < 0 ? nullptr : Step(aPosition);
  }

  /// Returns the number of occupied slots.
  int GetCount() const noexcept {
    const PLock lock(m_pLock);
    return m_Slots.Size() - static_cast<int>(std::count(m_Slots.begin(), m_Slots.end(), nullptr));
  }

  /// Returns the number of slots, a multiple of 10.
  int GetSlots() const noexcept {
    const PLock lock(m_pLock);
    return m_Slots.Size();
  }

  /// Frees memory if at least 10 slots are free. Elements move to lower slots and keep their order.
  void Pack() noexcept {
    const PLock lock(m_pLock);
    const int used = GetCount();
    if (used == 0) {
      PSlots<T>().Swap(m_Slots);
    } else if (m_Slots.Size() - used >= kGrowBy) {
      std::fill(std::remove(m_Slots.begin(), m_Slots.end(), nullptr), m_Slots.end(), nullptr);
      m_Slots.Resize((used + kGrowBy - 1) / kGrowBy * kGrowBy);
    }
  }

 private:
  bool Contains(const T* aPointer) const noexcept { return m_Slots.Find(aPointer) < m_Slots.Size(); }
  T* Step(int& aPosition) const noexcept {
    return aPosition < m_Slots.Size() ? m_Slots.Walk(aPosition, 1) : nullptr;
  }

  PSlots<T> m_Slots;
  PCriticalSection* const m_pLock;
};
