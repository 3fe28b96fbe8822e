// PixelWindow: an SDL window that shows pictures. It works with every video driver of SDL, also without an X
// server. Host's thread only.

#pragma once

#include <SDL.h>

#include <memory>
#include <string>

#include "shared/Picture.h"

class PixelWindow {
 public:
  /// @throws std::runtime_error if there is no display
  PixelWindow(const std::string& aTitle, int aWidth, int aHeight);
  PixelWindow(const PixelWindow&) = delete;
  PixelWindow& operator=(const PixelWindow&) = delete;

  void SetTitle(const std::string& aTitle) { SDL_SetWindowTitle(m_window.get(), aTitle.c_str()); }
  /// Shows a picture, stretched over the whole window.
  void Show(const Picture& aPicture);

  /// Width in pixels. On a high-density screen it exceeds the width in SDL's units.
  int Width() const;
  int Height() const;
  /// Pixels per SDL unit.
  double Scale() const;

 private:
  /// Initializes SDL; the destructor shuts it down.
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
  Owned<SDL_Texture, &SDL_DestroyTexture> m_texture;  // has the size of the last picture
  int m_width = 0, m_height = 0;                      // size of the texture
};
