// Operations: the rows of the table of situations, one file per topic. Each runs on the thread of its
// situation.

#pragma once

#include <initializer_list>
#include <span>

#include "situations/Stage.h"

/// The columns: callers of an operation. kInOthers... are callbacks of another context.
enum Situation : unsigned {
  kInFrame,
  kInCapture,
  kInPick,
  kInGauge,
  kInOpenList,
  kInTask,
  kInOnData,
  kInOthersFrame,
  kInOthersCapture,
  kInTeardown,
  kSituations
};

/// A set of columns.
constexpr unsigned In(std::initializer_list<Situation> aSituations) {
  unsigned set = 0;
  for (const Situation situation : aSituations) set |= 1u << situation;
  return set;
}
constexpr unsigned kNowhere = 0;
constexpr unsigned kOnOwnThread =
    In({kInFrame, kInCapture, kInPick, kInGauge, kInOpenList, kInTask, kInOnData});
/// Callers outside a pass of the context.
constexpr unsigned kWithoutGL = In({kInTask, kInOnData, kInOthersFrame, kInOthersCapture});

struct Operation {
  const char* m_szName;
  HRESULT (*m_pfnRun)(Stage&);
  /// Columns that return E_GL_BADSTATE. During the teardown each operation may return it.
  unsigned m_uRefused = kNowhere;
};

/// Returns the first result that is not S_OK.
inline HRESULT All(std::initializer_list<HRESULT> aResults) {
  for (const HRESULT result : aResults) {
    if (result != S_OK) return result;
  }
  return S_OK;
}

/// Calls getters of an object, each with separate variables. @return the first result that is not S_OK
template <class Interface, class... Args>
HRESULT Read(Interface& aObject, HRESULT (Interface::*aGetter)(Args*...) noexcept) {
  std::tuple<Args...> values{};
  return std::apply([&](Args&... aValues) { return (aObject.*aGetter)(&aValues...); }, values);
}
template <class Interface, class First, class... Getters>
HRESULT Read(Interface& aObject, First aFirst, Getters... aGetters) {
  return All({Read(aObject, aFirst), Read(aObject, aGetters)...});
}
/// Returns the address of a value that lives until the end of the expression.
template <class T>
T* At(T&& aValue) {
  return &aValue;
}

/// Operations that change settings, or nothing. After them a context is the same as after a call between two
/// frames.
std::span<const Operation> ContextOperations();
/// Operations that draw. They draw out of view and restore everything.
std::span<const Operation> DrawingOperations();
