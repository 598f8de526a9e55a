#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/game/game.h"
#include "engine/solver/node_state.h"
#include "engine/solver/scratch_stack.h"

namespace kestrel {

/// Factors of one iteration: of a stored regret at or above 0, of one below, and of the strategy
/// sums.
struct Discounts {
    float alpha = 0;
    float beta = 0.5F;
    float gamma = 0;
};

/// The schedule for the zero-based iteration t. alpha lags one iteration behind t with exponent
/// 1.5, beta is constant, and gamma restarts the average at every power of 4 and climbs as
/// (g / (g + 1))^3 from there. Discounted CFR: Brown and Sandholm (2019).
Discounts discounts_of(std::uint32_t t);

// What happens at one decision node, in the plain form: for any number of actions, with locks and
// for packed states. Matrices are tight and action-major; the frame's buffers hold them.

/// frame.next_reach (A x H) = the current strategy times reach, lock applied.
void current_reach_rows(const Game& game, std::size_t node, const NodeState& state,
                        std::span<const float> reach, ScratchFrame& frame);

/// The visit of the traversed seat: out (H) = expectation of frame.action_values under the current
/// strategy, and regrets and strategy sums brought forward. The lock of a hand replaces its
/// strategy and keeps its regrets as they are.
void update_decision(const Game& game, std::size_t node, NodeState& state,
                     const Discounts& discounts, ScratchFrame& frame, std::span<float> out);

/// frame.next_reach (A x H) = the average strategy times reach.
void average_reach_rows(const NodeState& state, std::span<const float> reach, ScratchFrame& frame);

/// out (H) = expectation of frame.action_values under the average strategy, in double.
void average_decision_value(const NodeState& state, ScratchFrame& frame, std::span<float> out);

/// out (H) = the largest of frame.action_values, or the lock's mix where a hand is locked.
void best_decision_value(std::span<const float> lock, std::size_t actions,
                         const ScratchFrame& frame, std::span<float> out);

/// strategy (A x H) = the strategy sums over their sum for each hand; uniform for a hand without
/// any positive sum. `denominator` (H) is left holding the sums.
void average_strategy_of(const NodeState& state, std::vector<float>& unpack_buffer,
                         std::span<float> strategy, std::span<float> denominator);

}  // namespace kestrel
