// Conversion between UTF-16 and 8-bit text: Windows-1252 for every code page except UTF-8. Any thread.

#include "platform/Text.h"

#include <gllib/GLUtf8.h>

#include <climits>
#include <cstring>

namespace {

/// Characters of the bytes 0x80 to 0x9F. Every other byte has the value of its Unicode code point. The five
/// unassigned bytes map to the control characters of the same number.
constexpr GLWCHAR kUpperControls[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                        0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                        0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                        0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

GLWCHAR FromByte(unsigned char aByte) noexcept {
  return aByte >= 0x80 && aByte < 0xA0 ? kUpperControls[aByte - 0x80] : aByte;
}

/// Returns the byte of a character; -1 if there is none.
int ToByte(GLWCHAR aUnit) noexcept {
  if (aUnit < 0x80 || (aUnit >= 0xA0 && aUnit < 0x100)) return aUnit;
  for (int i = 0; i < 32; ++i) {
    if (kUpperControls[i] == aUnit) return 0x80 + i;
  }
  return -1;
}

/// Writes into a block of a fixed size, or only counts.
template <class Unit>
class Output {
 public:
  Output(Unit* aBlock, int aRoom) noexcept : m_pBlock(aBlock), m_iRoom(aRoom) {}

  void Put(Unit aUnit) noexcept {
    if (m_iRoom > 0 && m_iCount < static_cast<std::size_t>(m_iRoom)) m_pBlock[m_iCount] = aUnit;
    ++m_iCount;
  }
  /// Returns the result of the conversion: 0 if the block was too small.
  int Result() const noexcept {
    if (m_iCount > INT_MAX || (m_iRoom > 0 && m_iCount > static_cast<std::size_t>(m_iRoom))) return 0;
    return static_cast<int>(m_iCount);
  }

 private:
  Unit* m_pBlock;
  int m_iRoom;
  std::size_t m_iCount = 0;
};

template <class Unit>
bool IsRefused(const Unit* aText, int aCount, const void* aOut, int aRoom) noexcept {
  return aText == nullptr || aCount == 0 || aCount < -1 || aRoom < 0 || (aRoom > 0 && aOut == nullptr);
}

}  // namespace

int WideCharToMultiByte(UINT uCodePage, DWORD, const GLWCHAR* pWide, int nWide, char* pBytes, int nBytes,
                        const char* szDefault, BOOL* pUsedDefault) noexcept {
  if (IsRefused(pWide, nWide, pBytes, nBytes)) return 0;
  auto count = static_cast<std::size_t>(nWide);
  if (nWide < 0) {
    count = 0;
    while (pWide[count++] != 0) {
    }
  }
  Output<char> out(pBytes, nBytes);
  BOOL used = FALSE;
  if (uCodePage == CP_UTF8) {
    GLUtf8::FromUtf16(pWide, count, [&](char aByte) { out.Put(aByte); });
  } else {
    for (std::size_t i = 0; i < count; ++i) {
      const int byte = ToByte(pWide[i]);
      if (byte < 0) used = TRUE;
      out.Put(byte >= 0 ? static_cast<char>(byte) : szDefault != nullptr ? *szDefault : '?');
    }
  }
  if (pUsedDefault != nullptr) *pUsedDefault = used;
  return out.Result();
}

int MultiByteToWideChar(UINT uCodePage, DWORD, const char* pBytes, int nBytes, GLWCHAR* pWide,
                        int nWide) noexcept {
  if (IsRefused(pBytes, nBytes, pWide, nWide)) return 0;
  const std::size_t count = nBytes < 0 ? std::strlen(pBytes) + 1 : static_cast<std::size_t>(nBytes);
  Output<GLWCHAR> out(pWide, nWide);
  if (uCodePage == CP_UTF8) {
    GLUtf8::ToUtf16({pBytes, count}, [&](char16_t aUnit) { out.Put(static_cast<GLWCHAR>(aUnit)); });
  } else {
    for (std::size_t i = 0; i < count; ++i) out.Put(FromByte(static_cast<unsigned char>(pBytes[i])));
  }
  return out.Result();
}
