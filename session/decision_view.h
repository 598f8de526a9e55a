#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/finished_solve.h"
#include "session/reach.h"

namespace kestrel_app {

/// A decision node with what every question to one needs. Of the acting seat, the hero.
struct DecisionView {
    const FinishedSolve& solve;
    const kestrel::Game& game;
    const kestrel::CardContext& cards;
    const std::uint64_t index;
    const kestrel::GameNode& node;
    const kestrel::Seat hero;
    const std::vector<kestrel::Pocket>& pockets;
    const std::vector<float>& weights;  ///< of the range
    const std::size_t actions;
    const std::vector<float> strategy;  ///< A x H, action-major

    double probability(std::size_t action, std::size_t hand) const {
        return static_cast<double>(usable(strategy[action * pockets.size() + hand]));
    }
    double weight(std::size_t hand) const { return static_cast<double>(usable(weights[hand])); }

    /// One for each action, adding up to 1; uniform where nothing is known.
    std::vector<double> probabilities(std::size_t hand) const;

    /// How much of each hand the seat's own play brings here, 0 to 1, whatever its range weight.
    std::vector<float> own_reach() const;

    /// The place of a hand, given as two card texts in either order, among the seat's; nothing for
    /// texts that are no cards and for a hand that the range does not hold.
    std::optional<std::size_t> position_of(std::string_view c1, std::string_view c2) const;

    std::vector<std::string> action_names() const;
    std::vector<std::string> action_types() const;
};

/// Nothing for an index out of range and for a node that is no decision. `solve` must outlive the
/// view.
std::optional<DecisionView> view_decision(const FinishedSolve& solve, std::uint64_t index);

}  // namespace kestrel_app
