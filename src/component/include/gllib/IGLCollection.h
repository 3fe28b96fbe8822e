/// @file
/// GLCollection: numbered slots that hold objects. The Enum operations of other objects fill one that a host
/// makes.

#pragma once

#include <gllib/GLTypes.h>

/// An ordered set of slots, each empty or holding one counted reference. A member keeps its slot for as long
/// as it stays, which is what makes a walk safe against removals.
///
/// New members take the highest empty slot, and slots come in blocks that grow at the high end (10, 30, 70,
/// 150, 250, 350, ...). So with up to ten members GetFirst and GetNext walk from the latest to the earliest,
/// GetLast and GetPrev the other way. An object may stand in several slots. Identity is the equality of the
/// pointers that are passed: pass the same interface of an object every time.
///
///     GLPOSITION at;
///     GLPtr<IUnknown> member;
///     for (HRESULT r = all->GetFirst(&at, member.Put()); r == S_OK; r = all->GetNext(&at, member.Put())) ...
///
/// Threads: any, at any time; each operation is whole, under the collection's own lock. Members are released
/// after that lock is left: a member's last Release may use the collection, and finds it without what the
/// operation removed.
/// Results: S_OK; E_INVALIDARG when a pointer is null; what else stands at the operation.
struct IGLCollection : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x1BF499B7, 0xCFCC, 0x486F, {0xBC, 0x74, 0x8E, 0xBC, 0xC2, 0x91, 0x6E, 0x94}};

  /// Adds an object, with a reference of its own.
  /// @param aIU null does nothing
  /// @return S_OK; E_FAIL when there is no memory: nothing changed
  virtual HRESULT Add(IUnknown* aIU) noexcept = 0;
  /// Removes an object once, from the lowest slot that holds it.
  /// @param aIU null, or an object that isn't a member, does nothing
  virtual HRESULT Remove(IUnknown* aIU) noexcept = 0;
  /// Removes all.
  virtual HRESULT Empty() noexcept = 0;
  /// Tells whether an object is a member.
  /// @param aIU  null is no member
  /// @param aHas receives 1 or 0
  virtual HRESULT Has(IUnknown* aIU, LONG* aHas) noexcept = 0;
  /// @param aSize receives the number of members
  virtual HRESULT GetSize(int* aSize) noexcept = 0;

  /// Starts a walk upward.
  /// @param aPos receives the slot; with no member the number of slots
  /// @param aIU  receives the member, counted: the caller releases it; null with no member
  /// @return S_OK; E_FAIL when there is none
  virtual HRESULT GetFirst(GLPOSITION* aPos, IUnknown** aIU) noexcept = 0;
  /// Starts a walk downward. As GetFirst; with no member aPos receives -1.
  virtual HRESULT GetLast(GLPOSITION* aPos, IUnknown** aIU) noexcept = 0;
  /// Goes on upward, whether or not the slot at aPos still holds its member.
  /// @param aPos the slot to go on from; receives the one found. Once the walk has run off either end it
  ///             can't come back
  /// @param aIU  receives the member, counted; null at the end
  /// @return S_OK; E_FAIL at the end
  virtual HRESULT GetNext(GLPOSITION* aPos, IUnknown** aIU) noexcept = 0;
  /// Goes on downward. As GetNext.
  virtual HRESULT GetPrev(GLPOSITION* aPos, IUnknown** aIU) noexcept = 0;

  /// Empties another collection and adds all members to it, upward from the lowest slot.
  /// @param aColl this collection itself ends up empty; one that runs out of memory lacks members, without a
  ///              sign
  /// @return S_OK; E_OUTOFMEMORY, with nothing changed
  virtual HRESULT CopyTo(IGLCollection* aColl) noexcept = 0;
  /// Adds all members to another collection. As CopyTo without emptying it.
  /// @return S_OK; E_INVALIDARG also when aColl is this collection itself; E_OUTOFMEMORY, with nothing
  ///         changed
  virtual HRESULT AppendTo(IGLCollection* aColl) noexcept = 0;

 protected:
  ~IGLCollection() = default;
};
