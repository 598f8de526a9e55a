#include "app/results/convergence.h"

#include <cmath>

namespace tidewell {
namespace {

/// So few that the line follows the way the solve has taken of late, so many that one measurement
/// does not turn it.
constexpr std::size_t fittedMeasurements = 6;

bool hasLogarithm(const Measurement& measurement) {
    return measurement.iteration > 0 && measurement.chips > 0 && std::isfinite(measurement.chips);
}

/// Of log chips over log iteration.
std::optional<double> slopeThrough(const std::deque<Measurement>& measurements) {
    double meanX = 0;
    double meanY = 0;
    const auto count = static_cast<double>(measurements.size());
    for (const Measurement& each : measurements) {
        meanX += std::log(each.iteration) / count;
        meanY += std::log(each.chips) / count;
    }
    double xy = 0;
    double xx = 0;
    for (const Measurement& each : measurements) {
        const double x = std::log(each.iteration) - meanX;
        xy += x * (std::log(each.chips) - meanY);
        xx += x * x;
    }
    if (!(xx > 0)) {
        return {};
    }
    return xy / xx;
}

}  // namespace

void Convergence::add(const Measurement& measurement) {
    if (count_++ % stride_ == 0) {
        kept_.push_back(measurement);
    }
    if (kept_.size() > most) {
        for (std::size_t i = 0; 2 * i < kept_.size(); ++i) {
            kept_[i] = kept_[2 * i];
        }
        kept_.resize((kept_.size() + 1) / 2);
        stride_ *= 2;
    }
    latest_ = measurement;
    if (hasLogarithm(measurement)) {
        fitted_.push_back(measurement);
        if (fitted_.size() > fittedMeasurements) {
            fitted_.pop_front();
        }
    }
}

std::vector<Measurement> Convergence::points() const {
    std::vector<Measurement> points = kept_;
    if (latest_ && points.back() != *latest_) {
        points.push_back(*latest_);
    }
    return points;
}

std::optional<double> Convergence::iterationAt(double chips) const {
    if (!(chips > 0) || fitted_.size() < 2) {
        return {};
    }
    const Measurement& now = fitted_.back();
    if (now.chips <= chips) {
        return now.iteration;
    }
    const std::optional<double> slope = slopeThrough(fitted_);
    if (!slope || !(*slope < 0)) {
        return {};
    }
    const double iteration = now.iteration * std::pow(chips / now.chips, 1 / *slope);
    return std::isfinite(iteration) ? std::optional(iteration) : std::nullopt;
}

}  // namespace tidewell
