#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "session/finished_solve.h"

namespace kestrel_app {

/// Per action of a decision, in the node's order: how the hands that come to it play and fare
/// against the hands that the opponent comes with. A hand comes with its weight in the range times
/// what its own play brings here. NaN stands for what nobody can say: all figures but `combos`
/// where no hand of the seat comes, equity and EV of an action that no hand takes, and both of all
/// actions where the opponent never comes.
struct ActionStatsHere {
    std::vector<std::string> action_names;
    std::vector<std::string> action_types;
    bool opponent_comes = false;      ///< with any hand
    std::vector<double> combos;       ///< weights of the hands that take the action, summed
    std::vector<double> frequencies;  ///< share in the combos of all actions
    std::vector<double> equity;       ///< chance at showdown without further betting
    /// Hundredths of a chip out of the pot: mean over the combos that can meet a hand of the
    /// opponent, each against what it can meet.
    std::vector<double> ev;
};

/// Of a decision, nothing elsewhere. One value walk of each child, shared with `hand_combos`. The
/// equity is exact on a whole board, elsewhere sampled as that of `node_action_stats` is: at the
/// root, with hands of weight 1, both tell the same.
std::optional<ActionStatsHere> action_stats_here(const FinishedSolve& solve, std::uint64_t node);

/// The same without equity and EV, which are NaN: takes no value walk.
std::optional<ActionStatsHere> action_shares_here(const FinishedSolve& solve, std::uint64_t node);

/// Of a decision, whether the opponent of who acts there ever comes, with any hand; of any other
/// node, whether both seats do. Nothing for an index out of range.
std::optional<bool> opponent_comes(const FinishedSolve& solve, std::uint64_t node);

}  // namespace kestrel_app
