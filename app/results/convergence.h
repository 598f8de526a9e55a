#pragma once

#include <deque>
#include <optional>
#include <vector>

namespace tidewell {

/// How good a strategy was at one time of a solve.
struct Measurement {
    int iteration = 0;
    double seconds = 0;  ///< since the solve began
    double chips = 0;    ///< exploitability

    bool operator==(const Measurement&) const = default;
};

/// What has been measured in one solve, and where that leads.
class Convergence {
  public:
    /// More points than a chart has columns tell nothing more: beyond `most` every second one goes.
    static constexpr std::size_t most = 1024;

    void clear() { *this = {}; }

    /// Measurements come in the order of their iterations.
    void add(const Measurement& measurement);

    /// The first and the last measurement, and of those between as many as there is room for.
    std::vector<Measurement> points() const;

    const std::optional<Measurement>& latest() const { return latest_; }

    /// The iteration at which the exploitability is expected to fall to `chips`. The error of
    /// discounted regret matching falls like a power of the iteration, so it is a line of two
    /// logarithms: its slope is that of least squares through the last measurements, and it goes
    /// through the very last. Nothing before there are two measurements, where it does not fall,
    /// and for a target of 0.
    std::optional<double> iterationAt(double chips) const;

  private:
    std::vector<Measurement> kept_;
    std::optional<Measurement> latest_;
    std::deque<Measurement> fitted_;
    std::size_t stride_ = 1;  // of the measurements that are kept
    std::size_t count_ = 0;
};

}  // namespace tidewell
