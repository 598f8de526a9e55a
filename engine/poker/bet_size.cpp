#include "engine/poker/bet_size.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

#include "engine/poker/text.h"

namespace kestrel {
namespace {

std::string_view without_last(std::string_view text) {
    return text.substr(0, text.size() - 1);
}

// White space before a number is no part of it here.
template <class Number>
bool is_whole_text(const ReadNumber<Number>& number, std::string_view text) {
    return number.length > 0 && number.length == text.size() && !is_space(text.front());
}

std::string hex_of(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string hex;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        hex += digits[byte >> 4];
        hex += digits[byte & 15];
    }
    return hex;
}

SizeToken parse_multiple(std::string_view token, bool allow_relative) {
    if (!allow_relative) {
        throw std::invalid_argument("Relative raise (x) is not allowed in this context");
    }
    const double multiple = parse_decimal(without_last(token));
    if (multiple <= 1.0) {
        throw std::invalid_argument("Relative raise must exceed 1.0x");
    }
    return {.kind = SizeKind::RaiseMultiple, .ratio = multiple};
}

SizeToken parse_chips(std::string_view token, bool allow_relative) {
    const std::size_t unit = token.find_first_of("cC");
    SizeToken size{.kind = SizeKind::Chips, .chips = parse_integer(token.substr(0, unit))};
    const std::string_view cap = token.substr(unit + 1);
    if (cap.empty()) {
        return size;
    }
    if (!allow_relative) {
        throw std::invalid_argument("Raise cap is only valid for raises");
    }
    if (to_lower(cap.back()) != 'r') {
        throw std::invalid_argument("Raise cap must end with 'r'");
    }
    size.raise_cap = parse_integer(without_last(cap));
    if (size.raise_cap < 1) {
        throw std::invalid_argument("Raise cap must be positive");
    }
    return size;
}

SizeToken parse_geometric(std::string_view token) {
    SizeToken size{.kind = SizeKind::Geometric,
                   .max_ratio = std::numeric_limits<double>::infinity()};
    std::string_view body = without_last(token);
    const std::size_t percent = body.find('%');
    if (percent != std::string_view::npos) {
        size.max_ratio = parse_decimal(body.substr(percent + 1)) / 100.0;
        body = body.substr(0, percent);
    }
    if (!body.empty()) {
        size.streets = parse_integer(body);
        if (size.streets < 1) {
            throw std::invalid_argument("Geometric streets must be positive");
        }
    }
    return size;
}

// A fraction f of the pot, bet and called, multiplies the pot by 1 + 2f. Over n streets it has to
// grow by 1 + 2 * stack_to_pot for the stack to be in.
double geometric_fraction(double stack_to_pot, std::int32_t streets) {
    return (std::pow(2.0 * stack_to_pot + 1.0, 1.0 / streets) - 1.0) / 2.0;
}

}  // namespace

double parse_decimal(std::string_view text) {
    const ReadNumber<double> number = read_double(text);
    const bool overflow = number.out_of_range && std::isinf(number.value);
    if (overflow || !is_whole_text(number, text)) {
        throw std::invalid_argument("Failed to parse floating-point number from '" +
                                    std::string(text) + "' (hex=" + hex_of(text) + ")");
    }
    return number.value;
}

std::int32_t parse_integer(std::string_view text) {
    const ReadNumber<long long> number = read_integer(text);
    if (number.out_of_range || !is_whole_text(number, text)) {
        throw std::invalid_argument("Failed to parse integer from '" + std::string(text) + "'");
    }
    if (number.value < std::numeric_limits<std::int32_t>::min() ||
        number.value > std::numeric_limits<std::int32_t>::max()) {
        throw std::out_of_range("Integer value is out of range");
    }
    return static_cast<std::int32_t>(number.value);
}

SizeToken parse_size_token(std::string_view text, bool allow_relative) {
    const std::string_view token = trimmed(text);
    if (token.empty()) {
        throw std::invalid_argument("Empty bet size token");
    }
    const char last = to_lower(token.back());
    const bool has_chip_unit = token.find_first_of("cC") != std::string_view::npos;
    if (last == 'x') {
        return parse_multiple(token, allow_relative);
    }
    if (last == 'c' || (last == 'r' && has_chip_unit)) {
        return parse_chips(token, allow_relative);
    }
    if (last == 'e') {
        return parse_geometric(token);
    }
    if (last == 'a') {
        return {.kind = SizeKind::AllIn};
    }
    if (last == '%') {
        return {.kind = SizeKind::PotPercent, .ratio = parse_decimal(without_last(token)) / 100.0};
    }
    return {.kind = SizeKind::Chips, .chips = parse_integer(token)};
}

std::vector<SizeToken> parse_size_list(std::string_view text, bool allow_relative) {
    std::vector<SizeToken> sizes;
    while (!text.empty()) {
        const std::size_t comma = std::min(text.find(','), text.size());
        const std::string_view piece = trimmed(text.substr(0, comma));
        if (!piece.empty()) {
            sizes.push_back(parse_size_token(piece, allow_relative));
        }
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return sizes;
}

std::pair<std::vector<SizeToken>, std::vector<SizeToken>> parse_bet_raise_lists(
    std::string_view bet_text, std::string_view raise_text) {
    auto bets = parse_size_list(bet_text, false);
    return {std::move(bets), parse_size_list(raise_text, true)};
}

std::vector<SizeToken> parse_donk_list(std::string_view bet_text) {
    return parse_size_list(bet_text, false);
}

std::int32_t clamp_amount(double amount, std::int32_t min_raise_to, std::int32_t max_raise_to) {
    double rounded = std::round(amount);
    if (!(rounded <= std::numeric_limits<std::int32_t>::max())) {
        rounded = max_raise_to;
    }
    // Between the limits now, so it fits; a huge negative amount has become the lower one.
    return static_cast<std::int32_t>(
        std::max<double>(min_raise_to, std::min<double>(rounded, max_raise_to)));
}

std::int32_t resolve_size(const SizeToken& token, const SizeContext& context) {
    const auto clamped = [&](double amount) {
        return clamp_amount(amount, context.min_raise_to, context.max_raise_to);
    };
    switch (token.kind) {
        case SizeKind::PotPercent:
            return clamped(context.pot_after_call * token.ratio);
        case SizeKind::RaiseMultiple:
            return clamped(context.street_bet * token.ratio);
        case SizeKind::Chips:
            return clamped(static_cast<double>(context.street_bet) + token.chips);
        case SizeKind::Geometric: {
            const std::int32_t streets = token.streets == 0 ? context.streets_left : token.streets;
            if (streets <= 0) {
                return context.min_raise_to;
            }
            double fraction = geometric_fraction(context.stack_to_pot, streets);
            if (std::isfinite(token.max_ratio)) {
                fraction = std::min(token.max_ratio, fraction);
            }
            return clamped(context.pot_after_call * fraction);
        }
        case SizeKind::AllIn:
            break;
    }
    return context.max_raise_to;
}

}  // namespace kestrel
