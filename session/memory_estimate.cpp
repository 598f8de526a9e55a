#include "session/memory_estimate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>

#include "engine/game/action_plan.h"
#include "engine/game/betting_rules.h"
#include "engine/game/card_tables.h"
#include "engine/game/dealt_hands.h"
#include "engine/solver/node_state.h"
#include "session/result_snapshot.h"

namespace kestrel_app {
namespace {

using kestrel::Seat;
using kestrel::TreeCount;

/// What the parts leave out: the allocator's own, small lists, the texts of the result.
constexpr double margin = 1.05;

/// A row of the walks: whole cache lines of floats.
std::uint64_t row_bytes(std::uint64_t hands) {
    return (hands + 15) / 16 * 64;
}

/// What one thread holds while it walks the streets behind a deal, batch by batch, beside a row for
/// each of sixteen terminals.
std::uint64_t thread_bytes(std::uint64_t hands) {
    constexpr std::uint64_t batches = std::uint64_t{3} << 20;
    return batches + 3 * 16 * row_bytes(hands);
}

/// The rows and records of the first street, whose lines are walked all at once, and, where threads
/// share its deal, of the values that come back from it. For the seat that needs more.
std::uint64_t first_street_bytes(const TreeCount& street, const std::array<std::uint64_t, 2>& hands,
                                 std::uint64_t cards) {
    std::uint64_t rows = 0;
    for (std::size_t own = 0; own < 2; ++own) {
        const std::uint64_t own_row = row_bytes(hands[own]);
        const std::uint64_t their_row = row_bytes(hands[1 - own]);
        rows = std::max(rows, (street.actions[0] + street.actions[1]) * own_row +
                                  street.actions[1 - own] * their_row +
                                  street.chances * (their_row + (cards + 1) * own_row));
    }
    constexpr std::uint64_t record_bytes = 64;  // of a terminal or a decision, in a growing list
    return rows + street.nodes * record_bytes;
}

/// The solver works in single precision on amounts for each unit of the combination mass.
void check_mass(double mass, const kestrel::PlanOptions& options) {
    if (!(mass > 0)) {
        // Products of two single-precision weights do not underflow in the double that sums them.
        throw std::invalid_argument("The ranges can never meet");
    }
    const double chips = options.starting_pot + 2.0 * options.effective_stack;
    if (!std::isnormal(static_cast<float>(mass)) ||
        !std::isfinite(static_cast<float>(chips / mass))) {
        throw std::invalid_argument("The weights are too small");
    }
}

std::string gigabytes(std::uint64_t bytes) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.1f GB",
                  static_cast<double>(bytes) / static_cast<double>(1U << 30U));
    return text.data();
}

}  // namespace

SolveMemoryEstimate estimate_solve_memory(const SolveConfig& config, const EstimateLimits& limits) {
    return estimate_solve_memory(parse_spot(config, SizingErrors::plain), config, limits);
}

SolveMemoryEstimate estimate_solve_memory(const SpotInputs& spot, const SolveConfig& config,
                                          const EstimateLimits& limits) {
    using kestrel::StateTable;
    const kestrel::Board& board = kestrel::checked_board(spot.board);
    const kestrel::DealtHands dealt = kestrel::deal_hands(board, spot.ranges);
    check_mass(dealt.combination_mass, spot.options);
    const std::array<std::uint64_t, 2> hands = {dealt.pockets[0].size(), dealt.pockets[1].size()};

    SolveMemoryEstimate estimate;
    estimate.oop_hand_count = hands[0];
    estimate.ip_hand_count = hands[1];
    estimate.card_context_bytes = kestrel::tables_bytes(board, dealt);

    // What counting looks at, with what it leaves to the sums below in the node's bytes.
    const kestrel::NodeCosts tree_costs = kestrel::ActionPlan::node_costs();
    const kestrel::NodeCosts costs = {.node = tree_costs.node + TreeSnapshot::bytes_per_node,
                                      .decision = StateTable::bytes_of_state,
                                      .actions = [&](Seat seat, std::size_t actions) {
                                          return StateTable::bytes_of_rows(
                                              actions, hands[index_of(seat)], config.compress);
                                      }};
    kestrel::TreeLimits tree_limits;
    tree_limits.stop = limits.stop;
    if (limits.budget_bytes) {
        tree_limits.most_bytes =
            static_cast<std::uint64_t>(static_cast<double>(*limits.budget_bytes) / margin);
    }
    const kestrel::BettingRules rules(spot.options, board, &dealt.isomorphism);
    const auto counted = kestrel::TreeCounter(rules, costs, tree_limits).count(rules.root());

    const TreeCount& tree = counted.tree;
    const std::uint64_t entry_bytes =
        config.compress ? 2 * sizeof(std::int16_t) : 2 * sizeof(float);
    estimate.node_count = tree.nodes;
    estimate.decision_node_count = tree.decisions;
    estimate.tree_bytes = tree.nodes * tree_costs.node;
    estimate.solver_bytes = (tree.actions[0] * hands[0] + tree.actions[1] * hands[1]) * entry_bytes;
    estimate.result_bytes = tree.nodes * TreeSnapshot::bytes_per_node;
    const std::uint64_t cards = config.thread_count > 1 ? kestrel::card_count : 1;
    const std::uint64_t threads = std::min(std::max<std::uint64_t>(config.thread_count, 1), cards);
    estimate.walk_bytes = tree.action_bytes - estimate.solver_bytes +  // the rows' padding
                          tree.decisions * StateTable::bytes_of_state +
                          StateTable::bytes_of_nodes(tree.nodes) +
                          estimate.card_context_bytes / 2 +  // the showdowns as the walks read them
                          first_street_bytes(counted.first_street, hands, cards) +
                          threads * thread_bytes(std::max(hands[0], hands[1]));
    const std::uint64_t parts = estimate.card_context_bytes + estimate.tree_bytes +
                                estimate.solver_bytes + estimate.walk_bytes + estimate.result_bytes;
    estimate.total_bytes = static_cast<std::uint64_t>(static_cast<double>(parts) * margin);
    estimate.at_least = counted.at_least;
    return estimate;
}

void check_fits(const SolveMemoryEstimate& estimate, std::uint64_t available_bytes) {
    if (estimate.at_least || estimate.total_bytes >= available_bytes) {
        throw NotEnoughMemory("Not enough memory: the solve needs " +
                              std::string(estimate.at_least ? "more than " : "") +
                              gigabytes(estimate.total_bytes) + ", " + gigabytes(available_bytes) +
                              " are available");
    }
}

}  // namespace kestrel_app
