/// @file
/// Comparison of names that ignores the case of ASCII letters. The locale of the program has no influence.
/// Any thread.

#pragma once

/// @cond parts of other headers, not for hosts

#include <algorithm>
#include <string_view>

namespace GLNames {

constexpr char Lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

inline bool Equal(std::string_view a, std::string_view b) noexcept {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char aX, char aY) { return Lower(aX) == Lower(aY); });
}

inline bool StartsWith(std::string_view aText, std::string_view aStart) noexcept {
  return aText.size() >= aStart.size() && Equal(aText.substr(0, aStart.size()), aStart);
}

/// Orders names in a map.
struct Less {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const noexcept {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char aX, char aY) { return Lower(aX) < Lower(aY); });
  }
};

}  // namespace GLNames

/// @endcond
