/// @file
/// GLPtr: a counted interface pointer. Any thread, each pointer on its own.

#pragma once

#include <gllib/GLPlatform.h>

#include <type_traits>
#include <utility>

/// The identifier of an interface, from its type.
template <class Interface>
constexpr const IID& GLIdentifierOf() noexcept {
  if constexpr (std::is_same_v<Interface, IUnknown>) {
    return IID_IUnknown;
  } else {
    return Interface::Identifier;
  }
}

/// Holds one reference to an object through one of its interfaces, and releases it at its end.
template <class Interface>
class GLPtr {
 public:
  GLPtr() noexcept = default;
  /// Holds nothing.
  GLPtr(std::nullptr_t) noexcept {}
  /// Takes a reference of its own to a pointer that the caller only borrows (CreateViewer, CreateLight).
  static GLPtr FromBorrowed(Interface* aPointer) noexcept {
    if (aPointer != nullptr) aPointer->AddRef();
    return FromCounted(aPointer);
  }
  /// Takes over a reference that the caller owns (GetFog, GetCanvas).
  static GLPtr FromCounted(Interface* aPointer) noexcept {
    GLPtr result;
    result.m_p = aPointer;
    return result;
  }
  /// Takes a reference of its own.
  GLPtr(const GLPtr& aOther) noexcept : m_p(aOther.m_p) {
    if (m_p != nullptr) m_p->AddRef();
  }
  /// Takes the other's reference over.
  GLPtr(GLPtr&& aOther) noexcept : m_p(std::exchange(aOther.m_p, nullptr)) {}
  ~GLPtr() {
    if (m_p != nullptr) m_p->Release();
  }
  /// Lets go of what is held and holds what the other does.
  GLPtr& operator=(GLPtr aOther) noexcept {
    std::swap(m_p, aOther.m_p);
    return *this;
  }

  /// The pointer, borrowed.
  Interface* Get() const noexcept { return m_p; }
  /// The object's operations.
  Interface* operator->() const noexcept { return m_p; }
  /// The object.
  Interface& operator*() const noexcept { return *m_p; }
  /// Whether anything is held.
  explicit operator bool() const noexcept { return m_p != nullptr; }

  /// Lets go of what is held and gives the place for an operation to write a counted reference to.
  Interface** Put() noexcept {
    Reset();
    return &m_p;
  }
  /// As Put, for operations that write an untyped pointer.
  void** PutVoid() noexcept { return reinterpret_cast<void**>(Put()); }
  /// Hands the reference to the caller.
  Interface* Detach() noexcept { return std::exchange(m_p, nullptr); }
  /// Lets go of what is held.
  void Reset() noexcept {
    if (Interface* old = std::exchange(m_p, nullptr)) old->Release();
  }

  /// Asks the object for another of its interfaces. @return null when it has none such
  template <class Other>
  GLPtr<Other> As() const noexcept {
    GLPtr<Other> result;
    if (m_p != nullptr) m_p->QueryInterface(GLIdentifierOf<Other>(), result.PutVoid());
    return result;
  }

  /// Whether both hold the same pointer.
  friend bool operator==(const GLPtr& a, const GLPtr& b) noexcept { return a.m_p == b.m_p; }

 private:
  Interface* m_p = nullptr;
};
