// X11Display: connection, windows and events. Any thread; XCB serialises requests. Errors of requests arrive
// as events and are ignored: each operation reports failures by its result.

#include "platform/linux/display/x11/X11Display.h"

#include <EGL/eglext.h>
#include <X11/Xlib-xcb.h>
#include <X11/Xlib.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string_view>

#include "platform/ExitGate.h"
#include "platform/Log.h"
#include "platform/Memory.h"
#include "platform/Thread.h"
#include "platform/linux/MessageThread.h"
#include "platform/linux/WindowTable.h"
#include "platform/linux/display/PipeSignal.h"

namespace {

template <class T>
HeapBlock<T> Owned(T* aReply) noexcept {
  return HeapBlock<T>(aReply);
}

xcb_window_t XidOf(HWND aWindow) noexcept {
  return static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(aWindow));
}

HWND HandleOf(xcb_window_t aXid) noexcept { return reinterpret_cast<HWND>(std::uintptr_t{aXid}); }

bool HasXcbPlatform() noexcept {
  const char* names = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
  return names != nullptr && std::string_view(names).find("EGL_EXT_platform_xcb") != std::string_view::npos;
}

/// Returns whether the handle fits the 32 bits of a window identifier. Other handles name no window.
bool IsXid(HWND aWindow) noexcept {
  return reinterpret_cast<std::uintptr_t>(aWindow) <= std::numeric_limits<std::uint32_t>::max();
}

void LogRefusal(xcb_window_t aParent, int aError) noexcept {
  if (aError == XCB_WINDOW) {
    LogError(
        "the X server does not know the parent window 0x%x: flush or synchronise the host's own connection "
        "(XSync, gdk_display_sync) before Initialize",
        aParent);
  } else {
    LogError("the X server refuses a child of the window 0x%x: protocol error %d", aParent, aError);
  }
}

/// Clamps a coordinate to the 16 bits of the protocol, since larger values would wrap.
std::int16_t Coordinate(int aValue) noexcept {
  return static_cast<std::int16_t>(std::clamp(aValue, -32768, 32767));
}

/// Returns a side for the server: at least 1. The component also allows 0.
std::uint32_t Side(int aLength) noexcept { return static_cast<std::uint32_t>(std::clamp(aLength, 1, 32767)); }

}  // namespace

std::shared_ptr<DisplayServer> X11Display::Open() noexcept {
  const PipeSignal quiet;
  try {
    auto display = std::make_shared<X11Display>();
    if (!display->Connect()) {
      if (*ServerName() == '\0') {
        LogInfo("there is no X server: DISPLAY is not set");
      } else {
        LogWarning("the X server %s cannot be reached", ServerName());
      }
      return nullptr;
    }
    if (!display->StartEgl()) {
      LogWarning("EGL cannot draw on the X server %s", ServerName());
      return nullptr;
    }
    display->m_EventThread = StartThread([raw = display.get()] { raw->ReadEvents(); });
    return display;
  } catch (...) {
    return nullptr;
  }
}

const char* X11Display::ServerName() noexcept {
  const char* name = std::getenv("DISPLAY");
  return name != nullptr ? name : "";
}

bool X11Display::Connect() noexcept {
  m_bXcbPlatform = HasXcbPlatform();
  if (m_bXcbPlatform) {
    m_pConnection = xcb_connect(nullptr, &m_iScreen);
  } else if ((m_pXlib = XOpenDisplay(nullptr)) != nullptr) {
    m_pConnection = XGetXCBConnection(m_pXlib);
    m_iScreen = DefaultScreen(m_pXlib);
    XSetEventQueueOwner(m_pXlib, XCBOwnsEventQueue);
    // Without this handler Xlib ends the process when the connection breaks.
    XSetIOErrorExitHandler(
        m_pXlib, [](_XDisplay*, void*) {}, nullptr);
  }
  if (m_pConnection == nullptr || xcb_connection_has_error(m_pConnection) != 0) return false;
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(m_pConnection));
  for (int i = 0; i < m_iScreen && screens.rem > 0; ++i) xcb_screen_next(&screens);
  m_pScreen = screens.data;
  if (m_pScreen == nullptr) return false;
  m_Colormap = xcb_generate_id(m_pConnection);
  xcb_create_colormap(m_pConnection, XCB_COLORMAP_ALLOC_NONE, m_Colormap, m_pScreen->root,
                      m_pScreen->root_visual);
  return xcb_flush(m_pConnection) > 0;
}

bool X11Display::StartEgl() noexcept {
  const auto getDisplay =
      reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (getDisplay == nullptr) return false;
  const EGLint screen[] = {m_bXcbPlatform ? EGL_PLATFORM_XCB_SCREEN_EXT : EGL_PLATFORM_X11_SCREEN_EXT,
                           m_iScreen, EGL_NONE};
  const EGLDisplay display = m_bXcbPlatform ? getDisplay(EGL_PLATFORM_XCB_EXT, m_pConnection, screen)
                                            : getDisplay(EGL_PLATFORM_X11_EXT, m_pXlib, screen);
  return m_Egl.Start(display, static_cast<EGLint>(m_pScreen->root_visual));
}

// Shuts the connection down locally: this wakes the event thread even if the server does not respond.
X11Display::~X11Display() {
  const PipeSignal quiet;
  m_Egl.End();
  if (m_EventThread.joinable()) {
    m_bStop = true;
    shutdown(xcb_get_file_descriptor(m_pConnection), SHUT_RDWR);
    m_EventThread.join();
  }
  if (m_pXlib == nullptr) {
    xcb_disconnect(m_pConnection);  // also accepts a failed connection and null
  } else {
    close(xcb_get_file_descriptor(m_pConnection));  // XCloseDisplay would send a request to the server
  }
}

bool X11Display::IsBroken() const noexcept {
  return m_bBroken || xcb_connection_has_error(m_pConnection) != 0;
}

void X11Display::ReadEvents() noexcept {
  MessageThread& messages = MessageThread::Get();
  while (!m_bStop) {
    const auto event = Owned(xcb_wait_for_event(m_pConnection));
    if (event == nullptr) {
      if (!m_bStop) OnBroken();
      return;
    }
    switch (event->response_type & 0x7F) {
      case XCB_EXPOSE: {
        const auto* expose = reinterpret_cast<const xcb_expose_event_t*>(event.get());
        if (expose->count == 0) messages.Post(HandleOf(expose->window), WM_PAINT, 0, 0);
        break;
      }
      case XCB_DESTROY_NOTIFY: {
        const auto* destroyed = reinterpret_cast<const xcb_destroy_notify_event_t*>(event.get());
        const HWND window = HandleOf(destroyed->window);
        {
          const std::scoped_lock lock(m_Lock);
          if (const auto found = m_Alive.find(window); found != m_Alive.end()) found->second = false;
        }
        messages.Post(window, WM_DESTROY, 0, 0);
        break;
      }
      default:
        break;  // other events and errors are ignored
    }
  }
}

// The server has ended, and all windows with it.
void X11Display::OnBroken() noexcept {
  LogWarning(
      "the connection to the X server is lost: its contexts draw nothing until they are initialised again");
  m_bBroken = true;
  {
    const std::scoped_lock lock(m_Lock);
    for (auto& [window, alive] : m_Alive) alive = false;
  }
  try {
    for (const HWND window : WindowTable::Get().OnDisplay(this)) {
      MessageThread::Get().Post(window, WM_DESTROY, 0, 0);
    }
  } catch (...) {
    // without memory the windows receive no WM_DESTROY; nothing is drawn on them
  }
}

bool X11Display::IsAlive(HWND aWindow) noexcept {
  const std::scoped_lock lock(m_Lock);
  const auto found = m_Alive.find(aWindow);
  return found != m_Alive.end() && found->second;
}

HWND X11Display::MakeWindow(HWND aParent, const RECT& aPlace) noexcept {
  const PipeSignal quiet;
  if (IsBroken()) return nullptr;
  if (!IsXid(aParent)) {
    LogError("the parent's handle has more than 32 bits: it is not an X11 window");
    return nullptr;
  }
  // Skips numbers that windows of a previous server still use: a number must name one window only.
  xcb_window_t window = 0;
  do {
    window = xcb_generate_id(m_pConnection);
    if (window == std::numeric_limits<std::uint32_t>::max()) return nullptr;  // no numbers are left
  } while (WindowTable::Get().NumberOf(HandleOf(window)) != 0);
  const xcb_window_t parent = aParent != nullptr ? XidOf(aParent) : m_pScreen->root;
  // A border pixel and its own colormap allow the window to be a child of a parent with any visual.
  constexpr std::uint32_t kMask =
      XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
  const std::uint32_t values[] = {0, aParent == nullptr ? 1u : 0u,
                                  XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY, m_Colormap};
  const auto created = xcb_create_window_checked(
      m_pConnection, m_pScreen->root_depth, window, parent, Coordinate(aPlace.left), Coordinate(aPlace.top),
      static_cast<std::uint16_t>(Side(aPlace.right - aPlace.left)),
      static_cast<std::uint16_t>(Side(aPlace.bottom - aPlace.top)), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
      m_pScreen->root_visual, kMask, values);
  const auto error = Owned(xcb_request_check(m_pConnection, created));
  if (error != nullptr) LogRefusal(parent, error->error_code);
  if (error != nullptr || IsBroken()) return nullptr;
  try {
    const std::scoped_lock lock(m_Lock);
    m_Alive[HandleOf(window)] = true;
  } catch (...) {
    return nullptr;
  }
  return HandleOf(window);
}

bool X11Display::Show(HWND aWindow) noexcept {
  const PipeSignal quiet;
  if (IsBroken() || !IsAlive(aWindow)) return false;
  xcb_map_window(m_pConnection, XidOf(aWindow));
  return xcb_flush(m_pConnection) > 0;
}

void X11Display::EndWindow(HWND aWindow) noexcept {
  const PipeSignal quiet;
  const bool alive = IsAlive(aWindow);
  {
    const std::scoped_lock lock(m_Lock);
    m_Alive.erase(aWindow);
  }
  if (!alive || IsBroken()) return;
  xcb_destroy_window(m_pConnection, XidOf(aWindow));
  xcb_flush(m_pConnection);
}

bool X11Display::Place(HWND aWindow, int x, int y, int aWidth, int aHeight) noexcept {
  const PipeSignal quiet;
  if (IsBroken() || !IsXid(aWindow)) return false;
  constexpr std::uint16_t kMask =
      XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
  const std::uint32_t values[] = {static_cast<std::uint32_t>(Coordinate(x)),
                                  static_cast<std::uint32_t>(Coordinate(y)), Side(aWidth), Side(aHeight)};
  const auto placed = xcb_configure_window_checked(m_pConnection, XidOf(aWindow), kMask, values);
  return Owned(xcb_request_check(m_pConnection, placed)) == nullptr;
}

bool X11Display::ScreenRectangle(HWND aWindow, RECT* aRect) noexcept {
  const PipeSignal quiet;
  if (IsBroken() || !IsXid(aWindow)) return false;
  RECT rect{};
  // Adds the offsets here, since TranslateCoordinates returns 16 bits, which would wrap.
  for (xcb_window_t window = XidOf(aWindow); window != XCB_NONE;) {
    const auto askedPlace = xcb_get_geometry(m_pConnection, window);
    const auto askedParent = xcb_query_tree(m_pConnection, window);
    const auto place = Owned(xcb_get_geometry_reply(m_pConnection, askedPlace, nullptr));
    const auto tree = Owned(xcb_query_tree_reply(m_pConnection, askedParent, nullptr));
    if (place == nullptr || tree == nullptr) return false;
    if (window == XidOf(aWindow)) rect = {0, 0, place->width, place->height};
    const int right = place->x + place->border_width, down = place->y + place->border_width;
    rect = {rect.left + right, rect.top + down, rect.right + right, rect.bottom + down};
    window = tree->parent;
  }
  *aRect = rect;
  return true;
}

HWND X11Display::ParentOf(HWND aWindow) noexcept {
  const PipeSignal quiet;
  if (IsBroken() || !IsXid(aWindow)) return nullptr;
  const auto asked = xcb_query_tree(m_pConnection, XidOf(aWindow));
  const auto tree = Owned(xcb_query_tree_reply(m_pConnection, asked, nullptr));
  return tree == nullptr || tree->parent == tree->root ? nullptr : HandleOf(tree->parent);
}

HWND X11Display::Desktop() noexcept { return HandleOf(m_pScreen->root); }

std::unique_ptr<DrawSurface> X11Display::MakeWindowSurface(HWND aWindow,
                                                           const DisplayFormat& aFormat) noexcept {
  const PipeSignal quiet;
  const ExitGate::Pass pass;
  if (!pass || IsBroken() || !IsAlive(aWindow)) return nullptr;
  const auto create = reinterpret_cast<PFNEGLCREATEPLATFORMWINDOWSURFACEEXTPROC>(
      eglGetProcAddress("eglCreatePlatformWindowSurfaceEXT"));
  if (create == nullptr) return nullptr;
  xcb_window_t xcbWindow = XidOf(aWindow);
  ::Window xlibWindow = xcbWindow;
  void* native = m_bXcbPlatform ? static_cast<void*>(&xcbWindow) : static_cast<void*>(&xlibWindow);
  const EGLSurface surface = create(m_Egl.Handle(), aFormat.m_pConfig, native, nullptr);
  if (surface == EGL_NO_SURFACE) return nullptr;
  return std::unique_ptr<DrawSurface>(new (std::nothrow) EglSurface(m_Egl.Handle(), surface));
}

std::unique_ptr<DrawSurface> X11Display::MakeMemorySurface(int aWidth, int aHeight,
                                                           const DisplayFormat& aFormat) noexcept {
  return m_Egl.MakePbuffer(aWidth, aHeight, aFormat);
}

std::unique_ptr<DrawContext> X11Display::MakeContext(const DisplayFormat& aFormat) noexcept {
  return m_Egl.MakeContext(aFormat);
}

// Sets the swap interval to 0: the draw cycle determines the frame rate, and a swap on a hidden window must
// not block.
bool X11Display::MakeCurrent(DrawSurface* aSurface, DrawContext* aContext) noexcept {
  const EGLSurface handle =
      aSurface != nullptr ? static_cast<EglSurface*>(aSurface)->Handle() : EGLSurface{EGL_NO_SURFACE};
  if (!m_Egl.MakeCurrent(handle, aContext)) return false;
  if (aSurface != nullptr) eglSwapInterval(m_Egl.Handle(), 0);
  return true;
}

// Checks the connection first: a swap on a broken connection does not return.
bool X11Display::Swap(HWND aWindow, DrawSurface& aSurface) noexcept {
  pollfd look{xcb_get_file_descriptor(m_pConnection), 0, 0};
  if (IsBroken() || !IsAlive(aWindow)) return false;
  int looked = 0;
  do looked = poll(&look, 1, 0);
  while (looked < 0 && errno == EINTR);
  if (looked < 0 || look.revents != 0) return false;
  return eglSwapBuffers(m_Egl.Handle(), static_cast<EglSurface&>(aSurface).Handle()) == EGL_TRUE;
}
