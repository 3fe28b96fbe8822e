// PPointerArray: pointers in numbered slots; a free slot is null. It owns the slots, but not the objects that
// the pointers refer to.
// Any thread if the array has a lock; otherwise its owner guards it.

#pragma once

#include <algorithm>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "thread/PCriticalSection.h"

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
    const Hold hold(m_pLock);
    if (aPointer == nullptr || SlotOf(aPointer) < m_iSlots) return false;
    const int slot = SlotOf(nullptr);
    if (slot == m_iSlots && !Resize(m_iSlots + kGrowBy)) return false;
    m_ppSlots[slot] = aPointer;
    return true;
  }

  /// Frees the slot of a pointer. The array keeps its size.
  /// @return false if the pointer is not present
  bool Remove(const T* aPointer) noexcept {
    const Hold hold(m_pLock);
    if (aPointer == nullptr) return false;
    const int slot = SlotOf(aPointer);
    if (slot == m_iSlots) return false;
    m_ppSlots[slot] = nullptr;
    return true;
  }

  bool Has(const T* aPointer) const noexcept {
    const Hold hold(m_pLock);
    return aPointer != nullptr && SlotOf(aPointer) < m_iSlots;
  }

  /// Returns the element in the lowest occupied slot; null if there is none.
  /// @param aPosition receives its slot number; the number of slots if there is none
  T* GetFirst(int& aPosition) const noexcept {
    const Hold hold(m_pLock);
    aPosition = -1;
    return Step(aPosition);
  }

  /// Returns the element in the next occupied slot above aPosition; null if there is none or aPosition is
  /// negative.
  T* GetNext(int& aPosition) const noexcept {
    const Hold hold(m_pLock);
    return aPosition < 0 ? nullptr : Step(aPosition);
  }

  /// Returns the number of occupied slots.
  int GetCount() const noexcept {
    const Hold hold(m_pLock);
    return m_iSlots - static_cast<int>(std::count(begin(), end(), nullptr));
  }

  /// Returns the number of slots, a multiple of 10.
  int GetSlots() const noexcept {
    const Hold hold(m_pLock);
    return m_iSlots;
  }

  /// Frees memory if at least 10 slots are free. Elements move to lower slots and keep their order.
  void Pack() noexcept {
    const Hold hold(m_pLock);
    const int used = GetCount();
    if (used == 0) {
      m_ppSlots.reset();
      m_iSlots = 0;
    } else if (m_iSlots - used >= kGrowBy) {
      std::fill(std::remove(begin(), end(), nullptr), end(), nullptr);
      Resize((used + kGrowBy - 1) / kGrowBy * kGrowBy);
    }
  }

 private:
  class Hold {
   public:
    explicit Hold(PCriticalSection* aLock) noexcept {
      if (aLock != nullptr) m_Lock.emplace(*aLock);
    }

   private:
    std::optional<PLock> m_Lock;
  };

  T** begin() const noexcept { return m_ppSlots.get(); }
  T** end() const noexcept { return m_ppSlots.get() + m_iSlots; }
  int SlotOf(const T* aPointer) const noexcept {
    return static_cast<int>(std::find(begin(), end(), aPointer) - begin());
  }
  T* Step(int& aPosition) const noexcept {
    while (aPosition < m_iSlots && ++aPosition < m_iSlots) {
      if (m_ppSlots[aPosition] != nullptr) return m_ppSlots[aPosition];
    }
    return nullptr;
  }
  bool Resize(int aSlots) noexcept {
    std::unique_ptr<T*[]> slots(new (std::nothrow) T*[static_cast<std::size_t>(aSlots)]());
    if (slots == nullptr) return false;
    std::copy_n(begin(), std::min(aSlots, m_iSlots), slots.get());
    m_ppSlots = std::move(slots);
    m_iSlots = aSlots;
    return true;
  }

  int m_iSlots = 0;
  std::unique_ptr<T*[]> m_ppSlots;
  PCriticalSection* const m_pLock;
};
