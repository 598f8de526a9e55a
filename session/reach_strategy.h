#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "session/finished_solve.h"
#include "session/node_queries.h"

namespace kestrel_app {

/// The hands of one label that come to a node.
struct LabelPlay {
    std::size_t label = 0;
    double weight = 0;                 ///< mean over these hands, each counting at most 1
    std::vector<double> action_probs;  ///< mean by weight, adding up to 1

    bool operator==(const LabelPlay&) const = default;
};

/// By rising label; a label of which no hand comes is not there.
using ReachStrategy = std::vector<LabelPlay>;

/// Of a decision: how the hands that come to it play, or those of one class ("top pair", in any
/// case, blanks around it ignored; empty for all). Takes no value walk.
std::optional<ReachStrategy> reach_strategy(const FinishedSolve& solve, std::uint64_t node,
                                            std::string_view bucket);

/// The same from the hands that `hand_combos` told of a node with so many actions: to the bit,
/// whatever their order. Hands that name no two cards, or have no probabilities, do not count.
ReachStrategy reach_strategy(std::span<const HandCombo> combos, std::size_t actions,
                             std::string_view bucket);

}  // namespace kestrel_app
