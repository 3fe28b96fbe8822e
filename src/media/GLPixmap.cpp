// GLPixmap: the image, its file and its drawing. Any thread, one at a time; Draw needs a current GL context.

#include "media/GLPixmap.h"

#include <algorithm>
#include <cstring>

#include "component/Catalogue.h"
#include "component/Output.h"
#include "media/BitmapFile.h"
#include "platform/File.h"
#include "platform/GL.h"
#include "platform/Log.h"

namespace {

HRESULT Refuse(const char* aReason) noexcept {
  LogWarning("an image file is not loaded: %s", aReason);
  return E_FAIL;
}

}  // namespace

HRESULT CreateGLPixmap(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLPixmap>(aOuter, riid, ppv);
}

HRESULT GLPixmap::Initialize(int aWidth, int aHeight, GLDATA_RGBA4B aRGBA) noexcept {
  if (aWidth < 1 || aHeight < 1) return E_GL_BADVALUE;
  const std::int64_t count = std::int64_t{aWidth} * aHeight;
  if (count > kMostPixels) return E_GL_BADVALUE;
  PixelBlock pixels = std::move(m_pPixels);
  if (count != m_iPixelCount) {
    pixels.reset();  // freed before the allocation, to halve the peak memory
    pixels = NewPixels(static_cast<std::size_t>(count));
  }
  TakePixels(std::move(pixels), aWidth, aHeight);
  if (m_pPixels == nullptr) return E_FAIL;
  std::fill_n(m_pPixels.get(), m_iPixelCount, aRGBA);
  return S_OK;
}

HRESULT GLPixmap::LoadImageFile(BSTR aFilename) noexcept {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(OpenFileForReading(aFilename), std::fclose);
  if (file == nullptr) return Refuse("it cannot be opened");
  BitmapFile image(file.get());
  if (!image.ReadHeader()) return Refuse("its bitmap header is missing or does not match the file");
  // Reads into a new block: the image is unchanged until the new one is complete.
  PixelBlock pixels =
      NewPixels(static_cast<std::size_t>(image.Width()) * static_cast<std::size_t>(image.Height()));
  const bool hasMemory = pixels != nullptr;
  const char* failure = hasMemory ? image.ReadPixels(pixels.get()) : nullptr;
  if (failure != nullptr) return Refuse(failure);
  TakePixels(std::move(pixels), image.Width(), image.Height());
  return hasMemory ? S_OK : Refuse("not enough memory for its pixels");
}

/// Makes aPixels the image, with zoom 1 and the whole image as clip rectangle. Null empties the pixmap.
void GLPixmap::TakePixels(PixelBlock aPixels, int aWidth, int aHeight) noexcept {
  m_pPixels = std::move(aPixels);
  const bool full = m_pPixels != nullptr;
  m_iWidth = m_iClipWidth = full ? aWidth : 0;
  m_iHeight = m_iClipHeight = full ? aHeight : 0;
  m_iPixelCount = m_iWidth * m_iHeight;
  m_iClipX = m_iClipY = 0;
  m_fZoomX = m_fZoomY = 1.0f;
}

HRESULT GLPixmap::SetPixels(int aSize, GLDATA_RGBA4B* aArray) noexcept {
  if (aArray == nullptr) return E_INVALIDARG;
  if (m_pPixels == nullptr) return E_GL_BADVALUE;
  const int rows = std::min(aSize / m_iWidth, m_iHeight);
  const auto width = static_cast<std::size_t>(m_iWidth);
  for (int row = 0; row < rows; ++row, aArray += width) {
    std::memmove(&PixelAt(0, row), aArray, width * sizeof(*aArray));  // the array may overlap the image
  }
  return S_OK;
}

HRESULT GLPixmap::AccessPixmapData(int* aSize, GLDATA_RGBA4B** aArray) noexcept {
  if (aSize == nullptr || aArray == nullptr) return E_INVALIDARG;
  *aSize = m_iPixelCount;
  *aArray = m_pPixels.get();
  return m_pPixels != nullptr ? S_OK : E_GL_BADVALUE;
}

HRESULT GLPixmap::GetWidth(int* aValue) noexcept { return Output(aValue, m_iWidth); }

HRESULT GLPixmap::GetHeight(int* aValue) noexcept { return Output(aValue, m_iHeight); }

HRESULT GLPixmap::TestPlace(int aX, int aY) const noexcept {
  if (m_pPixels == nullptr) return E_GL_BADSTATE;
  return aX >= 0 && aX < m_iWidth && aY >= 0 && aY < m_iHeight ? S_OK : E_GL_BADVALUE;
}

/// Returns the pixel at a position counted from the top left. The position must be inside the image.
GLDATA_RGBA4B& GLPixmap::PixelAt(int aX, int aY) noexcept {
  return m_pPixels[static_cast<std::size_t>(m_iHeight - aY - 1) * static_cast<std::size_t>(m_iWidth) +
                   static_cast<std::size_t>(aX)];
}

HRESULT GLPixmap::GetPixel(int aX, int aY, GLDATA_RGBA4B* aRGBA) noexcept {
  if (aRGBA == nullptr) return E_INVALIDARG;
  const HRESULT result = TestPlace(aX, aY);
  if (result == S_OK) *aRGBA = PixelAt(aX, aY);
  return result;
}

HRESULT GLPixmap::SetPixel(int aX, int aY, GLDATA_RGBA4B aRGBA) noexcept {
  const HRESULT result = TestPlace(aX, aY);
  if (result == S_OK) PixelAt(aX, aY) = aRGBA;
  return result;
}

HRESULT GLPixmap::GetZoom(float* aFactorX, float* aFactorY) noexcept {
  return Output(aFactorX, m_fZoomX, aFactorY, m_fZoomY);
}

HRESULT GLPixmap::SetZoom(float aFactorX, float aFactorY) noexcept {
  m_fZoomX = aFactorX;
  m_fZoomY = aFactorY;
  return S_OK;
}

HRESULT GLPixmap::GetClip(int* aX, int* aY, int* aWidth, int* aHeight) noexcept {
  if (aX == nullptr || aY == nullptr || aWidth == nullptr || aHeight == nullptr) return E_INVALIDARG;
  if (m_pPixels == nullptr) return E_GL_BADSTATE;
  *aX = m_iClipX;
  *aY = m_iClipY;
  *aWidth = m_iClipWidth;
  *aHeight = m_iClipHeight;
  return S_OK;
}

HRESULT GLPixmap::SetClip(int aX, int aY, int aWidth, int aHeight) noexcept {
  if (m_pPixels == nullptr) return E_GL_BADSTATE;
  if (aX < 0 || aY < 0 || aWidth < 1 || aHeight < 1) return E_GL_BADVALUE;
  if (aWidth > m_iWidth - aX || aHeight > m_iHeight - aY) return E_GL_BADVALUE;  // a sum could overflow
  m_iClipX = aX;
  m_iClipY = aY;
  m_iClipWidth = aWidth;
  m_iClipHeight = aHeight;
  return S_OK;
}

HRESULT GLPixmap::Draw(IGLContext*, GLDATA_POINT* aOrigin) noexcept {
  if (aOrigin == nullptr) return E_INVALIDARG;
  if (m_pPixels == nullptr) return S_OK;
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, m_iWidth);
  glPixelStorei(GL_UNPACK_SKIP_PIXELS, m_iClipX);
  glPixelStorei(GL_UNPACK_SKIP_ROWS, m_iHeight - m_iClipY - m_iClipHeight);
  glPixelZoom(m_fZoomX, m_fZoomY);
  glRasterPos3d(aOrigin->x, aOrigin->y, aOrigin->z);
  glDrawPixels(m_iClipWidth, m_iClipHeight, GL_RGBA, GL_UNSIGNED_BYTE, m_pPixels.get());
  return S_OK;
}
