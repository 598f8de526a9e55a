#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/finished_solve.h"

namespace kestrel_app {

// Questions to one node of a finished solve. Each gives nothing for an index out of range and for a
// node that it cannot be asked of. Values are in hundredths of a chip and count from zero: what a
// hand can expect to take out of the pot at the node. Lists of actions are in the node's order.

/// Per action: the hands that take it and how they fare.
struct NodeActionStats {
    std::vector<std::string> action_names;
    std::vector<std::string> action_types;
    std::vector<float> frequencies;  ///< plain mean over the hands
    std::vector<double> combos;      ///< range weight times probability, summed
    std::vector<double> equity;      ///< against the whole other range; NaN where unknown
    std::vector<double> ev;          ///< mean over the combos; 0 without any
};

/// The acting seat's strategy by starting hand.
struct HandStrategy {
    std::vector<std::string> action_names;
    std::vector<std::string> action_types;
    /// By label: range weight times the opposing weight that it can meet.
    std::vector<double> weights;
    std::vector<std::string> dominant_action_types;  ///< by label; empty where the weight is 0
    std::vector<std::vector<double>> action_probs;   ///< by label, then action
};

/// One hand of the acting seat.
struct HandCombo {
    std::string c1;  ///< the lower card code
    std::string c2;
    double weight = 0;  ///< range weight times the seat's own way here
    double ev = 0;
    std::vector<double> action_evs;
    std::vector<double> action_probs;
    std::vector<std::string> buckets;  ///< classes of the hand, in byte order
};

/// One hand of a range.
struct SeatCombo {
    std::string c1;
    std::string c2;
    double weight = 0;  ///< of the range, whatever was played on the way
};

/// A class of hands with the mean strategy of its hands.
struct HandBucket {
    std::string name;
    double combos = 0;  ///< range weights, summed
    std::vector<float> action_probs;
};

/// Of a decision. One value walk of each child, and the equity of each action: exact on the river,
/// sampled before with a generator that is seeded by the node's index.
std::optional<NodeActionStats> node_action_stats(const FinishedSolve& solve, std::uint64_t node);

/// Of a decision.
std::optional<HandStrategy> hand_strategy(const FinishedSolve& solve, std::uint64_t node);

/// Of a decision: all hands of the seat's range, also those that do not come here, by falling EV.
/// One value walk of each child.
std::optional<std::vector<HandCombo>> hand_combos(const FinishedSolve& solve, std::uint64_t node);

/// Of any node: the hands of a seat's range that the node's board leaves, by rising cards.
std::optional<std::vector<SeatCombo>> seat_hand_combos(const FinishedSolve& solve,
                                                       std::uint64_t node, kestrel::Seat seat);

/// Of a decision of `seat`: the value of each action for one of the seat's hands, given as two card
/// texts in either order. One value walk of each child.
std::optional<std::vector<double>> pocket_action_evs(const FinishedSolve& solve, std::uint64_t node,
                                                     kestrel::Seat seat, std::string_view c1,
                                                     std::string_view c2);

/// Of a decision of `seat`: the probability of each action for one of the seat's hands, given in
/// the same way. They add up to 1; uniform where nothing is known. No value walk.
std::optional<std::vector<double>> pocket_strategy(const FinishedSolve& solve, std::uint64_t node,
                                                   kestrel::Seat seat, std::string_view c1,
                                                   std::string_view c2);

/// Of a decision: the classes that its range holds, in their fixed order. Counts the whole range,
/// also hands that the turn or river blocks.
std::optional<std::vector<HandBucket>> hand_buckets(const FinishedSolve& solve, std::uint64_t node);

}  // namespace kestrel_app
