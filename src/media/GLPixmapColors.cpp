// GLPixmap: colour operations, a whole pixel per step. All except MakeNegative first compute a table with the
// result for every value. Any thread, one at a time.

#include <array>
#include <bit>
#include <cmath>

#include "component/Values.h"
#include "media/GLPixmap.h"

namespace {

/// Results for the values of one channel, shifted to the channel's place in a pixel's word.
using ChannelTable = std::array<std::uint32_t, 256>;

/// Shifts a value to its channel's place in a pixel's word: 0 red, 1 green, 2 blue, 3 alpha.
constexpr std::uint32_t AtChannel(std::uint32_t aValue, int aChannel) noexcept {
  static_assert(std::endian::native == std::endian::little && sizeof(GLDATA_RGBA4B) == 4);
  return aValue << 8 * aChannel;
}

std::uint32_t WordOf(GLDATA_RGBA4B aPixel) noexcept { return std::bit_cast<std::uint32_t>(aPixel); }

/// Returns the low 8 bits of a number rounded toward zero. A float of 2^31 or more is a multiple of 256.
std::uint8_t LowByte(float aValue) noexcept {
  if (!(std::fabs(aValue) < 2147483648.0f)) return 0;
  return static_cast<std::uint8_t>(static_cast<std::int32_t>(aValue));
}

ChannelTable ScaledChannel(float aFactor, int aChannel) noexcept {
  ChannelTable table;
  for (std::uint32_t value = 0; value < 256; ++value) {
    // An infinite factor keeps black: 0 times infinity is NaN, which Limit maps to 0.
    const float scaled = Limit(static_cast<float>(value) * aFactor, 0.0f, 255.0f);
    table[value] = AtChannel(static_cast<std::uint8_t>(scaled), aChannel);
  }
  return table;
}

}  // namespace

HRESULT GLPixmap::ScaleColor(GLDATA_RGBA* aScale) noexcept {
  if (aScale == nullptr) return E_INVALIDARG;
  if (m_pPixels == nullptr) return E_GL_BADSTATE;
  const GLDATA_RGBA scale = *aScale;
  for (const float factor : {scale.m_fRed, scale.m_fGreen, scale.m_fBlue, scale.m_fAlpha}) {
    if (!(factor >= 0.0f)) return E_GL_BADVALUE;  // written this way to reject NaN
  }
  const ChannelTable red = ScaledChannel(scale.m_fRed, 0), green = ScaledChannel(scale.m_fGreen, 1),
                     blue = ScaledChannel(scale.m_fBlue, 2), alpha = ScaledChannel(scale.m_fAlpha, 3);
  for (GLDATA_RGBA4B* p = m_pPixels.get(); p != m_pPixels.get() + m_iPixelCount; ++p) {
    *p = std::bit_cast<GLDATA_RGBA4B>(red[p->m_bRed] | green[p->m_bGreen] | blue[p->m_bBlue] |
                                      alpha[p->m_bAlpha]);
  }
  return S_OK;
}

HRESULT GLPixmap::ScaleColor256(int aSize, float* aArray) noexcept {
  if (aArray == nullptr) return E_INVALIDARG;
  if (m_pPixels == nullptr || aSize < 256) return E_GL_BADSTATE;
  std::array<std::uint8_t, 256> table{};
  for (std::size_t value = 0; value < 256; ++value) {
    table[value] = LowByte(static_cast<float>(value) * aArray[value]);
  }
  for (GLDATA_RGBA4B* p = m_pPixels.get(); p != m_pPixels.get() + m_iPixelCount; ++p) {
    *p = {table[p->m_bRed], table[p->m_bGreen], table[p->m_bBlue], p->m_bAlpha};
  }
  return S_OK;
}

HRESULT GLPixmap::MakeNegative(LONG aInvertAlpha) noexcept {
  if (m_pPixels == nullptr) return E_GL_BADSTATE;
  const std::uint32_t turned = aInvertAlpha != 0 ? 0xFFFFFFFF : ~AtChannel(255, 3);
  for (GLDATA_RGBA4B* p = m_pPixels.get(); p != m_pPixels.get() + m_iPixelCount; ++p) {
    *p = std::bit_cast<GLDATA_RGBA4B>(WordOf(*p) ^ turned);
  }
  return S_OK;
}

HRESULT GLPixmap::MakeMonochrome(GLDATA_RGBA4B aRGBA) noexcept {
  if (m_pPixels == nullptr) return E_GL_BADSTATE;
  const auto sum = static_cast<float>(aRGBA.m_bRed + aRGBA.m_bGreen + aRGBA.m_bBlue);
  std::array<float, 3> weights = {0.333f, 0.333f, 0.333f};
  if (sum != 0.0f) weights = {aRGBA.m_bRed / sum, aRGBA.m_bGreen / sum, aRGBA.m_bBlue / sum};
  std::array<std::uint32_t, 3 * 255 + 1> table{};  // indexed by the sum of red, green and blue
  for (std::size_t total = 0; total < table.size(); ++total) {
    const float grey = static_cast<float>(total) / 3.0f;
    for (int channel = 0; channel < 3; ++channel) {
      const float value = weights[static_cast<std::size_t>(channel)] * grey;
      table[total] |= AtChannel(static_cast<std::uint8_t>(value), channel);
    }
  }
  for (GLDATA_RGBA4B* p = m_pPixels.get(); p != m_pPixels.get() + m_iPixelCount; ++p) {
    const auto total = static_cast<std::size_t>(p->m_bRed + p->m_bGreen + p->m_bBlue);
    *p = std::bit_cast<GLDATA_RGBA4B>(table[total] | AtChannel(p->m_bAlpha, 3));
  }
  return S_OK;
}
