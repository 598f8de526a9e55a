#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace kestrel_app {

/// The number that a text consists of, as std::from_chars reads it: no white space, no plus, a
/// point in every locale. Nothing for any other text and for a number that is out of range.
template <class Number>
std::optional<Number> parsed_number(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

}  // namespace kestrel_app
