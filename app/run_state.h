#pragma once

namespace tidewell {

/// What the program is at; one thing at a time.
enum class Activity {
    Idle,
    Checking,    ///< whether a solve fits, before anything of the last one is given up
    Solving,     ///< until the last report of the solve
    Cancelling,  ///< the same for a solve that has been told to stop
    Discarding,  ///< the same for one whose result nobody wants any more
    File,        ///< a project is being saved or loaded
};

/// What happens to it.
enum class RunEvent {
    Start,      ///< somebody wants a solve
    Fits,       ///< the check has let it through
    Cancel,     ///< the solve, or its start, is to stop
    Discard,    ///< what the solve finds is of no use any more
    End,        ///< the check has refused the solve, or the solve has told its last
    BeginFile,  ///< somebody wants to save or load
    EndFile,
};

/// The one place that says what may follow what.
class RunState {
  public:
    Activity now() const { return now_; }

    /// From the check before a solve to its last report.
    bool running() const { return now_ != Activity::Idle && now_ != Activity::File; }

    /// A solve that has been told to stop, until its last report.
    bool stopping() const { return now_ == Activity::Cancelling || now_ == Activity::Discarding; }

    /// False, and nothing changes, where the event has no place.
    bool take(RunEvent event);

  private:
    Activity now_ = Activity::Idle;
};

}  // namespace tidewell
