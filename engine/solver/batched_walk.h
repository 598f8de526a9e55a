#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "engine/game/game.h"
#include "engine/parallel/worker_pool.h"
#include "engine/solver/node_rules.h"
#include "engine/solver/node_state.h"
#include "engine/solver/showdown_order.h"

namespace kestrel {

class WorkspacePool;

/// What a walk does at decision nodes.
enum class WalkRule {
    iterate,  ///< current strategies; the traversed seat's rows are brought forward
    average,  ///< both seats play their average strategies
    best,     ///< the traversed seat answers the other's average strategy with its best response
};

/// The tree walks by streets instead of by nodes, with the same results to the bit.
///
/// The decisions of one street behind one dealt card are done together, for all betting lines that
/// lead to that board at once: reach rows go down, all terminals of the board are evaluated side by
/// side, each card of the next street is dealt to all lines together, and values come up in reverse
/// order. The walk over a board's sorted hands is thus paid once for many terminals, and a line's
/// rows stay in the caches from the way down to the way up.
class BatchedWalks {
  public:
    BatchedWalks();
    ~BatchedWalks();

    /// Tables and buffers for a game; in parallel. The game must outlive the object's use. False,
    /// with nothing built, for a tree that this walk does not take: chance nodes with repeated
    /// children, or chance nodes of one board that deal different cards.
    bool prepare(const Game& game, const StateTable& states, WorkerPool* pool, std::size_t threads);

    /// The walk of one seat from the root. `reach`: one per hand of the other seat. `out`: one per
    /// hand of `seat`, as in the plain walks. `discounts` count for `WalkRule::iterate` only, the
    /// one rule that writes to `states`.
    void run(WalkRule rule, const Game& game, StateTable& states, const Discounts& discounts,
             Seat seat, std::span<const float> reach, std::span<float> out, WorkerPool* pool,
             std::size_t threads);

    /// Values of `seat` at nodes of one board, both seats playing their average strategies against
    /// the same reach. `out`: a tight row for each node. Any number of threads may ask at once
    /// while nobody writes to `states`.
    void values(const Game& game, const StateTable& states, Seat seat, std::span<const float> reach,
                std::span<const std::uint64_t> nodes, std::span<float> out, WorkerPool* pool,
                std::size_t threads) const;

  private:
    class Walk;

    ShowdownOrders orders_;
    std::unique_ptr<WorkspacePool> spaces_;  // exists once a game is prepared
};

}  // namespace kestrel
