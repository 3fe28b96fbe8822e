// GLCollection: general container of counted references in numbered slots. Any thread. The lock is held for a
// whole operation, but not while a member's Release runs.

#pragma once

#include <gllib/IGLCollection.h>

#include "component/GLObject.h"
#include "thread/PCriticalSection.h"
#include "thread/PSlots.h"

class GLCollection final : public GLObject<GLCollection, IGLCollection> {
 public:
  GLCollection() noexcept = default;
  ~GLCollection();

  HRESULT Add(IUnknown* aIU) noexcept override;
  HRESULT Remove(IUnknown* aIU) noexcept override;
  HRESULT Empty() noexcept override;
  HRESULT Has(IUnknown* aIU, LONG* aHas) noexcept override;
  HRESULT GetSize(int* aSize) noexcept override;
  HRESULT GetFirst(GLPOSITION* aPos, IUnknown** aIU) noexcept override;
  HRESULT GetLast(GLPOSITION* aPos, IUnknown** aIU) noexcept override;
  HRESULT GetNext(GLPOSITION* aPos, IUnknown** aIU) noexcept override;
  HRESULT GetPrev(GLPOSITION* aPos, IUnknown** aIU) noexcept override;
  HRESULT CopyTo(IGLCollection* aColl) noexcept override;
  HRESULT AppendTo(IGLCollection* aColl) noexcept override;

 private:
  using Slots = PSlots<IUnknown>;
  static constexpr int kFirstGrowth = 10, kLargestGrowth = 100;

  bool Grow() noexcept;
  HRESULT Walk(GLPOSITION* aPos, int aStep, IUnknown** aIU) noexcept;
  HRESULT Snapshot(Slots& aMembers) noexcept;
  static void AddTo(IGLCollection& aColl, const Slots& aMembers) noexcept;

  int m_iSize = 0;
  int m_iGrowBy = kFirstGrowth;
  int m_iHighestFree = -1;  // no slot above this one is free
  Slots m_Slots;            // with one reference to each member
  PCriticalSection m_Lock;
};
