#pragma once

#include <string_view>

namespace tidewell_platform {

/// Takes over the signals that ask a process to end, SIGINT (Ctrl-C), SIGTERM and SIGHUP, for its
/// lifetime. Those that the process was started to ignore, by nohup for instance, stay ignored. At
/// first a signal ends the process at once, which suits phases that cannot be stopped; the exit
/// code is the one that shells use, 128 and the number of the signal. One object at a time.
class InterruptGuard {
  public:
    /// `last_words` are written to standard error when a signal ends the process, on a terminal in
    /// a line of their own; they must outlive this object.
    explicit InterruptGuard(std::string_view last_words);
    ~InterruptGuard();

    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;

    /// From now on the first signal is only remembered, and a second one ends the process.
    void defer();

    /// From now on signals are only remembered: for steps that end soon, and of which the exit code
    /// has to tell whether they were made.
    void hold();

    /// From now on a signal ends the process at once again.
    void stop_deferring();

    /// Other words and another exit code for a process that is ended from now on.
    void end_with(std::string_view last_words, int exit_code);

    /// The exit code for a signal that was remembered; 0 for none.
    int exit_code() const;
    bool interrupted() const { return exit_code() != 0; }
};

}  // namespace tidewell_platform
