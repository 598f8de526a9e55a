#pragma once

#include <cstddef>
#include <span>

#include "engine/game/game.h"
#include "engine/parallel/worker_pool.h"
#include "engine/solver/node_state.h"
#include "engine/solver/scratch_stack.h"

namespace kestrel {

/// The two read-only walks of the tree under the average strategies, the normalised strategy sums.
/// Rows are as in the solving walk: `reach` one per hand of the other seat, `out` one per hand of
/// `seat`, in hundredths of a chip per unit of combination mass. A node with repeated children does
/// not fan out. Rows that do not fit a node
/// give zeros.
class MeasuringWalk {
  public:
    /// `pool` may be null. All must outlive the walk.
    MeasuringWalk(const Game& game, const StateTable& states, Seat seat, WorkerPool* pool,
                  std::size_t threads);

    /// Values of `seat` when both seats play their average strategies. Locks show only through the
    /// strategy sums.
    void compute_cfvalue_recursive(std::size_t node, std::span<const float> reach,
                                   std::span<float> out, std::size_t depth,
                                   ScratchStack& scratch) const;

    /// Values of `seat` when it answers the other seat's average strategy with its best response,
    /// held to the lock where a hand is locked.
    void compute_best_cfvalue_recursive(std::size_t node, std::span<const float> reach,
                                        std::span<float> out, std::size_t depth,
                                        ScratchStack& scratch) const;

  private:
    enum class Mode { average, best };

    void walk(Mode mode, std::size_t node, std::span<const float> reach, std::span<float> out,
              std::size_t depth, ScratchStack& scratch) const;
    void walk_chance(Mode mode, std::size_t node, std::span<const float> reach,
                     std::span<float> out, std::size_t depth, ScratchStack& scratch) const;
    void walk_opponent(Mode mode, std::size_t node, std::span<const float> reach,
                       std::span<float> out, std::size_t depth, ScratchStack& scratch) const;
    void walk_own(Mode mode, std::size_t node, std::span<const float> reach, std::span<float> out,
                  std::size_t depth, ScratchStack& scratch) const;

    const Game& game_;
    const StateTable& states_;
    const Seat seat_;
    WorkerPool* const pool_;
    const std::size_t threads_;
};

}  // namespace kestrel
