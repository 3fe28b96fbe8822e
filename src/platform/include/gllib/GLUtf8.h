/// @file
/// Conversion between UTF-16 and UTF-8. Malformed input becomes U+FFFD. No state; any thread.

#pragma once

/// @cond parts of other headers, not for hosts

#include <cstddef>
#include <string_view>

namespace GLUtf8 {

inline constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsHighSurrogate(char32_t aUnit) noexcept { return (aUnit & 0xFC00) == 0xD800; }
constexpr bool IsLowSurrogate(char32_t aUnit) noexcept { return (aUnit & 0xFC00) == 0xDC00; }

/// Calls aPut(char) for each byte of one character.
template <class Put>
void Encode(char32_t aCharacter, const Put& aPut) {
  const auto put = [&](char32_t aByte) { aPut(static_cast<char>(static_cast<unsigned char>(aByte))); };
  const auto tail = [&](int aShift) { put(0x80 | (aCharacter >> aShift & 0x3F)); };
  if (aCharacter < 0x80) {
    put(aCharacter);
    return;
  }
  if (aCharacter < 0x800) {
    put(0xC0 | aCharacter >> 6);
  } else {
    if (aCharacter < 0x10000) {
      put(0xE0 | aCharacter >> 12);
    } else {
      put(0xF0 | aCharacter >> 18);
      tail(12);
    }
    tail(6);
  }
  tail(0);
}

/// Removes the first character from aBytes and returns it. A byte that begins no valid character is removed
/// by itself: it is malformed, overlong, a surrogate, or above U+10FFFF.
inline char32_t Decode(std::string_view& aBytes) noexcept {
  const auto byte = [&](std::size_t aIndex) { return static_cast<unsigned char>(aBytes[aIndex]); };
  const unsigned lead = byte(0);
  const std::size_t length = lead < 0x80             ? 1
                             : (lead & 0xE0) == 0xC0 ? 2
                             : (lead & 0xF0) == 0xE0 ? 3
                             : (lead & 0xF8) == 0xF0 ? 4
                                                     : 0;
  constexpr char32_t kLowest[] = {0, 0, 0x80, 0x800, 0x10000};
  char32_t character = length > 1 ? lead & (0x7Fu >> length) : lead;
  bool valid = length != 0 && length <= aBytes.size();
  for (std::size_t i = 1; valid && i < length; ++i) {
    valid = (byte(i) & 0xC0) == 0x80;
    character = character << 6 | (byte(i) & 0x3F);
  }
  valid = valid && character >= kLowest[length] && character <= 0x10FFFF &&
          (character < 0xD800 || character >= 0xE000);
  aBytes.remove_prefix(valid ? length : 1);
  return valid ? character : kReplacement;
}

/// Calls aPut(char) for each byte of a UTF-16 text. An unpaired surrogate is malformed.
template <class Unit, class Put>
void FromUtf16(const Unit* aUnits, std::size_t aCount, const Put& aPut) {
  const auto unit = [&](std::size_t aIndex) {
    return static_cast<char32_t>(static_cast<char16_t>(aUnits[aIndex]));
  };
  for (std::size_t i = 0; i < aCount; ++i) {
    char32_t character = unit(i);
    if (IsHighSurrogate(character) && i + 1 < aCount && IsLowSurrogate(unit(i + 1))) {
      character = 0x10000 + ((character & 0x3FF) << 10) + (unit(++i) & 0x3FF);
    } else if (IsHighSurrogate(character) || IsLowSurrogate(character)) {
      character = kReplacement;
    }
    Encode(character, aPut);
  }
}

/// Calls aPut(char16_t) for each UTF-16 unit of a UTF-8 text.
template <class Put>
void ToUtf16(std::string_view aBytes, const Put& aPut) {
  while (!aBytes.empty()) {
    const char32_t character = Decode(aBytes);
    if (character >= 0x10000) aPut(static_cast<char16_t>(0xD7C0 + (character >> 10)));
    aPut(static_cast<char16_t>(character >= 0x10000 ? 0xDC00 + (character & 0x3FF) : character));
  }
}

}  // namespace GLUtf8

/// @endcond
