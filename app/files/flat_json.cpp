#include "app/files/flat_json.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

namespace tidewell {
namespace {

template <class Number>
void appendNumber(std::string& text, Number number) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text.append(digits.data(), end);
}

}  // namespace

void appendJson(std::string& text, bool flag) {
    text += flag ? "true" : "false";
}

void appendJson(std::string& text, int number) {
    appendNumber(text, number);
}

void appendJson(std::string& text, double number) {
    if (std::isfinite(number)) {
        appendNumber(text, number);
    } else {
        text += "null";
    }
}

void appendJson(std::string& text, std::string_view utf8) {
    const bool plain = std::ranges::all_of(utf8, [](char byte) {
        return static_cast<unsigned char>(byte) >= 0x20 && byte != '"' && byte != '\\';
    });
    if (plain) {
        text.append(1, '"').append(utf8).append(1, '"');
    } else {
        text += nlohmann::json(utf8).dump();
    }
}

}  // namespace tidewell
