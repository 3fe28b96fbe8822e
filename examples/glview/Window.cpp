// Window on Linux: passes GLFW's events to Viewing. Host's thread.

#include "glview/Window.h"

#include <GLFW/glfw3.h>

#include <chrono>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>

#include "glview/NativeWindow.h"
#include "glview/Viewing.h"

namespace {

/// Keys whose codes are not characters, and the characters that represent them.
const std::map<int, char> kNamedKeys = {{GLFW_KEY_UP, '^'},          {GLFW_KEY_DOWN, 'v'},
                                        {GLFW_KEY_LEFT, '<'},        {GLFW_KEY_RIGHT, '>'},
                                        {GLFW_KEY_KP_SUBTRACT, '-'}, {GLFW_KEY_KP_ADD, '+'}};

/// Initializes GLFW; the destructor shuts it down.
struct Session {
  Session() {
    if (glfwInit() != GLFW_TRUE) throw std::runtime_error("no display; --out FILE.png needs none");
  }
  ~Session() { glfwTerminate(); }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
};

class Window {
 public:
  explicit Window(const Options& aOptions);
  ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  void Run();

 private:
  static Window& Of(GLFWwindow* aWindow) { return *static_cast<Window*>(glfwGetWindowUserPointer(aWindow)); }
  void Listen();
  void OnKey(int aKey);
  void OnButton(int aButton, int aAction, int aModifiers);

  Session m_session;
  GLFWwindow* m_window;
  std::optional<Viewing> m_viewing;  // destroyed before the window
};

Window::Window(const Options& aOptions) {
  glfwWindowHint(GLFW_CLIENT_API, GLFW_NO_API);  // the component creates its own context
  m_window = glfwCreateWindow(aOptions.width, aOptions.height, "glview", nullptr, nullptr);
  if (m_window == nullptr) throw std::runtime_error("cannot create a window");
  glfwSetWindowUserPointer(m_window, this);
  try {
    m_viewing.emplace(aOptions, NativeWindow(m_window),
                      [this](const std::string& aTitle) { glfwSetWindowTitle(m_window, aTitle.c_str()); });
  } catch (...) {
    glfwDestroyWindow(m_window);
    throw;
  }
  int width = 0;
  int height = 0;
  glfwGetFramebufferSize(m_window, &width, &height);
  m_viewing->SetSize(width, height);
  Listen();
}

Window::~Window() {
  m_viewing.reset();
  glfwDestroyWindow(m_window);
}

void Window::Listen() {
  glfwSetFramebufferSizeCallback(m_window, [](GLFWwindow* aWindow, int aWidth, int aHeight) {
    Of(aWindow).m_viewing->SetSize(aWidth, aHeight);
  });
  glfwSetKeyCallback(m_window, [](GLFWwindow* aWindow, int aKey, int, int aAction, int) {
    const bool repeats = kNamedKeys.contains(aKey) || aKey == GLFW_KEY_MINUS || aKey == GLFW_KEY_EQUAL;
    if (aAction == GLFW_PRESS || (aAction == GLFW_REPEAT && repeats)) Of(aWindow).OnKey(aKey);
  });
  glfwSetMouseButtonCallback(m_window, [](GLFWwindow* aWindow, int aButton, int aAction, int aModifiers) {
    Of(aWindow).OnButton(aButton, aAction, aModifiers);
  });
  glfwSetCursorPosCallback(
      m_window, [](GLFWwindow* aWindow, double aX, double aY) { Of(aWindow).m_viewing->Move(aX, aY); });
  glfwSetDropCallback(m_window, [](GLFWwindow* aWindow, int aCount, const char** aPaths) {
    Of(aWindow).m_viewing->Show({aPaths, aPaths + aCount});
  });
  glfwSetScrollCallback(m_window,
                        [](GLFWwindow* aWindow, double, double aUp) { Of(aWindow).m_viewing->Wheel(aUp); });
}

void Window::Run() {
  while (glfwWindowShouldClose(m_window) == GLFW_FALSE) {
    glfwWaitEventsTimeout(std::chrono::duration<double>(m_viewing->FollowPeriod()).count());
    m_viewing->Follow();
  }
  glfwHideWindow(m_window);  // at once: cancelling a read can take a while
}

void Window::OnKey(int aKey) {
  if (aKey == GLFW_KEY_ESCAPE) return glfwSetWindowShouldClose(m_window, GLFW_TRUE);
  if (aKey == GLFW_KEY_PAGE_UP) return m_viewing->Step(-1);
  if (aKey == GLFW_KEY_PAGE_DOWN) return m_viewing->Step(1);
  if (aKey >= GLFW_KEY_KP_0 && aKey <= GLFW_KEY_KP_9) aKey += '0' - GLFW_KEY_KP_0;
  const auto named = kNamedKeys.find(aKey);
  if (named != kNamedKeys.end()) return m_viewing->Key(named->second);
  // GLFW's codes of letters and digits are those of the characters.
  if (aKey <= 'Z') m_viewing->Key(static_cast<char>(aKey));
}

void Window::OnButton(int aButton, int aAction, int aModifiers) {
  if (aAction != GLFW_PRESS) return m_viewing->Release();
  m_viewing->Press(Dragging::KindOf(aButton == GLFW_MOUSE_BUTTON_LEFT, (aModifiers & GLFW_MOD_SHIFT) != 0,
                                    (aModifiers & GLFW_MOD_CONTROL) != 0));
}

}  // namespace

void ShowWindow(const Options& aOptions) { Window(aOptions).Run(); }
