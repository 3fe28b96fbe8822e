// PixelWindow: a window of SDL's that shows pictures. It needs no window of an X server, so it works wherever
// SDL does. The host's thread only.

#pragma once

#include <SDL.h>

#include <memory>
#include <string>

#include "shared/Picture.h"

class PixelWindow {
 public:
  /// @throws std::runtime_error when there is no display
  PixelWindow(const std::string& aTitle, int aWidth, int aHeight);
  PixelWindow(const PixelWindow&) = delete;
  PixelWindow& operator=(const PixelWindow&) = delete;

  void SetTitle(const std::string& aTitle) { SDL_SetWindowTitle(m_window.get(), aTitle.c_str()); }
  /// Shows a picture over all of the window.
  void Show(const Picture& aPicture);

  /// The size in pixels, on a dense screen more than SDL's own units.
  int Width() const;
  int Height() const;
  /// Pixels in one of SDL's units.
  double Scale() const;

 private:
  /// SDL from its start to its end.
  struct Session {
    Session();
    ~Session() { SDL_Quit(); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
  };
  template <class Thing, void (*aDestroy)(Thing*)>
  struct Destroyer {
    void operator()(Thing* aThing) const { aDestroy(aThing); }
  };
  template <class Thing, void (*aDestroy)(Thing*)>
  using Owned = std::unique_ptr<Thing, Destroyer<Thing, aDestroy>>;

  const Session m_session;
  Owned<SDL_Window, &SDL_DestroyWindow> m_window;
  Owned<SDL_Renderer, &SDL_DestroyRenderer> m_renderer;
  Owned<SDL_Texture, &SDL_DestroyTexture> m_texture;  // of the size of the picture that was shown last
  int m_width = 0, m_height = 0;                      // of the texture
};
