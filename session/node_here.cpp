#include "session/node_here.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "session/action_equity.h"
#include "session/decision_view.h"
#include "session/reach.h"
#include "session/reached_values.h"

namespace kestrel_app {
namespace {

using kestrel::Seat;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

bool any_comes(const std::vector<float>& reach) {
    return std::ranges::any_of(reach, [](float weight) { return weight > 0.0F; });
}

/// Weights with which the seat's hands come and take an action.
std::vector<double> taken(const DecisionView& view, const std::vector<float>& own_reach,
                          std::size_t action) {
    std::vector<double> weights(own_reach.size());
    for (std::size_t h = 0; h < weights.size(); ++h) {
        weights[h] =
            static_cast<double>(own_reach[h]) * view.weight(h) * view.probability(action, h);
    }
    return weights;
}

ActionStatsHere shares(const DecisionView& view, const std::vector<float>& own_reach,
                       const std::vector<float>& their_reach) {
    ActionStatsHere here;
    here.action_names = view.action_names();
    here.action_types = view.action_types();
    here.opponent_comes = any_comes(their_reach);
    for (std::size_t a = 0; a < view.actions; ++a) {
        const std::vector<double> weights = taken(view, own_reach, a);
        here.combos.push_back(std::accumulate(weights.begin(), weights.end(), 0.0));
    }
    const double all = std::accumulate(here.combos.begin(), here.combos.end(), 0.0);
    for (const double combos : here.combos) {
        here.frequencies.push_back(all > 0 ? combos / all : nan);
    }
    here.equity.assign(view.actions, nan);
    here.ev.assign(view.actions, nan);
    return here;
}

double mean_value(const ReachedValues& reached, std::size_t action,
                  const std::vector<double>& weights) {
    double sum = 0;
    double met = 0;
    for (std::size_t h = 0; h < weights.size(); ++h) {
        if (weights[h] > 0 && reached.scale.meets(h)) {
            sum += weights[h] * reached.of(action, h);
            met += weights[h];
        }
    }
    return met > 0 ? sum / met : nan;
}

}  // namespace

std::optional<ActionStatsHere> action_shares_here(const FinishedSolve& solve, std::uint64_t node) {
    const auto view = view_decision(solve, node);
    return view ? std::optional(shares(*view, view->own_reach(), opponent_reach(*view)))
                : std::nullopt;
}

std::optional<ActionStatsHere> action_stats_here(const FinishedSolve& solve, std::uint64_t node) {
    const auto view = view_decision(solve, node);
    if (!view) {
        return std::nullopt;
    }
    const ReachedValues reached(*view);
    ActionStatsHere here = shares(*view, reached.own_reach, reached.their_reach);
    if (!here.opponent_comes) {
        return here;
    }
    ActionEquity equity(*view, reached.their_reach);
    for (std::size_t a = 0; a < view->actions; ++a) {
        const std::vector<double> weights = taken(*view, reached.own_reach, a);
        here.equity[a] = equity.of(weights);
        here.ev[a] = mean_value(reached, a, weights);
    }
    return here;
}

std::optional<bool> opponent_comes(const FinishedSolve& solve, std::uint64_t node) {
    const kestrel::Game& game = *solve.game;
    if (node >= game.nodes.size()) {
        return std::nullopt;
    }
    const kestrel::GameNode& n = game.nodes[node];
    const std::vector<PathStep> path = solve.parents().path_to(node);
    const auto comes = [&](Seat seat) {
        return any_comes(reach_along(solve, node, path, seat, range_weights(game.cards, seat)));
    };
    return n.kind == kestrel::NodeKind::Decision ? comes(other(n.seat))
                                                 : comes(Seat::OOP) && comes(Seat::IP);
}

}  // namespace kestrel_app
