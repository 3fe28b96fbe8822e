/// @file
/// GLPtr: a counted interface pointer. Any thread, but only one at a time per pointer.

#pragma once

#include <gllib/GLPlatform.h>

#include <type_traits>
#include <utility>

/// Returns the identifier of an interface from its type.
template <class Interface>
constexpr const IID& GLIdentifierOf() noexcept {
  if constexpr (std::is_same_v<Interface, IUnknown>) {
    return IID_IUnknown;
  } else {
    return Interface::Identifier;
  }
}

/// Holds one reference to an object through one of its interfaces. The destructor releases it.
template <class Interface>
class GLPtr {
 public:
  GLPtr() noexcept = default;
  /// Creates a null pointer.
  GLPtr(std::nullptr_t) noexcept {}
  /// Adds a reference to a borrowed pointer (CreateViewer, CreateLight).
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
  /// Adds a reference.
  GLPtr(const GLPtr& aOther) noexcept : m_p(aOther.m_p) {
    if (m_p != nullptr) m_p->AddRef();
  }
  /// Takes over the other pointer's reference.
  GLPtr(GLPtr&& aOther) noexcept : m_p(std::exchange(aOther.m_p, nullptr)) {}
  ~GLPtr() {
    if (m_p != nullptr) m_p->Release();
  }
  /// Releases the held reference and takes the other pointer's.
  GLPtr& operator=(GLPtr aOther) noexcept {
    std::swap(m_p, aOther.m_p);
    return *this;
  }

  /// Returns the pointer, borrowed.
  Interface* Get() const noexcept { return m_p; }
  /// Accesses the object's operations.
  Interface* operator->() const noexcept { return m_p; }
  /// Returns the object.
  Interface& operator*() const noexcept { return *m_p; }
  /// Returns whether the pointer is not null.
  explicit operator bool() const noexcept { return m_p != nullptr; }

  /// Releases the held reference and returns the pointer's address, so that an operation can store a counted
  /// reference there.
  Interface** Put() noexcept {
    Reset();
    return &m_p;
  }
  /// Same as Put, for operations with a void** argument.
  void** PutVoid() noexcept { return reinterpret_cast<void**>(Put()); }
  /// Returns the reference and gives up ownership: the caller releases it.
  Interface* Detach() noexcept { return std::exchange(m_p, nullptr); }
  /// Releases the held reference.
  void Reset() noexcept {
    if (Interface* old = std::exchange(m_p, nullptr)) old->Release();
  }

  /// Returns another interface of the object; null if it does not have it.
  template <class Other>
  GLPtr<Other> As() const noexcept {
    GLPtr<Other> result;
    if (m_p != nullptr) m_p->QueryInterface(GLIdentifierOf<Other>(), result.PutVoid());
    return result;
  }

  /// Returns whether both hold the same pointer.
  friend bool operator==(const GLPtr& a, const GLPtr& b) noexcept { return a.m_p == b.m_p; }

 private:
  Interface* m_p = nullptr;
};
