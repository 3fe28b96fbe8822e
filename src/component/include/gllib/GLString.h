/// @file
/// GLString: owns a BSTR and converts it from and to UTF-8. Any thread, but only one at a time per string.

#pragma once

#include <gllib/GLPlatform.h>

#include <string>
#include <string_view>
#include <utility>

/// Owns a text that is passed to or received from an operation.
///
///     font->Print(GLString("Grüße"), &start);
///     GLString face;
///     font->GetFace(face.Put());
class GLString {
 public:
  GLString() noexcept = default;
  /// Converts UTF-8. Each byte that is not part of a valid character becomes U+FFFD.
  GLString(std::string_view aUtf8) {
    const std::basic_string<OLECHAR> units = ToUtf16(aUtf8);
    m_Text = SysAllocStringLen(units.data(), static_cast<unsigned>(units.size()));
  }
  /// Converts a UTF-8 C string; null becomes an empty string.
  GLString(const char* aUtf8) : GLString(std::string_view(aUtf8 != nullptr ? aUtf8 : "")) {}
  /// Copies the text. If memory is short, the copy is empty.
  GLString(const GLString& aOther) noexcept
      : m_Text(aOther.m_Text != nullptr ? SysAllocStringLen(aOther.m_Text, SysStringLen(aOther.m_Text))
                                        : nullptr) {}
  /// Takes over the other string's text.
  GLString(GLString&& aOther) noexcept : m_Text(std::exchange(aOther.m_Text, nullptr)) {}
  ~GLString() { SysFreeString(m_Text); }
  /// Frees the held text and takes the other string's.
  GLString& operator=(GLString aOther) noexcept {
    std::swap(m_Text, aOther.m_Text);
    return *this;
  }

  /// Returns the text, borrowed; null is an empty text.
  operator BSTR() const noexcept { return m_Text; }
  /// Frees the held text and returns its address, so that an operation can store a text there.
  BSTR* Put() noexcept {
    SysFreeString(std::exchange(m_Text, nullptr));
    return &m_Text;
  }
  /// Returns the text and gives up ownership: the caller calls SysFreeString.
  BSTR Detach() noexcept { return std::exchange(m_Text, nullptr); }

  /// Returns the text as UTF-8. An unpaired surrogate becomes U+FFFD.
  std::string Utf8() const {
    std::string bytes;
    const unsigned length = SysStringLen(m_Text);
    for (unsigned i = 0; i < length; ++i) {
      char32_t c = Unit(i);
      if (c >= 0xD800 && c < 0xDC00 && i + 1 < length && (Unit(i + 1) & 0xFC00) == 0xDC00) {
        c = 0x10000 + ((c & 0x3FF) << 10) + (Unit(++i) & 0x3FF);
      } else if (c >= 0xD800 && c < 0xE000) {
        c = kReplacement;
      }
      AppendUtf8(bytes, c);
    }
    return bytes;
  }

 private:
  static constexpr char32_t kReplacement = 0xFFFD;

  char32_t Unit(unsigned aIndex) const noexcept { return static_cast<char16_t>(m_Text[aIndex]); }

  static void AppendUtf8(std::string& aBytes, char32_t c) {
    const auto put = [&](char32_t aValue) {
      aBytes += static_cast<char>(static_cast<unsigned char>(aValue));
    };
    if (c < 0x80) {
      put(c);
      return;
    }
    if (c < 0x800) {
      put(0xC0 | c >> 6);
    } else {
      if (c < 0x10000) {
        put(0xE0 | c >> 12);
      } else {
        put(0xF0 | c >> 18);
        put(0x80 | (c >> 12 & 0x3F));
      }
      put(0x80 | (c >> 6 & 0x3F));
    }
    put(0x80 | (c & 0x3F));
  }

  /// Removes the first character of aUtf8 and returns it.
  static char32_t TakeCharacter(std::string_view& aUtf8) {
    const auto byte = [&](std::size_t aIndex) { return static_cast<unsigned char>(aUtf8[aIndex]); };
    const unsigned lead = byte(0);
    const std::size_t length = lead < 0x80             ? 1
                               : (lead & 0xE0) == 0xC0 ? 2
                               : (lead & 0xF0) == 0xE0 ? 3
                               : (lead & 0xF8) == 0xF0 ? 4
                                                       : 0;
    constexpr char32_t kLowest[] = {0, 0, 0x80, 0x800, 0x10000};
    char32_t c = length > 1 ? lead & (0x7Fu >> length) : lead;
    bool valid = length != 0 && length <= aUtf8.size();
    for (std::size_t i = 1; valid && i < length; ++i) {
      valid = (byte(i) & 0xC0) == 0x80;
      c = c << 6 | (byte(i) & 0x3F);
    }
    valid = valid && c >= kLowest[length] && c <= 0x10FFFF && (c < 0xD800 || c >= 0xE000);
    aUtf8.remove_prefix(valid ? length : 1);
    return valid ? c : kReplacement;
  }

  static std::basic_string<OLECHAR> ToUtf16(std::string_view aUtf8) {
    std::basic_string<OLECHAR> units;
    units.reserve(aUtf8.size());
    while (!aUtf8.empty()) {
      const char32_t c = TakeCharacter(aUtf8);
      if (c >= 0x10000) units += static_cast<OLECHAR>(0xD7C0 + (c >> 10));
      units += static_cast<OLECHAR>(c >= 0x10000 ? 0xDC00 + (c & 0x3FF) : c);
    }
    return units;
  }

  BSTR m_Text = nullptr;
};
