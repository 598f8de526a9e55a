#pragma once

#include <cstdint>

#include "engine/game/action_plan.h"
#include "engine/game/card_context.h"
#include "session/solve_config.h"

namespace kestrel_app {

/// What a solve is taken to need, in bytes, and the sizes behind it.
struct SolveMemoryEstimate {
    std::uint64_t total_bytes = 0;  ///< the three parts and a tenth more
    std::uint64_t card_context_bytes = 0;
    std::uint64_t tree_bytes = 0;
    std::uint64_t solver_bytes = 0;  ///< regrets and strategy sums of all decision nodes
    std::uint64_t node_count = 0;
    std::uint64_t decision_node_count = 0;  ///< those with at least one action
    std::uint64_t oop_hand_count = 0;
    std::uint64_t ip_hand_count = 0;
};

/// Builds cards and tree, without a solver, and measures them. Throws what `parse_spot` (with
/// plain sizing errors), `CardContext` and `ActionPlan` throw.
SolveMemoryEstimate estimate_solve_memory(const SolveConfig& config);

/// The same for cards and a tree that exist already.
SolveMemoryEstimate estimate_solve_memory(const kestrel::CardContext& cards,
                                          const kestrel::ActionPlan& plan, bool compress);

}  // namespace kestrel_app
