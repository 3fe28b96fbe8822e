// Slots that hold objects.

#pragma once

#include <gllib/GLTypes.h>

/// Collection.
struct IGLCollection : IUnknown {
  static constexpr IID Identifier = {
      0x1BF499B7, 0xCFCC, 0x486F, {0xBC, 0x74, 0x8E, 0xBC, 0xC2, 0x91, 0x6E, 0x94}};

  virtual HRESULT Add(IUnknown* aIU) noexcept = 0;
  virtual HRESULT Remove(IUnknown* aIU) noexcept = 0;
  virtual HRESULT Empty() noexcept = 0;
  virtual HRESULT Has(IUnknown* aIU, LONG* aHas) noexcept = 0;
  virtual HRESULT GetSize(int* aSize) noexcept = 0;
  virtual HRESULT GetFirst(GLPOSITION* aPos, IUnknown** aIU) noexcept = 0;
  virtual HRESULT GetLast(GLPOSITION* aPos, IUnknown** aIU) noexcept = 0;
  virtual HRESULT GetNext(GLPOSITION* aPos, IUnknown** aIU) noexcept = 0;
  virtual HRESULT GetPrev(GLPOSITION* aPos, IUnknown** aIU) noexcept = 0;
  virtual HRESULT CopyTo(IGLCollection* aColl) noexcept = 0;
  virtual HRESULT AppendTo(IGLCollection* aColl) noexcept = 0;

 protected:
  ~IGLCollection() = default;
};
