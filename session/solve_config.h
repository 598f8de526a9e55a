#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/game/action_plan.h"
#include "engine/poker/cards.h"
#include "engine/poker/range.h"
#include "session/node_locks.h"

namespace kestrel_app {

/// What a person enters for one seat and street. The two texts are lists such as "33, 75%, 2.5x".
struct StreetSizingText {
    std::string bet_sizes;
    std::string raise_sizes;
    bool add_all_in = false;
    bool dont_donk = false;  ///< OOP only: check into the player who had the betting lead

    bool operator==(const StreetSizingText&) const = default;
};

/// One solve as it was asked for: texts unparsed, money in hundredths of a chip.
struct SolveConfig {
    std::string board;  ///< normalised: 6, 8 or 10 characters when valid
    std::uint32_t starting_pot = 10000;
    std::uint32_t effective_stack = 10000;
    double rake_percent = 0;  ///< 5 for 5 %
    double rake_cap = 0;      ///< hundredths of a chip, not rounded; 0 for no cap
    std::string starting_street = "flop";
    std::uint32_t max_iterations = 2000;
    float target_exploitability = 10.0F;  ///< hundredths of a chip
    std::uint64_t thread_count = 1;
    bool compress = false;
    bool exact_all_in = false;  ///< `kestrel::PlanOptions::exact_all_in`
    std::string oop_range;
    std::string ip_range;
    StreetSizingText oop_flop;
    StreetSizingText oop_turn;
    StreetSizingText oop_river;
    StreetSizingText ip_flop;
    StreetSizingText ip_turn;
    StreetSizingText ip_river;
    /// Percent of the pot; absent while switched off.
    std::optional<double> oop_add_all_in_jam_threshold_pct;
    std::optional<double> ip_add_all_in_jam_threshold_pct;
    std::vector<NodeLockEntry> node_locks;  ///< play that is fixed, by the node index of this tree

    bool operator==(const SolveConfig&) const = default;
};

/// Makes free text fit the grammar of sizes: drops what cannot be part of a size, appends "%" to
/// bare numbers, and "a" when `add_all_in` is set and missing. Throws std::invalid_argument
/// "Sizing: invalid token '%'. Use numbers like '33, 75' or '33%, 75%'" and
/// "Sizing: invalid token '<token>'" for a lone c, e or x.
std::string normalize_sizing_text(std::string_view text, bool add_all_in);

/// A piece of a list of sizes that cannot be taken for what it says.
struct SizingFault {
    std::string piece;   ///< as it was entered, without white space around it
    std::string reason;  ///< what a parser would say; empty when the piece is no size at all

    bool operator==(const SizingFault&) const = default;
};

/// The pieces of a list of sizes that the solver refuses or takes for something else:
/// `normalize_sizing_text` makes 3375 % of "33 75", an all-in of "half" and 50 % of "-50". None for
/// a list that says what it means; "-" alone stands for no sizes. `allow_relative` as in
/// `kestrel::parse_size_list`.
std::vector<SizingFault> sizing_faults(std::string_view text, bool allow_relative);

/// The sizes of both seats on one street. Throws std::invalid_argument: what
/// `normalize_sizing_text` throws, and for a size that does not parse
/// "<OOP or IP> <street> sizing (bet='..', raise='..', bet_norm='..', raise_norm='..'): <why>".
kestrel::StreetSizing build_street_sizing(const StreetSizingText& oop, const StreetSizingText& ip,
                                          std::string_view street);

/// The same, but a size that does not parse throws the parser's own exception.
kestrel::StreetSizing build_street_sizing_quiet(const StreetSizingText& oop,
                                                const StreetSizingText& ip);

/// True for a trimmed text such as "50%": digits and points with one "%" at the end.
bool is_percent_range(std::string_view trimmed);

/// "50%" gives every pocket the weight 0.5; any other text is range grammar. Throws
/// std::invalid_argument "Invalid percent range '<text>' (expected like '50%')",
/// "Weight must be within [0, 1]", or what `kestrel::parse_range` throws.
kestrel::Range parse_range_or_percent(std::string_view text);

/// "turn" and "river" by name; everything else is the flop.
kestrel::Street parse_street(std::string_view text);

/// A configuration in the engine's terms.
struct SpotInputs {
    kestrel::Board board{};
    std::array<kestrel::Range, 2> ranges{};  ///< OOP first
    kestrel::PlanOptions options;
};

enum class SizingErrors { wrapped, plain };

/// Parses a configuration: board, ranges, money, sizings, in this order. Throws the parsers'
/// exceptions and std::invalid_argument "Board must include at least a flop (6 chars, e.g.
/// AhKsQd)", "Starting street does not match the board", and "Pot and stack are too large" when
/// the pot and both stacks together leave 32 bits.
SpotInputs parse_spot(const SolveConfig& config, SizingErrors errors = SizingErrors::wrapped);

}  // namespace kestrel_app
