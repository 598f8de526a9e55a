#include "session/config_map.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <vector>

#include "engine/poker/text.h"
#include "session/text.h"

namespace kestrel_app {
namespace {

using kestrel::lower_case;
using kestrel::to_lower;
using kestrel::to_upper;
using kestrel::trimmed;

constexpr std::array<std::string_view, 6> street_prefixes = {"oop_flop", "oop_turn", "oop_river",
                                                             "ip_flop",  "ip_turn",  "ip_river"};

bool is_rank(char character) {
    return kestrel::rank_characters.find(to_upper(character)) != std::string_view::npos;
}

/// White space around a number and a plus before it are allowed.
std::string_view number_body(std::string_view text) {
    text = trimmed(text);
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    return text;
}

double double_of(std::string_view text) {
    text = number_body(text);
    const std::string lower = lower_case(text);
    if (lower == "nan") {
        return std::numeric_limits<double>::quiet_NaN();
    }
    if (lower == "inf") {
        return std::numeric_limits<double>::infinity();
    }
    if (lower == "-inf") {
        return -std::numeric_limits<double>::infinity();
    }
    if (text.starts_with('+') ||
        text.find_first_not_of("0123456789.eE+-") != std::string_view::npos) {
        return 0.0;
    }
    const kestrel::ReadNumber<double> number = kestrel::read_double(text);
    return number.length == text.size() ? number.value : 0.0;
}

std::uint32_t unsigned_of(std::string_view text) {
    text = number_body(text);
    return static_cast<std::uint32_t>(parsed_number<std::uint64_t>(text).value_or(0));
}

std::string shortest_text(double number) {
    if (std::isnan(number)) {
        return "nan";
    }
    std::array<char, 32> buffer{};
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number == 0.0 ? 0.0 : number);
    return {buffer.data(), result.ptr};
}

constexpr char32_t replacement_character = 0xFFFD;

/// Takes one character off a UTF-8 text. A byte that begins none counts as U+FFFD by itself.
char32_t take_character(std::string_view& text) {
    const auto byte = [&](std::size_t place) { return static_cast<unsigned char>(text[place]); };
    const auto lead = byte(0);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    // The least code that needs a sequence of this length.
    constexpr std::array<char32_t, 5> least = {0, 0, 0x80, 0x800, 0x10000};
    char32_t code = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    bool valid = lead < 0x80 || (lead >= 0xC0 && lead < 0xF8 && length <= text.size());
    for (std::size_t k = 1; valid && k < length; ++k) {
        valid = (byte(k) & 0xC0U) == 0x80;
        code = code << 6 | (byte(k) & 0x3FU);
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    valid = valid && code >= least[length] && code <= 0x10FFFF && !surrogate;
    text.remove_prefix(valid ? length : 1);
    return valid ? code : replacement_character;
}

bool is_unicode_space(char32_t code) {
    return code < 0x80 ? kestrel::is_space(static_cast<char>(code))
                       : code == 0x85 || code == 0xA0 || code == 0x1680 ||
                             (code >= 0x2000 && code <= 0x200A) || code == 0x2028 ||
                             code == 0x2029 || code == 0x202F || code == 0x205F || code == 0x3000;
}

/// The text in UTF-16 units without white space: ASCII as it is, any other unit as 0, which is
/// part of no card.
std::string units_without_space(std::string_view text) {
    std::string units;
    while (!text.empty()) {
        const char32_t code = take_character(text);
        if (!is_unicode_space(code)) {
            units.append(code > 0xFFFF ? 2 : 1, code < 0x80 ? static_cast<char>(code) : '\0');
        }
    }
    return units;
}

/// Chips clamped to [0, max_chips], in hundredths; `not_finite` (chips) for infinity and NaN.
double clamped_hundredths(double chips, double not_finite) {
    return std::clamp(std::isfinite(chips) ? chips : not_finite, 0.0, max_chips) * 100.0;
}

/// Two ranks side by side or a combo such as "AhKh", or a percentage.
bool has_hand(std::string_view range) {
    range = trimmed(range);
    if (is_percent_range(range)) {
        return true;
    }
    const std::string hands = kestrel::without_white_space(range);
    const auto is_rank_at = [&](std::size_t place) {
        return place < hands.size() && is_rank(hands[place]);
    };
    const auto is_suit_at = [&](std::size_t place) {
        return kestrel::suit_characters.find(to_lower(hands[place])) != std::string_view::npos;
    };
    for (std::size_t i = 0; i < hands.size(); ++i) {
        const bool combo = is_rank_at(i + 2) && is_suit_at(i + 1);
        if (is_rank_at(i) && (is_rank_at(i + 1) || combo)) {
            return true;
        }
    }
    return false;
}

/// Reads keys of a map with defaults for those that are missing.
class Reader {
  public:
    explicit Reader(const ConfigMap& map) : map_(map) {}

    std::string text(std::string_view key, std::string_view missing = "") const {
        const ConfigValue* value = find(key);
        return value ? to_text(*value) : std::string(missing);
    }
    double number(std::string_view key, double missing) const {
        const ConfigValue* value = find(key);
        return value ? to_double(*value) : missing;
    }
    std::uint32_t whole(std::string_view key, std::uint32_t missing) const {
        const ConfigValue* value = find(key);
        return value ? to_unsigned(*value) : missing;
    }
    bool flag(std::string_view key) const {
        const ConfigValue* value = find(key);
        return value && to_bool(*value);
    }
    StreetSizingText sizing(const std::string& prefix) const {
        return {text(prefix + "_bet_sizes"), text(prefix + "_raise_sizes"),
                flag(prefix + "_add_all_in"), flag(prefix + "_dont_donk")};
    }
    std::optional<double> jam_threshold(const std::string& seat) const {
        const std::string key = seat + "_add_all_in_jam_threshold_";
        if (!flag(key + "enabled")) {
            return std::nullopt;
        }
        return number(key + "pct", 0.0);
    }

  private:
    const ConfigValue* find(std::string_view key) const {
        const auto found = map_.find(key);
        return found == map_.end() ? nullptr : &found->second;
    }

    const ConfigMap& map_;
};

}  // namespace

std::string to_text(const ConfigValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return *text;
    }
    if (const auto* number = std::get_if<double>(&value)) {
        return shortest_text(*number);
    }
    return std::get<bool>(value) ? "true" : "false";
}

double to_double(const ConfigValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return double_of(*text);
    }
    if (const auto* number = std::get_if<double>(&value)) {
        return *number;
    }
    return std::get<bool>(value) ? 1.0 : 0.0;
}

std::uint32_t to_unsigned(const ConfigValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return unsigned_of(*text);
    }
    if (const auto* number = std::get_if<double>(&value)) {
        constexpr double limit = 9.2e18;  // of a signed 64-bit number
        return std::abs(*number) < limit ? static_cast<std::uint32_t>(std::llround(*number)) : 0;
    }
    return std::get<bool>(value) ? 1 : 0;
}

bool to_bool(const ConfigValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        const std::string lower = lower_case(*text);
        return !lower.empty() && lower != "0" && lower != "false";
    }
    if (const auto* number = std::get_if<double>(&value)) {
        return !(std::abs(*number) < 0.5);
    }
    return std::get<bool>(value);
}

std::span<const ConfigKey> config_keys() {
    static const std::vector<ConfigKey> keys = [] {
        std::vector<ConfigKey> list = {
            {"board", ConfigKind::board},
            {"starting_pot", ConfigKind::chips},
            {"effective_stack", ConfigKind::chips},
            {"rake_percent", ConfigKind::percent},
            {"rake_cap", ConfigKind::chips},
            {"starting_street", ConfigKind::street},
            {"max_iterations", ConfigKind::whole},
            {"target_exploitability", ConfigKind::chips},
            {"thread_count", ConfigKind::whole},
            {"oop_range", ConfigKind::range},
            {"ip_range", ConfigKind::range},
            {"oop_add_all_in_jam_threshold_enabled", ConfigKind::flag},
            {"oop_add_all_in_jam_threshold_pct", ConfigKind::percent},
            {"ip_add_all_in_jam_threshold_enabled", ConfigKind::flag},
            {"ip_add_all_in_jam_threshold_pct", ConfigKind::percent},
            {"exact_all_in", ConfigKind::flag},
            {"apply_node_locks", ConfigKind::flag},
        };
        for (const std::string_view street_prefix : street_prefixes) {
            const std::string prefix(street_prefix);
            list.push_back({prefix + "_bet_sizes", ConfigKind::sizing});
            list.push_back({prefix + "_raise_sizes", ConfigKind::sizing});
            list.push_back({prefix + "_add_all_in", ConfigKind::flag});
            list.push_back({prefix + "_dont_donk", ConfigKind::flag});
        }
        return list;
    }();
    return keys;
}

std::uint32_t to_hundredths(double chips, std::uint32_t fallback) {
    return static_cast<std::uint32_t>(std::llround(clamped_hundredths(chips, fallback / 100.0)));
}

std::string normalize_board_text(std::string_view text) {
    const std::string units = units_without_space(text);
    std::string board;
    for (std::size_t i = 0; i + 1 < units.size(); i += 2) {
        const char rank = to_upper(units[i]);
        const char suit = to_lower(units[i + 1]);
        if (is_rank(rank) && kestrel::suit_characters.find(suit) != std::string_view::npos) {
            board += {rank, suit};
        }
    }
    return board;
}

SolveConfig config_from_map(const ConfigMap& map) {
    const Reader read(map);
    SolveConfig config;
    config.board = normalize_board_text(read.text("board"));
    config.starting_pot = to_hundredths(read.number("starting_pot", 100.0), 10000);
    config.effective_stack = to_hundredths(read.number("effective_stack", 100.0), 10000);
    config.rake_percent = read.number("rake_percent", 0.0);
    config.rake_cap = clamped_hundredths(read.number("rake_cap", 0.0), 0.0);
    config.starting_street = read.text("starting_street", "flop");
    config.max_iterations = read.whole("max_iterations", 2000);
    // A target that is no number still ends the run close to equilibrium.
    config.target_exploitability =
        static_cast<float>(clamped_hundredths(read.number("target_exploitability", 0.1), 0.001));
    config.thread_count = read.whole("thread_count", 1);
    config.exact_all_in = read.flag("exact_all_in");
    config.oop_range = read.text("oop_range");
    config.ip_range = read.text("ip_range");
    config.oop_flop = read.sizing("oop_flop");
    config.oop_turn = read.sizing("oop_turn");
    config.oop_river = read.sizing("oop_river");
    config.ip_flop = read.sizing("ip_flop");
    config.ip_turn = read.sizing("ip_turn");
    config.ip_river = read.sizing("ip_river");
    config.oop_add_all_in_jam_threshold_pct = read.jam_threshold("oop");
    config.ip_add_all_in_jam_threshold_pct = read.jam_threshold("ip");
    return config;
}

std::optional<std::string> not_ready_reason(const ConfigMap& map) {
    const Reader read(map);
    const std::size_t board_length = normalize_board_text(read.text("board")).size();
    if (board_length != 6 && board_length != 8 && board_length != 10) {
        return "Not ready: enter a valid board first";
    }
    if (!has_hand(read.text("oop_range")) || !has_hand(read.text("ip_range"))) {
        return "Not ready: select at least one hand in both ranges";
    }
    for (const std::string_view prefix : street_prefixes) {
        const StreetSizingText sizing = read.sizing(std::string(prefix));
        if (trimmed(sizing.bet_sizes).empty() || trimmed(sizing.raise_sizes).empty()) {
            return "Not ready: fill out both OOP and IP sizing";
        }
    }
    return std::nullopt;
}

}  // namespace kestrel_app
