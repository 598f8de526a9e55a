#pragma once

#include <cctype>
#include <string_view>

namespace kestrel_app {

inline constexpr std::string_view white_space = " \t\n\v\f\r";

/// ASCII letters only; other characters stay.
inline char to_upper(char character) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
}

inline char to_lower(char character) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

/// Without white space at both ends.
inline std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(white_space);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(white_space) - first + 1);
}

}  // namespace kestrel_app
