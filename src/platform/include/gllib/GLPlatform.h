/// @file
/// The base types of the interfaces: on Windows the system's, on other systems types with the same documented
/// names and layouts. No state; any thread.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <oleauto.h>
#include <unknwn.h>

/// The character of a BSTR: one UTF-16 code unit.
using GLWCHAR = wchar_t;

#else

using LONG = std::int32_t;         ///< 32 bits everywhere, as on Windows
using ULONG = std::uint32_t;       ///< 32 bits everywhere
using DWORD = std::uint32_t;       ///< 32 bits everywhere
using BOOL = int;                  ///< 0 is false
using HRESULT = std::int32_t;      ///< below 0 is a failure
using ULONG_PTR = std::uintptr_t;  ///< as wide as a pointer: a window handle
using LONG_PTR = std::intptr_t;    ///< as wide as a pointer

/// The character of a BSTR: one UTF-16 code unit.
using GLWCHAR = char16_t;
using OLECHAR = char16_t;  ///< the same type by its documented name

/// A counted string, laid out as on Windows: the pointer points to the first UTF-16 character. The 32 bits
/// before it hold the length in bytes without the terminating zero. The block comes from malloc and starts 8
/// bytes before the first character. Null is an empty string.
using BSTR = char16_t*;

/// Creates a string of aLength UTF-16 code units from aText, or filled with zeros if aText is null.
/// @return the string, which the caller frees; null if memory is short or the bytes do not fit 32 bits
inline BSTR SysAllocStringLen(const OLECHAR* aText, unsigned aLength) noexcept {
  constexpr std::size_t kPrefix = 8;
  const std::size_t bytes = std::size_t{aLength} * sizeof(OLECHAR);
  if (bytes > UINT32_MAX) return nullptr;
  auto* block = static_cast<unsigned char*>(std::calloc(1, kPrefix + bytes + sizeof(OLECHAR)));
  if (block == nullptr) return nullptr;
  const auto count = static_cast<std::uint32_t>(bytes);
  std::memcpy(block + kPrefix - sizeof(count), &count, sizeof(count));
  if (aText != nullptr) std::memcpy(block + kPrefix, aText, bytes);
  return reinterpret_cast<BSTR>(block + kPrefix);
}

/// Returns the length of a string in UTF-16 code units; 0 for null.
inline unsigned SysStringLen(BSTR aString) noexcept {
  if (aString == nullptr) return 0;
  std::uint32_t count = 0;
  std::memcpy(&count, reinterpret_cast<const unsigned char*>(aString) - sizeof(count), sizeof(count));
  return count / unsigned{sizeof(OLECHAR)};
}

/// Creates a string from a zero-terminated one; null from null.
inline BSTR SysAllocString(const OLECHAR* aText) noexcept {
  if (aText == nullptr) return nullptr;
  unsigned length = 0;
  while (aText[length] != 0) ++length;
  return SysAllocStringLen(aText, length);
}

/// Frees a string; null is allowed.
inline void SysFreeString(BSTR aString) noexcept {
  if (aString != nullptr) std::free(reinterpret_cast<unsigned char*>(aString) - 8);
}

/// A 128-bit identifier in its binary layout.
struct GUID {
  std::uint32_t Data1;    ///< the first eight digits
  std::uint16_t Data2;    ///< the next four
  std::uint16_t Data3;    ///< the next four
  std::uint8_t Data4[8];  ///< the rest, in writing order

  /// Returns whether both are equal.
  friend constexpr bool operator==(const GUID& a, const GUID& b) noexcept {
    for (int i = 0; i < 8; ++i) {
      if (a.Data4[i] != b.Data4[i]) return false;
    }
    return a.Data1 == b.Data1 && a.Data2 == b.Data2 && a.Data3 == b.Data3;
  }
  /// Returns whether they differ.
  friend constexpr bool operator!=(const GUID& a, const GUID& b) noexcept { return !(a == b); }
};
using IID = GUID;               ///< names an interface
using CLSID = GUID;             ///< names a class
using REFIID = const IID&;      ///< an interface, as an argument
using REFCLSID = const CLSID&;  ///< a class, as an argument

inline constexpr HRESULT S_OK = 0;     ///< done
inline constexpr HRESULT S_FALSE = 1;  ///< done, with the result false
inline constexpr HRESULT E_NOINTERFACE =
    static_cast<HRESULT>(0x80004002);  ///< the object has no such interface
inline constexpr HRESULT E_POINTER =
    static_cast<HRESULT>(0x80004003);  ///< the address of the result pointer is null
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);         ///< failed
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);  ///< no memory
inline constexpr HRESULT E_INVALIDARG =
    static_cast<HRESULT>(0x80070057);  ///< an invalid argument, such as a null pointer
inline constexpr HRESULT E_ACCESSDENIED =
    static_cast<HRESULT>(0x80070005);  ///< the required permission is missing
inline constexpr HRESULT CLASS_E_NOAGGREGATION =
    static_cast<HRESULT>(0x80040110);  ///< the class cannot be aggregated
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE =
    static_cast<HRESULT>(0x80040111);  ///< the module does not have this class

/// Returns whether a result is a success.
constexpr bool SUCCEEDED(HRESULT aResult) noexcept { return aResult >= 0; }
/// Returns whether a result is a failure.
constexpr bool FAILED(HRESULT aResult) noexcept { return aResult < 0; }

/// {00000000-0000-0000-C000-000000000046}
inline constexpr IID IID_IUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
/// {00000001-0000-0000-C000-000000000046}
inline constexpr IID IID_IClassFactory = {1, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

/// The base of every interface. Three slots: QueryInterface, AddRef, Release. Any thread.
struct IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = IID_IUnknown;

  /// Returns another interface of the object.
  /// @param riid its identifier
  /// @param ppv receives a counted reference, or null
  /// @return S_OK; E_NOINTERFACE; E_POINTER if ppv is null
  virtual HRESULT QueryInterface(REFIID riid, void** ppv) noexcept = 0;
  /// Increments the reference count. @return the new count, for diagnosis only
  virtual ULONG AddRef() noexcept = 0;
  /// Decrements the reference count. At 0 the object is destroyed. @return the new count, for diagnosis only
  virtual ULONG Release() noexcept = 0;

 protected:
  ~IUnknown() = default;
};

/// Creates objects of one class. Any thread.
struct IClassFactory : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = IID_IClassFactory;

  /// Creates an object.
  /// @param pUnkOuter the object to aggregate into, borrowed; null without aggregation
  /// @param riid the wanted interface; IID_IUnknown if pUnkOuter is set
  /// @param ppv receives a counted reference, or null
  /// @return S_OK; E_POINTER; CLASS_E_NOAGGREGATION; E_NOINTERFACE; E_OUTOFMEMORY
  virtual HRESULT CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppv) noexcept = 0;
  /// Locks the module in memory (non-zero) or unlocks it (0). Calls are counted. @return S_OK
  virtual HRESULT LockServer(BOOL fLock) noexcept = 0;

 protected:
  ~IClassFactory() = default;
};

#endif

/// An operation refuses a value: code 200 of the interface facility.
inline constexpr HRESULT E_GL_BADVALUE = static_cast<HRESULT>(0x800400C8);
/// An operation is not possible in the current state: code 201 of the interface facility.
inline constexpr HRESULT E_GL_BADSTATE = static_cast<HRESULT>(0x800400C9);
