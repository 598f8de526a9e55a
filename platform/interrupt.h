#pragma once

#include <string_view>

namespace tidewell_platform {

/// Takes over SIGINT (Ctrl-C) for its lifetime. At first a signal ends the process at once with
/// the exit code, which suits phases that cannot be stopped. From `defer` to `stop_deferring` the
/// first signal is only remembered and a second one ends the process. One object at a time.
class InterruptGuard {
  public:
    /// `last_words` are written to standard error when a signal ends the process; they must outlive
    /// this object.
    InterruptGuard(std::string_view last_words, int exit_code);
    ~InterruptGuard();

    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;

    void defer();
    void stop_deferring();

    /// Whether a deferred signal has arrived.
    bool interrupted() const;
};

}  // namespace tidewell_platform
