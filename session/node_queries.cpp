#include "session/node_queries.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <span>
#include <stdexcept>
#include <utility>

#include "session/decision_view.h"
#include "session/equity.h"
#include "session/hand_classes.h"
#include "session/hand_labels.h"
#include "session/reach.h"

namespace kestrel_app {
namespace {

using kestrel::Card;
using kestrel::CardContext;
using kestrel::Game;
using kestrel::GameNode;
using kestrel::NO_CARD;
using kestrel::Pocket;
using kestrel::Seat;

/// Equity of the hands that take one action.
double action_equity(const DecisionView& view, std::size_t action,
                     std::span<const double> their_weights, std::mt19937& generator) {
    std::vector<double> weights(view.pockets.size());
    for (std::size_t h = 0; h < weights.size(); ++h) {
        weights[h] = view.weight(h) * view.probability(action, h);
    }
    const GameNode& node = view.node;
    if (node.turn != NO_CARD && node.river != NO_CARD) {
        return exact_equity(view.cards, view.hero, node.turn, node.river, weights, their_weights);
    }
    constexpr std::size_t samples_on_the_turn = 4000;
    constexpr std::size_t samples_on_the_flop = 6000;
    const std::size_t samples = node.turn != NO_CARD ? samples_on_the_turn : samples_on_the_flop;
    const auto& their_pockets = view.cards.pockets[index_of(other(view.hero))];
    return monte_carlo_equity(generator, std::span(view.cards.board).first(3), node.turn,
                              node.river, {view.pockets, weights}, {their_pockets, their_weights},
                              samples);
}

/// The reach of both seats at a decision, and the values of its children against the opponent's.
struct ReachedValues {
    std::vector<float> hero_reach;  // of the seat's own play alone
    std::vector<float> values;      // A x H, action-major
    HandValues scale;
};

ReachedValues reached_values(const DecisionView& view) {
    const std::vector<PathStep> path = view.solve.parents().path_to(view.index);
    const Seat opponent = other(view.hero);
    const std::vector<float> their_reach =
        reach_along(view.solve, view.index, path, opponent, range_weights(view.cards, opponent));
    return {view.own_reach(), view.solve.solver->action_values(view.game, view.index, their_reach),
            HandValues(view.game, view.node, view.hero, their_reach)};
}

std::optional<std::size_t> position_of(const DecisionView& view, std::string_view c1,
                                       std::string_view c2) {
    Card first = NO_CARD;
    Card second = NO_CARD;
    try {
        first = kestrel::parse_card(c1.substr(0, 2));
        second = kestrel::parse_card(c2.substr(0, 2));
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
    const Pocket pocket{std::min(first, second), std::max(first, second)};
    const auto found = std::ranges::find(view.pockets, pocket);
    if (first == second || found == view.pockets.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - view.pockets.begin());
}

}  // namespace

std::optional<NodeActionStats> node_action_stats(const FinishedSolve& solve, std::uint64_t node) {
    const auto view = view_decision(solve, node);
    if (!view) {
        return std::nullopt;
    }
    const std::size_t hands = view->pockets.size();
    const std::vector<float> their_range = range_weights(view->cards, other(view->hero));
    const std::vector<double> their_weights(their_range.begin(), their_range.end());
    const HandValues scale(view->game, view->node, view->hero, their_range);
    const std::vector<float> values = solve.solver->action_values(
        view->game, node, view->cards.pocket_weights[index_of(other(view->hero))]);
    constexpr std::uint32_t seed = 0xC0FFEE;
    std::mt19937 generator(static_cast<std::uint32_t>(node) ^ seed);

    NodeActionStats stats;
    stats.action_names = view->action_names();
    stats.action_types = view->action_types();
    stats.frequencies = solve.solver->action_frequencies(node);
    for (std::size_t a = 0; a < view->actions; ++a) {
        double combos = 0;
        double ev = 0;
        for (std::size_t h = 0; h < hands; ++h) {
            const double taken = view->weight(h) * view->probability(a, h);
            combos += taken;
            const double value = taken * scale.scaled(values[a * hands + h], h);
            ev += std::isfinite(value) ? value : 0.0;
        }
        ev = combos > 0 ? ev / combos + scale.half_pot() : 0.0;
        stats.combos.push_back(combos);
        stats.ev.push_back(ev);
        stats.equity.push_back(action_equity(*view, a, their_weights, generator));
    }
    return stats;
}

std::optional<HandStrategy> hand_strategy(const FinishedSolve& solve, std::uint64_t node) {
    const auto view = view_decision(solve, node);
    if (!view) {
        return std::nullopt;
    }
    HandStrategy result;
    result.action_names = view->action_names();
    result.action_types = view->action_types();
    result.weights.resize(label_count);
    result.dominant_action_types.resize(label_count);
    result.action_probs.assign(label_count, std::vector<double>(view->actions));
    const std::vector<float>& removal = view->cards.removal_weights[index_of(view->hero)];
    for (std::size_t h = 0; h < view->pockets.size(); ++h) {
        const auto weight = static_cast<double>(usable(removal[h]));
        const std::size_t label = label_index(view->pockets[h]);
        result.weights[label] += weight;
        for (std::size_t a = 0; a < view->actions; ++a) {
            result.action_probs[label][a] += weight * view->probability(a, h);
        }
    }
    for (std::size_t label = 0; label < label_count; ++label) {
        if (!(result.weights[label] > 0)) {
            continue;
        }
        std::vector<double>& probs = result.action_probs[label];
        for (double& prob : probs) {
            prob /= result.weights[label];
        }
        const auto most = std::ranges::max_element(probs) - probs.begin();
        result.dominant_action_types[label] = result.action_types[static_cast<std::size_t>(most)];
    }
    return result;
}

std::optional<std::vector<HandCombo>> hand_combos(const FinishedSolve& solve, std::uint64_t node) {
    const auto view = view_decision(solve, node);
    if (!view) {
        return std::nullopt;
    }
    const std::size_t hands = view->pockets.size();
    const ReachedValues reached = reached_values(*view);
    const std::vector<float> node_values = solve.solver->decision_values(node, reached.values);
    const std::vector<Card> board = board_cards(view->game, view->node);

    std::vector<HandCombo> combos;
    for (std::size_t h = 0; h < hands; ++h) {
        if (!(view->weight(h) > 0)) {
            continue;
        }
        HandCombo combo;
        combo.c1 = kestrel::card_to_string(view->pockets[h].low);
        combo.c2 = kestrel::card_to_string(view->pockets[h].high);
        combo.weight = static_cast<double>(reached.hero_reach[h]) * view->weight(h);
        combo.ev = reached.scale.of(node_values[h], h);
        for (std::size_t a = 0; a < view->actions; ++a) {
            combo.action_evs.push_back(reached.scale.of(reached.values[a * hands + h], h));
        }
        combo.action_probs = view->probabilities(h);
        combo.buckets = classify(board, view->pockets[h]).names();
        combos.push_back(std::move(combo));
    }
    std::ranges::stable_sort(combos, std::greater(), &HandCombo::ev);
    return combos;
}

std::optional<std::vector<SeatCombo>> seat_hand_combos(const FinishedSolve& solve,
                                                       std::uint64_t node, Seat seat) {
    const Game& game = *solve.game;
    if (node >= game.nodes.size()) {
        return std::nullopt;
    }
    const kestrel::CardMask board = board_at(game, game.nodes[node]);
    const std::vector<Pocket>& pockets = game.cards.pockets[index_of(seat)];
    const std::vector<float> weights = range_weights(game.cards, seat);
    std::vector<SeatCombo> combos;
    for (std::size_t h = 0; h < pockets.size(); ++h) {
        if (weights[h] > 0 && (pocket_mask(pockets[h]) & board) == 0) {
            combos.push_back({kestrel::card_to_string(pockets[h].low),
                              kestrel::card_to_string(pockets[h].high),
                              static_cast<double>(weights[h])});
        }
    }
    return combos;
}

std::optional<std::vector<double>> pocket_action_evs(const FinishedSolve& solve, std::uint64_t node,
                                                     Seat seat, std::string_view c1,
                                                     std::string_view c2) {
    const auto view = view_decision(solve, node);
    if (!view || view->hero != seat) {
        return std::nullopt;
    }
    const auto hand = position_of(*view, c1, c2);
    if (!hand) {
        return std::nullopt;
    }
    const ReachedValues reached = reached_values(*view);
    std::vector<double> evs;
    for (std::size_t a = 0; a < view->actions; ++a) {
        evs.push_back(reached.scale.of(reached.values[a * view->pockets.size() + *hand], *hand));
    }
    return evs;
}

std::optional<std::vector<double>> pocket_strategy(const FinishedSolve& solve, std::uint64_t node,
                                                   Seat seat, std::string_view c1,
                                                   std::string_view c2) {
    const auto view = view_decision(solve, node);
    const auto hand = view && view->hero == seat ? position_of(*view, c1, c2) : std::nullopt;
    return hand ? std::optional(view->probabilities(*hand)) : std::nullopt;
}

std::optional<std::vector<HandBucket>> hand_buckets(const FinishedSolve& solve,
                                                    std::uint64_t node) {
    const auto view = view_decision(solve, node);
    if (!view || view->pockets.empty()) {
        return std::nullopt;
    }
    const std::vector<Card> board = board_cards(view->game, view->node);
    std::array<double, bucket_count> combos{};
    std::vector<std::array<double, bucket_count>> played(view->actions);
    for (std::size_t h = 0; h < view->pockets.size(); ++h) {
        const double weight = view->weight(h);
        if (!(weight > 0)) {
            continue;
        }
        const HandTags tags = classify(board, view->pockets[h]);
        const auto count = [&](std::size_t bucket) {
            combos[bucket] += weight;
            for (std::size_t a = 0; a < view->actions; ++a) {
                played[a][bucket] += view->probability(a, h) * weight;
            }
        };
        bool counted = false;
        for (std::size_t bucket = 0; bucket < bucket_count; ++bucket) {
            if (tags.has(static_cast<HandTag>(bucket))) {
                count(bucket);
                counted = true;
            }
        }
        if (!counted) {
            count(static_cast<std::size_t>(HandTag::air));
        }
    }
    std::vector<HandBucket> buckets;
    for (std::size_t bucket = 0; bucket < bucket_count; ++bucket) {
        if (!(combos[bucket] > 0)) {
            continue;
        }
        HandBucket entry{std::string(tag_name(static_cast<HandTag>(bucket))), combos[bucket], {}};
        double total = 0;
        for (const auto& of_action : played) {
            total += static_cast<double>(static_cast<float>(of_action[bucket]));
        }
        for (const auto& of_action : played) {
            const auto sum = static_cast<float>(of_action[bucket]);
            entry.action_probs.push_back(
                total > 0 ? static_cast<float>(static_cast<double>(sum) / total) : 0.0F);
        }
        buckets.push_back(std::move(entry));
    }
    return buckets;
}

}  // namespace kestrel_app
