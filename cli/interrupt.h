#pragma once

namespace tidewell_cli {

/// Takes over SIGINT (Ctrl-C) for its lifetime. At first a signal ends the process at once with
/// code 130, which suits phases that cannot be stopped. From `defer` to `stop_deferring` the first
/// signal is only remembered and a second one ends the process. One object at a time.
class InterruptGuard {
  public:
    InterruptGuard();
    ~InterruptGuard();

    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;

    void defer();
    void stop_deferring();

    /// Whether a deferred signal has arrived.
    bool interrupted() const;
};

}  // namespace tidewell_cli
