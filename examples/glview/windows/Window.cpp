// Window on Windows: passes window messages to Viewing. Host's thread.

#include "glview/Window.h"

#include <gllib/GLPlatform.h>
#include <shellapi.h>
#include <windowsx.h>

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "glview/Viewing.h"

namespace {

/// Keys whose codes are not characters, and the characters that represent them.
const std::map<WPARAM, char> kNamedKeys = {{VK_UP, '^'},        {VK_DOWN, 'v'},     {VK_LEFT, '<'},
                                           {VK_RIGHT, '>'},     {VK_SUBTRACT, '-'}, {VK_ADD, '+'},
                                           {VK_OEM_MINUS, '-'}, {VK_OEM_PLUS, '+'}};

constexpr char kClass[] = "glview";

/// A system window that is the parent of the component's window. The component's window is disabled, so this
/// window receives mouse and keys.
class Window {
 public:
  explicit Window(const Options& aOptions);
  ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  void Run();

 private:
  static LRESULT CALLBACK Procedure(HWND aWindow, UINT aMessage, WPARAM aWord, LPARAM aLong);
  /// @return true if the message needs no default handling
  bool On(UINT aMessage, WPARAM aWord, LPARAM aLong);
  void OnDrop(HDROP aDrop);

  HWND m_window = nullptr;
  std::optional<Viewing> m_viewing;  // destroyed before the window
  bool m_leaving = false;
};

Window::Window(const Options& aOptions) {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = &Procedure;
  windowClass.lpszClassName = kClass;
  windowClass.hInstance = GetModuleHandleA(nullptr);
  windowClass.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
  RegisterClassA(&windowClass);
  constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
  RECT frame = {0, 0, aOptions.width, aOptions.height};
  AdjustWindowRect(&frame, kStyle, FALSE);
  m_window =
      CreateWindowExA(0, kClass, "glview", kStyle, CW_USEDEFAULT, CW_USEDEFAULT, frame.right - frame.left,
                      frame.bottom - frame.top, nullptr, nullptr, windowClass.hInstance, nullptr);
  if (m_window == nullptr) throw std::runtime_error("cannot create a window");
  try {
    m_viewing.emplace(aOptions, reinterpret_cast<ULONG_PTR>(m_window),
                      [this](const std::string& aTitle) { SetWindowTextA(m_window, aTitle.c_str()); });
  } catch (...) {
    DestroyWindow(m_window);
    throw;
  }
  SetWindowLongPtrA(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  DragAcceptFiles(m_window, TRUE);
  ::ShowWindow(m_window, SW_SHOWDEFAULT);
  RECT inside{};
  GetClientRect(m_window, &inside);
  m_viewing->SetSize(inside.right, inside.bottom);
}

Window::~Window() {
  SetWindowLongPtrA(m_window, GWLP_USERDATA, 0);
  m_viewing.reset();
  DestroyWindow(m_window);
}

void Window::Run() {
  while (!m_leaving) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(m_viewing->FollowPeriod().count()),
                              QS_ALLINPUT);
    for (MSG message; !m_leaving && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;)
      DispatchMessageA(&message);
    m_viewing->Follow();
  }
  ::ShowWindow(m_window, SW_HIDE);  // at once: cancelling a read can take a while
}

LRESULT CALLBACK Window::Procedure(HWND aWindow, UINT aMessage, WPARAM aWord, LPARAM aLong) {
  auto* self = reinterpret_cast<Window*>(GetWindowLongPtrA(aWindow, GWLP_USERDATA));
  if (self != nullptr && self->On(aMessage, aWord, aLong)) return 0;
  return DefWindowProcA(aWindow, aMessage, aWord, aLong);
}

bool Window::On(UINT aMessage, WPARAM aWord, LPARAM aLong) {
  switch (aMessage) {
    case WM_CLOSE:
      m_leaving = true;
      return true;
    case WM_SIZE:
      if (aWord != SIZE_MINIMIZED) m_viewing->SetSize(LOWORD(aLong), HIWORD(aLong));
      return true;
    case WM_KEYDOWN:
      if (aWord == VK_ESCAPE) m_leaving = true;
      if (aWord == VK_PRIOR) m_viewing->Step(-1);
      if (aWord == VK_NEXT) m_viewing->Step(1);
      if (aWord >= VK_NUMPAD0 && aWord <= VK_NUMPAD9) aWord += '0' - VK_NUMPAD0;
      if (const auto named = kNamedKeys.find(aWord); named != kNamedKeys.end()) {
        m_viewing->Key(named->second);
        return true;
      }
      if (aWord <= 'Z')
        m_viewing->Key(static_cast<char>(aWord));  // letters and digits have the codes of their characters
      return true;
    case WM_MOUSEMOVE:
      m_viewing->Move(GET_X_LPARAM(aLong), GET_Y_LPARAM(aLong));
      return true;
    case WM_LBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_RBUTTONDOWN:
      m_viewing->Move(GET_X_LPARAM(aLong), GET_Y_LPARAM(aLong));
      SetCapture(m_window);
      m_viewing->Press(
          Dragging::KindOf(aMessage == WM_LBUTTONDOWN, (aWord & MK_SHIFT) != 0, (aWord & MK_CONTROL) != 0));
      return true;
    case WM_LBUTTONUP:
    case WM_MBUTTONUP:
    case WM_RBUTTONUP:
      ReleaseCapture();
      m_viewing->Release();
      return true;
    case WM_MOUSEWHEEL:
      m_viewing->Wheel(static_cast<double>(GET_WHEEL_DELTA_WPARAM(aWord)) / WHEEL_DELTA);
      return true;
    case WM_DROPFILES:
      OnDrop(reinterpret_cast<HDROP>(aWord));
      return true;
    default:
      return false;
  }
}

void Window::OnDrop(HDROP aDrop) {
  std::vector<std::string> paths;
  const UINT count = DragQueryFileA(aDrop, 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    std::string path(DragQueryFileA(aDrop, i, nullptr, 0) + 1, '\0');  // with room for the terminating zero
    path.resize(DragQueryFileA(aDrop, i, path.data(), static_cast<UINT>(path.size())));
    paths.push_back(std::move(path));
  }
  DragFinish(aDrop);
  m_viewing->Show(std::move(paths));
}

}  // namespace

void ShowWindow(const Options& aOptions) { Window(aOptions).Run(); }
