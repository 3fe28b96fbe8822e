// GLObject: identity, reference count, aggregation and creation of every class.
// Any thread; the reference count is atomic.

#pragma once

#include <gllib/GLPtr.h>

#include <atomic>
#include <thread>

#include "component/Module.h"
#include "component/ReferenceCount.h"

/// Base of the component's classes. Implements IUnknown for all interfaces. The first interface is the
/// object's identity. A class T derives from GLObject<T, Interfaces...>.
template <class T, class First, class... Others>
class GLObject : public First, public Others... {
 public:
  GLObject(const GLObject&) = delete;
  GLObject& operator=(const GLObject&) = delete;

  // The operations of IUnknown that clients call. They delegate to the outer object if there is one.
  HRESULT QueryInterface(REFIID riid, void** ppv) noexcept final {
    const OuterCall call(*this);
    return call.Outer() != nullptr ? call.Outer()->QueryInterface(riid, ppv) : InnerQueryInterface(riid, ppv);
  }
  ULONG AddRef() noexcept final {
    const OuterCall call(*this);
    return call.Outer() != nullptr ? call.Outer()->AddRef() : m_References.Raise();
  }
  ULONG Release() noexcept final {
    if (IUnknown* outer = m_pOuter) return outer->Release();
    bool last = false;
    const ULONG left = m_References.Lower(&last);
    if (last) {
      const ModuleLock lock;
      static_cast<T*>(this)->FinalRelease();
    }
    return left;
  }

  /// Looks up an interface of this class without the outer object. Calls AddRef through the interface that it
  /// returns.
  HRESULT InnerQueryInterface(REFIID riid, void** ppv) noexcept {
    if (ppv == nullptr) return E_POINTER;
    *ppv = nullptr;
    if (riid == IID_IUnknown || riid == First::Identifier) {
      *ppv = static_cast<First*>(this);
    } else {
      (void)((riid == Others::Identifier && (*ppv = static_cast<Others*>(this)) != nullptr) || ...);
    }
    if (*ppv == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }

  /// Ends an object. Classes whose end cannot run on every thread replace it.
  void FinalRelease() noexcept { delete static_cast<T*>(this); }

  /// Sets the outer object. The aggregate calls it before any client has the object. Not counted.
  void SetOuter(IUnknown* aOuter) noexcept { m_pOuter = aOuter; }

  /// Ends an aggregated object when the outer object releases it. After its return, nothing calls the outer
  /// object. Waits for calls of other threads to the outer object, which are short.
  void EndInner() noexcept {
    m_References.End();
    m_pOuter = nullptr;
    while (m_iOuterCalls != 0) std::this_thread::yield();
    static_cast<T*>(this)->FinalRelease();
  }

 protected:
  GLObject() noexcept { ++g_iModuleLocks; }
  ~GLObject() { --g_iModuleLocks; }

 private:
  /// A call to the outer object by a caller that has no reference to it. Example: a painter adds a reference
  /// to its context.
  class OuterCall {
   public:
    explicit OuterCall(GLObject& aObject) noexcept : m_Object(aObject) {
      if (m_Object.m_pOuter == nullptr) return;
      ++m_Object.m_iOuterCalls;
      m_pOuter = m_Object.m_pOuter;  // read again after the increment: EndInner waits only for the count
      if (m_pOuter == nullptr) --m_Object.m_iOuterCalls;
    }
    ~OuterCall() {
      if (m_pOuter != nullptr) --m_Object.m_iOuterCalls;
    }
    OuterCall(const OuterCall&) = delete;
    OuterCall& operator=(const OuterCall&) = delete;

    IUnknown* Outer() const noexcept { return m_pOuter; }

   private:
    GLObject& m_Object;
    IUnknown* m_pOuter = nullptr;
  };

  ReferenceCount m_References;
  std::atomic<IUnknown*> m_pOuter{nullptr};
  std::atomic<int> m_iOuterCalls{0};
};

/// Holds an object of class T inside an outer object. It is the inner IUnknown and has a separate reference
/// count.
template <class T>
class GLAggregate final : public IUnknown {
 public:
  explicit GLAggregate(IUnknown* aOuter) : m_Object(new T) { m_Object->SetOuter(aOuter); }
  GLAggregate(const GLAggregate&) = delete;
  GLAggregate& operator=(const GLAggregate&) = delete;

  HRESULT QueryInterface(REFIID riid, void** ppv) noexcept override {
    if (ppv == nullptr) return E_POINTER;
    if (riid != IID_IUnknown) return m_Object->InnerQueryInterface(riid, ppv);
    *ppv = static_cast<IUnknown*>(this);
    AddRef();
    return S_OK;
  }
  ULONG AddRef() noexcept override { return m_References.Raise(); }
  ULONG Release() noexcept override {
    bool last = false;
    const ULONG left = m_References.Lower(&last);
    if (last) {
      const ModuleLock lock;
      m_Object->EndInner();
      delete this;
    }
    return left;
  }

 private:
  ~GLAggregate() = default;

  ReferenceCount m_References;
  T* m_Object;
};

/// Creates an object of class T, inside aOuter unless that is null, and queries it for riid.
/// @return S_OK; E_POINTER; E_OUTOFMEMORY if it cannot be created; E_NOINTERFACE if it does not implement
/// riid
template <class T>
HRESULT CreateGLObject(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  try {
    // A reference during the query, so that a failed query deletes the object.
    if (aOuter != nullptr) {
      const auto made = GLPtr<GLAggregate<T>>::FromBorrowed(new GLAggregate<T>(aOuter));
      return made->QueryInterface(riid, ppv);
    }
    const auto made = GLPtr<T>::FromBorrowed(new T);
    return made->QueryInterface(riid, ppv);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}
