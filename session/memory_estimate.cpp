#include "session/memory_estimate.h"

#include <utility>

namespace kestrel_app {
namespace {

/// Room for what the parts leave out: scratch rows, the allocator, the result.
constexpr double margin = 1.1;

}  // namespace

SolveMemoryEstimate estimate_solve_memory(const SolveConfig& config, const EstimateLimits& limits) {
    SpotInputs spot = parse_spot(config, SizingErrors::plain);
    const kestrel::CardContext cards(spot.board, spot.ranges);
    const kestrel::ActionPlan plan(std::move(spot.options), &cards);
    if (limits.stop != nullptr && *limits.stop) {
        throw EstimateStopped();
    }
    SolveMemoryEstimate estimate = estimate_solve_memory(cards, plan, config.compress);
    estimate.at_least = limits.budget_bytes && estimate.total_bytes > *limits.budget_bytes;
    return estimate;
}

SolveMemoryEstimate estimate_solve_memory(const kestrel::CardContext& cards,
                                          const kestrel::ActionPlan& plan, bool compress) {
    // A regret and a strategy sum for each hand and action.
    const std::uint64_t entry_bytes = compress ? 2 * sizeof(std::int16_t) : 2 * sizeof(float);

    SolveMemoryEstimate estimate;
    estimate.card_context_bytes = cards.memory_bytes();
    estimate.tree_bytes = plan.memory_bytes();
    estimate.node_count = plan.node_count();
    estimate.oop_hand_count = cards.pockets[0].size();
    estimate.ip_hand_count = cards.pockets[1].size();
    for (const kestrel::PlanNode& node : plan.nodes) {
        if (node.kind != kestrel::NodeKind::Decision || node.actions.empty()) {
            continue;
        }
        ++estimate.decision_node_count;
        estimate.solver_bytes +=
            cards.pockets[index_of(node.seat)].size() * node.actions.size() * entry_bytes;
    }
    const std::uint64_t parts =
        estimate.card_context_bytes + estimate.tree_bytes + estimate.solver_bytes;
    estimate.total_bytes = static_cast<std::uint64_t>(static_cast<double>(parts) * margin);
    return estimate;
}

}  // namespace kestrel_app
