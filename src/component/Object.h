// The object root: identity, reference count, aggregation and the creation path of every class.
// Any thread; the count changes only by atomic steps.

#pragma once

#include <gllib/GLPtr.h>

#include <atomic>
#include <new>
#include <thread>

#include "component/Module.h"
#include "component/ReferenceCount.h"

/// The base of a class of the component: IUnknown for all of its interfaces, in the order of its interface
/// map. Identity is the first interface. A class T derives from GLObject<T, Interfaces...>.
template <class T, class First, class... Others>
class GLObject : public First, public Others... {
 public:
  GLObject(const GLObject&) = delete;
  GLObject& operator=(const GLObject&) = delete;

  // What interface pointers reach: the outer object when there is one.
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

  /// The class's own interface map. AddRef goes through the interface that is found.
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

  /// The end of an object of its own. A class whose end can't run on every thread replaces it.
  void FinalRelease() noexcept { delete static_cast<T*>(this); }

  /// Set by the aggregate that holds this object, before anybody else knows it; not counted.
  void SetOuter(IUnknown* aOuter) noexcept { m_pOuter = aOuter; }

  /// Ends an object that the outer one gives up: from its return on nothing calls the outer object any more.
  /// Waits for calls of other threads to the outer object, which are short.
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
  /// A call to the outer object that needs no reference to it, as of a painter that counts its context.
  class OuterCall {
   public:
    explicit OuterCall(GLObject& aObject) noexcept : m_Object(aObject) {
      if (m_Object.m_pOuter == nullptr) return;
      ++m_Object.m_iOuterCalls;
      m_pOuter = m_Object.m_pOuter;  // looked at again: EndInner waits for the count alone
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

/// Holds an object of class T within an outer one: the inner IUnknown, with a count of its own.
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

/// The creation path: makes an object of class T, of its own or within aOuter, and asks it for riid.
/// @return S_OK; E_POINTER; E_OUTOFMEMORY when it can't be made, E_NOINTERFACE when it hasn't got riid
template <class T>
HRESULT CreateGLObject(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  try {
    // One reference for the time of the query, so that a failure deletes what was made.
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
