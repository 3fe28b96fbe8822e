// Class factories of the module, and the table that holds them. Any thread; the table's lock is held only to
// fill, read or empty its slots.

#include "component/ClassFactory.h"

#include <gllib/GLPtr.h>

#include <array>
#include <mutex>
#include <utility>

#include "component/Catalogue.h"
#include "component/Module.h"
#include "component/ModuleEnd.h"
#include "platform/ProcessWide.h"

namespace {

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const CatalogueEntry& aEntry) noexcept : m_Entry(aEntry) {}

  HRESULT QueryInterface(REFIID riid, void** ppv) noexcept override {
    if (ppv == nullptr) return E_POINTER;
    *ppv = nullptr;
    if (riid != IID_IUnknown && riid != IID_IClassFactory) return E_NOINTERFACE;
    *ppv = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }

  // The table's reference does not keep the module loaded. The first reference beyond it does.
  ULONG AddRef() noexcept override {
    const LONG now = ++m_iReferences;
    if (now == 2) ++g_iModuleLocks;
    return static_cast<ULONG>(now);
  }
  ULONG Release() noexcept override {
    const LONG now = --m_iReferences;
    if (now == 1) --g_iModuleLocks;
    if (now == 0) delete this;
    return static_cast<ULONG>(now);
  }

  HRESULT CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppv) noexcept override {
    if (ppv == nullptr) return E_POINTER;
    *ppv = nullptr;
    if (pUnkOuter != nullptr && riid != IID_IUnknown) return CLASS_E_NOAGGREGATION;
    return m_Entry.m_pfnCreate(pUnkOuter, riid, ppv);
  }

  HRESULT LockServer(BOOL fLock) noexcept override {
    g_iModuleLocks += fLock != 0 ? 1 : -1;
    return S_OK;
  }

 private:
  ~ClassFactory() = default;

  const CatalogueEntry& m_Entry;
  std::atomic<LONG> m_iReferences{0};
};

void ReleaseFactories() noexcept;

/// One slot per class, filled at the first request, released at the module's end.
class FactoryTable {
 public:
  void ReleaseAll() noexcept {
    const std::scoped_lock lock(m_Lock);
    for (ClassFactory*& slot : m_Slots) {
      if (slot != nullptr) std::exchange(slot, nullptr)->Release();
    }
  }

  /// Returns a counted pointer, which stays valid if the module's end releases the table.
  GLPtr<ClassFactory> Get(const CatalogueEntry& aEntry) {
    const auto index = static_cast<std::size_t>(&aEntry - Catalogue().data());
    const std::scoped_lock lock(m_Lock);
    if (m_Slots[index] == nullptr) {
      m_Slots[index] = new ClassFactory(aEntry);
      m_Slots[index]->AddRef();
      ModuleEnd::Register(ReleaseFactories);
    }
    m_Slots[index]->AddRef();
    return GLPtr<ClassFactory>::FromCounted(m_Slots[index]);
  }

 private:
  std::mutex m_Lock;
  std::array<ClassFactory*, 14> m_Slots{};
};

constinit ProcessWide<FactoryTable> g_Factories;

void ReleaseFactories() noexcept { g_Factories.Get().ReleaseAll(); }

}  // namespace

HRESULT GetClassFactory(REFCLSID aClassId, REFIID riid, void** ppv) noexcept {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  const CatalogueEntry* entry = FindInCatalogue(aClassId);
  if (entry == nullptr) return CLASS_E_CLASSNOTAVAILABLE;
  try {
    return g_Factories.Get().Get(*entry)->QueryInterface(riid, ppv);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}
