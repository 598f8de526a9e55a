#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/interrupt.h"
#include "session/result_snapshot.h"
#include "session/solve_config.h"
#include "session/solve_session.h"

namespace tidewell_cli {

/// A signal has ended a solve.
class Interrupted : public std::runtime_error {
  public:
    Interrupted(const std::string& text, int code) : std::runtime_error(text), exit_code(code) {}

    int exit_code;
};

/// A measurement.
struct TracePoint {
    std::uint32_t iteration = 0;
    double exploitability = 0;  ///< hundredths of a chip
};

/// A solve that ended well.
struct SolveRun {
    kestrel_app::SolveResult result;
    std::unique_ptr<const kestrel_app::SolveSession> session;  ///< answers questions
    std::shared_ptr<const kestrel_app::FinishedSolve> finished;
    std::vector<TracePoint> trace;
    double prepare_seconds = 0;  ///< the solver's states
    double solve_seconds = 0;    ///< iterations and measurements
    double iteration_ms = 0;     ///< median of the iterations without a measurement; 0 if none
};

/// After every iteration: its number from 1, the exploitability last measured in hundredths of a
/// chip, and whether it was measured just now.
using IterationCallback = std::function<void(std::uint32_t, double, bool)>;

/// Solves on another thread, which also makes the calls, and waits for the end. Throws Interrupted
/// after a Ctrl-C or its like, which is deferred meanwhile, std::bad_alloc when memory runs out,
/// and std::runtime_error with the text of any other failure.
SolveRun run_solve(const kestrel_app::SolveConfig& config,
                   tidewell_platform::InterruptGuard& interrupt,
                   const IterationCallback& on_iteration);

}  // namespace tidewell_cli
