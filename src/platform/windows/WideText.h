// Conversion of the component's UTF-8 texts for the Unicode functions of Windows. Any thread.

#pragma once

#include <string>

#include "platform/Text.h"

inline std::wstring WideText(const std::string& aText) {
  const int bytes = static_cast<int>(aText.size());
  if (bytes == 0) return {};
  std::wstring wide(
      static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, aText.data(), bytes, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, aText.data(), bytes, wide.data(), static_cast<int>(wide.size()));
  return wide;
}
