#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/finished_solve.h"

namespace kestrel_app {

/// What comes next at a point of the tree.
enum class Follows {
    nothing,   ///< a fold has ended the hand, or the seat itself acts again
    answers,   ///< the opponent acts
    deal,      ///< a card is dealt
    showdown,  ///< the hands are compared, where cards are missing after a run-out
};

/// One of the things that can come next, as one hand sees it.
struct FollowUp {
    /// An action or a card. Of a showdown "Win", "Tie" and "Lose" and, for run-outs that count
    /// although one of the two hands holds a card of them, "Blocked": the solver takes these as an
    /// even split unless the solve was for exact all-in odds.
    std::string name;
    std::string type;        ///< of actions and cards as `action_type_name`, else the name
    double probability = 0;  ///< against what the hand meets at the point before
    double ev = 0;           ///< counted like the action's; NaN where the probability is 0
    Follows follows = Follows::nothing;
    /// What that is made of in turn, where it is a deal or a showdown.
    std::vector<FollowUp> parts = {};
};

/// What the EV of an action is made of for one hand. The parts, each times its probability, add up
/// to the EV, but for rounding of the solver's numbers. Cards come by falling EV.
struct ActionBreakdown {
    Follows follows = Follows::nothing;
    double ev = 0;  ///< hundredths of a chip out of the pot, as in `hand_combos`
    /// Empty after the seat's own fold, and where no hand of the opponent that this one can meet
    /// ever comes: then `ev` is NaN.
    std::vector<FollowUp> parts;
};

/// Of a decision, for one hand of the acting seat, given as two card texts in either order. Nothing
/// for an action that is not there and for a hand that the seat cannot hold there. Takes a value
/// walk of the action's child, beside those that `hand_combos` takes. Nothing, too, after the next
/// walk once `stop`, which may be null, is true.
std::optional<ActionBreakdown> action_breakdown(const FinishedSolve& solve, std::uint64_t node,
                                                std::string_view c1, std::string_view c2,
                                                std::size_t action,
                                                const std::atomic<bool>* stop = nullptr);

}  // namespace kestrel_app
