// GLRecorder: stands between the executable's code and the driver for each function of GLCalls.inc.
// GLU's calls come by here too, and aren't noted.

#include "support/GLRecorder.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <map>
#include <mutex>
#include <set>

#include "support/DriverFunction.h"

namespace {

struct Call {
  std::string_view m_Function;
  std::string m_Text;
};

/// What the recorder that stands has been told and has seen.
struct Recording {
  std::mutex m_Lock;
  bool m_bRecords = false;
  std::vector<Call> m_aCalls;
  std::set<std::string, std::less<>> m_Failing;
  std::map<GLenum, std::string> m_Strings;
};

std::atomic<bool> s_bStands{false};

Recording& TheRecording() {
  static Recording recording;
  return recording;
}

// --- text of a call ---

template <class Number>
std::string NumberText(Number aValue) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, aValue).ptr};
}

/// How many values a vector function reads. @param aInteger the argument before: what is set, or how many
int VectorLength(std::string_view aFunction, long long aInteger) {
  constexpr GLenum kNamesOfFour[] = {GL_AMBIENT,
                                     GL_DIFFUSE,
                                     GL_SPECULAR,
                                     GL_EMISSION,
                                     GL_POSITION,
                                     GL_FOG_COLOR,
                                     GL_OBJECT_PLANE,
                                     GL_EYE_PLANE,
                                     GL_LIGHT_MODEL_AMBIENT,
                                     GL_TEXTURE_ENV_COLOR,
                                     GL_TEXTURE_BORDER_COLOR};
  if (aFunction == "glDeleteTextures") return static_cast<int>(aInteger);
  if (aFunction.find("Matrix") != aFunction.npos) return 16;
  if (!aFunction.ends_with('v')) return 4;
  const char digit = aFunction[aFunction.size() - 3];
  if (digit >= '1' && digit <= '4') return digit - '0';
  if (aInteger == GL_SPOT_DIRECTION) return 3;
  return std::ranges::find(kNamesOfFour, static_cast<GLenum>(aInteger)) != std::end(kNamesOfFour) ? 4 : 1;
}

template <class Number>
std::string VectorText(const Number* aValues, int aLength) {
  if (aValues == nullptr) return "null";
  std::string text = "{";
  for (int i = 0; i < aLength; ++i) text += (i > 0 ? ", " : "") + NumberText(aValues[i]);
  return text + "}";
}

#define GL_NAME(name) \
  { name, #name }

/// The constants that tests name. Small values, which mean something else in every function, aren't listed.
constexpr std::pair<GLenum, const char*> kNames[] = {
    // clang-format off
    GL_NAME(GL_BLEND), GL_NAME(GL_CLAMP), GL_NAME(GL_CLIP_PLANE0), GL_NAME(GL_DECAL), GL_NAME(GL_DEPTH_TEST),
    GL_NAME(GL_FILL), GL_NAME(GL_FRONT_AND_BACK), GL_NAME(GL_LIGHTING), GL_NAME(GL_LINE_STIPPLE),
    GL_NAME(GL_LINEAR_MIPMAP_NEAREST), GL_NAME(GL_MATRIX_MODE), GL_NAME(GL_MODELVIEW), GL_NAME(GL_MODULATE),
    GL_NAME(GL_NEAREST), GL_NAME(GL_ONE_MINUS_SRC_ALPHA), GL_NAME(GL_PROJECTION), GL_NAME(GL_RENDER_MODE),
    GL_NAME(GL_RGBA), GL_NAME(GL_SCISSOR_TEST), GL_NAME(GL_SRC_ALPHA), GL_NAME(GL_TEXTURE_1D),
    GL_NAME(GL_TEXTURE_2D), GL_NAME(GL_TEXTURE_ENV), GL_NAME(GL_TEXTURE_ENV_COLOR),
    GL_NAME(GL_TEXTURE_ENV_MODE), GL_NAME(GL_TEXTURE_MAG_FILTER), GL_NAME(GL_TEXTURE_MIN_FILTER),
    GL_NAME(GL_TEXTURE_WRAP_S), GL_NAME(GL_TEXTURE_WRAP_T), GL_NAME(GL_UNPACK_ALIGNMENT),
    GL_NAME(GL_UNPACK_ROW_LENGTH), GL_NAME(GL_UNPACK_SKIP_PIXELS), GL_NAME(GL_UNPACK_SKIP_ROWS),
    GL_NAME(GL_UNSIGNED_BYTE), GL_NAME(GL_UNSIGNED_INT),
    // clang-format on
};

#undef GL_NAME

std::string NameOf(GLenum aValue) {
  const auto found = std::ranges::find(kNames, aValue, &std::pair<GLenum, const char*>::first);
  return found != std::end(kNames) ? found->second : std::to_string(aValue);
}

std::string IntegerText(std::string_view aFunction, std::string_view aDeclaration, long long aValue) {
  constexpr const char* kPrimitives[] = {
      "GL_POINTS",         "GL_LINES",        "GL_LINE_LOOP", "GL_LINE_STRIP", "GL_TRIANGLES",
      "GL_TRIANGLE_STRIP", "GL_TRIANGLE_FAN", "GL_QUADS",     "GL_QUAD_STRIP", "GL_POLYGON"};
  if (aFunction == "glBegin" && aValue <= GL_POLYGON) return kPrimitives[aValue];
  if (aDeclaration.starts_with("GLboolean")) return aValue != 0 ? "GL_TRUE" : "GL_FALSE";
  if (aDeclaration.ends_with("factor") && aValue <= GL_ONE) return aValue != 0 ? "GL_ONE" : "GL_ZERO";
  // Some numbers stand for constants too; small ones are taken as what they are.
  const bool mayBeConstant = aDeclaration.ends_with(" param") || aDeclaration.ends_with(" internalFormat");
  if (aDeclaration.starts_with("GLenum") || (mayBeConstant && aValue >= 0x100)) {
    return NameOf(static_cast<GLenum>(aValue));
  }
  return NumberText(aValue);
}

/// @param aParameters the parameter list as it is declared: "(GLenum plane, const GLdouble* equation)"
template <class... Args>
std::string CallText(std::string_view aFunction, std::string_view aParameters, Args... aArgs) {
  std::string text = std::string(aFunction) + "(";
  [[maybe_unused]] long long lastInteger = 0;  // of a vector function: the name of what is set
  aParameters = aParameters.substr(1, aParameters.size() - 2);
  [[maybe_unused]] const auto add = [&](auto value) {
    const std::size_t comma = std::min(aParameters.find(", "), aParameters.size());
    const std::string_view declaration = aParameters.substr(0, comma);
    aParameters.remove_prefix(std::min(comma + 2, aParameters.size()));
    if (text.back() != '(') text += ", ";
    using T = decltype(value);
    if constexpr (std::is_floating_point_v<T>) {
      text += NumberText(value);
    } else if constexpr (std::is_integral_v<T>) {
      text += IntegerText(aFunction, declaration, lastInteger = value);
    } else if constexpr (!std::is_const_v<std::remove_pointer_t<T>>) {
      text += "out";  // what a function writes to
    } else if constexpr (std::is_same_v<T, const void*> || std::is_same_v<T, const GLubyte*>) {
      text += value == nullptr ? "null" : "data";
    } else {
      text += VectorText(value, VectorLength(aFunction, lastInteger));
    }
  };
  (add(aArgs), ...);
  return text + ")";
}

// --- the stand-ins ---

/// Calls of GLU functions that the calling thread is in.
thread_local int t_iInsideGlu = 0;

class InsideGlu {
 public:
  explicit InsideGlu(bool aIsGlu) : m_iStep(aIsGlu ? 1 : 0) { t_iInsideGlu += m_iStep; }
  ~InsideGlu() { t_iInsideGlu -= m_iStep; }
  InsideGlu(const InsideGlu&) = delete;
  InsideGlu& operator=(const InsideGlu&) = delete;

 private:
  int m_iStep;
};

/// Notes a call. @return whether the function has been told to fail
template <class MakeText>
bool Note(std::string_view aFunction, const MakeText& aMakeText) {
  Recording& recording = TheRecording();
  const std::scoped_lock lock(recording.m_Lock);
  if (recording.m_bRecords) recording.m_aCalls.push_back({aFunction, aMakeText()});
  return recording.m_Failing.contains(aFunction);
}

template <class Function>
class StandIn;

/// One function: its declaration, and the driver's own, looked up at the first call.
template <class Result, class... Args>
class StandIn<Result(Args...)> {
 public:
  constexpr StandIn(const char* aName, const char* aParameters)
      : m_szName(aName), m_szParameters(aParameters) {}

  Result operator()(Args... aArgs) {
    if (t_iInsideGlu == 0 && s_bStands.load(std::memory_order_relaxed)) {
      const auto text = [&] { return CallText(m_szName, m_szParameters, aArgs...); };
      if (Note(m_szName, text)) return Result();
    }
    const InsideGlu inside(m_szName[2] == 'u');
    return Real()(aArgs...);
  }
  auto Real() -> Result (*)(Args...) {
    void* real = m_pReal.load(std::memory_order_acquire);
    if (real == nullptr) {
      real = DriverFunction(m_szName);
      m_pReal.store(real, std::memory_order_release);
    }
    return reinterpret_cast<Result (*)(Args...)>(real);
  }

 private:
  const char* m_szName;
  const char* m_szParameters;
  std::atomic<void*> m_pReal{nullptr};
};

}  // namespace

#define GL_CALL(result, name, parameters, arguments)                   \
  extern "C" result APIENTRY name parameters {                         \
    static constinit StandIn<decltype(name)> call{#name, #parameters}; \
    return call arguments;                                             \
  }
#include "support/GLCalls.inc"
#undef GL_CALL

extern "C" const GLubyte* APIENTRY glGetString(GLenum name) {
  static constinit StandIn<decltype(glGetString)> call{"glGetString", "(GLenum name)"};
  const GLubyte* answer = call(name);
  if (!s_bStands.load(std::memory_order_relaxed)) return answer;
  Recording& recording = TheRecording();
  const std::scoped_lock lock(recording.m_Lock);
  const auto found = recording.m_Strings.find(name);
  return found == recording.m_Strings.end() ? answer
                                            : reinterpret_cast<const GLubyte*>(found->second.c_str());
}

GLRecorder::GLRecorder() {
  TheRecording().m_bRecords = true;
  s_bStands = true;
}

GLRecorder::~GLRecorder() {
  s_bStands = false;
  Recording& recording = TheRecording();
  const std::scoped_lock lock(recording.m_Lock);
  recording.m_bRecords = false;
  recording.m_aCalls.clear();
  recording.m_Failing.clear();
  recording.m_Strings.clear();
}

void GLRecorder::Pause() {
  const std::scoped_lock lock(TheRecording().m_Lock);
  TheRecording().m_bRecords = false;
}

void GLRecorder::Clear() {
  const std::scoped_lock lock(TheRecording().m_Lock);
  TheRecording().m_aCalls.clear();
}

std::vector<std::string> GLRecorder::Calls() const { return CallsOf({"*"}); }

std::vector<std::string> GLRecorder::CallsOf(const std::vector<std::string_view>& aFunctions) const {
  const std::scoped_lock lock(TheRecording().m_Lock);
  std::vector<std::string> result;
  for (const Call& call : TheRecording().m_aCalls) {
    const bool wanted = std::ranges::any_of(aFunctions, [&](std::string_view function) {
      if (!function.ends_with('*')) return call.m_Function == function;
      return call.m_Function.starts_with(function.substr(0, function.size() - 1));
    });
    if (wanted) result.push_back(call.m_Text);
  }
  return result;
}

void GLRecorder::Fail(std::string_view aFunction) {
  const std::scoped_lock lock(TheRecording().m_Lock);
  TheRecording().m_Failing.emplace(aFunction);
}

void GLRecorder::SetString(GLenum aName, std::string aText) {
  const std::scoped_lock lock(TheRecording().m_Lock);
  TheRecording().m_Strings[aName] = std::move(aText);
}
