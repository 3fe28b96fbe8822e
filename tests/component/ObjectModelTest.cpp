// The object model: class factories, identity, reference counts, aggregation, and locks of the module. No
// display.

#include "component/IdlClasses.h"
#include "component/Module.h"

namespace {

constexpr IID kUnknownInterface = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

GLPtr<IClassFactory> FactoryOf(const CLSID& aClassId) {
  GLPtr<IClassFactory> factory;
  EXPECT_EQ(DllGetClassObject(aClassId, IID_IClassFactory, factory.PutVoid()), S_OK);
  return factory;
}

GLPtr<IUnknown> Ask(IUnknown& aObject, const IID& aId) {
  GLPtr<IUnknown> face;
  aObject.QueryInterface(aId, face.PutVoid());
  return face;
}

/// An outer object whose other interfaces are those of its inner object. It counts its references, and calls
/// after its end.
class Outer final : public IUnknown {
 public:
  HRESULT QueryInterface(REFIID riid, void** ppv) noexcept override {
    if (riid != IID_IUnknown) return m_pInner->QueryInterface(riid, ppv);
    *ppv = static_cast<IUnknown*>(this);
    AddRef();
    return S_OK;
  }
  ULONG AddRef() noexcept override { return Count(1); }
  ULONG Release() noexcept override { return Count(-1); }
  ULONG Count(int aStep) noexcept {
    if (m_bEnded) ++m_iLateCalls;
    return static_cast<ULONG>(m_iReferences += aStep);
  }

  IUnknown* m_pInner = nullptr;
  bool m_bEnded = false;
  int m_iReferences = 1, m_iLateCalls = 0;
};

}  // namespace

TEST(ObjectModel, EachClassHasExactlyItsInterfaces) {
  const LONG locks = g_iModuleLocks;
  for (const IdlClass& own : IdlClasses()) {
    SCOPED_TRACE(own.m_sName);
    GLPtr<IUnknown> object;
    ASSERT_EQ(
        FactoryOf(IdentifierFromText(own.m_sId))->CreateInstance(nullptr, IID_IUnknown, object.PutVoid()),
        S_OK);
    for (const IdlClass& other : IdlClasses()) {
      for (const IdlInterface& face : other.m_vInterfaces) {
        void* found = &found;
        const HRESULT result = object->QueryInterface(IdentifierFromText(face.m_sId), &found);
        ASSERT_EQ(result, &other == &own ? S_OK : E_NOINTERFACE) << face.m_sName;
        EXPECT_EQ(found != nullptr, &other == &own) << face.m_sName;
        if (found == nullptr) continue;
        const auto counted = GLPtr<IUnknown>::FromCounted(static_cast<IUnknown*>(found));
        EXPECT_EQ(Ask(*counted, IID_IUnknown), object) << "the identity behind " << face.m_sName;
      }
    }
    EXPECT_EQ(static_cast<void*>(object.Get()),
              Ask(*object, IdentifierFromText(own.m_vInterfaces.front().m_sId)).Get())
        << "the first interface";
  }
  EXPECT_EQ(g_iModuleLocks, locks) << "the last Release leaves no module lock";
}

TEST(ObjectModel, EachClassCanBeAggregated) {
  const LONG locks = g_iModuleLocks;
  for (const IdlClass& own : IdlClasses()) {
    SCOPED_TRACE(own.m_sName);
    const auto factory = FactoryOf(IdentifierFromText(own.m_sId));
    const IID first = IdentifierFromText(own.m_vInterfaces.front().m_sId);
    Outer outer;
    void* refused = &refused;
    EXPECT_EQ(factory->CreateInstance(&outer, first, &refused), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(refused, nullptr);
    EXPECT_EQ(g_iModuleLocks, locks + 1) << "only the factory is held";

    GLPtr<IUnknown> inner;
    ASSERT_EQ(factory->CreateInstance(&outer, IID_IUnknown, inner.PutVoid()), S_OK);
    outer.m_pInner = inner.Get();
    EXPECT_EQ(Ask(*inner, IID_IUnknown), inner) << "the inner object has a separate identity";
    {
      const auto face = Ask(outer, first);
      ASSERT_TRUE(face);
      EXPECT_EQ(outer.m_iReferences, 2) << "the outer object counts its references";
      EXPECT_EQ(Ask(*face, IID_IUnknown).Get(), &outer) << "the outer object is the identity";
    }
    EXPECT_EQ(outer.m_iReferences, 1);
    EXPECT_FALSE(Ask(outer, kUnknownInterface));
  }
  EXPECT_EQ(g_iModuleLocks, locks);
}

TEST(ObjectModel, FailedCreationsLeaveNoReference) {
  const LONG locks = g_iModuleLocks;
  {
    const auto factory = FactoryOf(CLSID_GLFog);
    GLPtr<IUnknown> fog;
    factory->CreateInstance(nullptr, IID_IUnknown, fog.PutVoid());
    EXPECT_EQ(DllGetClassObject(CLSID_GLFog, IID_IClassFactory, nullptr), E_POINTER);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IGLFog, nullptr), E_POINTER);
    EXPECT_EQ(fog->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    void* made[] = {&made, &made, &made};
    EXPECT_EQ(DllGetClassObject(kUnknownInterface, IID_IClassFactory, &made[0]), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(DllGetClassObject(CLSID_GLFog, IID_IGLFog, &made[1]), E_NOINTERFACE);
    EXPECT_EQ(factory->CreateInstance(nullptr, kUnknownInterface, &made[2]), E_NOINTERFACE);
    for (const void* one : made) EXPECT_EQ(one, nullptr);
  }
  EXPECT_EQ(g_iModuleLocks, locks);
}

TEST(ObjectModel, ModuleStaysLoadedWhileInUse) {
  ASSERT_EQ(DllCanUnloadNow(), S_OK);
  auto factory = FactoryOf(CLSID_GLCoord), again = FactoryOf(CLSID_GLCoord);
  EXPECT_EQ(factory, again) << "one factory per class";
  EXPECT_EQ(DllCanUnloadNow(), S_FALSE) << "a factory exists";
  GLPtr<IGLCoord> object;
  factory->CreateInstance(nullptr, IID_IGLCoord, object.PutVoid());
  for (const BOOL lock : {1, 1, 0}) factory->LockServer(lock);
  factory.Reset();
  again.Reset();
  EXPECT_EQ(DllCanUnloadNow(), S_FALSE) << "an object and a lock exist";
  object.Reset();
  EXPECT_EQ(DllCanUnloadNow(), S_FALSE) << "a lock exists";
  FactoryOf(CLSID_GLCoord)->LockServer(0);
  EXPECT_EQ(DllCanUnloadNow(), S_OK);
}

TEST(ObjectModel, CountsAreExactOnManyThreads) {
  GLPtr<IGLDrawAttr> object;
  FactoryOf(CLSID_GLDrawAttr)->CreateInstance(nullptr, IID_IGLDrawAttr, object.PutVoid());
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

/// A member that uses its collection while the collection ends, as a member with a counted pointer does.
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

}  // namespace

TEST(ObjectEnd, HappensOnceIfAMemberCountsItsCollection) {
  for (const bool aggregated : {false, true}) {
    SCOPED_TRACE(aggregated ? "aggregated" : "not aggregated");
    const LONG locks = g_iModuleLocks;
    Returning member;
    Outer outer;
    {
      GLPtr<IUnknown> object;
      FactoryOf(CLSID_GLCollection)
          ->CreateInstance(aggregated ? &outer : nullptr, IID_IUnknown, object.PutVoid());
      IGLCollection* collection = nullptr;  // holds no counted reference
      ASSERT_EQ(object->QueryInterface(IID_IGLCollection, reinterpret_cast<void**>(&collection)), S_OK);
      collection->Add(&member);
      member.m_pHolder = collection;
      collection->Release();
      outer.m_bEnded = true;
    }
    EXPECT_EQ(member.m_iEnds, 1);
    EXPECT_EQ(outer.m_iLateCalls, 0) << "a call after the end of the outer object";
    EXPECT_EQ(g_iModuleLocks, locks) << "the collection ended twice, or not at all";
  }
}
