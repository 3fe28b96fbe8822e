// The collection: slots, iteration, references, copies, and reentrant calls. No display.

#include "support/Test.h"

namespace {

/// A member that counts its references and reports a release.
struct Member final : IUnknown {
  HRESULT QueryInterface(REFIID, void**) noexcept override { return E_NOINTERFACE; }
  ULONG AddRef() noexcept override { return ++m_uReferences; }
  ULONG Release() noexcept override {
    const ULONG left = --m_uReferences;
    if (m_pfnReleased) m_pfnReleased();
    return left;
  }
  std::atomic<ULONG> m_uReferences{0};
  std::function<void()> m_pfnReleased;
};

struct Collection : testing::Test {
  static GLPtr<IGLCollection> New() { return GLCreate<IGLCollection>(CLSID_GLCollection); }
  ~Collection() override {
    m_Coll.Reset();
    for (const Member& member : m_Members) EXPECT_EQ(member.m_uReferences, 0u) << &member - m_Members;
  }
  void Fill(int aFirst, int aCount) {
    for (int i = aFirst; i < aFirst + aCount; ++i) ASSERT_EQ(m_Coll->Add(&m_Members[i]), S_OK);
  }
  using Step = HRESULT (IGLCollection::*)(GLPOSITION*, IUnknown**) noexcept;
  /// Returns the members by slot, -1 for a free slot, from an iteration upwards. An iteration downwards must
  /// return the same.
  std::vector<int> Slots(const GLPtr<IGLCollection>& aColl) {
    std::vector<int> up = Walk(*aColl, &IGLCollection::GetFirst, &IGLCollection::GetNext);
    EXPECT_EQ(up, Walk(*aColl, &IGLCollection::GetLast, &IGLCollection::GetPrev));
    return up;
  }
  std::vector<int> Walk(IGLCollection& aColl, Step aFirst, Step aNext) {
    std::vector<int> slots;
    GLPOSITION position;
    IUnknown* member = nullptr;
    int size = 0;
    HRESULT result = (aColl.*aFirst)(&position, &member);
    for (; result == S_OK; result = (aColl.*aNext)(&position, &member), --size) {
      const auto slot = static_cast<std::size_t>(position.m_iIndex);
      if (slots.size() <= slot) slots.resize(slot + 1, -1);
      slots[slot] = static_cast<int>(static_cast<Member*>(member) - m_Members);
      member->Release();
    }
    EXPECT_EQ(result, E_FAIL);
    int count = -1;
    EXPECT_EQ(aColl.GetSize(&count), S_OK);
    EXPECT_EQ(count + size, 0);
    return slots;
  }

  Member m_Members[400];
  GLPtr<IGLCollection> m_Coll = New();
};

}  // namespace

TEST_F(Collection, FillsEachBlockFromItsTop) {
  Fill(0, 9);                                                // slots 9 to 1
  for (const int i : {2, 5}) m_Coll->Remove(&m_Members[i]);  // slots 7 and 4
  Fill(20, 3);
  EXPECT_EQ(Slots(m_Coll), (std::vector{22, 8, 7, 6, 21, 4, 3, 20, 1, 0}));
  m_Coll->Add(&m_Members[20]);
  EXPECT_EQ(Slots(m_Coll)[29], 20);
  m_Coll->Remove(&m_Members[20]);
  EXPECT_EQ(Slots(m_Coll)[7], -1) << "the lower of two is removed";
  m_Coll->Empty();
  int added = 0;
  for (const auto& [members, top] :
       {std::pair{1, 9}, {11, 29}, {31, 69}, {71, 149}, {151, 249}, {251, 349}}) {
    Fill(added, members - added);
    added = members;
    EXPECT_EQ(Slots(m_Coll).size(), static_cast<std::size_t>(top + 1));
  }
}

TEST_F(Collection, IterationEndsOutsideTheSlots) {
  GLPOSITION position{77};
  IUnknown* member = &m_Members[0];
  EXPECT_EQ(m_Coll->GetFirst(&position, &member), E_FAIL);
  EXPECT_EQ(position.m_iIndex, 0) << "the capacity";
  EXPECT_EQ(m_Coll->GetLast(&position, &member), E_FAIL);
  EXPECT_EQ(position.m_iIndex, -1);
  Fill(0, 3);  // slots 9, 8, 7
  constexpr int kMin = std::numeric_limits<int>::min(), kMax = std::numeric_limits<int>::max();
  const struct {
    bool up;
    int from, to;
    bool found;
  } cases[] = {{true, 0, 7, true},        {true, 9, 10, false},      {true, 10, 11, false},
               {true, -1, -1, false},     {true, kMax, kMax, false}, {false, 9, 8, true},
               {false, 7, -1, false},     {false, -1, -2, false},    {false, 10, 10, false},
               {false, kMin, kMin, false}};
  for (const auto& [up, from, to, found] : cases) {
    position.m_iIndex = from;
    const Step step = up ? &IGLCollection::GetNext : &IGLCollection::GetPrev;
    EXPECT_EQ((m_Coll.Get()->*step)(&position, &member), found ? S_OK : E_FAIL) << from;
    EXPECT_EQ(position.m_iIndex, to) << "from " << from;
    EXPECT_EQ(member != nullptr, found) << from;
    if (member != nullptr) member->Release();
    EXPECT_EQ((m_Coll.Get()->*step)(&position, nullptr), E_INVALIDARG);
  }
}

TEST_F(Collection, CopiesAndAppendsInSlotOrder) {
  const auto other = New();
  Fill(0, 12);
  other->Add(&m_Members[50]);
  EXPECT_EQ(m_Coll->AppendTo(other.Get()), S_OK);
  EXPECT_EQ(Slots(other)[9], 50);
  EXPECT_EQ(m_Coll->CopyTo(other.Get()), S_OK);
  std::vector<int> expected(30, -1);  // by slot
  for (int i = 0; i < 10; ++i) expected[static_cast<std::size_t>(i)] = i;
  expected[28] = 10;
  expected[29] = 11;
  EXPECT_EQ(Slots(other), expected);
  EXPECT_EQ(m_Coll->AppendTo(m_Coll.Get()), E_INVALIDARG);
  EXPECT_EQ(m_Coll->CopyTo(nullptr), E_INVALIDARG);
  EXPECT_EQ(m_Coll->CopyTo(m_Coll.Get()), S_OK);
  EXPECT_EQ(m_Coll->CopyTo(other.Get()), S_OK);
  EXPECT_EQ(Slots(other), std::vector<int>()) << "a copy of an empty collection";
}

TEST_F(Collection, ReleaseOfAMemberMayUseTheCollection) {
  const auto other = New();
  Fill(0, 15);
  m_Members[4].m_pfnReleased = [&] { m_Coll->Add(&m_Members[20]); };
  m_Coll->Empty();
  m_Members[4].m_pfnReleased = {};
  EXPECT_EQ(Slots(m_Coll), (std::vector{-1, -1, -1, -1, -1, -1, -1, -1, -1, 20})) << "like a new one";
  Member& waiting = m_Members[60];
  other->Add(&waiting);
  waiting.m_pfnReleased = [&] { std::thread([&] { Slots(m_Coll); }).join(); };
  EXPECT_EQ(m_Coll->CopyTo(other.Get()), S_OK);
}

TEST_F(Collection, CopiesInOppositeDirectionsDoNotDeadlock) {
  const auto other = New();
  Fill(0, 20);
  const std::jthread there([&] {
    for (int i = 0; i < 300; ++i) m_Coll->CopyTo(other.Get());
  });
  const std::jthread changing([&] {
    for (int i = 0; i < 600; ++i) {
      m_Coll->Add(&m_Members[100]);
      m_Coll->Remove(&m_Members[100]);
    }
  });
  for (int i = 0; i < 300; ++i) other->CopyTo(m_Coll.Get());
}
