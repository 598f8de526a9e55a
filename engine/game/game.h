#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "engine/game/action_plan.h"
#include "engine/game/card_context.h"

namespace kestrel {

/// A node as the solver sees it: the plan's own node, not a copy.
using GameNode = PlanNode;

/// The object that a solve runs on: configuration, cards and the betting tree. After construction
/// and the setting of locks it is constant, and all solver threads read it unguarded.
class Game {
  public:
    /// Builds the tree within the limits. Throws what `ActionPlan` throws.
    Game(PlanOptions options, CardContext cards, const TreeLimits& limits = {});

    Game(const Game&) = delete;
    Game& operator=(const Game&) = delete;

    /// Fixes the strategy of a decision node: A x H probabilities, action-major, -1 for each action
    /// of a hand that stays free. Replaces what stood under the index. Before the solve only.
    void set_node_lock(std::uint64_t node_index, std::vector<float> table);

    /// The table stored for a node, empty where there is none.
    std::span<const float> node_lock(std::uint64_t node_index) const;

    /// The hands of both seats that trade places for the `position`-th skipped card of a chance
    /// node; `no_swaps` where there is no such card.
    const SwapList& swap_list(const GameNode& node, std::size_t position) const;

    /// For each skipped card of a chance node, the position of the child that stands for it.
    const std::vector<std::uint8_t>& references(const GameNode& node) const;

    const PlanOptions options;
    const CardContext cards;
    const ActionPlan plan;
    const std::span<const GameNode> nodes;  ///< the plan's nodes
    std::unordered_map<std::uint64_t, std::vector<float>> node_locks;
    const std::vector<std::uint8_t> no_cards;  ///< always empty
    const SwapList no_swaps;                   ///< always empty
};

}  // namespace kestrel
