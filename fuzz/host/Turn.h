// Turn: the state of one operation on one thread: its input, its objects and its canvas. Call<member> turns a
// member of an interface into an operation that takes the object and all arguments from the input.

#pragma once

#include <array>
#include <span>
#include <type_traits>

#include "host/Bytes.h"
#include "host/World.h"

struct Turn;

/// An operation of a table, with the threads that may run it.
struct Operation {
  enum : unsigned {
    kAny = 0,
    kWaits = 1,  ///< waits for a frame; a draw thread calls it only on its own context
    kHost = 2,   ///< host threads only
    kImage = 4   ///< needs the image lock
  };
  const char* m_szName;
  void (*m_pfnRun)(Turn&);
  unsigned m_uWhere;
};

struct Turn {
  World& m_World;
  Bytes& m_Bytes;
  IGLCanvas& m_Canvas;
  IGLContext* m_pDrawn = nullptr;  ///< context of the painter or gauge; null on a host thread
  const Operation* m_pOperation = nullptr;
  enum Stack { kModelview, kProjection, kAttributes };
  std::array<int, 3> m_aiPushed{};  ///< pushes per stack that the painter must pop before it returns

  bool IsHost() const noexcept { return m_pDrawn == nullptr; }
  /// Returns an object of the world as any of its interfaces; null if the place is empty.
  template <class Interface>
  GLPtr<Interface> Pick() noexcept;
  template <class Interface>
  void Keep(GLPtr<Interface> aObject) noexcept {
    if (aObject) m_World.Of<Interface>().Put(m_Bytes.Byte(), std::move(aObject));
  }
  /// Aborts if no operation may return this result.
  HRESULT Check(HRESULT aResult) const noexcept;
  GLString Text();
};

/// Runs one step of a script: any operation of any table.
void RunOperation(Turn& aTurn) noexcept;

// One table per topic.
std::span<const Operation> ObjectOperations() noexcept;
std::span<const Operation> ContextOperations() noexcept;
std::span<const Operation> SceneOperations() noexcept;
std::span<const Operation> ValueOperations() noexcept;
std::span<const Operation> ImageOperations() noexcept;
std::span<const Operation> FontOperations() noexcept;
std::span<const Operation> CanvasOperations() noexcept;

template <class Interface, class... Others>
constexpr bool kIsOneOf = (std::is_same_v<Interface, Others> || ...);

/// Maps an interface to the one under which the world stores the object.
template <class I>
using KeptAs = std::conditional_t<
    kIsOneOf<I, IGLContext2, IGLContext12, IGLContext14_2, IGLContext14_3>, IGLContext,
    std::conditional_t<kIsOneOf<I, IGLCanvas2, IGLCanvas3, IGLCanvas13_1, IGLCanvas14_2, IGLCanvas14_4>,
                       IGLCanvas, std::conditional_t<kIsOneOf<I, IGLViewer2>, IGLViewer, I>>>;

template <class Interface>
GLPtr<Interface> Turn::Pick() noexcept {
  using Kept = KeptAs<Interface>;
  GLPtr<Kept> object;
  if constexpr (std::is_same_v<Kept, IUnknown>) {
    // Members of a collection. Collections and contexts are left out, since they could form reference cycles.
    switch (m_Bytes.Byte() % 4) {
      case 0:
        return Pick<IGLViewer>().template As<IUnknown>();
      case 1:
        return Pick<IGLCoord>().template As<IUnknown>();
      case 2:
        return Pick<IGLFont>().template As<IUnknown>();
      default:
        return Pick<IGLPainter>().template As<IUnknown>();
    }
  } else {
    if constexpr (std::is_same_v<Kept, IGLCanvas>) {
      object = GLPtr<Kept>::FromBorrowed(&m_Canvas);
    } else if constexpr (std::is_same_v<Kept, IGLContext>) {
      const bool own = !IsHost() && (m_pOperation->m_uWhere & Operation::kWaits) != 0;
      object = own ? GLPtr<Kept>::FromBorrowed(m_pDrawn) : m_World.Of<Kept>().At(m_Bytes.Byte());
    } else {
      object = m_World.Of<Kept>().At(m_Bytes.Byte());
    }
    if constexpr (std::is_same_v<Kept, Interface>) {
      return object;
    } else {
      return object ? object.template As<Interface>() : nullptr;
    }
  }
}

/// An argument of type T from the input: a number, an enumerator or a structure.
template <class T>
class Argument {
 public:
  Argument(Turn& aTurn, bool) noexcept : m_Value(Make(aTurn.m_Bytes)) {}
  T Pass() noexcept { return m_Value; }

  static T Make(Bytes& aBytes) noexcept {
    if constexpr (std::is_enum_v<T>) {
      return static_cast<T>(aBytes.Int());
    } else if constexpr (std::is_same_v<T, float>) {
      return aBytes.Float();
    } else if constexpr (std::is_same_v<T, double>) {
      return aBytes.Real();
    } else if constexpr (std::is_integral_v<T>) {
      return static_cast<T>(aBytes.Int());
    } else if constexpr (std::is_same_v<T, GLDATA_POINT>) {
      return {aBytes.Real(), aBytes.Real(), aBytes.Real()};
    } else if constexpr (std::is_same_v<T, GLDATA_RGBA>) {
      return {aBytes.Float(), aBytes.Float(), aBytes.Float(), aBytes.Float()};
    } else if constexpr (std::is_same_v<T, GLDATA_RGBA4B>) {
      return {aBytes.Byte(), aBytes.Byte(), aBytes.Byte(), aBytes.Byte()};
    } else if constexpr (std::is_same_v<T, GLPOSITION>) {
      return {aBytes.Int()};
    } else if constexpr (std::is_same_v<T, GLDATA_MATRIX6D>) {
      return {aBytes.Real(), aBytes.Real(), aBytes.Real(), aBytes.Real(), aBytes.Real(), aBytes.Real()};
    } else {
      static_assert(std::is_same_v<T, GLDATA_MATRIX16D>);
      T matrix{};
      for (auto& column : matrix.m) {
        for (double& element : column) element = aBytes.Real();
      }
      return matrix;
    }
  }

 private:
  T m_Value;
};

/// A pointer to one or a few values, in or out. Sometimes null if the operation checks for null.
template <class T>
class Argument<T*> {
 public:
  Argument(Turn& aTurn, bool aMayBeNull) noexcept : m_bNull(aMayBeNull && aTurn.m_Bytes.OneIn(16)) {
    if constexpr (kIsInterface) {
      m_Object = aTurn.Pick<T>();
    } else {
      for (T& value : m_Values) value = Argument<T>::Make(aTurn.m_Bytes);
    }
  }
  T* Pass() noexcept {
    if (m_bNull) return nullptr;
    if constexpr (kIsInterface) {
      return m_Object.Get();
    } else {
      return m_Values.data();
    }
  }

 private:
  static constexpr bool kIsInterface = std::is_base_of_v<IUnknown, T>;
  struct Nothing {};

  bool m_bNull;
  std::conditional_t<kIsInterface, GLPtr<T>, Nothing> m_Object;
  std::array<std::conditional_t<kIsInterface, Nothing, T>, kIsInterface ? 1 : 3> m_Values{};
};

/// Receives a counted reference, which the world then stores.
template <class Interface>
class Argument<Interface**> {
 public:
  Argument(Turn& aTurn, bool aMayBeNull) noexcept
      : m_Turn(aTurn), m_bNull(aMayBeNull && aTurn.m_Bytes.OneIn(16)) {}
  ~Argument() {
    if constexpr (!std::is_same_v<Interface, IUnknown> && !std::is_same_v<Interface, IGLCanvas>)
      m_Turn.Keep(std::move(m_Object));
  }
  Interface** Pass() noexcept { return m_bNull ? nullptr : m_Object.Put(); }

 private:
  Turn& m_Turn;
  bool m_bNull;
  GLPtr<Interface> m_Object;
};

template <>
class Argument<BSTR> {
 public:
  Argument(Turn& aTurn, bool) : m_Text(aTurn.Text()) {}
  BSTR Pass() noexcept { return m_Text; }

 private:
  GLString m_Text;
};

template <>
class Argument<BSTR*> {
 public:
  Argument(Turn& aTurn, bool) noexcept : m_bNull(aTurn.m_Bytes.OneIn(16)) {}
  BSTR* Pass() noexcept { return m_bNull ? nullptr : m_Text.Put(); }

 private:
  bool m_bNull;
  GLString m_Text;
};

template <bool kMayBeNull, auto kMember>
struct MemberCall;

template <bool kMayBeNull, class Interface, class... Arguments,
          HRESULT (Interface::*kMember)(Arguments...) noexcept>
struct MemberCall<kMayBeNull, kMember> {
  static void Run(Turn& aTurn) {
    const GLPtr<Interface> object = aTurn.Pick<Interface>();
    if (!object) return;
    // List initialisation evaluates the arguments from left to right.
    std::tuple<Holder<Arguments>...> arguments{Holder<Arguments>(aTurn)...};
    aTurn.Check(std::apply(
        [&](auto&... aHolder) { return ((*object).*kMember)(aHolder.m_Argument.Pass()...); }, arguments));
  }

 private:
  template <class T>
  struct Holder {
    explicit Holder(Turn& aTurn) : m_Argument(aTurn, kMayBeNull) {}
    Argument<T> m_Argument;
  };
};

/// Calls a member that checks its pointers; some of them are null.
template <auto kMember>
void Call(Turn& aTurn) {
  MemberCall<true, kMember>::Run(aTurn);
}
/// Calls a member that does not check its pointers.
template <auto kMember>
void CallUntested(Turn& aTurn) {
  MemberCall<false, kMember>::Run(aTurn);
}

/// Marks an entry of a table that only some threads may run.
template <auto kStep, unsigned kWhere>
struct Placed {};
template <auto kStep>
constexpr Placed<kStep, Operation::kWaits> kWaits{};
template <auto kStep>
constexpr Placed<kStep, Operation::kHost> kHostOnly{};

/// Makes a table entry from a member of an interface or from a function of this program.
template <auto kStep>
struct Entry {
  static constexpr Operation Make(unsigned aWhere) {
    if constexpr (std::is_member_function_pointer_v<decltype(kStep)>) {
      return {__PRETTY_FUNCTION__, Call<kStep>, aWhere};
    } else {
      return {__PRETTY_FUNCTION__, kStep, aWhere};
    }
  }
};
template <auto kStep, unsigned kWhere, Placed<kStep, kWhere> kPlaced>
struct Entry<kPlaced> {
  static constexpr Operation Make(unsigned) { return Entry<kStep>::Make(kWhere); }
};

template <unsigned kWhere, auto... kSteps>
constexpr std::array<Operation, sizeof...(kSteps)> Table() {
  return {Entry<kSteps>::Make(kWhere)...};
}
