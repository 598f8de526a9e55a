#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tidewell_cli {

/// The beginning of a text of somebody else's, one line of at most about `most` bytes of UTF-8:
/// "..." stands for the rest, and control characters are written as in C.
std::string shortened(std::string_view text, std::size_t most = 60);

/// How much is told of a message of the parsers, which quote what they were given.
inline constexpr std::size_t longest_message = 200;

/// The same in single quotes.
std::string in_quotes(std::string_view text);

/// Fixed notation without trailing zeros: 18, 0.5, 12.25.
std::string decimal(double number, int most_digits);

/// Fixed notation with all its digits after the point.
std::string fixed(double number, int digits);

/// Hundredths of a chip as chips.
std::string chips(double hundredths);

/// One digit after the point below 100, none from there.
std::string rate(double per_second);

/// "1 234 567".
std::string grouped(std::uint64_t number);

/// "812 MB", "1.42 GB"; powers of 1024.
std::string bytes(std::uint64_t count);

/// "0:07", "12:30", "1:02:03".
std::string clock_time(double seconds);

/// "85 ms", "1.42 s", "125 s".
std::string duration(double seconds);

}  // namespace tidewell_cli
