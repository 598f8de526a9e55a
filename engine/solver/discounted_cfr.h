#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "engine/game/game.h"
#include "engine/parallel/worker_pool.h"
#include "engine/solver/batched_walk.h"
#include "engine/solver/node_state.h"
#include "engine/solver/scratch_stack.h"

namespace kestrel {

struct CfrOptions {
    std::uint32_t max_iterations = 0;
    /// The run stops when a measured exploitability, in hundredths of a chip, is at or below this.
    float target_exploitability = 0;
    /// Iterations between two measurements; 0 measures at the last iteration only and never stops
    /// at the target.
    std::uint32_t exploitability_interval = 0;
    bool verbose = false;     ///< writes progress lines to standard output
    bool plain_walk = false;  ///< walks node by node: the readable form, slower, the same bits
    bool compress = false;    ///< keeps regrets and strategy sums in 16 bits between visits
    std::size_t threads = 1;  ///< 0 and 1: the caller's alone
    /// Both are called by the solver's first run alone, which forgets them when it ends: they may
    /// refer to what lives as long as that. After every iteration: its number from 1, the
    /// exploitability last measured (0 before the first measurement), and its time in milliseconds,
    /// a measurement included.
    std::function<void(std::uint32_t, float, double)> progress;
    std::function<bool()> should_stop;  ///< asked before every iteration
};

/// Whether exploitability is measured after this iteration: at the interval and at the last.
bool measures_at(const CfrOptions& options, std::uint32_t iteration);

/// Discounted counterfactual regret minimisation over a finished game, all hands of a seat at once.
/// Deterministic: the same game gives the same bits at every thread count. Strategy sums stay raw
/// after a run; the queries normalise on reading. Any number of threads may ask constant members at
/// once while none runs an iteration or a measurement. The game must outlive the solver, and every
/// call that takes one takes the game that was prepared last. Source: Brown and Sandholm, "Solving
/// Imperfect-Information Games via Discounted Regret Minimization" (2019).
class DiscountedCfr {
  public:
    /// Starts threads - 1 workers. Throws std::system_error when one cannot be started.
    explicit DiscountedCfr(CfrOptions options);

    DiscountedCfr(const DiscountedCfr&) = delete;
    DiscountedCfr& operator=(const DiscountedCfr&) = delete;

    /// Iterates to the target, the last iteration or a stop. Callbacks run on this thread. Any
    /// failure leaves as the exception it is, also one on a worker.
    void run(const Game& game);

    /// One iteration: a walk for each seat, OOP's first. `t` counts from 0. States must have been
    /// prepared for the game.
    void solve_iteration(const Game& game, std::uint32_t t);

    /// All states of the game, zeroed. `run` calls it.
    void prepare_states(const Game& game);

    /// Each seat's value, OOP first, when it answers the other's average strategy with its best
    /// response; hundredths of a chip, against an even split of the pot.
    /// States must have been prepared.
    std::array<float, 2> mes_ev(const Game& game);

    /// Each seat's value when both play their average strategies; as `mes_ev`.
    std::array<float, 2> current_ev(const Game& game);

    /// The mean of what the two seats could gain by a best response, in hundredths of a chip.
    float measure_exploitability(const Game& game);

    /// For each action of a decision node the plain mean of its average probability over the hands,
    /// not weighted by reach. Empty for any other node.
    std::vector<float> action_frequencies(std::size_t node) const;

    /// The average strategy of a decision node, A x H, action-major. Empty for any other node.
    std::vector<float> average_strategy(std::size_t node) const;

    /// `action_frequencies` of all nodes in one pass, on the solver's threads: the frequency of
    /// action a of a decision node at out[first_action[node] + a]; other entries are left alone.
    void all_action_frequencies(std::span<const std::size_t> first_action,
                                std::span<float> out) const;

    /// One value for each pocket of `seat` at a node, both seats playing their average strategies,
    /// against the other seat's range weights or the given reach. Empty for a node out of range.
    std::vector<float> node_values(const Game& game, std::size_t node, Seat seat) const;
    std::vector<float> node_values(const Game& game, std::size_t node, Seat seat,
                                   std::span<const float> reach) const;

    /// The values of a decision node's children for its own seat, A x H, action-major, in one walk.
    /// Empty for any other node.
    std::vector<float> action_values(const Game& game, std::size_t node,
                                     std::span<const float> reach) const;

    /// The values of a decision node for its own seat from those of its children, to the bit what
    /// `node_values` gives.
    std::vector<float> decision_values(std::size_t node,
                                       std::span<const float> action_values) const;

    const CfrOptions options;                ///< without the callbacks
    float exploitability = 0;                ///< last measured; 0 before
    std::uint32_t iterations_completed = 0;  ///< number of the last iteration that ended

    /// Per seat, the root values of the last iteration, one for each hand.
    std::array<std::vector<float>, 2> root_values;
    /// Per seat, the root values of the last measuring walk.
    std::array<std::vector<float>, 2> measure_values;

    StateTable states;  ///< by node index; constant outside of `solve_iteration`

  private:
    /// What a run asks and tells, as long as it lasts.
    struct Callbacks {
        std::function<void(std::uint32_t, float, double)> progress;
        std::function<bool()> should_stop;
    };

    void iterate(const Game& game, const Callbacks& callbacks);
    void require_prepared(const Game& game) const;

    enum class Measure { best_response, current };
    std::array<float, 2> measure(const Game& game, Measure what);
    void values_at(const Game& game, Seat seat, std::span<const float> reach,
                   std::span<const std::uint64_t> nodes, std::span<float> out) const;

    std::size_t threads_;
    Callbacks callbacks_;             // of the run to come
    const Game* prepared_ = nullptr;  // that the states belong to
    BatchedWalks batched_;
    bool batches_ = false;                 // the prepared game is one that batched_ takes
    std::array<ScratchStack, 2> scratch_;  // per seat, for the walk above the first fan-out
    std::unique_ptr<WorkerPool> pool_;     // exists when threads_ is above 1; joined first
};

}  // namespace kestrel
