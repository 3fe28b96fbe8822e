// embed-pixels: shows a model in a window that the component cannot draw into, such as a Wayland window. The
// component draws without a display, a gauge reads the pixels, and the host copies them into its window. The
// space key turns the model, at up to 30 frames per second. The draw thread reads the pixels; everything else
// runs on the host's thread.

#include <SDL.h>
#include <gllib/GLLibHost.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>

#include "embed-pixels/FrameStream.h"
#include "embed-pixels/PixelWindow.h"
#include "shared/model/Dragging.h"
#include "shared/model/Model.h"
#include "shared/model/Scene.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kPeriod = std::chrono::microseconds(1'000'000 / 30);  // between frames
constexpr double kTurnPerFrame = -0.0175;                            // radians

/// Passes SDL's events to the scene, and frames of the scene to the window, until the user leaves.
class Host {
 public:
  Host(std::shared_ptr<const Model> aModel, PixelWindow& aWindow)
      : m_model(aModel),
        m_window(aWindow),
        m_scene(std::move(aModel), SceneOptions(), 0),
        m_dragging(m_scene) {
    m_scene.AddGauge(*m_stream.Get());
    m_scene.DrawOnRequest();
    m_scene.SetSize(m_window.Width(), m_window.Height());
  }

  void Run() {
    const auto start = Clock::now();
    for (auto next = start; !m_leaving;) {
      const auto wait = std::chrono::duration_cast<std::chrono::milliseconds>(next - Clock::now());
      SDL_Event event;
      if (wait.count() > 0 && SDL_WaitEventTimeout(&event, static_cast<int>(wait.count())) == 1)
        Handle(event);
      while (!m_leaving && SDL_PollEvent(&event) == 1) Handle(event);
      if (Clock::now() < next) continue;
      next += kPeriod;
      if (next < Clock::now()) next = Clock::now() + kPeriod;  // late: missed frames are skipped
      if (m_turning) m_scene.Spin(kTurnPerFrame);
    }
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    std::printf("%d frames in %.1f s\n", m_frames, seconds);
  }

 private:
  void Handle(const SDL_Event& aEvent) {
    if (aEvent.type == m_arrived) return ShowFrame();
    const double scale = m_window.Scale();
    switch (aEvent.type) {
      case SDL_QUIT:
        m_leaving = true;
        break;
      case SDL_WINDOWEVENT:
        if (aEvent.window.event == SDL_WINDOWEVENT_SIZE_CHANGED)
          m_scene.SetSize(m_window.Width(), m_window.Height());
        if (aEvent.window.event == SDL_WINDOWEVENT_EXPOSED && m_frame.width > 0) m_window.Show(m_frame);
        break;
      case SDL_MOUSEBUTTONDOWN: {
        const SDL_Keymod held = SDL_GetModState();
        m_dragging.Move(aEvent.button.x * scale, aEvent.button.y * scale);
        m_dragging.Press(Dragging::KindOf(aEvent.button.button == SDL_BUTTON_LEFT, (held & KMOD_SHIFT) != 0,
                                          (held & KMOD_CTRL) != 0));
        break;
      }
      case SDL_MOUSEMOTION:
        m_dragging.Move(aEvent.motion.x * scale, aEvent.motion.y * scale);
        break;
      case SDL_MOUSEBUTTONUP:
        if (const auto box = m_dragging.Release()) Pick(*box);
        break;
      case SDL_MOUSEWHEEL:
        m_dragging.Wheel(aEvent.wheel.preciseY);
        break;
      case SDL_KEYDOWN:
        if (aEvent.key.keysym.sym == SDLK_ESCAPE) m_leaving = true;
        if (aEvent.key.keysym.sym == SDLK_SPACE) m_turning = !m_turning;
        if (aEvent.key.keysym.sym == SDLK_r) m_scene.ResetCamera();
        break;
      default:
        break;
    }
  }

  void ShowFrame() {
    if (!m_stream->Take(m_frame)) return;  // an earlier event has already shown it
    m_window.Show(m_frame);
    ++m_frames;
  }

  void Pick(const PixelBox& aBox) {
    const auto ids = m_scene.Pick(aBox);
    m_scene.Mark(ids);
    std::string title = m_model->name;
    for (const std::string& name : m_scene.NamesOf(ids)) title += " - " + name;
    m_window.SetTitle(title);
  }

  const std::shared_ptr<const Model> m_model;
  PixelWindow& m_window;
  const std::uint32_t m_arrived = SDL_RegisterEvents(1);  // SDL event type for a new frame
  Picture m_frame;
  GLPtr<FrameStream> m_stream = GLMake<FrameStream>([type = m_arrived] {
    SDL_Event event{};
    event.type = type;
    SDL_PushEvent(&event);  // SDL allows this on any thread
  });
  Scene m_scene;  // its end stops the draw thread, which uses the members above
  Dragging m_dragging;
  bool m_turning = false;
  bool m_leaving = false;
  int m_frames = 0;  // frames shown so far
};

void Run(const char* aModel) {
  const auto model = std::make_shared<const Model>(LoadModel(aModel));
  const SceneOptions options;
  PixelWindow window(model->name, options.width, options.height);
  Host(model, window).Run();
}

int Complain(const std::exception& aReason, int aStatus) {
  std::fprintf(stderr, "embed-pixels: %s\n", aReason.what());
  return aStatus;
}

}  // namespace

int main(int argc, char** argv) {
  GLKeepFreedMemory();  // Mesa's software renderer frees memory in every frame
  if (argc != 2) {
    std::fprintf(stderr, "usage: embed-pixels MODEL\n");
    return 2;
  }
  setenv("GLLIB_DISPLAY", "headless", 1);  // also if an X server is running
  try {
    Run(argv[1]);
    return DllCanUnloadNow() == S_OK ? 0 : 1;
  } catch (const ModelError& error) {
    return Complain(error, 2);
  } catch (const std::exception& error) {
    return Complain(error, 1);
  }
}
