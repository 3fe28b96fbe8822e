// Conversion between UTF-16 and 8-bit text: Windows-1252 for every code page except UTF-8. Any thread.

#include "platform/Text.h"

#include <climits>
#include <cstring>

namespace {

/// Characters of the bytes 0x80 to 0x9F. The other bytes are equal to the first 256 code points of Unicode.
/// The five unassigned bytes map to the control characters of the same number.
constexpr GLWCHAR kUpperControls[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                        0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                        0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                        0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr std::uint32_t kReplacement = 0xFFFD;

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

constexpr bool IsHighSurrogate(std::uint32_t aUnit) noexcept { return (aUnit & 0xFC00) == 0xD800; }
constexpr bool IsLowSurrogate(std::uint32_t aUnit) noexcept { return (aUnit & 0xFC00) == 0xDC00; }

void PutUtf8(Output<char>& aOut, std::uint32_t aCode) noexcept {
  const auto tail = [&](int aShift) { aOut.Put(static_cast<char>(0x80 | ((aCode >> aShift) & 0x3F))); };
  if (aCode < 0x80) {
    aOut.Put(static_cast<char>(aCode));
  } else if (aCode < 0x800) {
    aOut.Put(static_cast<char>(0xC0 | (aCode >> 6)));
    tail(0);
  } else if (aCode < 0x10000) {
    aOut.Put(static_cast<char>(0xE0 | (aCode >> 12)));
    tail(6);
    tail(0);
  } else {
    aOut.Put(static_cast<char>(0xF0 | (aCode >> 18)));
    tail(12);
    tail(6);
    tail(0);
  }
}

void ToUtf8(const GLWCHAR* aWide, std::size_t aCount, Output<char>& aOut) noexcept {
  for (std::size_t i = 0; i < aCount; ++i) {
    std::uint32_t code = aWide[i];
    if (IsHighSurrogate(code) && i + 1 < aCount && IsLowSurrogate(aWide[i + 1])) {
      code = 0x10000 + ((code & 0x3FF) << 10) + (aWide[++i] & 0x3FFu);
    } else if (IsHighSurrogate(code) || IsLowSurrogate(code)) {
      code = kReplacement;
    }
    PutUtf8(aOut, code);
  }
}

/// Reads one character and advances past it. A malformed, overlong or surrogate sequence advances one byte.
std::uint32_t NextUtf8(const unsigned char*& aByte, const unsigned char* aEnd) noexcept {
  const std::uint32_t lead = *aByte++;
  if (lead < 0x80) return lead;
  const int tails = lead >= 0xF0 && lead < 0xF8 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
  if (tails == 0 || lead >= 0xF8 || aEnd - aByte < tails) return kReplacement;
  std::uint32_t code = lead & (0x3Fu >> tails);
  for (int i = 0; i < tails; ++i) {
    if ((aByte[i] & 0xC0) != 0x80) return kReplacement;
    code = code << 6 | (aByte[i] & 0x3Fu);
  }
  constexpr std::uint32_t kFirst[] = {0, 0x80, 0x800, 0x10000};
  if (code < kFirst[tails] || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return kReplacement;
  aByte += tails;
  return code;
}

void FromUtf8(const unsigned char* aBytes, std::size_t aCount, Output<GLWCHAR>& aOut) noexcept {
  for (const unsigned char *byte = aBytes, *end = aBytes + aCount; byte < end;) {
    const std::uint32_t code = NextUtf8(byte, end);
    if (code < 0x10000) {
      aOut.Put(static_cast<GLWCHAR>(code));
    } else {
      aOut.Put(static_cast<GLWCHAR>(0xD800 + ((code - 0x10000) >> 10)));
      aOut.Put(static_cast<GLWCHAR>(0xDC00 + (code & 0x3FF)));
    }
  }
}

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
    ToUtf8(pWide, count, out);
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
  const auto* bytes = reinterpret_cast<const unsigned char*>(pBytes);
  Output<GLWCHAR> out(pWide, nWide);
  if (uCodePage == CP_UTF8) {
    FromUtf8(bytes, count, out);
  } else {
    for (std::size_t i = 0; i < count; ++i) out.Put(FromByte(bytes[i]));
  }
  return out.Result();
}
