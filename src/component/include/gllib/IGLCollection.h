/// @file
/// GLCollection: numbered slots that hold objects. The host creates a collection; the Enum operations of
/// other objects fill it.

#pragma once

#include <gllib/GLTypes.h>

/// An ordered set of slots, each empty or holding one counted reference. A member keeps its slot until it is
/// removed, so removals during an iteration are safe.
///
/// A new member takes the highest empty slot. If all slots are full, the collection grows at the high end (to
/// 10, 30, 70, 150, 250, 350, ... slots). With up to ten members GetFirst and GetNext therefore return the
/// latest member first, GetLast and GetPrev the earliest first. An object may be in several slots. Members
/// are compared by pointer: always pass the same interface of an object.
///
///     GLPOSITION at;
///     GLPtr<IUnknown> member;
///     for (HRESULT r = all->GetFirst(&at, member.Put()); r == S_OK; r = all->GetNext(&at, member.Put())) ...
///
/// Threads: any, at any time; the collection's lock makes each operation atomic. Members are released after
/// the lock: the last Release of a member may use the collection, which no longer contains the removed
/// members.
/// Results: S_OK; E_INVALIDARG when a pointer is null; other results are documented at the operation.
struct IGLCollection : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x1BF499B7, 0xCFCC, 0x486F, {0xBC, 0x74, 0x8E, 0xBC, 0xC2, 0x91, 0x6E, 0x94}};

  /// Adds an object and takes a reference to it.
  /// @param aIU null adds nothing
  /// @return S_OK; E_FAIL if memory is short (nothing changes)
  virtual HRESULT Add(IUnknown* aIU) noexcept = 0;
  /// Removes an object from the lowest slot that holds it.
  /// @param aIU null, or an object that is not a member, changes nothing
  virtual HRESULT Remove(IUnknown* aIU) noexcept = 0;
  /// Removes all members.
  virtual HRESULT Empty() noexcept = 0;
  /// Returns whether an object is a member.
  /// @param aIU  null is no member
  /// @param aHas receives 1 or 0
  virtual HRESULT Has(IUnknown* aIU, LONG* aHas) noexcept = 0;
  /// Returns the number of members.
  /// @param aSize receives the number
  virtual HRESULT GetSize(int* aSize) noexcept = 0;

  /// Starts an iteration at the lowest occupied slot.
  /// @param aPos receives the slot; the number of slots if there are no members
  /// @param aIU  receives the member, counted: the caller releases it; null if there are no members
  /// @return S_OK; E_FAIL if there are no members
  virtual HRESULT GetFirst(GLPOSITION* aPos, IUnknown** aIU) noexcept = 0;
  /// Starts an iteration at the highest occupied slot. Same as GetFirst, but aPos receives -1 if there are no
  /// members.
  virtual HRESULT GetLast(GLPOSITION* aPos, IUnknown** aIU) noexcept = 0;
  /// Continues at the next higher occupied slot. The member at aPos may have been removed.
  /// @param aPos the current slot; receives the slot found. After the end an iteration cannot be continued or
  ///             reversed
  /// @param aIU  receives the member, counted; null at the end
  /// @return S_OK; E_FAIL at the end
  virtual HRESULT GetNext(GLPOSITION* aPos, IUnknown** aIU) noexcept = 0;
  /// Continues at the next lower occupied slot. Otherwise as GetNext.
  virtual HRESULT GetPrev(GLPOSITION* aPos, IUnknown** aIU) noexcept = 0;

  /// Replaces the members of another collection by copies of this one's, from the lowest slot upward.
  /// @param aColl the target. If it is this collection, it becomes empty. If the target cannot grow, members
  ///              are missing although S_OK is returned
  /// @return S_OK; E_OUTOFMEMORY (nothing changes)
  virtual HRESULT CopyTo(IGLCollection* aColl) noexcept = 0;
  /// Adds all members to another collection. Same as CopyTo, but the target keeps its members.
  /// @return S_OK; E_INVALIDARG also if aColl is this collection; E_OUTOFMEMORY (nothing changes)
  virtual HRESULT AppendTo(IGLCollection* aColl) noexcept = 0;

 protected:
  ~IGLCollection() = default;
};
