#pragma once

namespace tidewell {

/// What the training table is at; one thing at a time.
enum class PlayStage {
    NoRole,        ///< nobody has chosen a seat
    Stepping,      ///< the next step is due: a card, the opponent's action, the end
    Waiting,       ///< for the user's action
    Judging,       ///< the user has acted; what that is worth is being worked out
    Complete,      ///< the hand has ended
    Drill,         ///< waiting as well, for one decision with hand after hand
    DrillJudging,  ///< as Judging
    DrillVerdict,  ///< right or wrong is told, until the next hand comes
};

/// What happens to it.
enum class PlayEvent {
    Deal,      ///< cards for a hand from the start
    Ask,       ///< the user's turn
    Act,       ///< the user has chosen
    Judge,     ///< the choice stands, or the drill tells what it was
    End,       ///< the hand is over, by itself or by a mistake
    Redirect,  ///< the hand goes on at another node
    BeginDrill,
    EndDrill,
    Leave,
};

/// The one place that says what may follow what at the table.
class PlayState {
  public:
    PlayStage now() const { return now_; }

    bool started() const { return now_ != PlayStage::NoRole; }
    bool awaitsUser() const { return now_ == PlayStage::Waiting || now_ == PlayStage::Drill; }
    bool judges() const { return now_ == PlayStage::Judging || now_ == PlayStage::DrillJudging; }
    bool drills() const {
        return now_ == PlayStage::Drill || now_ == PlayStage::DrillJudging ||
               now_ == PlayStage::DrillVerdict;
    }

    /// Whether the event has a place.
    bool may(PlayEvent event) const;

    /// False, and nothing changes, where it has none.
    bool take(PlayEvent event);

  private:
    PlayStage now_ = PlayStage::NoRole;
};

}  // namespace tidewell
