#include "session/hand_distributions.h"

#include <random>
#include <span>

#include "session/equity.h"
#include "session/reach.h"

namespace kestrel_app {
namespace {

using kestrel::GameNode;
using kestrel::NO_CARD;
using kestrel::Pocket;
using kestrel::Seat;

/// Fewer with more of the board known, where samples differ less.
std::size_t sample_count(const GameNode& node) {
    if (node.turn == NO_CARD) {
        return 2200;
    }
    return node.river == NO_CARD ? 1600 : 1200;
}

}  // namespace

std::optional<HandDistributions> hand_distributions(const FinishedSolve& solve, std::uint64_t node,
                                                    const std::atomic<bool>* stop) {
    const auto stopped = [&] { return stop != nullptr && *stop; };
    const kestrel::Game& game = *solve.game;
    if (node >= game.nodes.size()) {
        return std::nullopt;
    }
    const GameNode& n = game.nodes[node];
    const std::vector<PathStep> path = solve.parents().path_to(node);
    std::array<std::vector<float>, 2> reach;
    std::array<std::vector<std::size_t>, 2> positions;
    for (const Seat seat : {Seat::OOP, Seat::IP}) {
        const std::size_t s = index_of(seat);
        reach[s] = reach_along(solve, node, path, seat, range_weights(game.cards, seat));
        for (std::size_t h = 0; h < reach[s].size(); ++h) {
            if (reach[s][h] > 0) {
                positions[s].push_back(h);
            }
        }
        if (positions[s].empty()) {
            return std::nullopt;
        }
    }

    HandDistributions result;
    for (const Seat seat : {Seat::OOP, Seat::IP}) {
        if (stopped()) {
            return std::nullopt;
        }
        const std::size_t s = index_of(seat);
        const std::vector<Pocket>& pockets = game.cards.pockets[s];
        const std::vector<float>& their_reach = reach[1 - s];
        const std::vector<float> values = solve.solver->node_values(game, node, seat, their_reach);
        if (stopped()) {
            return std::nullopt;
        }
        const HandValues scale(game, n, seat, their_reach);
        std::vector<Pocket> heroes;
        for (const std::size_t h : positions[s]) {
            heroes.push_back(pockets[h]);
            result[s].hands.push_back(kestrel::card_to_string(pockets[h].low) +
                                      kestrel::card_to_string(pockets[h].high));
            result[s].ev.push_back(scale.of(values[h], h));
        }
        constexpr std::array<std::uint32_t, 2> seeds = {0xA11CE0, 0x1B1CE0};
        std::mt19937 generator(seeds[s] ^ static_cast<std::uint32_t>(node) ^ 0xC0AB0C0U);
        const std::vector<double> weights(their_reach.begin(), their_reach.end());
        result[s].equity =
            shared_sample_equity(generator, std::span(game.cards.board).first(3), n.turn, n.river,
                                 heroes, {game.cards.pockets[1 - s], weights}, sample_count(n));
    }
    return result;
}

}  // namespace kestrel_app
