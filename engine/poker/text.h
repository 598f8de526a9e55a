#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kestrel {

// Texts are read the same in every locale: letters and white space are those of ASCII, and a
// decimal point is a point.

constexpr bool is_space(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

constexpr bool is_letter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// Other characters than letters stay.
constexpr char to_lower(char character) {
    return is_letter(character) ? static_cast<char>(character | 0x20) : character;
}

constexpr char to_upper(char character) {
    return is_letter(character) ? static_cast<char>(character & ~0x20) : character;
}

std::string lower_case(std::string_view text);

/// Without white space at both ends.
std::string_view trimmed(std::string_view text);

/// Without any white space, wherever it stands.
std::string without_white_space(std::string_view text);

/// A number at the start of a text and how many characters it takes, 0 where there is none.
template <class Number>
struct ReadNumber {
    Number value = 0;
    std::size_t length = 0;
    bool out_of_range = false;  ///< errno is ERANGE: an overflow or an underflow
};

/// As strtod, strtof and strtoll (base 10) read in the "C" locale: leading white space and a sign
/// are skipped, and but for the last one exponents, hexadecimal, "inf" and "nan" count. The text
/// ends at its first NUL.
ReadNumber<double> read_double(std::string_view text);
ReadNumber<float> read_float(std::string_view text);
ReadNumber<long long> read_integer(std::string_view text);

}  // namespace kestrel
