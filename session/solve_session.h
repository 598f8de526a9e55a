#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "session/finished_solve.h"
#include "session/hand_distributions.h"
#include "session/node_here.h"
#include "session/node_queries.h"
#include "session/reach_strategy.h"
#include "session/releaser.h"
#include "session/result_snapshot.h"
#include "session/solve_config.h"

namespace kestrel_app {

/// Iterations between two measurements of the exploitability.
inline constexpr std::uint32_t measuring_interval = 50;

/// How far a solve is, told on the solve's own thread.
struct SolveProgress {
    double fraction = 0;  ///< 0 to 1
    std::string status;   ///< for people; pages read iteration and exploitability out of it
    /// In the last report of a solve, and only there.
    std::optional<SolveResult> result = std::nullopt;

    // Of an iteration that has just ended; 0 in other reports.
    std::uint32_t iteration = 0;  ///< from 1
    float exploitability = 0;     ///< last measured, hundredths of a chip
    double iteration_ms = 0;      ///< a measurement included
};

using ProgressCallback = std::function<void(const SolveProgress&)>;

/// Runs one solve at a time on a thread of its own and keeps the finished one for questions. All
/// members may be called from any thread, `start` and the destructor from one at a time. The
/// destructor cancels a running solve and waits for its end.
///
/// Reports, in order: building of the cards and the tree, of the solver, each iteration, results
/// and snapshot, and one with the result: done, cancelled or failed. A solve that does not end well
/// leaves nothing to ask. A solve that was kept is given up on another thread than the caller's,
/// unless somebody else holds it.
class SolveSession {
  public:
    SolveSession() = default;
    ~SolveSession();

    SolveSession(const SolveSession&) = delete;
    SolveSession& operator=(const SolveSession&) = delete;

    /// False, and nothing else happens, while a solve runs; one that makes its last report does not
    /// run any more. The former solve is given up before the new one takes any memory. A solve that
    /// needs more than `budget_bytes`, or without any more than the machine has, fails before its
    /// tree is built. `on_progress` must neither block for long nor call `start`. Where it throws
    /// std::bad_alloc at the last report it is called with that again, until the next start or the
    /// destructor. Throws std::system_error or std::bad_alloc when the solve cannot begin.
    bool start(const SolveConfig& config, ProgressCallback on_progress,
               std::optional<std::uint64_t> budget_bytes = std::nullopt);

    /// Ends the running solve while its tree is built or before its next iteration; one that has
    /// ended its last is thrown away as well, until it reports that results are computed.
    void cancel() { cancel_requested_ = true; }

    /// Gives the finished solve up. Its memory goes with the last handle.
    void clearResults();

    /// Until the last report has been taken.
    bool isRunning() const { return phase_ != Phase::Idle; }

    // Handles of the last solve that ended well; null without. Each keeps the whole solve alive.
    std::shared_ptr<const FinishedSolve> finished() const;
    std::shared_ptr<const kestrel::Game> game() const;
    std::shared_ptr<const kestrel::DiscountedCfr> solver() const;

    // Questions to the finished solve; nothing without one. Throw std::bad_alloc. See
    // node_queries.h, node_here.h and reach_strategy.h.
    std::optional<NodeActionStats> node_action_stats(std::uint64_t node) const;
    std::optional<ActionStatsHere> action_shares_here(std::uint64_t node) const;
    std::optional<bool> opponent_comes(std::uint64_t node) const;
    std::optional<HandStrategy> hand_strategy(std::uint64_t node) const;
    std::optional<ReachStrategy> reach_strategy(std::uint64_t node, std::string_view bucket) const;
    std::optional<std::vector<HandCombo>> hand_combos(std::uint64_t node) const;
    std::optional<std::vector<SeatCombo>> seat_hand_combos(std::uint64_t node,
                                                           kestrel::Seat seat) const;
    std::optional<std::vector<double>> pocket_action_evs(std::uint64_t node, kestrel::Seat seat,
                                                         std::string_view c1,
                                                         std::string_view c2) const;
    std::optional<std::vector<HandBucket>> hand_buckets(std::uint64_t node) const;
    std::optional<HandDistributions> hand_distributions(std::uint64_t node) const;

  private:
    enum class Phase { Idle, Solving, Reporting };  // the last report

    void run(const SolveConfig& config, const ProgressCallback& on_progress);
    SolveResult solve(const SolveConfig& config, const ProgressCallback& on_progress,
                      double& fraction);
    std::shared_ptr<kestrel::Game> build_game(const SolveConfig& config, SpotInputs spot) const;
    std::shared_ptr<const FinishedSolve> give_up();
    void join();

    std::atomic<Phase> phase_ = Phase::Idle;
    std::atomic<bool> cancel_requested_ = false;
    std::atomic<bool> nobody_listens_ = false;  // to a last report that could not be made yet
    mutable std::mutex mutex_;  // guards finished_, for as long as a handle is copied or swapped
    std::shared_ptr<const FinishedSolve> finished_;
    std::optional<std::uint64_t> budget_bytes_;  // of the last solve; constant while it runs
    Releaser releaser_;
    std::thread thread_;  // of the last solve
};

}  // namespace kestrel_app
