#include "cli/format.h"

#include <cmath>
#include <cstdio>

namespace tidewell_cli {

std::string shortened(std::string_view text, std::size_t most) {
    const bool whole = text.size() <= most;
    if (!whole) {
        std::size_t end = most;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) {
            --end;  // between characters
        }
        text = text.substr(0, end);
    }
    std::string line;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte >= 0x20 && byte != 0x7F) {
            line += character;
        } else if (character == '\n' || character == '\t' || character == '\r') {
            line += character == '\n' ? "\\n" : character == '\t' ? "\\t" : "\\r";
        } else {
            char code[8];
            std::snprintf(code, sizeof code, "\\x%02x", byte);
            line += code;
        }
    }
    return whole ? line : line + "...";
}

std::string in_quotes(std::string_view text) {
    return "'" + shortened(text) + "'";
}

std::string fixed(double number, int digits) {
    char text[400];  // the largest double has 309 digits before the point
    std::snprintf(text, sizeof text, "%.*f", digits, number);
    const std::string_view shown(text);
    const bool zero = shown.find_first_not_of("-0.") == std::string_view::npos;
    return std::string(shown.substr(zero && shown.starts_with('-') ? 1 : 0));
}

std::string decimal(double number, int most_digits) {
    std::string text = fixed(number, most_digits);
    if (text.find('.') == std::string::npos) {
        return text;
    }
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

std::string chips(double hundredths) {
    return decimal(hundredths / 100.0, 2);
}

std::string rate(double per_second) {
    return fixed(per_second, per_second < 99.95 ? 1 : 0);
}

std::string grouped(std::uint64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t end = text.size(); end > 3; end -= 3) {
        text.insert(end - 3, 1, ' ');
    }
    return text;
}

std::string bytes(std::uint64_t count) {
    constexpr double kilo = 1024.0;
    const auto size = static_cast<double>(count);
    if (size < 999.5 * kilo) {
        return fixed(size / kilo, 0) + " KB";
    }
    if (size < 999.5 * kilo * kilo) {
        return fixed(size / (kilo * kilo), 0) + " MB";
    }
    return fixed(size / (kilo * kilo * kilo), 2) + " GB";
}

std::string clock_time(double seconds) {
    const auto whole = static_cast<std::int64_t>(std::llround(std::fmin(seconds, 1e9)));
    char text[64];
    if (whole >= 3600) {
        std::snprintf(text, sizeof text, "%lld:%02d:%02d", static_cast<long long>(whole / 3600),
                      static_cast<int>(whole / 60 % 60), static_cast<int>(whole % 60));
    } else {
        std::snprintf(text, sizeof text, "%d:%02d", static_cast<int>(whole / 60),
                      static_cast<int>(whole % 60));
    }
    return text;
}

std::string duration(double seconds) {
    if (seconds < 0.9995) {
        const int digits = seconds < 0.000995 ? 2 : seconds < 0.00995 ? 1 : 0;
        return fixed(seconds * 1000.0, digits) + " ms";
    }
    return fixed(seconds, seconds < 99.95 ? 2 : 0) + " s";
}

}  // namespace tidewell_cli
