// The collection: slots, walks, references, copies, and calls that come back in the middle.

#include <gllib/GLClasses.h>
#include <gllib/IGLCollection.h>
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "component/CreateObject.h"

namespace {

/// A member that counts its references and tells when one is given back.
struct Member final : IUnknown {
  HRESULT QueryInterface(REFIID, void** ppv) noexcept override {
    *ppv = nullptr;
    return E_NOINTERFACE;
  }
  ULONG AddRef() noexcept override { return ++m_uReferences; }
  ULONG Release() noexcept override {
    const ULONG left = --m_uReferences;
    if (m_pfnReleased) m_pfnReleased();
    return left;
  }
  std::atomic<ULONG> m_uReferences{0};
  std::function<void()> m_pfnReleased;
};

using Walk = std::vector<std::pair<int, int>>;  // slot, member

struct Collection : testing::Test {
  static GLPtr<IGLCollection> New() { return CreateObject<IGLCollection>(CLSID_GLCollection); }
  void Fill(int aFirst, int aCount) {
    for (int i = aFirst; i < aFirst + aCount; ++i) ASSERT_EQ(m_Coll->Add(&m_Members[i]), S_OK);
  }
  using First = HRESULT (IGLCollection::*)(GLPOSITION*, IUnknown**) noexcept;
  /// A whole walk; gives the references back, and checks its end.
  Walk WalkBy(IGLCollection& aColl, First aFirst, First aNext) {
    Walk walk;
    GLPOSITION position;
    IUnknown* member = nullptr;
    HRESULT result = (aColl.*aFirst)(&position, &member);
    while (SUCCEEDED(result)) {
      walk.emplace_back(position.m_iIndex, static_cast<int>(static_cast<Member*>(member) - m_Members));
      member->Release();
      result = (aColl.*aNext)(&position, &member);
    }
    EXPECT_EQ(result, E_FAIL);
    EXPECT_EQ(member, nullptr);
    return walk;
  }
  Walk Up(IGLCollection& aColl) { return WalkBy(aColl, &IGLCollection::GetFirst, &IGLCollection::GetNext); }
  Walk Down(IGLCollection& aColl) { return WalkBy(aColl, &IGLCollection::GetLast, &IGLCollection::GetPrev); }
  static int SizeOf(IGLCollection& aColl) {
    int size = -1;
    EXPECT_EQ(aColl.GetSize(&size), S_OK);
    return size;
  }
  bool Has(Member& aMember) {
    LONG has = -1;
    EXPECT_EQ(m_Coll->Has(&aMember, &has), S_OK);
    return has == 1;
  }

  Member m_Members[400];
  GLPtr<IGLCollection> m_Coll = New();
};

}  // namespace

TEST_F(Collection, FillsEachBlockFromItsTop) {
  Fill(0, 12);
  EXPECT_EQ(Up(*m_Coll), (Walk{{0, 9},
                               {1, 8},
                               {2, 7},
                               {3, 6},
                               {4, 5},
                               {5, 4},
                               {6, 3},
                               {7, 2},
                               {8, 1},
                               {9, 0},
                               {28, 11},
                               {29, 10}}));
  const Walk up = Up(*m_Coll);
  EXPECT_EQ(Down(*m_Coll), Walk(up.rbegin(), up.rend()));
}

TEST_F(Collection, GrowsByDoublingStepsUpToAHundred) {
  struct Case {
    int m_iMembers, m_iTopSlot;
  };
  int added = 0;
  for (const auto [members, top] : std::initializer_list<Case>{
           {1, 9}, {11, 29}, {31, 69}, {71, 149}, {151, 249}, {251, 349}, {351, 449}}) {
    Fill(added, members - added);
    added = members;
    EXPECT_EQ(Down(*m_Coll).front(), std::pair(top, members - 1));
    EXPECT_EQ(SizeOf(*m_Coll), members);
  }
}

TEST_F(Collection, AHoleIsTakenOnlyWhenNoHigherSlotIsFree) {
  Fill(0, 9);                     // slots 9 to 1
  m_Coll->Remove(&m_Members[2]);  // slot 7
  m_Coll->Remove(&m_Members[5]);  // slot 4
  Fill(20, 3);
  EXPECT_EQ(Up(*m_Coll),
            (Walk{{0, 22}, {1, 8}, {2, 7}, {3, 6}, {4, 21}, {5, 4}, {6, 3}, {7, 20}, {8, 1}, {9, 0}}));
  Fill(30, 1);
  EXPECT_EQ(Down(*m_Coll).front(), std::pair(29, 30));
}

TEST_F(Collection, CountsOneReferenceForEachSlot) {
  Member& twice = m_Members[0];
  EXPECT_EQ(m_Coll->Add(nullptr), S_OK);
  EXPECT_EQ(m_Coll->Remove(nullptr), S_OK);
  EXPECT_EQ(m_Coll->Remove(&twice), S_OK);
  EXPECT_EQ(m_Coll->Empty(), S_OK);
  m_Coll->Add(&twice);
  m_Coll->Add(&m_Members[1]);
  m_Coll->Add(&twice);
  EXPECT_EQ(SizeOf(*m_Coll), 3);
  EXPECT_EQ(twice.m_uReferences, 2u);
  m_Coll->Remove(&twice);
  EXPECT_EQ(Up(*m_Coll), (Walk{{8, 1}, {9, 0}})) << "the lower one went";
  EXPECT_TRUE(Has(twice));
  m_Coll->Remove(&twice);
  EXPECT_FALSE(Has(twice));
  EXPECT_EQ(twice.m_uReferences, 0u);
  Fill(2, 30);
  m_Coll->Empty();
  EXPECT_EQ(SizeOf(*m_Coll), 0);
  m_Coll->Add(&twice);
  EXPECT_EQ(Up(*m_Coll), (Walk{{9, 0}})) << "as new again";
  m_Coll.Reset();
  for (const Member& member : m_Members) EXPECT_EQ(member.m_uReferences, 0u);
}

TEST_F(Collection, AWalkEndsOutsideTheSlotsAndDoesNotComeBack) {
  GLPOSITION position{77};
  IUnknown* member = &m_Members[0];
  EXPECT_EQ(m_Coll->GetFirst(&position, &member), E_FAIL);
  EXPECT_EQ(position.m_iIndex, 0) << "the capacity";
  EXPECT_EQ(member, nullptr);
  EXPECT_EQ(m_Coll->GetLast(&position, &member), E_FAIL);
  EXPECT_EQ(position.m_iIndex, -1);

  Fill(0, 3);  // slots 9, 8, 7
  struct Case {
    bool m_bUp;
    int m_iFrom, m_iTo;
    bool m_bFound;
  };
  constexpr int kMin = std::numeric_limits<int>::min(), kMax = std::numeric_limits<int>::max();
  for (const auto& [up, from, to, found] : std::initializer_list<Case>{{true, 7, 8, true},
                                                                       {true, 0, 7, true},
                                                                       {true, 9, 10, false},
                                                                       {true, 10, 11, false},
                                                                       {true, -1, -1, false},
                                                                       {true, -9, -9, false},
                                                                       {true, kMax, kMax, false},
                                                                       {false, 9, 8, true},
                                                                       {false, 7, -1, false},
                                                                       {false, 0, -1, false},
                                                                       {false, -1, -2, false},
                                                                       {false, 10, 10, false},
                                                                       {false, 50, 50, false},
                                                                       {false, kMin, kMin, false}}) {
    position.m_iIndex = from;
    member = nullptr;
    EXPECT_EQ(up ? m_Coll->GetNext(&position, &member) : m_Coll->GetPrev(&position, &member),
              found ? S_OK : E_FAIL)
        << from;
    EXPECT_EQ(position.m_iIndex, to) << "from " << from;
    EXPECT_EQ(member != nullptr, found) << from;
    if (member != nullptr) member->Release();
  }
  position.m_iIndex = 7;
  m_Coll->Remove(&m_Members[2]);
  m_Coll->Remove(&m_Members[1]);
  ASSERT_EQ(m_Coll->GetNext(&position, &member), S_OK) << "removals don't disturb a walk";
  EXPECT_EQ(position.m_iIndex, 9);
  member->Release();
}

TEST_F(Collection, CopiesAndAppendsInSlotOrder) {
  const auto other = New();
  Fill(0, 12);
  other->Add(&m_Members[50]);
  EXPECT_EQ(m_Coll->AppendTo(other.Get()), S_OK);
  EXPECT_EQ(SizeOf(*other), 13);
  EXPECT_EQ(m_Coll->CopyTo(other.Get()), S_OK);
  // The source's slot order is members 9 to 0, 11, 10: they fill slots 9 to 0, 29, 28.
  EXPECT_EQ(Up(*other), (Walk{{0, 0},
                              {1, 1},
                              {2, 2},
                              {3, 3},
                              {4, 4},
                              {5, 5},
                              {6, 6},
                              {7, 7},
                              {8, 8},
                              {9, 9},
                              {28, 10},
                              {29, 11}}));
  EXPECT_EQ(m_Members[50].m_uReferences, 0u);
  EXPECT_EQ(m_Members[3].m_uReferences, 2u);
  EXPECT_EQ(m_Coll->AppendTo(m_Coll.Get()), E_INVALIDARG);
  EXPECT_EQ(SizeOf(*m_Coll), 12);
  EXPECT_EQ(m_Coll->CopyTo(m_Coll.Get()), S_OK);
  EXPECT_EQ(SizeOf(*m_Coll), 0);
  EXPECT_EQ(m_Coll->CopyTo(other.Get()), S_OK);
  EXPECT_EQ(SizeOf(*other), 0) << "a copy of nothing";
}

TEST_F(Collection, NullWhereAValueMustComeOrGoIsRefused) {
  Fill(0, 1);
  GLPOSITION position{3};
  IUnknown* member = &m_Members[9];
  EXPECT_EQ(m_Coll->Has(&m_Members[0], nullptr), E_INVALIDARG);
  EXPECT_EQ(m_Coll->GetSize(nullptr), E_INVALIDARG);
  EXPECT_EQ(m_Coll->CopyTo(nullptr), E_INVALIDARG);
  EXPECT_EQ(m_Coll->AppendTo(nullptr), E_INVALIDARG);
  for (const First step : {&IGLCollection::GetFirst, &IGLCollection::GetLast, &IGLCollection::GetNext,
                           &IGLCollection::GetPrev}) {
    EXPECT_EQ((m_Coll.Get()->*step)(nullptr, &member), E_INVALIDARG);
    EXPECT_EQ((m_Coll.Get()->*step)(&position, nullptr), E_INVALIDARG);
  }
  EXPECT_EQ(position.m_iIndex, 3);
  EXPECT_EQ(member, &m_Members[9]);
  LONG has = 5;
  EXPECT_EQ(m_Coll->Has(nullptr, &has), S_OK);
  EXPECT_EQ(has, 0);
}

TEST_F(Collection, AMembersReleaseMayComeBackIn) {
  Fill(0, 15);
  m_Members[4].m_pfnReleased = [&] {
    m_Coll->Remove(&m_Members[5]);
    m_Coll->Add(&m_Members[20]);
  };
  m_Coll->Remove(&m_Members[4]);
  EXPECT_EQ(SizeOf(*m_Coll), 14);
  m_Coll->Add(&m_Members[4]);
  m_Coll->Empty();
  EXPECT_EQ(m_Members[5].m_uReferences, 0u);
  EXPECT_EQ(m_Members[20].m_uReferences, 1u) << "came in after the emptying";
  EXPECT_EQ(Up(*m_Coll), (Walk{{9, 20}}));
  m_Members[4].m_pfnReleased = {};
}

TEST_F(Collection, CopiesThatCrossDoNotLockUp) {
  const auto other = New();
  Fill(0, 20);
  // A member whose end waits for a thread that uses the source.
  m_Members[60].m_pfnReleased = [&] { std::thread([&] { SizeOf(*m_Coll); }).join(); };
  other->Add(&m_Members[60]);
  EXPECT_EQ(m_Coll->CopyTo(other.Get()), S_OK);
  std::thread there([&] {
    for (int i = 0; i < 200; ++i) m_Coll->CopyTo(other.Get());
  });
  std::thread changing([&] {
    for (int i = 0; i < 400; ++i) {
      m_Coll->Add(&m_Members[100]);
      m_Coll->Remove(&m_Members[100]);
    }
  });
  for (int i = 0; i < 200; ++i) other->CopyTo(m_Coll.Get());
  there.join();
  changing.join();
  m_Coll->Empty();
  other->Empty();
  for (const Member& member : m_Members) EXPECT_EQ(member.m_uReferences, 0u) << &member - m_Members;
}
