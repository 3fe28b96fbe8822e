// embed-sdl: shows a model in an SDL window, with drag, wheel, click and the keys R, W, 1, 4 and Esc. Shows
// the simplest host in a toolkit's window: its id is the parent, and the scene follows its size. Host's
// thread only.

#include <SDL.h>
#include <gllib/GLLibHost.h>

#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>

#include "embed-sdl/NativeWindow.h"
#include "shared/model/Dragging.h"
#include "shared/model/Model.h"
#include "shared/model/Scene.h"

namespace {

/// Initializes SDL; the destructor shuts it down.
struct Session {
  Session() {
    SDL_SetHint(SDL_HINT_VIDEODRIVER, "x11");  // the component draws into X11 windows
    if (SDL_Init(SDL_INIT_VIDEO) != 0) throw std::runtime_error(SDL_GetError());
  }
  ~Session() { SDL_Quit(); }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
};

using Window = std::unique_ptr<SDL_Window, decltype(&SDL_DestroyWindow)>;

Window OpenWindow(const Model& aModel, const SceneOptions& aOptions) {
  // No SDL_WINDOW_OPENGL: the component creates its own rendering context.
  Window window(SDL_CreateWindow(aModel.name.c_str(), SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
                                 aOptions.width, aOptions.height, SDL_WINDOW_RESIZABLE),
                &SDL_DestroyWindow);
  if (!window) throw std::runtime_error(SDL_GetError());
  return window;
}

/// Passes SDL's events to the scene until the user leaves.
class EventLoop {
 public:
  EventLoop(SDL_Window& aWindow, const Model& aModel, Scene& aScene)
      : m_window(aWindow), m_model(aModel), m_scene(aScene), m_dragging(aScene) {}

  void Run() {
    SDL_Event event;
    while (SDL_WaitEvent(&event) == 1 && event.type != SDL_QUIT && !IsEscape(event)) Handle(event);
  }

 private:
  static bool IsEscape(const SDL_Event& aEvent) {
    return aEvent.type == SDL_KEYDOWN && aEvent.key.keysym.sym == SDLK_ESCAPE;
  }

  void Handle(const SDL_Event& aEvent) {
    switch (aEvent.type) {
      case SDL_WINDOWEVENT:
        // The component's window does not follow the size of its parent.
        if (aEvent.window.event == SDL_WINDOWEVENT_SIZE_CHANGED) {
          m_scene.SetSize(aEvent.window.data1, aEvent.window.data2);
        }
        break;
      case SDL_MOUSEBUTTONDOWN: {
        const SDL_Keymod held = SDL_GetModState();
        m_dragging.Move(aEvent.button.x, aEvent.button.y);
        m_dragging.Press(Dragging::KindOf(aEvent.button.button == SDL_BUTTON_LEFT, (held & KMOD_SHIFT) != 0,
                                          (held & KMOD_CTRL) != 0));
        break;
      }
      case SDL_MOUSEMOTION:
        m_dragging.Move(aEvent.motion.x, aEvent.motion.y);
        break;
      case SDL_MOUSEBUTTONUP:
        if (const auto box = m_dragging.Release()) Pick(*box);
        break;
      case SDL_MOUSEWHEEL:
        m_dragging.Wheel(aEvent.wheel.preciseY);
        break;
      case SDL_KEYDOWN:
        OnKey(aEvent.key.keysym.sym);
        break;
      default:
        break;
    }
  }

  void OnKey(SDL_Keycode aKey) {
    if (aKey == SDLK_r) m_scene.ResetCamera();
    if (aKey == SDLK_w) m_scene.SetShade(m_scene.GetShade() == Shade::Wire ? Shade::Shaded : Shade::Wire);
    if (aKey == SDLK_1 || aKey == SDLK_4) m_scene.SetViews(aKey == SDLK_4 ? 4 : 1);
  }

  void Pick(const PixelBox& aBox) {
    const auto ids = m_scene.Pick(aBox);
    m_scene.Mark(ids);
    std::string title = m_model.name;
    for (const std::string& name : m_scene.NamesOf(ids)) title += " - " + name;
    SDL_SetWindowTitle(&m_window, title.c_str());
  }

  SDL_Window& m_window;
  const Model& m_model;
  Scene& m_scene;
  Dragging m_dragging;
};

void Run(const char* aModel) {
  const auto model = std::make_shared<const Model>(LoadModel(aModel));
  const SceneOptions options;
  const Session session;
  const Window window = OpenWindow(*model, options);
  const ULONG_PTR parent = NativeWindow(window.get());
  if (parent == 0) throw std::runtime_error("SDL did not create an X11 window");
  Scene scene(model, options, parent);
  scene.DrawOnRequest();
  EventLoop(*window, *model, scene).Run();
}

}  // namespace

int main(int argc, char** argv) {
  GLKeepFreedMemory();  // Mesa's software renderer frees memory in every frame
  if (argc != 2) {
    std::fprintf(stderr, "usage: embed-sdl MODEL\n");
    return 2;
  }
  try {
    Run(argv[1]);
    // The window is closed. S_OK: the component has no object and no draw thread left.
    return DllCanUnloadNow() == S_OK ? 0 : 1;
  } catch (const ModelError& error) {
    std::fprintf(stderr, "embed-sdl: %s\n", error.what());
    return 2;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "embed-sdl: %s\n", error.what());
    return 1;
  }
}
