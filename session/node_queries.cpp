#include "session/node_queries.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "session/action_equity.h"
#include "session/decision_view.h"
#include "session/hand_classes.h"
#include "session/hand_labels.h"
#include "session/reach.h"
#include "session/reached_values.h"

namespace kestrel_app {
namespace {

using kestrel::Card;
using kestrel::Game;
using kestrel::GameNode;
using kestrel::Pocket;
using kestrel::Seat;

}  // namespace

std::optional<NodeActionStats> node_action_stats(const FinishedSolve& solve, std::uint64_t node) {
    const auto view = view_decision(solve, node);
    if (!view) {
        return std::nullopt;
    }
    const std::size_t hands = view->pockets.size();
    const std::vector<float> their_range = range_weights(view->cards, other(view->hero));
    const HandValues scale(view->game, view->node, view->hero, their_range);
    const auto ask = [&] { return solve.solver->action_values(view->game, node, their_range); };
    // Where everybody comes, as to the root, the same values are asked for elsewhere.
    const bool all_come = opponent_reach(*view) == their_range;
    const RecentValues::Values shared = all_come ? solve.recent_values.of(node, ask) : nullptr;
    const std::vector<float> values = shared ? *shared : ask();
    ActionEquity equity(*view, their_range);

    NodeActionStats stats;
    stats.action_names = view->action_names();
    stats.action_types = view->action_types();
    stats.frequencies = solve.solver->action_frequencies(node);
    for (std::size_t a = 0; a < view->actions; ++a) {
        std::vector<double> taken(hands);
        double combos = 0;
        double ev = 0;
        for (std::size_t h = 0; h < hands; ++h) {
            taken[h] = view->weight(h) * view->probability(a, h);
            combos += taken[h];
            const double value = taken[h] * scale.scaled(values[a * hands + h], h);
            ev += std::isfinite(value) ? value : 0.0;
        }
        ev = combos > 0 ? ev / combos + scale.half_pot() : 0.0;
        stats.combos.push_back(combos);
        stats.ev.push_back(ev);
        stats.equity.push_back(equity.of(taken));
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
    const ReachedValues reached(*view);
    const std::vector<float> node_values = solve.solver->decision_values(node, *reached.values);
    const std::vector<Card> board = board_cards(view->game, view->node);

    std::vector<HandCombo> combos;
    for (std::size_t h = 0; h < hands; ++h) {
        if (!(view->weight(h) > 0)) {
            continue;
        }
        HandCombo combo;
        combo.c1 = kestrel::card_to_string(view->pockets[h].low);
        combo.c2 = kestrel::card_to_string(view->pockets[h].high);
        combo.weight = static_cast<double>(reached.own_reach[h]) * view->weight(h);
        combo.ev = reached.scale.of(node_values[h], h);
        for (std::size_t a = 0; a < view->actions; ++a) {
            combo.action_evs.push_back(reached.of(a, h));
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
    const auto hand = view->position_of(c1, c2);
    if (!hand) {
        return std::nullopt;
    }
    const ReachedValues reached(*view);
    std::vector<double> evs;
    for (std::size_t a = 0; a < view->actions; ++a) {
        evs.push_back(reached.of(a, *hand));
    }
    return evs;
}

std::optional<std::vector<double>> pocket_strategy(const FinishedSolve& solve, std::uint64_t node,
                                                   Seat seat, std::string_view c1,
                                                   std::string_view c2) {
    const auto view = view_decision(solve, node);
    const auto hand = view && view->hero == seat ? view->position_of(c1, c2) : std::nullopt;
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
