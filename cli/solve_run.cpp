#include "cli/solve_run.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <new>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "cli/timing.h"
#include "engine/solver/discounted_cfr.h"

namespace tidewell_cli {
namespace {

using kestrel_app::SolveProgress;

double median(std::vector<double> values) {
    if (values.empty()) {
        return 0;
    }
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

/// Collects what a session reports. One thread at a time.
class RunRecord {
  public:
    RunRecord(const kestrel_app::SolveConfig& config, const IterationCallback& on_iteration)
        : on_iteration_(on_iteration) {
        measuring_.max_iterations = config.max_iterations;
        measuring_.exploitability_interval = kestrel_app::measuring_interval;
    }

    void add(const SolveProgress& report) {
        const auto now = Clock::now();
        if (report.iteration == 0) {
            // The last report before the iterations is made as the solver starts, the first one
            // behind them as it has ended.
            if (iterations_ == 0) {
                solver_start_ = now;
            } else if (!iterations_end_) {
                iterations_end_ = now;
            }
            return;
        }
        if (iterations_ == 0) {
            using Milliseconds = std::chrono::duration<double, std::milli>;
            iterations_start_ = now - std::chrono::duration_cast<Clock::duration>(
                                          Milliseconds(report.iteration_ms));
        }
        iterations_ = report.iteration;
        const bool measured = kestrel::measures_at(measuring_, report.iteration);
        const auto amount = static_cast<double>(report.exploitability);
        if (measured) {
            trace_.push_back({report.iteration, amount});
        } else {
            plain_iterations_.push_back(report.iteration_ms);
        }
        on_iteration_(report.iteration, amount, measured);
    }

    std::uint32_t iterations() const { return iterations_; }

    /// Moves what was collected into a run.
    void fill(SolveRun& run) {
        run.trace = std::move(trace_);
        run.iteration_ms = median(std::move(plain_iterations_));
        if (iterations_ > 0 && iterations_end_) {
            run.prepare_seconds = seconds_between(solver_start_, iterations_start_);
            run.solve_seconds = seconds_between(iterations_start_, *iterations_end_);
        }
    }

  private:
    const IterationCallback& on_iteration_;
    kestrel::CfrOptions measuring_;  // for `measures_at` alone
    std::uint32_t iterations_ = 0;
    std::vector<TracePoint> trace_;
    std::vector<double> plain_iterations_;  // milliseconds
    Clock::time_point solver_start_{};
    Clock::time_point iterations_start_{};
    std::optional<Clock::time_point> iterations_end_;
};

[[noreturn]] void throw_failure(const std::string& error) {
    // A session tells a failure by its text alone.
    if (error == std::bad_alloc().what()) {
        throw std::bad_alloc();
    }
    throw std::runtime_error(error);
}

}  // namespace

SolveRun run_solve(const kestrel_app::SolveConfig& config,
                   tidewell_platform::InterruptGuard& interrupt,
                   const IterationCallback& on_iteration) {
    RunRecord record(config, on_iteration);
    std::promise<kestrel_app::SolveResult> last_report;
    auto session = std::make_unique<kestrel_app::SolveSession>();
    SolveRun run;
    interrupt.defer();
    session->start(config, [&, solve = session.get()](const SolveProgress& report) {
        if (report.result) {
            last_report.set_value(*report.result);
            return;
        }
        record.add(report);
        if (interrupt.interrupted()) {
            solve->cancel();
        }
    });
    run.result = last_report.get_future().get();
    while (session->isRunning()) {  // a step from its end
        std::this_thread::yield();
    }
    run.finished = session->finished();
    run.session = std::move(session);
    interrupt.stop_deferring();
    if (interrupt.interrupted()) {
        throw Interrupted(
            "interrupted after " + std::to_string(record.iterations()) + " iterations",
            interrupt.exit_code());
    }
    if (!run.result.ok) {
        throw_failure(run.result.error);
    }
    record.fill(run);
    return run;
}

}  // namespace tidewell_cli
