#include "session/solve_session.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <exception>
#include <new>
#include <utility>

#include "platform/memory_info.h"
#include "session/memory_estimate.h"

namespace kestrel_app {
namespace {

using kestrel::DiscountedCfr;
using kestrel::Game;

/// Leaves a solve that is to be thrown away.
struct Cancelled {};

/// Read back by pages, so it has a point in every locale.
std::string iteration_status(std::uint32_t iteration, float exploitability) {
    std::array<char, 64> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                   static_cast<double>(exploitability), std::chars_format::fixed, 4)
                         .ptr;
    return "Iter " + std::to_string(iteration) + " | exploitability≈" +
           std::string(digits.data(), end);
}

/// The last report of a solve that did not come to its end.
SolveProgress report_of(const SolveConfig& config, const std::exception_ptr& failure) {
    SolveProgress report{.status = "Error: Unknown error", .result = SolveResult{}};
    report.result->board = config.board;
    report.result->starting_pot = config.starting_pot;
    report.result->effective_stack = config.effective_stack;
    report.result->error = "Unknown error";
    try {
        std::rethrow_exception(failure);
    } catch (const Cancelled&) {
        report.status = report.result->error = "Cancelled";
    } catch (const kestrel::BuildStopped&) {
        report.status = report.result->error = "Cancelled";
    } catch (const std::exception& error) {
        report.result->error = error.what();
        report.status = "Error: " + report.result->error;
    } catch (...) {
        // Nobody knows.
    }
    return report;
}

/// False where there was no memory for it. Whoever has started a solve waits for its end, so that
/// no such lack may swallow it.
template <class Tell>
bool has_been_told(const Tell& tell) {
    try {
        tell();
    } catch (const std::bad_alloc&) {
        return false;
    } catch (...) {
        // It is not wanted.
    }
    return true;
}

/// The answer to a question; nothing without a solve.
template <class Ask>
auto asked(const std::shared_ptr<const FinishedSolve>& solve, Ask ask) -> decltype(ask(*solve)) {
    if (solve) {
        return ask(*solve);
    }
    return std::nullopt;
}

}  // namespace

SolveSession::~SolveSession() {
    cancel();
    join();
}

void SolveSession::join() {
    if (thread_.joinable()) {
        nobody_listens_ = true;
        thread_.join();
        nobody_listens_ = false;
    }
}

bool SolveSession::start(const SolveConfig& config, ProgressCallback on_progress,
                         std::optional<std::uint64_t> budget_bytes) {
    if (phase_.exchange(Phase::Solving) == Phase::Solving) {
        return false;
    }
    join();
    cancel_requested_ = false;
    budget_bytes_ = budget_bytes;
    try {
        thread_ = std::thread(
            [this, config, on_progress = std::move(on_progress), former = give_up()]() mutable {
                former.reset();
                run(config, on_progress);
            });
    } catch (...) {
        phase_ = Phase::Idle;
        throw;
    }
    return true;
}

std::shared_ptr<const FinishedSolve> SolveSession::give_up() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(finished_, nullptr);
}

void SolveSession::clearResults() {
    releaser_.release(give_up());
}

void SolveSession::run(const SolveConfig& config, const ProgressCallback& on_progress) {
    SolveResult result;
    std::exception_ptr failure;
    try {
        double fraction = 0;
        result = solve(config, on_progress, fraction);
    } catch (...) {
        failure = std::current_exception();
    }
    phase_ = Phase::Reporting;
    const auto tell = [&] {
        on_progress(failure ? report_of(config, failure)
                            : SolveProgress{.fraction = 1.0, .status = "Done", .result = result});
    };
    while (!has_been_told(tell) && !nobody_listens_) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    Phase reported = Phase::Reporting;  // unless the next solve has begun
    phase_.compare_exchange_strong(reported, Phase::Idle);
}

/// Nothing is built whose size is not known.
std::shared_ptr<Game> SolveSession::build_game(const SolveConfig& config, SpotInputs spot) const {
    const std::optional<std::uint64_t> budget =
        budget_bytes_ ? budget_bytes_ : tidewell_platform::total_memory();
    const SolveMemoryEstimate estimate =
        estimate_solve_memory(spot, config, {budget, &cancel_requested_});
    if (budget) {
        check_fits(estimate, *budget);
    }
    kestrel::TreeLimits limits;
    limits.stop = &cancel_requested_;
    return std::make_shared<Game>(std::move(spot.options),
                                  kestrel::CardContext(spot.board, spot.ranges), limits);
}

SolveResult SolveSession::solve(const SolveConfig& config, const ProgressCallback& on_progress,
                                double& fraction) {
    const auto report = [&](const char* status) {
        on_progress({.fraction = fraction, .status = status});
    };
    SpotInputs spot = parse_spot(config);
    report("Init: building game object...");
    const auto game = build_game(config, std::move(spot));
    apply_node_locks(*game, config.node_locks);

    kestrel::CfrOptions options;
    options.max_iterations = config.max_iterations;
    options.target_exploitability = config.target_exploitability;
    options.exploitability_interval = measuring_interval;
    options.compress = config.compress;
    options.threads = config.thread_count;
    options.should_stop = [this] { return cancel_requested_.load(); };
    options.progress = [&](std::uint32_t iteration, float exploitability, double milliseconds) {
        constexpr double most_before_the_end = 0.999;
        fraction =
            std::min(static_cast<double>(iteration) / config.max_iterations, most_before_the_end);
        on_progress({.fraction = fraction,
                     .status = iteration_status(iteration, exploitability),
                     .iteration = iteration,
                     .exploitability = exploitability,
                     .iteration_ms = milliseconds});
    };
    report("Init: building game tree structures...");
    const auto solver = std::make_shared<DiscountedCfr>(std::move(options));
    report("Init: starting solver...");
    solver->run(*game);
    if (cancel_requested_) {
        throw Cancelled();
    }

    report("Finalizing: computing results...");
    SolveResult result;
    result.ok = true;
    result.board = config.board;
    result.starting_pot = config.starting_pot;
    result.effective_stack = config.effective_stack;
    result.iterations = solver->iterations_completed;
    result.exploitability = solver->exploitability;
    const std::array<float, 2> ev = solver->current_ev(*game);
    result.ev_oop = ev[0];
    result.ev_ip = ev[1];
    add_root_actions(result, *game, *solver);
    report("Finalizing: building result snapshot...");
    result.nodes = std::make_shared<TreeSnapshot>(*game, *solver);

    auto finished = std::make_shared<const FinishedSolve>(game, solver);
    const std::scoped_lock lock(mutex_);
    finished_ = std::move(finished);
    return result;
}

std::shared_ptr<const FinishedSolve> SolveSession::finished() const {
    const std::scoped_lock lock(mutex_);
    return finished_;
}

std::shared_ptr<const Game> SolveSession::game() const {
    const auto solve = finished();
    return {solve, solve ? solve->game.get() : nullptr};
}

std::shared_ptr<const DiscountedCfr> SolveSession::solver() const {
    const auto solve = finished();
    return {solve, solve ? solve->solver.get() : nullptr};
}

std::optional<NodeActionStats> SolveSession::node_action_stats(std::uint64_t node) const {
    return asked(finished(), [&](const FinishedSolve& solve) {
        return kestrel_app::node_action_stats(solve, node);
    });
}

std::optional<ActionStatsHere> SolveSession::action_shares_here(std::uint64_t node) const {
    return asked(finished(), [&](const FinishedSolve& solve) {
        return kestrel_app::action_shares_here(solve, node);
    });
}

std::optional<bool> SolveSession::opponent_comes(std::uint64_t node) const {
    return asked(finished(), [&](const FinishedSolve& solve) {
        return kestrel_app::opponent_comes(solve, node);
    });
}

std::optional<HandStrategy> SolveSession::hand_strategy(std::uint64_t node) const {
    return asked(finished(), [&](const FinishedSolve& solve) {
        return kestrel_app::hand_strategy(solve, node);
    });
}

std::optional<ReachStrategy> SolveSession::reach_strategy(std::uint64_t node,
                                                          std::string_view bucket) const {
    return asked(finished(), [&](const FinishedSolve& solve) {
        return kestrel_app::reach_strategy(solve, node, bucket);
    });
}

std::optional<std::vector<HandCombo>> SolveSession::hand_combos(std::uint64_t node) const {
    return asked(finished(),
                 [&](const FinishedSolve& solve) { return kestrel_app::hand_combos(solve, node); });
}

std::optional<std::vector<SeatCombo>> SolveSession::seat_hand_combos(std::uint64_t node,
                                                                     kestrel::Seat seat) const {
    return asked(finished(), [&](const FinishedSolve& solve) {
        return kestrel_app::seat_hand_combos(solve, node, seat);
    });
}

std::optional<std::vector<double>> SolveSession::pocket_action_evs(std::uint64_t node,
                                                                   kestrel::Seat seat,
                                                                   std::string_view c1,
                                                                   std::string_view c2) const {
    return asked(finished(), [&](const FinishedSolve& solve) {
        return kestrel_app::pocket_action_evs(solve, node, seat, c1, c2);
    });
}

std::optional<std::vector<HandBucket>> SolveSession::hand_buckets(std::uint64_t node) const {
    return asked(finished(), [&](const FinishedSolve& solve) {
        return kestrel_app::hand_buckets(solve, node);
    });
}

std::optional<HandDistributions> SolveSession::hand_distributions(std::uint64_t node) const {
    return asked(finished(), [&](const FinishedSolve& solve) {
        return kestrel_app::hand_distributions(solve, node);
    });
}

}  // namespace kestrel_app
