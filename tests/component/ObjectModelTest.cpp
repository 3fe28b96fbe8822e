// How objects live and are found: class factories, identity, counts, aggregation and the module's lock.

#include <gllib/GLEntryPoints.h>
#include <gllib/GLLib.h>
#include <gllib/GLPtr.h>
#include <gtest/gtest.h>

#include <thread>

#include "component/Module.h"
#include "component/PublishedIdentifiers.h"

namespace {

constexpr IID kUnknownInterface = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

GLPtr<IClassFactory> FactoryOf(const char* aClassId) {
  GLPtr<IClassFactory> factory;
  EXPECT_EQ(DllGetClassObject(IdentifierFromText(aClassId), IID_IClassFactory, factory.PutVoid()), S_OK);
  return factory;
}

GLPtr<IUnknown> Ask(IUnknown& aObject, const IID& aId) {
  GLPtr<IUnknown> face;
  aObject.QueryInterface(aId, face.PutVoid());
  return face;
}

/// An outer object that knows one interface besides its parts, and counts.
class Outer final : public IUnknown {
 public:
  HRESULT QueryInterface(REFIID riid, void** ppv) noexcept override {
    if (riid != IID_IUnknown) return m_pInner->QueryInterface(riid, ppv);
    *ppv = static_cast<IUnknown*>(this);
    AddRef();
    return S_OK;
  }
  ULONG AddRef() noexcept override { return ++m_uReferences; }
  ULONG Release() noexcept override { return --m_uReferences; }

  IUnknown* m_pInner = nullptr;
  ULONG m_uReferences = 1;
};

class EveryClass : public testing::TestWithParam<PublishedClass> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(ObjectModel, EveryClass, testing::ValuesIn(kPublishedClasses),
                         [](const auto& aInfo) { return aInfo.param.m_szName; });

TEST_P(EveryClass, AnswersToItsInterfacesAndToNoOther) {
  const LONG locks = g_iModuleLocks;
  {
    const auto factory = FactoryOf(GetParam().m_szId);
    GLPtr<IUnknown> object;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, object.PutVoid()), S_OK);
    for (const PublishedClass& other : kPublishedClasses) {
      const bool own = other.m_szId == GetParam().m_szId;
      for (const PublishedInterface& face : other.m_vInterfaces) {
        void* found = &found;
        const HRESULT result = object->QueryInterface(IdentifierFromText(face.m_szId), &found);
        ASSERT_EQ(result, own ? S_OK : E_NOINTERFACE) << face.m_szName;
        EXPECT_EQ(found != nullptr, own) << face.m_szName;
        if (!own) continue;
        const auto counted = GLPtr<IUnknown>::FromCounted(static_cast<IUnknown*>(found));
        EXPECT_EQ(Ask(*counted, IID_IUnknown), object) << "one identity behind " << face.m_szName;
      }
    }
    EXPECT_EQ(static_cast<void*>(object.Get()),
              Ask(*object, IdentifierFromText(GetParam().m_vInterfaces.front().m_szId)).Get())
        << "identity is the first interface";
    EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
  }
  EXPECT_EQ(g_iModuleLocks, locks) << "the last Release leaves nothing behind";
}

TEST_P(EveryClass, LivesAndEndsWithinAnOuterObject) {
  const LONG locks = g_iModuleLocks;
  {
    const auto factory = FactoryOf(GetParam().m_szId);
    const IID first = IdentifierFromText(GetParam().m_vInterfaces.front().m_szId);
    Outer outer;
    void* refused = &refused;
    EXPECT_EQ(factory->CreateInstance(&outer, first, &refused), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(refused, nullptr);
    EXPECT_EQ(g_iModuleLocks, locks + 1) << "only the factory is held";

    GLPtr<IUnknown> inner;
    ASSERT_EQ(factory->CreateInstance(&outer, IID_IUnknown, inner.PutVoid()), S_OK);
    outer.m_pInner = inner.Get();
    EXPECT_NE(inner.Get(), &outer);
    EXPECT_EQ(Ask(*inner, IID_IUnknown), inner) << "the inner identity stays its own";
    {
      const auto face = Ask(outer, first);
      ASSERT_TRUE(face);
      EXPECT_EQ(outer.m_uReferences, 2u) << "references to the inner object's interfaces are the outer's";
      EXPECT_EQ(Ask(*face, IID_IUnknown).Get(), &outer) << "identity is the outer's";
    }
    EXPECT_EQ(outer.m_uReferences, 1u);
    EXPECT_FALSE(Ask(outer, kUnknownInterface));
  }
  EXPECT_EQ(g_iModuleLocks, locks);
}

TEST(ObjectModel, RefusedCreationsLeaveNothingBehind) {
  const LONG locks = g_iModuleLocks;
  void* made = &made;
  EXPECT_EQ(DllGetClassObject(kUnknownInterface, IID_IClassFactory, &made), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(made, nullptr);
  EXPECT_EQ(DllGetClassObject(CLSID_GLFog, IID_IClassFactory, nullptr), E_POINTER);
  made = &made;
  EXPECT_EQ(DllGetClassObject(CLSID_GLFog, IID_IGLFog, &made), E_NOINTERFACE);
  EXPECT_EQ(made, nullptr);
  GLPtr<IClassFactory> factory;
  ASSERT_EQ(DllGetClassObject(CLSID_GLFog, IID_IClassFactory, factory.PutVoid()), S_OK);
  made = &made;
  EXPECT_EQ(factory->CreateInstance(nullptr, kUnknownInterface, &made), E_NOINTERFACE);
  EXPECT_EQ(made, nullptr);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IGLFog, nullptr), E_POINTER);
  factory.Reset();
  EXPECT_EQ(g_iModuleLocks, locks);
}

TEST(ObjectModel, ModuleStaysWhileAnythingOfItIsHeld) {
  ASSERT_EQ(DllCanUnloadNow(), S_OK);
  GLPtr<IClassFactory> factory, again;
  DllGetClassObject(CLSID_GLCoord, IID_IClassFactory, factory.PutVoid());
  DllGetClassObject(CLSID_GLCoord, IID_IUnknown, again.PutVoid());
  EXPECT_EQ(factory, again) << "one factory a class";
  EXPECT_EQ(DllCanUnloadNow(), S_FALSE) << "a factory";
  GLPtr<IGLCoord> object;
  factory->CreateInstance(nullptr, IID_IGLCoord, object.PutVoid());
  factory->LockServer(1);
  factory->LockServer(1);
  factory->LockServer(0);
  factory.Reset();
  again.Reset();
  EXPECT_EQ(DllCanUnloadNow(), S_FALSE) << "an object and a lock";
  object.Reset();
  EXPECT_EQ(DllCanUnloadNow(), S_FALSE) << "a lock";
  DllGetClassObject(CLSID_GLCoord, IID_IClassFactory, factory.PutVoid());
  factory->LockServer(0);
  factory.Reset();
  EXPECT_EQ(DllCanUnloadNow(), S_OK);
}

TEST(ObjectModel, CountsAreExactOnManyThreads) {
  const auto factory = FactoryOf(kPublishedClasses[1].m_szId);
  GLPtr<IGLDrawAttr> object;
  factory->CreateInstance(nullptr, IID_IGLDrawAttr, object.PutVoid());
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&object] {
      for (int k = 0; k < 5000; ++k) Ask(*object, IID_IGLDrawAttr);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(object->AddRef(), 2u);
  EXPECT_EQ(object->Release(), 1u);
}

namespace {

/// A member that still uses its collection while the collection ends, as one with a counted pointer does.
class Returning final : public IUnknown {
 public:
  HRESULT QueryInterface(REFIID, void**) noexcept override { return E_NOINTERFACE; }
  ULONG AddRef() noexcept override { return ++m_uReferences; }
  ULONG Release() noexcept override {
    if (--m_uReferences == 1 && m_pHolder != nullptr) {
      ++m_iEnds;
      const auto again = GLPtr<IUnknown>::FromBorrowed(m_pHolder);
    }
    return m_uReferences;
  }

  IUnknown* m_pHolder = nullptr;
  ULONG m_uReferences = 1;
  int m_iEnds = 0;
};

/// An outer object that notes what is called after its end.
class Ending final : public IUnknown {
 public:
  HRESULT QueryInterface(REFIID, void**) noexcept override { return E_NOINTERFACE; }
  ULONG AddRef() noexcept override { return Count(1); }
  ULONG Release() noexcept override { return Count(-1); }

  bool m_bEnded = false;
  int m_iLateCalls = 0;

 private:
  ULONG Count(int aStep) noexcept {
    if (m_bEnded) ++m_iLateCalls;
    return static_cast<ULONG>(m_iReferences += aStep);
  }
  int m_iReferences = 1;
};

}  // namespace

TEST(ObjectEnd, IsNotRepeatedByAMemberThatCountsItsCollectionThen) {
  for (const bool aggregated : {false, true}) {
    SCOPED_TRACE(aggregated ? "within an outer object" : "of its own");
    const LONG locks = g_iModuleLocks;
    Returning member;
    Ending outer;
    {
      const auto factory = FactoryOf("C1F0DF9D-ECE9-4EDF-82A3-700105F2D74F");
      GLPtr<IUnknown> object;
      ASSERT_TRUE(factory);
      ASSERT_EQ(factory->CreateInstance(aggregated ? &outer : nullptr, IID_IUnknown, object.PutVoid()), S_OK);
      IGLCollection* collection = nullptr;  // its count is the outer object's, or the object's own
      ASSERT_EQ(object->QueryInterface(IGLCollection::Identifier, reinterpret_cast<void**>(&collection)),
                S_OK);
      collection->Add(&member);
      member.m_pHolder = collection;
      collection->Release();
      outer.m_bEnded = true;
    }
    EXPECT_EQ(member.m_iEnds, 1);
    EXPECT_EQ(outer.m_iLateCalls, 0) << "the outer object has gone by then";
    EXPECT_EQ(g_iModuleLocks, locks) << "ended twice, or not at all";
  }
}
