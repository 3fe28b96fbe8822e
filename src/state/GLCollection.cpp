// GLCollection: slots, iteration, and copies between collections. Any thread. Members and other collections
// are called without the lock, so that they cannot cause a deadlock.

#include "state/GLCollection.h"

#include <algorithm>
#include <limits>

#include "component/Catalogue.h"
#include "component/Output.h"

HRESULT CreateGLCollection(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLCollection>(aOuter, riid, ppv);
}

GLCollection::~GLCollection() { Empty(); }

HRESULT GLCollection::Add(IUnknown* aIU) noexcept {
  if (aIU == nullptr) return S_OK;
  const PLock lock(m_Lock);
  if (m_iSize == m_Slots.Size() && !Grow()) return E_FAIL;
  int slot = m_iHighestFree;
  while (m_Slots[slot] != nullptr) --slot;
  m_Slots[slot] = aIU;
  aIU->AddRef();
  m_iHighestFree = slot - 1;
  ++m_iSize;
  return S_OK;
}

/// Adds slots; members keep theirs.
/// @return false if no memory is available; nothing changes
bool GLCollection::Grow() noexcept {
  if (!m_Slots.Resize(m_Slots.Size() + m_iGrowBy)) return false;
  m_iHighestFree = m_Slots.Size() - 1;
  m_iGrowBy = std::min(2 * m_iGrowBy, kLargestGrowth);
  return true;
}

HRESULT GLCollection::Remove(IUnknown* aIU) noexcept {
  if (aIU == nullptr) return S_OK;
  {
    const PLock lock(m_Lock);
    const int slot = m_Slots.Find(aIU);
    if (slot == m_Slots.Size()) return S_OK;
    m_Slots[slot] = nullptr;
    m_iHighestFree = std::max(m_iHighestFree, slot);
    --m_iSize;
  }
  aIU->Release();
  return S_OK;
}

HRESULT GLCollection::Empty() noexcept {
  Slots items;
  {
    const PLock lock(m_Lock);
    items.Swap(m_Slots);
    m_iSize = 0;
    m_iGrowBy = kFirstGrowth;
    m_iHighestFree = -1;
  }
  for (IUnknown* item : items) {
    if (item != nullptr) item->Release();
  }
  return S_OK;
}

HRESULT GLCollection::Has(IUnknown* aIU, LONG* aHas) noexcept {
  if (aHas == nullptr) return E_INVALIDARG;
  *aHas = 0;
  if (aIU == nullptr) return S_OK;
  const PLock lock(m_Lock);
  *aHas = m_Slots.Find(aIU) < m_Slots.Size() ? 1 : 0;
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
  return Walk(aPos, 1, aIU);
}

HRESULT GLCollection::GetLast(GLPOSITION* aPos, IUnknown** aIU) noexcept {
  if (aPos == nullptr || aIU == nullptr) return E_INVALIDARG;
  const PLock lock(m_Lock);
  aPos->m_iIndex = m_Slots.Size();
  return Walk(aPos, -1, aIU);
}

HRESULT GLCollection::GetNext(GLPOSITION* aPos, IUnknown** aIU) noexcept {
  if (aPos == nullptr || aIU == nullptr) return E_INVALIDARG;
  const PLock lock(m_Lock);
  if (aPos->m_iIndex < 0 || aPos->m_iIndex == std::numeric_limits<std::int32_t>::max()) {
    *aIU = nullptr;
    return E_FAIL;
  }
  return Walk(aPos, 1, aIU);
}

HRESULT GLCollection::GetPrev(GLPOSITION* aPos, IUnknown** aIU) noexcept {
  if (aPos == nullptr || aIU == nullptr) return E_INVALIDARG;
  const PLock lock(m_Lock);
  if (aPos->m_iIndex >= m_Slots.Size() || aPos->m_iIndex == std::numeric_limits<std::int32_t>::min()) {
    *aIU = nullptr;
    return E_FAIL;
  }
  return Walk(aPos, -1, aIU);
}

/// Moves to the next used slot in the direction of aStep, and returns its member with a reference; E_FAIL if
/// there is none.
HRESULT GLCollection::Walk(GLPOSITION* aPos, int aStep, IUnknown** aIU) noexcept {
  return OutputObject(aIU, GLPtr<IUnknown>::FromBorrowed(m_Slots.Walk(aPos->m_iIndex, aStep)), E_FAIL);
}

HRESULT GLCollection::CopyTo(IGLCollection* aColl) noexcept {
  if (aColl == nullptr) return E_INVALIDARG;
  if (aColl == this) return Empty();
  Slots members;
  const HRESULT taken = Snapshot(members);
  if (FAILED(taken)) return taken;
  aColl->Empty();
  AddTo(*aColl, members);
  return S_OK;
}

HRESULT GLCollection::AppendTo(IGLCollection* aColl) noexcept {
  if (aColl == nullptr || aColl == this) return E_INVALIDARG;
  Slots members;
  const HRESULT taken = Snapshot(members);
  if (FAILED(taken)) return taken;
  AddTo(*aColl, members);
  return S_OK;
}

/// Copies all members at one moment, in slot order, each with a reference.
HRESULT GLCollection::Snapshot(Slots& aMembers) noexcept {
  const PLock lock(m_Lock);
  if (!aMembers.Resize(m_iSize)) return E_OUTOFMEMORY;
  std::remove_copy(m_Slots.begin(), m_Slots.end(), aMembers.begin(), nullptr);
  for (IUnknown* member : aMembers) member->AddRef();
  return S_OK;
}

/// Adds the members to a collection, which takes its own references, and releases those of the snapshot.
void GLCollection::AddTo(IGLCollection& aColl, const Slots& aMembers) noexcept {
  for (IUnknown* member : aMembers) {
    aColl.Add(member);
    member->Release();
  }
}
