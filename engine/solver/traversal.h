#pragma once

#include <cstddef>
#include <span>

#include "engine/game/game.h"
#include "engine/parallel/worker_pool.h"
#include "engine/solver/node_rules.h"
#include "engine/solver/node_state.h"
#include "engine/solver/scratch_stack.h"

namespace kestrel {

/// One walk of an iteration: all hands of `seat` at once, regrets and strategy sums of its nodes
/// updated, the other seat playing its current strategy. No sampling, no pruning. A walk holds no
/// state beyond its arguments, so subtrees of a chance node run on different threads.
class Traversal {
  public:
    /// `pool` may be null. All must outlive the walk.
    Traversal(const Game& game, StateTable& states, const Discounts& discounts, Seat seat,
              WorkerPool* pool, std::size_t threads);

    /// out (one per hand of the seat) = counterfactual values at a node, hundredths of a chip per
    /// unit of combination mass. `reach`: one per hand of the other seat, its range weight times
    /// its own strategy times the chance factors on the way. Rows that do not fit the node give
    /// zeros and leave its state alone. `depth`: edges from the root of the walk.
    void solve_recursive(std::size_t node, std::span<const float> reach, std::span<float> out,
                         std::size_t depth, ScratchStack& scratch) const;

  private:
    void solve_chance(std::size_t node, std::span<const float> reach, std::span<float> out,
                      std::size_t depth, ScratchStack& scratch) const;
    void solve_opponent(std::size_t node, std::span<const float> reach, std::span<float> out,
                        std::size_t depth, ScratchStack& scratch) const;
    void solve_own(std::size_t node, std::span<const float> reach, std::span<float> out,
                   std::size_t depth, ScratchStack& scratch) const;
    const Game& game_;
    StateTable& states_;
    const Discounts discounts_;
    const Seat seat_;
    WorkerPool* const pool_;
    const std::size_t threads_;
};

}  // namespace kestrel
