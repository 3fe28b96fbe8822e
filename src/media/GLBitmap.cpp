// GLBitmap: the bits and their drawing. Any thread, one at a time; Draw needs a current GL context.

#include "media/GLBitmap.h"

#include <algorithm>
#include <climits>

#include "component/Catalogue.h"
#include "component/Output.h"
#include "component/Values.h"
#include "platform/GL.h"

namespace {

/// Returns the bytes per row. The result has 64 bits, since rounding up a width near INT_MAX overflows 32
/// bits.
constexpr std::int64_t StrideOf(int aWidth) noexcept { return (std::int64_t{aWidth} + 31) / 32 * 4; }

/// Rows of one call of glBitmap. Mesa 22.3 writes outside its memory from 65,536 rows on.
constexpr int kMostRows = 16384;

constexpr int BitOf(int aX) noexcept { return 1 << (7 - (aX & 7)); }

}  // namespace

HRESULT CreateGLBitmap(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLBitmap>(aOuter, riid, ppv);
}

HRESULT GLBitmap::Initialize(int aWidth, int aHeight, LONG aOpaque) noexcept {
  if (aWidth < 1 || aWidth % 8 != 0 || aHeight < 1) return E_GL_BADVALUE;
  const std::int64_t stride = StrideOf(aWidth);
  if (stride * 8 > INT_MAX || stride * aHeight > INT_MAX) return E_GL_BADVALUE;
  m_pBits.reset();
  m_iWidth = m_iHeight = m_iBitsSize = 0;
  const auto size = static_cast<std::size_t>(stride * aHeight);
  m_pBits.reset(static_cast<unsigned char*>(std::malloc(size)));
  if (m_pBits == nullptr) return E_FAIL;
  std::fill_n(m_pBits.get(), size, static_cast<unsigned char>(aOpaque != 0 ? 255 : 0));
  m_iWidth = aWidth;
  m_iHeight = aHeight;
  m_iBitsSize = static_cast<int>(size);
  return S_OK;
}

int GLBitmap::Stride() const noexcept { return static_cast<int>(StrideOf(m_iWidth)); }

/// Returns the row at aY, counted from the top.
unsigned char* GLBitmap::RowAt(int aY) const noexcept {
  return m_pBits.get() + (m_iHeight - aY - 1) * Stride();
}

HRESULT GLBitmap::SetPixels(int aSize, std::uint8_t* aArray) noexcept {
  if (m_pBits == nullptr) return E_GL_BADSTATE;
  if (aArray == nullptr) return S_OK;
  for (int row = 0; row < m_iHeight && aSize > 0; ++row) {
    const int bytes = std::min(m_iWidth / 8, aSize);
    std::copy_n(aArray, bytes, RowAt(row));
    aArray += bytes;
    aSize -= bytes;
  }
  return S_OK;
}

HRESULT GLBitmap::TestPlace(int aX, int aY) const noexcept {
  if (m_pBits == nullptr) return E_GL_BADSTATE;
  return aX >= 0 && aX < m_iWidth && aY >= 0 && aY < m_iHeight ? S_OK : E_GL_BADVALUE;
}

HRESULT GLBitmap::GetPixel(int aX, int aY, LONG* aOpaque) noexcept {
  if (aOpaque == nullptr) return E_INVALIDARG;
  const HRESULT result = TestPlace(aX, aY);
  if (result == S_OK) *aOpaque = (RowAt(aY)[aX >> 3] & BitOf(aX)) != 0 ? 1 : 0;
  return result;
}

HRESULT GLBitmap::SetPixel(int aX, int aY, LONG aOpaque) noexcept {
  if (const HRESULT result = TestPlace(aX, aY); result != S_OK) return result;
  unsigned char& bits = RowAt(aY)[aX >> 3];
  bits = static_cast<unsigned char>(aOpaque != 0 ? bits | BitOf(aX) : bits & ~BitOf(aX));
  return S_OK;
}

HRESULT GLBitmap::GetColor(GLDATA_RGBA* aColor) noexcept { return Output(aColor, m_sColor); }

HRESULT GLBitmap::SetColor(GLDATA_RGBA* aColor) noexcept {
  if (aColor == nullptr) return E_INVALIDARG;
  m_sColor = LimitColor(*aColor);
  return S_OK;
}

HRESULT GLBitmap::GetWidth(int* aValue) noexcept { return Output(aValue, m_iWidth); }

HRESULT GLBitmap::GetHeight(int* aValue) noexcept { return Output(aValue, m_iHeight); }

HRESULT GLBitmap::Draw(IGLContext*, GLDATA_POINT* aOrigin, int aOffsetX, int aOffsetY) noexcept {
  if (aOrigin == nullptr) return E_INVALIDARG;
  if (m_pBits == nullptr) return S_OK;
  if (m_sColor.m_fAlpha < 1.0f) {
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  }
  // Set before the raster position, which latches the current colour.
  glColor4f(m_sColor.m_fRed, m_sColor.m_fGreen, m_sColor.m_fBlue, m_sColor.m_fAlpha);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, Stride() * 8);
  glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
  glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
  glRasterPos3d(aOrigin->x, aOrigin->y, aOrigin->z);
  for (int row = 0; row < m_iHeight; row += kMostRows) {
    glBitmap(m_iWidth, std::min(kMostRows, m_iHeight - row), static_cast<float>(aOffsetX),
             static_cast<float>(aOffsetY) - static_cast<float>(row), 0.0f, 0.0f,
             m_pBits.get() + row * Stride());
  }
  return S_OK;
}
