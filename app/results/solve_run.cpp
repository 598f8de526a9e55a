#include "app/results/solve_run.h"

#include <algorithm>
#include <cmath>

namespace tidewell {
namespace {

constexpr double hundredthsPerChip = 100.0;
constexpr double millisecondsPerSecond = 1000.0;
constexpr std::chrono::milliseconds tellingInterval(100);

}  // namespace

SolveRun::SolveRun(QObject* parent) : QObject(parent) {
    pace_.setSingleShot(true);
    pace_.setInterval(tellingInterval);
    connect(&pace_, &QTimer::timeout, this, &SolveRun::measured);
}

QVariantList SolveRun::measurements() const {
    QVariantList list;
    for (const Measurement& each : convergence_.points()) {
        list.append(QVariantMap{{"iteration", each.iteration},
                                {"seconds", each.seconds},
                                {"chips", each.chips},
                                {"percent", percentOfPot(each.chips)}});
    }
    return list;
}

double SolveRun::exploitability() const {
    return convergence_.latest() ? convergence_.latest()->chips : -1;
}

/// A solve looks at its target where it measures, and nowhere else.
int SolveRun::expectedIterations() const {
    const int most = maxIterations();
    if (!(target() > 0)) {
        return iteration_ > 0 ? most : 0;
    }
    const auto expected = convergence_.iterationAt(target());
    if (!expected) {
        return 0;
    }
    const double measurings = std::ceil(*expected / kestrel_app::measuring_interval);
    return static_cast<int>(std::min<double>(most, measurings * kestrel_app::measuring_interval));
}

double SolveRun::seconds() const {
    return running_ ? secondsAt(Clock::now()) : seconds_;
}

double SolveRun::remainingSeconds() const {
    const int expected = expectedIterations();
    if (!running_ || expected == 0 || iteration_ == 0) {
        return -1;
    }
    const double each = (iterationSeconds_ - firstSeconds_) / iteration_;
    // What has gone by since the last report is none of what remains.
    const double after = secondsAt(Clock::now()) - iterationSeconds_;
    return std::max(each * std::max(expected - iteration_, 0) - after, 0.0);
}

void SolveRun::begin(const QVariantMap& config) {
    config_ = config;
    reset();
    Q_EMIT began();
    Q_EMIT measured();
}

void SolveRun::start() {
    start_ = Clock::now();
    running_ = true;
}

void SolveRun::follow(const kestrel_app::SolveProgress& report, Clock::time_point at) {
    if (report.iteration == 0) {
        return;
    }
    const double seconds = secondsAt(at);
    if (iteration_ == 0) {
        firstSeconds_ = std::max(0.0, seconds - report.iteration_ms / millisecondsPerSecond);
        tell();
    }
    iteration_ = static_cast<int>(report.iteration);
    iterationSeconds_ = seconds;
    if (report.iteration % kestrel_app::measuring_interval == 0) {
        add(iteration_, seconds, static_cast<double>(report.exploitability) / hundredthsPerChip);
    }
}

void SolveRun::end(const SolveResults& results) {
    seconds_ = running_ ? secondsAt(Clock::now()) : 0;
    running_ = false;
    if (results.iterations > 0) {
        const auto& latest = convergence_.latest();
        if (!latest || latest->iteration < results.iterations) {
            add(results.iterations, iterationSeconds_, results.exploitability);
        }
        stoppedAtLimit_ = target() > 0 && results.iterations >= maxIterations() &&
                          results.exploitability > target();
    }
    pace_.stop();
    Q_EMIT measured();
    Q_EMIT ended();
}

void SolveRun::forget() {
    if (!running_) {
        reset();
        Q_EMIT measured();
    }
}

void SolveRun::reset() {
    convergence_.clear();
    running_ = stoppedAtLimit_ = false;
    seconds_ = firstSeconds_ = iterationSeconds_ = 0;
    iteration_ = 0;
    pace_.stop();
}

double SolveRun::percentOfPot(double chips) const {
    return startingPot() > 0 && chips >= 0 ? 100 * chips / startingPot() : -1;
}

double SolveRun::secondsAt(Clock::time_point at) const {
    return std::chrono::duration<double>(at - start_).count();
}

void SolveRun::add(int iteration, double seconds, double chips) {
    convergence_.add({iteration, seconds, chips});
    tell();
}

void SolveRun::tell() {
    if (!pace_.isActive()) {
        pace_.start();
    }
}

}  // namespace tidewell
