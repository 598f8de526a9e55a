#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "engine/game/action.h"
#include "engine/poker/bet_size.h"
#include "engine/poker/cards.h"

namespace kestrel {

enum class NodeKind : std::uint8_t { Decision, Chance, Terminal };

/// What each seat may bet and raise on one street.
struct StreetSizing {
    std::vector<SizeToken> oop_bets;
    std::vector<SizeToken> oop_raises;
    std::vector<SizeToken> ip_bets;
    std::vector<SizeToken> ip_raises;
    /// What OOP may bet when leading into the player who had the betting lead. Absent: as
    /// `oop_bets`. Present and empty: OOP can only check there.
    std::optional<std::vector<SizeToken>> donk_sizes;
};

/// The configuration of a betting tree. Amounts in hundredths of a chip.
struct PlanOptions {
    Street starting_street = Street::Flop;
    std::int32_t starting_pot = 0;
    std::int32_t effective_stack = 0;  ///< of each player
    double rake_fraction = 0;          ///< 0.05 for 5 % of the pot
    double rake_cap = 0;               ///< hundredths of a chip; 0 for no cap
    StreetSizing flop;
    StreetSizing turn;
    StreetSizing river;
    /// Per seat: an all-in of at most this fraction of the pot is always offered. 0 is off.
    std::array<double, 2> jam_threshold{};
    /// A bet that leaves less than this fraction of the pot behind becomes an all-in. 0 is off.
    double all_in_threshold = 0;
    /// Bets closer to each other than this fraction of the pot become one. 0 merges equal ones.
    double merge_threshold = 0;
    /// Weighs the run-outs of an all-in before the river as the two hands really meet them. Off,
    /// an all-in is worth the mean over all run-outs of the undealt cards, in which those that a
    /// hand's own cards rule out count as nothing. Read by the solver only.
    bool exact_all_in = false;
};

/// One node of the tree. `actions` and `children` point into the plan that owns the node.
struct PlanNode {
    NodeKind kind = NodeKind::Decision;
    /// Decision: the player to act. Terminal after a fold: the seat that folded. Otherwise OOP.
    Seat seat = Seat::OOP;
    /// A chance node carries the street that its card opens; the terminal behind an all-in call
    /// before the river carries the next street.
    Street street = Street::Flop;
    bool runout_pending = false;  ///< terminal only: all-in with cards still to come
    std::int32_t matched = 0;     ///< put in by each player since the root and matched by the other
    std::span<const Action> actions;          ///< one per child
    std::span<const std::uint64_t> children;  ///< node indices, aligned with `actions`
    std::int32_t pot = 0;                     ///< all chips in the middle, unmatched ones included
    std::array<std::int32_t, 2> contributed{};  ///< per seat, put in since the root
    /// The last betting action on the way here, which a dealt card leaves alone. On a terminal,
    /// fold marks a fold and anything else a showdown.
    ActionKind last_action = ActionKind::none;
    Seat last_actor = Seat::OOP;
    Card turn = NO_CARD;
    Card river = NO_CARD;
};

}  // namespace kestrel
