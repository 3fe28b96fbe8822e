// GLRecorder: replaces the functions of GLCalls.inc in the executable. Calls that GLU makes also arrive here,
// and are not recorded.

#include "support/GLRecorder.h"

#include <charconv>

#include "support/DriverFunction.h"

namespace {

/// Settings and calls of the current recorder.
struct Recording {
  std::mutex m_Lock;
  std::vector<std::string> m_aCalls;
  std::set<std::string, std::less<>> m_Failing;
  std::map<GLenum, std::string> m_Strings;
};

std::atomic<bool> g_bRecording{false};

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

template <class... Args>
std::string CallText(std::string_view aFunction, Args... aArgs) {
  std::string text = std::string(aFunction) + "(";
  [[maybe_unused]] const auto add = [&](auto value) {
    if (text.back() != '(') text += ", ";
    using T = decltype(value);
    if constexpr (std::is_arithmetic_v<T>) {
      text += NumberText(value);
    } else if constexpr (std::is_const_v<std::remove_pointer_t<T>>) {
      text += value == nullptr ? "null" : "data";
    } else {
      text += "out";  // a pointer that a function writes to
    }
  };
  (add(aArgs), ...);
  return text + ")";
}

// --- replacements ---

/// Depth of GLU functions on the calling thread.
thread_local int t_iInsideGlu = 0;

struct InsideGlu {
  explicit InsideGlu(bool aIsGlu) : m_iStep(aIsGlu ? 1 : 0) { t_iInsideGlu += m_iStep; }
  ~InsideGlu() { t_iInsideGlu -= m_iStep; }
  const int m_iStep;
};

template <class Function>
class StandIn;

/// One function: its declaration, and the driver's function, which is looked up at the first call.
template <class Result, class... Args>
class StandIn<Result(Args...)> {
 public:
  explicit constexpr StandIn(const char* aName) : m_szName(aName) {}

  Result operator()(Args... aArgs) {
    if (t_iInsideGlu == 0 && g_bRecording.load(std::memory_order_relaxed)) {
      Recording& recording = TheRecording();
      const std::scoped_lock lock(recording.m_Lock);
      recording.m_aCalls.push_back(CallText(m_szName, aArgs...));
      if (recording.m_Failing.contains(m_szName)) return Result();
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
  std::atomic<void*> m_pReal{nullptr};
};

}  // namespace

#define GL_CALL(result, name, parameters, arguments)      \
  extern "C" result APIENTRY name parameters {            \
    static constinit StandIn<decltype(name)> call{#name}; \
    return call arguments;                                \
  }
#include "support/GLCalls.inc"
#undef GL_CALL

extern "C" const GLubyte* APIENTRY glGetString(GLenum name) {
  static constinit StandIn<decltype(glGetString)> call{"glGetString"};
  const GLubyte* answer = call(name);
  if (!g_bRecording.load(std::memory_order_relaxed)) return answer;
  Recording& recording = TheRecording();
  const std::scoped_lock lock(recording.m_Lock);
  const auto found = recording.m_Strings.find(name);
  return found == recording.m_Strings.end() ? answer
                                            : reinterpret_cast<const GLubyte*>(found->second.c_str());
}

GLRecorder::GLRecorder() { g_bRecording = true; }

GLRecorder::~GLRecorder() {
  g_bRecording = false;
  Recording& recording = TheRecording();
  const std::scoped_lock lock(recording.m_Lock);
  recording.m_aCalls.clear();
  recording.m_Failing.clear();
  recording.m_Strings.clear();
}

void GLRecorder::Clear() {
  const std::scoped_lock lock(TheRecording().m_Lock);
  TheRecording().m_aCalls.clear();
}

std::vector<std::string> GLRecorder::Calls() const { return CallsOf("*"); }

std::vector<std::string> GLRecorder::CallsOf(const std::string& aFunction) const {
  const bool isStart = aFunction.ends_with('*');
  const std::string start = isStart ? aFunction.substr(0, aFunction.size() - 1) : aFunction + '(';
  const std::scoped_lock lock(TheRecording().m_Lock);
  std::vector<std::string> result = TheRecording().m_aCalls;
  std::erase_if(result, [&](const std::string& call) { return !call.starts_with(start); });
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
