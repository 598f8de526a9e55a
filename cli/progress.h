#pragma once

#include <cstdint>
#include <optional>
#include <ostream>

#include "cli/solve_run.h"
#include "cli/terminal.h"
#include "cli/timing.h"
#include "session/solve_config.h"

namespace tidewell_cli {

/// Tells how far a solve is: on a terminal one line that is rewritten in place, elsewhere one line
/// for each measurement. Lives as long as the solve.
class Progress {
  public:
    Progress(std::ostream& out, TerminalStyle style, const kestrel_app::SolveConfig& config);

    /// Takes the rewritten line away.
    ~Progress();

    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Amounts in hundredths of a chip.
    void on_iteration(std::uint32_t iteration, double exploitability, bool measured);

  private:
    void rewrite_line(std::uint32_t iteration, double exploitability, double elapsed);
    double iterations_per_second(std::uint32_t iteration, double elapsed) const;
    double remaining_seconds(std::uint32_t iteration, double elapsed) const;

    std::ostream& out_;
    const TerminalStyle style_;
    const std::uint32_t max_iterations_;
    const double target_;        // hundredths of a chip
    const double starting_pot_;  // hundredths of a chip
    const Clock::time_point start_ = Clock::now();
    std::optional<Clock::time_point> last_drawn_;
    double first_iteration_seconds_ = 0;
    double expected_iterations_;  // until the target or the last one
    TracePoint last_measured_;
};

}  // namespace tidewell_cli
