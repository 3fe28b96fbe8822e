// PixelWindow: draws pictures with SDL's software renderer. Host's thread.

#include "embed-pixels/PixelWindow.h"

#include <stdexcept>

PixelWindow::Session::Session() {
  // Without this hint SDL copies the pictures through GL, also with its software renderer, and creates the
  // window again for that.
  SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  if (SDL_Init(SDL_INIT_VIDEO) != 0) throw std::runtime_error(SDL_GetError());
}

PixelWindow::PixelWindow(const std::string& aTitle, int aWidth, int aHeight) {
  m_window.reset(SDL_CreateWindow(aTitle.c_str(), SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, aWidth,
                                  aHeight, SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI));
  if (m_window) m_renderer.reset(SDL_CreateRenderer(m_window.get(), -1, SDL_RENDERER_SOFTWARE));
  if (!m_renderer) throw std::runtime_error(SDL_GetError());
}

void PixelWindow::Show(const Picture& aPicture) {
  if (m_width != aPicture.width || m_height != aPicture.height) {
    m_width = aPicture.width;
    m_height = aPicture.height;
    m_texture.reset(SDL_CreateTexture(m_renderer.get(), SDL_PIXELFORMAT_RGBA32, SDL_TEXTUREACCESS_STREAMING,
                                      m_width, m_height));
  }
  if (!m_texture) return;
  SDL_UpdateTexture(m_texture.get(), nullptr, aPicture.pixels.data(), 4 * m_width);
  // GL's first row is the lowest; SDL's is the top one.
  SDL_RenderCopyEx(m_renderer.get(), m_texture.get(), nullptr, nullptr, 0, nullptr, SDL_FLIP_VERTICAL);
  SDL_RenderPresent(m_renderer.get());
}

int PixelWindow::Width() const {
  int width = 1;
  SDL_GetRendererOutputSize(m_renderer.get(), &width, nullptr);
  return width;
}

int PixelWindow::Height() const {
  int height = 1;
  SDL_GetRendererOutputSize(m_renderer.get(), nullptr, &height);
  return height;
}

double PixelWindow::Scale() const {
  int width = 1;
  SDL_GetWindowSize(m_window.get(), &width, nullptr);
  return static_cast<double>(Width()) / width;
}
