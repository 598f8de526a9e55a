#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <stdexcept>

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
    bool at_least = false;  ///< counting ended at the budget: all of it is no less than told
};

/// When working an estimate out ends early.
struct EstimateLimits {
    std::optional<std::uint64_t> budget_bytes;  ///< beyond it `at_least` is all that is told
    const std::atomic<bool>* stop = nullptr;    ///< once true, the call throws EstimateStopped
};

/// The estimate was given up on request.
struct EstimateStopped : std::runtime_error {
    EstimateStopped() : std::runtime_error("Stopped") {}
};

/// What a solve of the configuration needs. Throws EstimateStopped, and for a configuration that
/// cannot be solved what `parse_spot` (with plain sizing errors) and `CardContext` throw.
SolveMemoryEstimate estimate_solve_memory(const SolveConfig& config,
                                          const EstimateLimits& limits = {});

/// The same for cards and a tree that exist already.
SolveMemoryEstimate estimate_solve_memory(const kestrel::CardContext& cards,
                                          const kestrel::ActionPlan& plan, bool compress);

}  // namespace kestrel_app
