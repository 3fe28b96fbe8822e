// FrameStream: reads each frame into memory on the draw thread.

#include "embed-pixels/FrameStream.h"

#include <GL/gl.h>

#include <utility>

bool FrameStream::Take(Picture& aFrame) {
  const std::lock_guard lock(m_lock);
  if (!m_fresh) return false;
  std::swap(aFrame, m_newest);
  m_fresh = false;
  return true;
}

HRESULT FrameStream::Draw(IGLCanvas*, IGLContext* aContext) noexcept try {
  int width = 0;
  int height = 0;
  aContext->GetViewportWidth(&width);
  aContext->GetViewportHeight(&height);
  {
    const std::lock_guard lock(m_lock);
    if (m_newest.width != width || m_newest.height != height) m_newest = Picture(width, height);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, m_newest.pixels.data());
    m_fresh = true;
  }
  m_arrived();
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}
