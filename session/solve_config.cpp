#include "session/solve_config.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

#include "engine/poker/bet_size.h"
#include "engine/poker/text.h"

namespace kestrel_app {
namespace {

using kestrel::Card;
using kestrel::SizeToken;

/// "33" is a percentage; "2.5x", "1e", "500c", "500c3r" and "a" say what they are.
bool needs_percent_sign(std::string_view token) {
    const char last = kestrel::to_lower(token.back());
    if (std::string_view("%acex").find(last) != std::string_view::npos) {
        return false;
    }
    return last != 'r' || token.find_first_of("cC") == std::string_view::npos;
}

bool is_digits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// "75", "33.3", "5." or ".5".
bool is_plain_decimal(std::string_view text) {
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos) {
        return is_digits(text);
    }
    std::string digits(text);
    return is_digits(digits.erase(point, 1));
}

/// Whether a piece of a list says a size and nothing else. The parser of sizes is laxer: it looks
/// at nothing before the letter of an all-in, and takes an exponent for a part of a number.
bool is_plain_size(std::string_view piece) {
    const std::string token = kestrel::lower_case(piece);
    const std::string_view body(token.data(), token.size() - 1);
    switch (token.back()) {
        case 'a':
            return body.empty();
        case 'x':
            return is_plain_decimal(body);
        case 'c':
            return is_digits(body);
        case 'r': {
            const std::size_t unit = body.find('c');
            return unit != std::string_view::npos && is_digits(body.substr(0, unit)) &&
                   is_digits(body.substr(unit + 1));
        }
        case 'e': {
            const std::size_t limit = body.find('%');
            return limit == std::string_view::npos
                       ? is_digits(body)
                       : (limit == 0 || is_digits(body.substr(0, limit))) &&
                             is_plain_decimal(body.substr(limit + 1));
        }
        case '%':
            return is_plain_decimal(kestrel::trimmed(body));
        default:
            return is_plain_decimal(token);
    }
}

/// A wager of 0, which the rules of the betting make the least one of.
bool is_nothing(const SizeToken& token) {
    return (token.kind == kestrel::SizeKind::PotPercent && !(token.ratio > 0)) ||
           (token.kind == kestrel::SizeKind::Chips && token.chips == 0) ||
           (token.kind == kestrel::SizeKind::Geometric && !(token.max_ratio > 0));
}

/// Runs `parse` on the normalised bet and raise texts of a seat. With a label, a failure of the
/// parser is wrapped in what the person entered.
template <class Parse>
void parse_seat(const StreetSizingText& seat, const std::string& label, const Parse& parse) {
    const std::string bets = normalize_sizing_text(seat.bet_sizes, seat.add_all_in);
    const std::string raises = normalize_sizing_text(seat.raise_sizes, seat.add_all_in);
    if (label.empty()) {
        parse(bets, raises);
        return;
    }
    try {
        parse(bets, raises);
    } catch (const std::exception& error) {
        throw std::invalid_argument(label + " sizing (bet='" + seat.bet_sizes + "', raise='" +
                                    seat.raise_sizes + "', bet_norm='" + bets + "', raise_norm='" +
                                    raises + "'): " + error.what());
    }
}

kestrel::StreetSizing street_sizing(const StreetSizingText& oop, const StreetSizingText& ip,
                                    const std::string& oop_label, const std::string& ip_label) {
    kestrel::StreetSizing sizing;
    parse_seat(oop, oop_label, [&](const std::string& bets, const std::string& raises) {
        std::tie(sizing.oop_bets, sizing.oop_raises) = kestrel::parse_bet_raise_lists(bets, raises);
        sizing.donk_sizes =
            oop.dont_donk ? std::vector<SizeToken>() : kestrel::parse_donk_list(bets);
    });
    parse_seat(ip, ip_label, [&](const std::string& bets, const std::string& raises) {
        std::tie(sizing.ip_bets, sizing.ip_raises) = kestrel::parse_bet_raise_lists(bets, raises);
    });
    return sizing;
}

kestrel::Board parse_board(std::string_view text) {
    if (text.size() < 6) {
        throw std::invalid_argument("Board must include at least a flop (6 chars, e.g. AhKsQd)");
    }
    const auto flop = kestrel::parse_flop(text.substr(0, 6));
    const auto card_at = [&](std::size_t place) {
        return text.size() >= place + 2 ? kestrel::parse_card(text.substr(place, 2))
                                        : kestrel::NO_CARD;
    };
    return {flop[0], flop[1], flop[2], card_at(6), card_at(8)};
}

double jam_threshold(const std::optional<double>& percent) {
    const double fraction = percent.value_or(0.0) / 100.0;
    return fraction > 0.0 ? fraction : 0.0;
}

}  // namespace

std::string normalize_sizing_text(std::string_view text, bool add_all_in) {
    std::string kept;
    for (const char character : text) {
        const bool digit = character >= '0' && character <= '9';
        if (digit || std::string_view("%,.acerxACERX").find(character) != std::string_view::npos) {
            kept += character;
        }
    }

    std::string result;
    bool has_all_in = false;
    const auto append = [&](std::string_view token) {
        if (!result.empty()) {
            result += ',';
        }
        result += token;
    };
    for (std::size_t begin = 0; begin <= kept.size();) {
        const std::size_t end = std::min(kept.find(',', begin), kept.size());
        const std::string token = kept.substr(begin, end - begin);
        begin = end + 1;
        if (token.empty()) {
            continue;
        }
        if (token == "%") {
            throw std::invalid_argument(
                "Sizing: invalid token '%'. Use numbers like '33, 75' or '33%, 75%'");
        }
        if (token.size() == 1) {
            const char letter = kestrel::to_lower(token.front());
            if (letter == 'c' || letter == 'e' || letter == 'x') {
                throw std::invalid_argument("Sizing: invalid token '" + token + "'");
            }
            has_all_in = has_all_in || letter == 'a';
        }
        append(needs_percent_sign(token) ? token + "%" : token);
    }
    if (add_all_in && !has_all_in) {
        append("a");
    }
    return result;
}

std::vector<SizingFault> sizing_faults(std::string_view text, bool allow_relative) {
    std::vector<SizingFault> faults;
    if (kestrel::trimmed(text) == "-") {
        return faults;
    }
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::string_view piece = kestrel::trimmed(text.substr(begin, end - begin));
        begin = end + 1;
        if (piece.empty()) {
            continue;
        }
        if (!is_plain_size(piece)) {
            faults.push_back({std::string(piece), ""});
            continue;
        }
        try {
            const auto tokens =
                kestrel::parse_size_list(normalize_sizing_text(piece, false), allow_relative);
            if (std::ranges::any_of(tokens, is_nothing)) {
                faults.push_back({std::string(piece), "A size is more than 0"});
            }
        } catch (const std::exception& error) {
            faults.push_back({std::string(piece), error.what()});
        }
    }
    return faults;
}

kestrel::StreetSizing build_street_sizing(const StreetSizingText& oop, const StreetSizingText& ip,
                                          std::string_view street) {
    const std::string name(street);
    return street_sizing(oop, ip, "OOP " + name, "IP " + name);
}

kestrel::StreetSizing build_street_sizing_quiet(const StreetSizingText& oop,
                                                const StreetSizingText& ip) {
    return street_sizing(oop, ip, "", "");
}

bool is_percent_range(std::string_view trimmed_text) {
    return trimmed_text.size() >= 2 && trimmed_text.find('%') == trimmed_text.size() - 1 &&
           trimmed_text.find_first_not_of("0123456789.%") == std::string_view::npos;
}

kestrel::Range parse_range_or_percent(std::string_view text) {
    const std::string_view percent = kestrel::trimmed(text);
    if (!is_percent_range(percent)) {
        return kestrel::parse_range(text);
    }

    const auto number = kestrel::read_double(percent);
    const auto weight = static_cast<float>(number.value / 100.0);
    const bool underflow = number.value > 0.0 && weight < std::numeric_limits<float>::min();
    if (number.length + 1 != percent.size() || number.out_of_range || underflow) {
        throw std::invalid_argument("Invalid percent range '" + std::string(text) +
                                    "' (expected like '50%')");
    }
    if (!(weight <= 1.0F)) {
        throw std::invalid_argument("Weight must be within [0, 1]");
    }
    kestrel::Range range;
    range.fill(weight);
    return range;
}

kestrel::Street parse_street(std::string_view text) {
    if (text == "turn") {
        return kestrel::Street::Turn;
    }
    if (text == "river") {
        return kestrel::Street::River;
    }
    return kestrel::Street::Flop;
}

SpotInputs parse_spot(const SolveConfig& config, SizingErrors errors) {
    SpotInputs spot;
    spot.board = parse_board(config.board);
    spot.ranges = {parse_range_or_percent(config.oop_range),
                   parse_range_or_percent(config.ip_range)};

    kestrel::PlanOptions& options = spot.options;
    options.starting_street = parse_street(config.starting_street);
    const kestrel::Street street_of_board =
        spot.board[3] == kestrel::NO_CARD   ? kestrel::Street::Flop
        : spot.board[4] == kestrel::NO_CARD ? kestrel::Street::Turn
                                            : kestrel::Street::River;
    if (options.starting_street != street_of_board) {
        throw std::invalid_argument("Starting street does not match the board");
    }
    const std::uint64_t all_chips =
        std::uint64_t{config.starting_pot} + 2 * std::uint64_t{config.effective_stack};
    if (all_chips > std::numeric_limits<std::int32_t>::max()) {
        throw std::invalid_argument("Pot and stack are too large");
    }
    options.starting_pot = static_cast<std::int32_t>(config.starting_pot);
    options.effective_stack = static_cast<std::int32_t>(config.effective_stack);
    options.rake_fraction = config.rake_percent / 100.0;
    options.rake_cap = config.rake_cap;
    options.exact_all_in = config.exact_all_in;
    options.jam_threshold = {jam_threshold(config.oop_add_all_in_jam_threshold_pct),
                             jam_threshold(config.ip_add_all_in_jam_threshold_pct)};
    const auto sizing = [&](const StreetSizingText& oop, const StreetSizingText& ip,
                            std::string_view street) {
        return errors == SizingErrors::wrapped ? build_street_sizing(oop, ip, street)
                                               : build_street_sizing_quiet(oop, ip);
    };
    options.flop = sizing(config.oop_flop, config.ip_flop, "flop");
    options.turn = sizing(config.oop_turn, config.ip_turn, "turn");
    options.river = sizing(config.oop_river, config.ip_river, "river");
    return spot;
}

}  // namespace kestrel_app
