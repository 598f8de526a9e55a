#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "session/finished_solve.h"

namespace kestrel_app {

/// The number where it is finite and above 0, otherwise 0.
float usable(float number);

/// A seat's range weights, those that are not finite and above 0 as 0.
std::vector<float> range_weights(const kestrel::CardContext& cards, kestrel::Seat seat);

/// The cards on the board at a node.
kestrel::CardMask board_at(const kestrel::Game& game, const kestrel::GameNode& node);

/// How often each hand of a seat comes to a node by the seat's own average strategy: `start`, one
/// weight for each position, times the probabilities of the seat's actions along the path. 0 for a
/// hand that the node's board blocks.
std::vector<float> reach_along(const FinishedSolve& solve, std::uint64_t node,
                               std::span<const PathStep> path, kestrel::Seat seat,
                               std::vector<float> start);

/// For each hand of `seat`, the sum of `their_reach` over the other seat's hands that share no card
/// with it.
std::vector<double> met_weight(const kestrel::CardContext& cards, kestrel::Seat seat,
                               std::span<const float> their_reach);

/// Turns the solver's values at and below one node into what a single hand can expect to take out
/// of the pot, in hundredths of a chip.
///
/// The solver's value of a hand is an expectation over all pairs of hands, against an even split of
/// the pot. Divided by the share of the pairs that this hand can meet it becomes the hand's own,
/// and with half of the pot (bets matched so far included) it counts from zero.
class HandValues {
  public:
    HandValues(const kestrel::Game& game, const kestrel::GameNode& node, kestrel::Seat seat,
               std::span<const float> their_reach);

    /// Against the hands that `seat`'s hand meets; as it stands where it meets none.
    double scaled(float value, std::size_t hand) const;

    /// `scaled` and half of the pot; 0 where that is not finite.
    double of(float value, std::size_t hand) const;

    /// Whether there is a hand that comes and that `seat`'s hand can meet.
    bool meets(std::size_t hand) const { return met_[hand] > 0; }

    /// Half of the pot in hundredths of a chip.
    double half_pot() const { return half_; }

  private:
    std::vector<double> met_;
    double mass_;
    double half_;
};

}  // namespace kestrel_app
