#pragma once

#include <cstdint>
#include <string>

namespace tidewell_cli {

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
