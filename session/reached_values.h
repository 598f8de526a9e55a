#pragma once

#include <cstddef>
#include <vector>

#include "session/decision_view.h"
#include "session/reach.h"

namespace kestrel_app {

/// Who comes to a decision, and what its actions are worth there against the hands that the
/// opponent comes with.
struct ReachedValues {
    explicit ReachedValues(const DecisionView& view);

    /// What an action is worth to a hand, in hundredths of a chip from zero; half the pot where the
    /// hand meets none of the opponent's.
    double of(std::size_t action, std::size_t hand) const {
        return scale.of((*values)[action * own_reach.size() + hand], hand);
    }

    std::vector<float> own_reach;    ///< of the acting seat's own play alone, 0 to 1
    std::vector<float> their_reach;  ///< range weight times own play
    RecentValues::Values values;     ///< A x H, action-major, as the solver tells them
    HandValues scale;
};

/// How often each hand of the opponent comes to a decision: range weight times own play.
std::vector<float> opponent_reach(const DecisionView& view);

}  // namespace kestrel_app
