#include "glview/Window.h"

#include <GLFW/glfw3.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "glview/Loader.h"
#include "glview/NativeWindow.h"
#include "shared/model/Dragging.h"
#include "shared/model/Scene.h"

namespace {

constexpr double kWheelStep = 0.9;
constexpr double kTitlePeriod = 0.25;  // seconds
constexpr double kReadingPeriod = 0.05;
constexpr int kCaptureZoom = 2;

/// The first name of the kind model-001.png that no file has yet.
std::string FreeName(const std::string& aModel) {
  const std::string stem = std::filesystem::path(aModel).stem().string();
  for (int number = 1;; ++number) {
    char tail[24];
    std::snprintf(tail, sizeof(tail), "-%03d.png", number);
    if (!std::filesystem::exists(stem + tail)) return stem + tail;
  }
}

/// GLFW from its start to its end.
struct Session {
  Session() {
    if (glfwInit() != GLFW_TRUE) throw std::runtime_error("no display; --out FILE.png draws without one");
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
  void Pick(const PixelBox& aBox);
  void OnDrop(std::vector<std::string> aPaths);
  /// Shows how far reading is, and what was read once it is there.
  void FollowReading();
  void StartCapture();
  /// Writes the picture that was asked for, once it is there.
  void FinishCapture();
  /// Shows a word at the end of the title.
  void Note(const std::string& aWord);
  void UpdateTitle();

  Session m_session;
  const Options m_options;
  std::shared_ptr<const Model> m_model = std::make_shared<const Model>();  // nothing yet
  GLFWwindow* m_window;
  std::unique_ptr<Scene> m_scene;
  std::optional<Dragging> m_dragging;  // in the scene
  std::string m_picked;
  std::future<std::optional<Picture>> m_picture;  // one that is to come
  std::string m_note;
  Loader m_loader;
  double m_titleTime = 0;
};

Window::Window(const Options& aOptions) : m_options(aOptions) {
  glfwWindowHint(GLFW_CLIENT_API, GLFW_NO_API);  // the component brings its own
  m_window = glfwCreateWindow(aOptions.width, aOptions.height, "glview", nullptr, nullptr);
  if (m_window == nullptr) throw std::runtime_error("no window to be had");
  glfwSetWindowUserPointer(m_window, this);
  try {
    m_scene = std::make_unique<Scene>(m_model, aOptions, NativeWindow(m_window));
  } catch (...) {
    glfwDestroyWindow(m_window);
    throw;
  }
  m_dragging.emplace(*m_scene);
  m_scene->DrawOnRequest();
  int width = 0;
  int height = 0;
  glfwGetFramebufferSize(m_window, &width, &height);
  m_scene->SetSize(width, height);
  Listen();
  m_loader.Start(aOptions.models, aOptions.together);
}

Window::~Window() {
  m_scene.reset();
  glfwDestroyWindow(m_window);
}

void Window::Listen() {
  glfwSetFramebufferSizeCallback(m_window, [](GLFWwindow* aWindow, int aWidth, int aHeight) {
    Of(aWindow).m_scene->SetSize(aWidth, aHeight);
  });
  glfwSetKeyCallback(m_window, [](GLFWwindow* aWindow, int aKey, int, int aAction, int) {
    if (aAction == GLFW_PRESS) Of(aWindow).OnKey(aKey);
  });
  glfwSetMouseButtonCallback(m_window, [](GLFWwindow* aWindow, int aButton, int aAction, int aModifiers) {
    Of(aWindow).OnButton(aButton, aAction, aModifiers);
  });
  glfwSetCursorPosCallback(
      m_window, [](GLFWwindow* aWindow, double aX, double aY) { Of(aWindow).m_dragging->Move(aX, aY); });
  glfwSetDropCallback(m_window, [](GLFWwindow* aWindow, int aCount, const char** aPaths) {
    Of(aWindow).OnDrop({aPaths, aPaths + aCount});
  });
  glfwSetScrollCallback(m_window, [](GLFWwindow* aWindow, double, double aUp) {
    Of(aWindow).m_scene->Zoom(std::pow(kWheelStep, aUp));
  });
}

void Window::Run() {
  while (glfwWindowShouldClose(m_window) == GLFW_FALSE) {
    glfwWaitEventsTimeout(m_loader.IsReading() ? kReadingPeriod : kTitlePeriod);
    FollowReading();
    FinishCapture();
    UpdateTitle();
  }
  glfwHideWindow(m_window);  // at once, also where a read takes a while to give up
}

void Window::OnKey(int aKey) {
  switch (aKey) {
    case GLFW_KEY_ESCAPE:
      glfwSetWindowShouldClose(m_window, GLFW_TRUE);
      break;
    case GLFW_KEY_1:
    case GLFW_KEY_KP_1:
      m_scene->SetViews(1);
      break;
    case GLFW_KEY_4:
    case GLFW_KEY_KP_4:
      m_scene->SetViews(4);
      break;
    case GLFW_KEY_A:
      m_scene->SetAxes(!m_scene->HasAxes());
      break;
    case GLFW_KEY_C:
      StartCapture();
      break;
    case GLFW_KEY_R:
      m_scene->ResetCamera();
      break;
    case GLFW_KEY_M:
      m_scene->SetTextures(!m_scene->HasTextures());
      break;
    case GLFW_KEY_T:
      m_scene->SetText(!m_scene->HasText());
      break;
    case GLFW_KEY_F:
      m_scene->SetFog(!m_scene->HasFog());
      break;
    case GLFW_KEY_W: {
      constexpr int kShades = 4;
      m_scene->SetShade(static_cast<Shade>((static_cast<int>(m_scene->GetShade()) + 1) % kShades));
      break;
    }
    default:
      break;
  }
}

void Window::OnButton(int aButton, int aAction, int aModifiers) {
  if (aAction == GLFW_PRESS) {
    m_dragging->Press(Dragging::KindOf(aButton == GLFW_MOUSE_BUTTON_LEFT, (aModifiers & GLFW_MOD_SHIFT) != 0,
                                       (aModifiers & GLFW_MOD_CONTROL) != 0));
  } else if (const auto box = m_dragging->Release()) {
    Pick(*box);
  }
}

void Window::Pick(const PixelBox& aBox) {
  const auto ids = m_scene->Pick(aBox);
  m_scene->Mark(ids);
  m_picked.clear();
  for (const std::string& name : m_scene->NamesOf(ids)) m_picked += (m_picked.empty() ? "" : ", ") + name;
  m_titleTime = 0;
}

void Window::OnDrop(std::vector<std::string> aPaths) {
  m_loader.Start(std::move(aPaths), m_options.together);
}

void Window::FollowReading() {
  if (!m_loader.IsReading()) return;
  const bool ready = m_loader.IsReady();
  m_scene->ShowReading(ready ? Progress::kIdle : m_loader.Share());
  if (!ready) return;
  try {
    m_model = m_loader.Take();
  } catch (const ModelError& error) {
    if (m_model->parts.empty()) throw;  // there is nothing to be seen without
    return Note(error.what());
  }
  m_scene->SetModel(m_model);
  m_picked.clear();
  Note("");
}

void Window::StartCapture() {
  if (m_picture.valid()) return;
  Note("taking a picture");
  m_picture = m_scene->Capture(kCaptureZoom);
}

void Window::FinishCapture() {
  if (!m_picture.valid() || m_picture.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return;
  m_scene->Redraw();  // the window's own lists went with the capture; they come back with a frame
  const auto picture = m_picture.get();
  if (!picture) return Note("no picture to be had");
  const std::string name = FreeName(m_model->name);
  Note(WritePng(*picture, name) ? "wrote " + name : "can't write " + name);
}

void Window::Note(const std::string& aWord) {
  m_note = aWord;
  m_titleTime = 0;
  UpdateTitle();
}

void Window::UpdateTitle() {
  const double now = glfwGetTime();
  if (m_titleTime != 0 && now - m_titleTime < kTitlePeriod) return;
  m_titleTime = now;
  char frame[32];
  std::snprintf(frame, sizeof(frame), "%.1f ms", m_scene->FrameMilliseconds());
  if (m_loader.IsReading()) {
    const int percent = static_cast<int>(m_loader.Share() * 100.0f);
    return glfwSetWindowTitle(m_window, ("glview - reading " + std::to_string(percent) + " %").c_str());
  }
  std::string title =
      m_model->name + " - " + std::to_string(m_model->CountTriangles()) + " triangles - " + frame;
  if (!m_picked.empty()) title += " - " + m_picked;
  if (!m_note.empty()) title += " - " + m_note;
  glfwSetWindowTitle(m_window, title.c_str());
}

}  // namespace

void ShowWindow(const Options& aOptions) { Window(aOptions).Run(); }
