// Operations of bitmaps, pixmaps and textures. One thread at a time: the caller holds the image lock.

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
  for (int i = 0; i < size; ++i) pixels[i].m_bGreen ^= 1;  // every pixel must be writable
}

template <class Texture>
void Draw(Turn& aTurn) {
  const auto texture = aTurn.Pick<Texture>();
  if (!texture) return;
  Bytes& bytes = aTurn.m_Bytes;
  Argument<GLDATA_POINT*> normal(aTurn, true), vertex(aTurn, false);
  Argument<GLDATA_RGBA*> blend(aTurn, true);
  const HRESULT begun = aTurn.Check(
      texture->BeginDraw(aTurn.m_pDrawn, static_cast<eGLTextureMode>(bytes.Int()), bytes.Byte() & 1,
                         bytes.Byte() & 1, bytes.Byte() & 1, normal.Pass(), blend.Pass()));
  if (FAILED(begun)) return;
  for (int i = bytes.Byte() % 6; i > 0; --i) {
    const float s = bytes.Float(), t = bytes.Float();
    if constexpr (std::is_same_v<Texture, IGLTexture2D>) {
      aTurn.Check(texture->Draw(s, t, vertex.Pass() + i % 3));
    } else {
      aTurn.Check(texture->Draw(vertex.Pass() + i % 3, s, vertex.Pass(), t));
    }
  }
  aTurn.Check(texture->EndDraw());
}

constexpr auto kOperations =
    Table<Operation::kImage, InitializeBitmap, SetBitmapPixels, &IGLBitmap::GetPixel, &IGLBitmap::SetPixel,
          &IGLBitmap::GetColor, &IGLBitmap::SetColor, &IGLBitmap::GetWidth, &IGLBitmap::GetHeight,
          &IGLBitmap::Draw, InitializePixmap, &IGLPixmap::LoadImageFile, SetPixmapPixels, AccessPixmapData,
          &IGLPixmap::GetWidth, &IGLPixmap::GetHeight, &IGLPixmap::GetPixel, &IGLPixmap::SetPixel,
          &IGLPixmap::ScaleColor, ScaleColor256, &IGLPixmap::MakeNegative, &IGLPixmap::MakeMonochrome,
          &IGLPixmap::GetZoom, &IGLPixmap::SetZoom, &IGLPixmap::GetClip, &IGLPixmap::SetClip,
          &IGLPixmap::Draw, &IGLTexture1D::Initialize, Draw<IGLTexture1D>, &IGLTexture2D::Initialize,
          Draw<IGLTexture2D>>();

}  // namespace

std::span<const Operation> ImageOperations() noexcept { return kOperations; }
