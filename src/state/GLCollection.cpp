// GLCollection: slots, iteration, and copies between collections. Any thread. Members and other collections
// are called without the lock, so that they cannot cause a deadlock.

#include "state/GLCollection.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "component/Catalogue.h"
#include "component/Output.h"

HRESULT CreateGLCollection(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLCollection>(aOuter, riid, ppv);
}

GLCollection::~GLCollection() { Empty(); }

HRESULT GLCollection::Add(IUnknown* aIU) noexcept {
  if (aIU == nullptr) return S_OK;
  const PLock lock(m_Lock);
  if (m_iSize == m_iCapacity && !Grow()) return E_FAIL;
  int slot = m_iHighestFree;
  while (m_ppItems[slot] != nullptr) --slot;
  m_ppItems[slot] = aIU;
  aIU->AddRef();
  m_iHighestFree = slot - 1;
  ++m_iSize;
  return S_OK;
}

/// Adds slots; members keep theirs.
/// @return false if no memory is available; nothing changes
bool GLCollection::Grow() noexcept {
  const int capacity = m_iCapacity + m_iGrowBy;
  Slots slots(new (std::nothrow) IUnknown*[static_cast<std::size_t>(capacity)]());
  if (slots == nullptr) return false;
  std::copy_n(m_ppItems.get(), m_iCapacity, slots.get());
  m_ppItems = std::move(slots);
  m_iCapacity = capacity;
  m_iHighestFree = capacity - 1;
  m_iGrowBy = std::min(2 * m_iGrowBy, kLargestGrowth);
  return true;
}

HRESULT GLCollection::Remove(IUnknown* aIU) noexcept {
  if (aIU == nullptr) return S_OK;
  {
    const PLock lock(m_Lock);
    IUnknown** const end = m_ppItems.get() + m_iCapacity;
    IUnknown** const found = std::find(m_ppItems.get(), end, aIU);
    if (found == end) return S_OK;
    *found = nullptr;
    m_iHighestFree = std::max(m_iHighestFree, static_cast<int>(found - m_ppItems.get()));
    --m_iSize;
  }
  aIU->Release();
  return S_OK;
}

HRESULT GLCollection::Empty() noexcept {
  Slots items;
  int capacity = 0;
  {
    const PLock lock(m_Lock);
    items = std::move(m_ppItems);
    capacity = std::exchange(m_iCapacity, 0);
    m_iSize = 0;
    m_iGrowBy = kFirstGrowth;
    m_iHighestFree = -1;
  }
  for (int i = 0; i < capacity; ++i) {
    if (items[i] != nullptr) items[i]->Release();
  }
  return S_OK;
}

HRESULT GLCollection::Has(IUnknown* aIU, LONG* aHas) noexcept {
  if (aHas == nullptr) return E_INVALIDARG;
  *aHas = 0;
  if (aIU == nullptr) return S_OK;
  const PLock lock(m_Lock);
  IUnknown** const end = m_ppItems.get() + m_iCapacity;
  *aHas = std::find(m_ppItems.get(), end, aIU) != end ? 1 : 0;
  return S_OK;
}

HRESULT GLCollection::GetSize(int* aSize) noexcept {
  const PLock lock(m_Lock);
  return Output(aSize, m_iSize);
}

HRESULT GLCollection::GetFirst(GLPOSITION* aPos, IUnknown** aIU) noexcept {
  if (aPos == nullptr || aIU == nullptr) return E_INVALIDARG;
  const PLock lock(m_Lock);
  aPos->m_iIndex = -1;
  return Walk(*aPos, 1, *aIU);
}

HRESULT GLCollection::GetLast(GLPOSITION* aPos, IUnknown** aIU) noexcept {
  if (aPos == nullptr || aIU == nullptr) return E_INVALIDARG;
  const PLock lock(m_Lock);
  aPos->m_iIndex = m_iCapacity;
  return Walk(*aPos, -1, *aIU);
}

HRESULT GLCollection::GetNext(GLPOSITION* aPos, IUnknown** aIU) noexcept {
  if (aPos == nullptr || aIU == nullptr) return E_INVALIDARG;
  const PLock lock(m_Lock);
  if (aPos->m_iIndex < 0 || aPos->m_iIndex == std::numeric_limits<std::int32_t>::max()) {
    *aIU = nullptr;
    return E_FAIL;
  }
  return Walk(*aPos, 1, *aIU);
}

HRESULT GLCollection::GetPrev(GLPOSITION* aPos, IUnknown** aIU) noexcept {
  if (aPos == nullptr || aIU == nullptr) return E_INVALIDARG;
  const PLock lock(m_Lock);
  if (aPos->m_iIndex >= m_iCapacity || aPos->m_iIndex == std::numeric_limits<std::int32_t>::min()) {
    *aIU = nullptr;
    return E_FAIL;
  }
  return Walk(*aPos, -1, *aIU);
}

/// Moves to the next used slot and returns its member with a reference; E_FAIL past the last slot.
HRESULT GLCollection::Walk(GLPOSITION& aPos, int aStep, IUnknown*& aIU) noexcept {
  int slot = aPos.m_iIndex + aStep;
  while (slot >= 0 && slot < m_iCapacity && m_ppItems[slot] == nullptr) slot += aStep;
  aPos.m_iIndex = slot;
  aIU = slot >= 0 && slot < m_iCapacity ? m_ppItems[slot] : nullptr;
  if (aIU == nullptr) return E_FAIL;
  aIU->AddRef();
  return S_OK;
}

HRESULT GLCollection::CopyTo(IGLCollection* aColl) noexcept {
  if (aColl == nullptr) return E_INVALIDARG;
  if (aColl == this) return Empty();
  Slots members;
  int size = 0;
  const HRESULT taken = Snapshot(members, size);
  if (FAILED(taken)) return taken;
  aColl->Empty();
  AddTo(*aColl, members, size);
  return S_OK;
}

HRESULT GLCollection::AppendTo(IGLCollection* aColl) noexcept {
  if (aColl == nullptr || aColl == this) return E_INVALIDARG;
  Slots members;
  int size = 0;
  const HRESULT taken = Snapshot(members, size);
  if (FAILED(taken)) return taken;
  AddTo(*aColl, members, size);
  return S_OK;
}

/// Copies all members at one moment, in slot order, each with a reference.
HRESULT GLCollection::Snapshot(Slots& aMembers, int& aSize) noexcept {
  const PLock lock(m_Lock);
  aMembers.reset(new (std::nothrow) IUnknown*[static_cast<std::size_t>(m_iSize)]);
  if (aMembers == nullptr) return E_OUTOFMEMORY;
  std::remove_copy(m_ppItems.get(), m_ppItems.get() + m_iCapacity, aMembers.get(), nullptr);
  aSize = m_iSize;
  for (int i = 0; i < aSize; ++i) aMembers[i]->AddRef();
  return S_OK;
}

/// Adds the members to a collection, which takes its own references, and releases those of the snapshot.
void GLCollection::AddTo(IGLCollection& aColl, const Slots& aMembers, int aSize) noexcept {
  for (int i = 0; i < aSize; ++i) {
    aColl.Add(aMembers[i]);
    aMembers[i]->Release();
  }
}
