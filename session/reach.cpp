#include "session/reach.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kestrel_app {

using kestrel::CardContext;
using kestrel::CardMask;
using kestrel::Game;
using kestrel::GameNode;
using kestrel::Pocket;
using kestrel::Seat;

float usable(float number) {
    return std::isfinite(number) && number > 0.0F ? number : 0.0F;
}

std::vector<float> range_weights(const CardContext& cards, Seat seat) {
    std::vector<float> weights = cards.pocket_weights[index_of(seat)];
    std::ranges::transform(weights, weights.begin(), usable);
    return weights;
}

CardMask board_at(const Game& game, const GameNode& node) {
    return game.cards.board_mask | kestrel::card_bit(node.turn) | kestrel::card_bit(node.river);
}

std::vector<float> reach_along(const FinishedSolve& solve, std::uint64_t node,
                               std::span<const PathStep> path, Seat seat,
                               std::vector<float> start) {
    const Game& game = *solve.game;
    const std::vector<Pocket>& pockets = game.cards.pockets[index_of(seat)];
    const CardMask board = board_at(game, game.nodes[node]);
    std::vector<float> reach = std::move(start);
    for (std::size_t h = 0; h < reach.size(); ++h) {
        if ((pocket_mask(pockets[h]) & board) != 0) {
            reach[h] = 0.0F;
        }
    }
    for (const PathStep& step : path) {
        const GameNode& passed = game.nodes[step.node];
        if (passed.kind != kestrel::NodeKind::Decision || passed.seat != seat) {
            continue;
        }
        const std::vector<float> strategy = solve.solver->average_strategy(step.node);
        for (std::size_t h = 0; h < reach.size(); ++h) {
            reach[h] = usable(reach[h] * usable(strategy[step.action * reach.size() + h]));
        }
    }
    return reach;
}

std::vector<double> met_weight(const CardContext& cards, Seat seat,
                               std::span<const float> their_reach) {
    const std::vector<Pocket>& pockets = cards.pockets[index_of(seat)];
    const std::vector<Pocket>& theirs = cards.pockets[index_of(other(seat))];
    std::array<double, kestrel::card_count> by_card{};
    double total = 0;
    for (std::size_t o = 0; o < theirs.size(); ++o) {
        const auto weight = static_cast<double>(usable(their_reach[o]));
        by_card[theirs[o].low] += weight;
        by_card[theirs[o].high] += weight;
        total += weight;
    }
    // Inclusion and exclusion. Where nearly everything cancels, what is left is rounding noise, so
    // the few such hands are added up pair by pair.
    const double noise = total * 1e-9;
    std::vector<double> met(pockets.size());
    for (std::size_t h = 0; h < pockets.size(); ++h) {
        const std::uint16_t same = cards.same_pocket[index_of(seat)][h];
        const double both =
            same == kestrel::no_position ? 0.0 : static_cast<double>(usable(their_reach[same]));
        met[h] = both + total - by_card[pockets[h].low] - by_card[pockets[h].high];
        if (met[h] >= noise) {
            continue;
        }
        met[h] = 0;
        for (std::size_t o = 0; o < theirs.size(); ++o) {
            if ((pocket_mask(pockets[h]) & pocket_mask(theirs[o])) == 0) {
                met[h] += static_cast<double>(usable(their_reach[o]));
            }
        }
    }
    return met;
}

HandValues::HandValues(const Game& game, const GameNode& node, Seat seat,
                       std::span<const float> their_reach)
    : met_(met_weight(game.cards, seat, their_reach)),
      mass_(game.cards.combination_mass),
      half_((game.options.starting_pot + 2.0 * node.matched) * 0.5) {}

double HandValues::scaled(float value, std::size_t hand) const {
    const auto wide = static_cast<double>(value);
    return mass_ > 0 && met_[hand] > 0 ? wide * (mass_ / met_[hand]) : wide;
}

double HandValues::of(float value, std::size_t hand) const {
    const double result = scaled(value, hand) + (half_ > 0 ? half_ : 0.0);
    return std::isfinite(result) ? result : 0.0;
}

}  // namespace kestrel_app
