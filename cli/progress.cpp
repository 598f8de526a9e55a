#include "cli/progress.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "cli/format.h"
#include "session/solve_session.h"

namespace tidewell_cli {
namespace {

constexpr double redraw_seconds = 0.1;

/// The iteration at which a power law through the last two measurements reaches the target. Before
/// there are two, an error that falls with the number of iterations, which is slower than usual.
double iterations_to_target(const TracePoint& earlier, const TracePoint& later, double target) {
    double exponent = 1.0;
    if (earlier.iteration > 0) {
        exponent = std::log(earlier.exploitability / later.exploitability) /
                   std::log(static_cast<double>(later.iteration) / earlier.iteration);
    }
    return later.iteration * std::pow(later.exploitability / target, 1.0 / exponent);
}

}  // namespace

Progress::Progress(std::ostream& out, TerminalStyle style, const kestrel_app::SolveConfig& config)
    : out_(out),
      style_(style),
      max_iterations_(config.max_iterations),
      target_(static_cast<double>(config.target_exploitability)),
      starting_pot_(config.starting_pot),
      expected_iterations_(config.max_iterations) {
    if (style_.interactive) {
        out_ << "  preparing" << std::flush;
    }
}

Progress::~Progress() {
    if (style_.interactive) {
        out_ << "\r\x1b[K" << std::flush;
    }
}

void Progress::on_iteration(std::uint32_t iteration, double exploitability, bool measured) {
    const double elapsed = seconds_since(start_);
    if (iteration == 1) {
        first_iteration_seconds_ = elapsed;
    }
    if (measured) {
        const TracePoint now{iteration, exploitability};
        const bool falling =
            last_measured_.iteration == 0 || exploitability < last_measured_.exploitability;
        if (target_ > 0 && falling) {
            const double forecast = iterations_to_target(last_measured_, now, target_);
            const double next_measurement = std::ceil(forecast / kestrel_app::measuring_interval) *
                                            kestrel_app::measuring_interval;
            expected_iterations_ = std::min<double>(max_iterations_, next_measurement);
        }
        last_measured_ = now;
    }
    if (style_.interactive) {
        if (measured || !last_drawn_ || seconds_since(*last_drawn_) >= redraw_seconds) {
            rewrite_line(iteration, exploitability, elapsed);
        }
    } else if (measured) {
        out_ << "iteration " << iteration << "  exploitability " << fixed(exploitability / 100.0, 4)
             << " chips, " << fixed(100.0 * exploitability / starting_pot_, 3) << " % of the pot  "
             << rate(iterations_per_second(iteration, elapsed)) << " it/s  " << duration(elapsed)
             << std::endl;
    }
}

void Progress::rewrite_line(std::uint32_t iteration, double exploitability, double elapsed) {
    // The least needed last: what does not fit is left out from the end.
    std::vector<std::string> parts = {"iteration " + std::to_string(iteration) + "/" +
                                      std::to_string(max_iterations_)};
    if (last_measured_.iteration > 0) {
        parts.push_back("exploitability " + fixed(exploitability / 100.0, 4) + " chips, " +
                        fixed(100.0 * exploitability / starting_pot_, 2) + " % of the pot");
    } else {
        parts.push_back("not measured yet");
    }
    parts.push_back(rate(iterations_per_second(iteration, elapsed)) + " it/s");
    parts.push_back(clock_time(elapsed) + " elapsed");
    parts.push_back((last_measured_.iteration > 0 ? "about " : "at most ") +
                    clock_time(remaining_seconds(iteration, elapsed)) + " left");

    std::string line;
    std::size_t columns = 1;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        columns += 2 + parts[i].size();
        if (columns > style_.width) {
            break;
        }
        line += "  ";
        line += i == 0 ? style_.bold() : i == 1 ? "" : style_.foreground(palette::muted);
        line += parts[i] + style_.reset();
    }
    out_ << '\r' << line << "\x1b[K" << std::flush;
    last_drawn_ = Clock::now();
}

double Progress::iterations_per_second(std::uint32_t iteration, double elapsed) const {
    // From the end of the first iteration on: what comes before it is preparation.
    if (iteration == 1) {
        return 1.0 / elapsed;
    }
    return (iteration - 1) / std::max(elapsed - first_iteration_seconds_, 1e-9);
}

double Progress::remaining_seconds(std::uint32_t iteration, double elapsed) const {
    return std::max(0.0, expected_iterations_ - iteration) /
           iterations_per_second(iteration, elapsed);
}

}  // namespace tidewell_cli
