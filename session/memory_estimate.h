#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

#include "engine/game/tree_count.h"
#include "session/solve_config.h"

namespace kestrel_app {

/// What a solve is taken to need, in bytes, and the sizes behind it.
struct SolveMemoryEstimate {
    std::uint64_t total_bytes = 0;  ///< the five parts, and a little for the allocator
    std::uint64_t card_context_bytes = 0;
    std::uint64_t tree_bytes = 0;
    std::uint64_t solver_bytes = 0;  ///< regrets and strategy sums of all decision nodes
    std::uint64_t walk_bytes = 0;    ///< what else the solver holds: its table and its scratch rows
    std::uint64_t result_bytes = 0;  ///< the snapshot of the tree that the result is shown from
    std::uint64_t node_count = 0;
    std::uint64_t decision_node_count = 0;  ///< those with at least one action
    std::uint64_t oop_hand_count = 0;
    std::uint64_t ip_hand_count = 0;
    bool at_least = false;  ///< counting ended at the budget: all of it is no less than told
};

/// When working an estimate out ends early.
struct EstimateLimits {
    std::optional<std::uint64_t> budget_bytes;  ///< beyond it `at_least` is all that is told
    const std::atomic<bool>* stop = nullptr;    ///< once true, the call throws BuildStopped
};

/// What a solve of the configuration needs, without building anything of it: a few milliseconds for
/// most spots, seconds for the largest that a machine can hold. Throws kestrel::BuildStopped, and
/// for a configuration that cannot be solved std::invalid_argument and std::out_of_range: what
/// `parse_spot` (with plain sizing errors), `checked_board`, `deal_hands` and `TreeCounter` throw,
/// "The ranges can never meet", and "The weights are too small" where single precision ends.
SolveMemoryEstimate estimate_solve_memory(const SolveConfig& config,
                                          const EstimateLimits& limits = {});

/// The same for a configuration that has been parsed.
SolveMemoryEstimate estimate_solve_memory(const SpotInputs& spot, const SolveConfig& config,
                                          const EstimateLimits& limits = {});

/// A solve that does not fit.
class NotEnoughMemory : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Throws NotEnoughMemory ("Not enough memory: the solve needs 30.2 GB, 20.1 GB are available")
/// unless the solve needs less than what is available.
void check_fits(const SolveMemoryEstimate& estimate, std::uint64_t available_bytes);

}  // namespace kestrel_app
