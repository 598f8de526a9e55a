#pragma once

#include <QObject>
#include <QTimer>
#include <QVariantList>
#include <QVariantMap>
#include <chrono>

#include "app/results/convergence.h"
#include "app/results/solve_results.h"
#include "session/solve_session.h"

namespace tidewell {

/// The solve that runs, or the last one that ran, as it went: what was asked for, how long it took,
/// how good it became and when, and how far it still has to go. Money in chips.
class SolveRun : public QObject {
    Q_OBJECT

    /// What the solve was started with; empty before the first.
    Q_PROPERTY(QVariantMap config READ config NOTIFY began)
    Q_PROPERTY(double startingPot READ startingPot NOTIFY began)
    /// Of the exploitability, chips; a solve without one stops at its limit of iterations.
    Q_PROPERTY(double target READ target NOTIFY began)
    Q_PROPERTY(int maxIterations READ maxIterations NOTIFY began)
    /// Maps of iteration, seconds (since the solve began), chips and percent of the starting pot,
    /// in the order in which they were measured; `Convergence::most` and one at the most.
    Q_PROPERTY(QVariantList measurements READ measurements NOTIFY measured)
    /// Exploitability as last measured, in chips and in percent of the starting pot; -1 before.
    Q_PROPERTY(double exploitability READ exploitability NOTIFY measured)
    Q_PROPERTY(double exploitabilityPercent READ exploitabilityPercent NOTIFY measured)
    /// The iteration after which the solve is expected to stop; 0 while nobody can tell.
    Q_PROPERTY(int expectedIterations READ expectedIterations NOTIFY measured)
    /// It has ended at its limit of iterations, without coming to its target.
    Q_PROPERTY(bool stoppedAtLimit READ stoppedAtLimit NOTIFY ended)

  public:
    using Clock = std::chrono::steady_clock;

    explicit SolveRun(QObject* parent = nullptr);

    const QVariantMap& config() const { return config_; }
    double startingPot() const { return config_.value("starting_pot").toDouble(); }
    double target() const { return config_.value("target_exploitability").toDouble(); }
    int maxIterations() const { return config_.value("max_iterations").toInt(); }
    QVariantList measurements() const;
    double exploitability() const;
    double exploitabilityPercent() const { return percentOfPot(exploitability()); }
    int expectedIterations() const;
    bool stoppedAtLimit() const { return stoppedAtLimit_; }

    /// So far, or altogether.
    Q_INVOKABLE double seconds() const;
    /// Until `expectedIterations`, at the speed of this solve; -1 while nobody can tell.
    Q_INVOKABLE double remainingSeconds() const;

    /// Somebody wants a solve.
    void begin(const QVariantMap& config);
    /// It fits, and the solver is at work from now on.
    void start();
    /// Of a report about an iteration, made at `at`.
    void follow(const kestrel_app::SolveProgress& report, Clock::time_point at);
    /// With nothing to show for it where `results` are none.
    void end(const SolveResults& results);
    /// Another project is on the screen; a solve that still runs goes on being told.
    void forget();

  Q_SIGNALS:
    void began();
    /// As often as a person can see.
    void measured();
    void ended();

  private:
    double percentOfPot(double chips) const;
    double secondsAt(Clock::time_point at) const;
    void add(int iteration, double seconds, double chips);
    void tell();
    void reset();

    QVariantMap config_;
    Convergence convergence_;
    Clock::time_point start_;
    bool running_ = false;
    bool stoppedAtLimit_ = false;
    double seconds_ = 0;           // of a solve that has ended
    int iteration_ = 0;            // the last one
    double firstSeconds_ = 0;      // when the first iteration began
    double iterationSeconds_ = 0;  // when the last one ended
    QTimer pace_;                  // of `measured`
};

}  // namespace tidewell
