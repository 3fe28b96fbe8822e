// Bitmaps, pixmaps and textures. One thread at a time, which the caller's lock sees to.

#include <vector>

#include "host/Turn.h"

namespace {

constexpr std::size_t kLongestArray = 2048;

template <class T>
std::vector<T> Array(Turn& aTurn, std::size_t aSize) {
  std::vector<T> array(aSize);
  for (std::size_t i = 0; i < aSize && i < 16; ++i) array[i] = Argument<T>::Make(aTurn.m_Bytes);
  return array;
}

void InitializeBitmap(Turn& aTurn) {
  if (const auto bitmap = aTurn.Pick<IGLBitmap>())
    aTurn.Check(bitmap->Initialize(aTurn.m_Bytes.Size(), aTurn.m_Bytes.Size(), aTurn.m_Bytes.Byte() & 1));
}

void SetBitmapPixels(Turn& aTurn) {
  const auto bitmap = aTurn.Pick<IGLBitmap>();
  if (!bitmap) return;
  auto bytes = Array<unsigned char>(aTurn, aTurn.m_Bytes.Word() % kLongestArray);
  const int size = aTurn.m_Bytes.OneIn(8) ? -1 : static_cast<int>(bytes.size());
  aTurn.Check(bitmap->SetPixels(size, aTurn.m_Bytes.OneIn(8) ? nullptr : bytes.data()));
}

void InitializePixmap(Turn& aTurn) {
  if (const auto pixmap = aTurn.Pick<IGLPixmap>()) {
    aTurn.Check(pixmap->Initialize(aTurn.m_Bytes.Size(), aTurn.m_Bytes.Size(),
                                   Argument<GLDATA_RGBA4B>::Make(aTurn.m_Bytes)));
  }
}

void SetPixmapPixels(Turn& aTurn) {
  const auto pixmap = aTurn.Pick<IGLPixmap>();
  if (!pixmap) return;
  auto pixels = Array<GLDATA_RGBA4B>(aTurn, aTurn.m_Bytes.Word() % kLongestArray);
  const int size = aTurn.m_Bytes.OneIn(8) ? INT32_MIN : static_cast<int>(pixels.size());
  aTurn.Check(pixmap->SetPixels(size, aTurn.m_Bytes.OneIn(8) ? nullptr : pixels.data()));
}

void ScaleColor256(Turn& aTurn) {
  const auto pixmap = aTurn.Pick<IGLPixmap>();
  if (!pixmap) return;
  auto factors = Array<float>(aTurn, 256);
  aTurn.Check(pixmap->ScaleColor256(aTurn.m_Bytes.Int(), aTurn.m_Bytes.OneIn(8) ? nullptr : factors.data()));
}

void AccessPixmapData(Turn& aTurn) {
  const auto pixmap = aTurn.Pick<IGLPixmap>();
  int size = 0;
  GLDATA_RGBA4B* pixels = nullptr;
  if (!pixmap || FAILED(aTurn.Check(pixmap->AccessPixmapData(&size, &pixels)))) return;
  for (int i = 0; i < size; ++i) pixels[i].m_bGreen ^= 1;  // every one is there to be written
}

void Draw2D(Turn& aTurn) {
  const auto texture = aTurn.Pick<IGLTexture2D>();
  if (!texture) return;
  Bytes& bytes = aTurn.m_Bytes;
  Argument<GLDATA_POINT*> normal(aTurn, true), vertex(aTurn, false);
  Argument<GLDATA_RGBA*> blend(aTurn, true);
  const HRESULT begun = aTurn.Check(
      texture->BeginDraw(aTurn.m_pDrawn, static_cast<eGLTextureMode>(bytes.Int()), bytes.Byte() & 1,
                         bytes.Byte() & 1, bytes.Byte() & 1, normal.Pass(), blend.Pass()));
  if (FAILED(begun)) return;
  for (int i = bytes.Byte() % 6; i > 0; --i)
    aTurn.Check(texture->Draw(bytes.Float(), bytes.Float(), vertex.Pass() + i % 3));
  aTurn.Check(texture->EndDraw());
}

void Draw1D(Turn& aTurn) {
  const auto texture = aTurn.Pick<IGLTexture1D>();
  if (!texture) return;
  Bytes& bytes = aTurn.m_Bytes;
  Argument<GLDATA_POINT*> normal(aTurn, true), vertex(aTurn, false);
  Argument<GLDATA_RGBA*> blend(aTurn, true);
  const HRESULT begun = aTurn.Check(
      texture->BeginDraw(aTurn.m_pDrawn, static_cast<eGLTextureMode>(bytes.Int()), bytes.Byte() & 1,
                         bytes.Byte() & 1, bytes.Byte() & 1, normal.Pass(), blend.Pass()));
  if (FAILED(begun)) return;
  for (int i = bytes.Byte() % 6; i > 0; --i)
    aTurn.Check(texture->Draw(vertex.Pass() + i % 3, bytes.Float(), vertex.Pass(), bytes.Float()));
  aTurn.Check(texture->EndDraw());
}

constexpr Operation kOperations[] = {
    {"IGLBitmap::Initialize", InitializeBitmap, Operation::kImage},
    {"IGLBitmap::SetPixels", SetBitmapPixels, Operation::kImage},
    CALL_IMAGE(IGLBitmap, GetPixel),
    CALL_IMAGE(IGLBitmap, SetPixel),
    CALL_IMAGE(IGLBitmap, GetColor),
    CALL_IMAGE(IGLBitmap, SetColor),
    CALL_IMAGE(IGLBitmap, GetWidth),
    CALL_IMAGE(IGLBitmap, GetHeight),
    CALL_IMAGE(IGLBitmap, Draw),
    {"IGLPixmap::Initialize", InitializePixmap, Operation::kImage},
    CALL_IMAGE(IGLPixmap, LoadImageFile),
    {"IGLPixmap::SetPixels", SetPixmapPixels, Operation::kImage},
    {"IGLPixmap::AccessPixmapData", AccessPixmapData, Operation::kImage},
    CALL_IMAGE(IGLPixmap, GetWidth),
    CALL_IMAGE(IGLPixmap, GetHeight),
    CALL_IMAGE(IGLPixmap, GetPixel),
    CALL_IMAGE(IGLPixmap, SetPixel),
    CALL_IMAGE(IGLPixmap, ScaleColor),
    {"IGLPixmap::ScaleColor256", ScaleColor256, Operation::kImage},
    CALL_IMAGE(IGLPixmap, MakeNegative),
    CALL_IMAGE(IGLPixmap, MakeMonochrome),
    CALL_IMAGE(IGLPixmap, GetZoom),
    CALL_IMAGE(IGLPixmap, SetZoom),
    CALL_IMAGE(IGLPixmap, GetClip),
    CALL_IMAGE(IGLPixmap, SetClip),
    CALL_IMAGE(IGLPixmap, Draw),
    CALL_IMAGE(IGLTexture1D, Initialize),
    {"IGLTexture1D: a strip", Draw1D, Operation::kImage},
    CALL_IMAGE(IGLTexture2D, Initialize),
    {"IGLTexture2D: a face", Draw2D, Operation::kImage},
};

}  // namespace

std::span<const Operation> ImageOperations() noexcept { return kOperations; }
