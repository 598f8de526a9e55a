#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "session/solve_config.h"

namespace kestrel_app {

/// One setting of a solve as a front end or a file gives it.
using ConfigValue = std::variant<bool, double, std::string>;

/// A solve as one flat map, money in chips. Keys and their readings are those of `config_keys`.
using ConfigMap = std::map<std::string, ConfigValue, std::less<>>;

/// Conversions between the kinds, as Qt's variant makes them. A number given as text counts; text
/// that is no number reads as 0, and any text but "", "0" and "false" as true. A double becomes a
/// whole number by rounding to the nearest, ties away from zero, modulo 2^32.
std::string to_text(const ConfigValue& value);
double to_double(const ConfigValue& value);
std::uint32_t to_unsigned(const ConfigValue& value);
bool to_bool(const ConfigValue& value);

enum class ConfigKind { board, range, street, sizing, chips, percent, whole, flag };

struct ConfigKey {
    std::string name;
    ConfigKind kind;
};

/// Every key that a map may hold; others are ignored. Two kinds have no effect: a front end keeps
/// "apply_node_locks" with its settings and applies the locks itself, and "ip_STREET_dont_donk"
/// stands there so that both seats have the same keys.
std::span<const ConfigKey> config_keys();

/// The largest amount of money, in chips: its hundredths fit a signed 32-bit number.
inline constexpr double max_chips = 21474836.46;

/// Chips to whole hundredths, to the nearest, clamped to what 32 bits with a sign hold.
/// `fallback` (hundredths) replaces a value that is not finite.
std::uint32_t to_hundredths(double chips, std::uint32_t fallback);

/// Cards as upper-case rank and lower-case suit without white space. The text is read in pairs of
/// characters (UTF-8); a pair that is no card is dropped, and so is a lone last character.
std::string normalize_board_text(std::string_view text);

/// The whole conversion, with a default for each missing key: pot and stack 100 chips, no rake,
/// street "flop", 2000 iterations, a target of 0.1 chips, one thread, empty texts, flags off.
/// Never fails: amounts are clamped, and bad text is left for `parse_spot`.
SolveConfig config_from_map(const ConfigMap& map);

/// Why a solve may not start yet, as a text for people ("Not ready: ..."): no board, no hand in a
/// range, or a sizing left blank. Nothing when it may. Lax; `parse_spot` has the last word.
std::optional<std::string> not_ready_reason(const ConfigMap& map);

}  // namespace kestrel_app
