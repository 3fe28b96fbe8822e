/// @file
/// GLString: owns a BSTR and converts it from and to UTF-8. Any thread, but only one at a time per string.

#pragma once

#include <gllib/GLPlatform.h>
#include <gllib/GLUtf8.h>

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
    std::basic_string<OLECHAR> units;
    units.reserve(aUtf8.size());
    GLUtf8::ToUtf16(aUtf8, [&](char16_t aUnit) { units += static_cast<OLECHAR>(aUnit); });
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
    GLUtf8::FromUtf16(m_Text, SysStringLen(m_Text), [&](char aByte) { bytes += aByte; });
    return bytes;
  }

 private:
  BSTR m_Text = nullptr;
};
