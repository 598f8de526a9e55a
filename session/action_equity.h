#pragma once

#include <random>
#include <span>
#include <vector>

#include "session/decision_view.h"

namespace kestrel_app {

/// Equities at a decision, for one action after the other: exact on a whole board, sampled before
/// with one generator for all actions, seeded by the node's index. The same questions in the same
/// order always give the same figures. The view must outlive the object.
class ActionEquity {
  public:
    /// `their_weights`: one for each of the opponent's hands.
    ActionEquity(const DecisionView& view, std::span<const float> their_weights);

    /// Of the acting seat's hands with these weights, one for each hand; NaN where no two hands can
    /// be compared.
    double of(std::span<const double> own_weights);

  private:
    const DecisionView& view_;
    const std::vector<double> their_weights_;
    std::mt19937 generator_;
};

}  // namespace kestrel_app
