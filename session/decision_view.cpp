#include "session/decision_view.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "session/action_names.h"

namespace kestrel_app {
namespace {

template <class Name>
std::vector<std::string> named(const DecisionView& view, Name name) {
    std::vector<std::string> names;
    for (const kestrel::Action& action : view.node.actions) {
        names.push_back(name(action, naming_pot(view.game, view.index)));
    }
    return names;
}

}  // namespace

std::vector<double> DecisionView::probabilities(std::size_t hand) const {
    std::vector<double> shares(actions);
    double sum = 0;
    for (std::size_t a = 0; a < actions; ++a) {
        shares[a] = probability(a, hand);
        sum += shares[a];
    }
    for (double& share : shares) {
        share = sum > 0 ? share / sum : 1.0 / static_cast<double>(actions);
    }
    return shares;
}

std::vector<float> DecisionView::own_reach() const {
    return reach_along(solve, index, solve.parents().path_to(index), hero,
                       std::vector<float>(pockets.size(), 1.0F));
}

std::optional<std::size_t> DecisionView::position_of(std::string_view c1,
                                                     std::string_view c2) const {
    kestrel::Card first = kestrel::NO_CARD;
    kestrel::Card second = kestrel::NO_CARD;
    try {
        first = kestrel::parse_card(c1.substr(0, 2));
        second = kestrel::parse_card(c2.substr(0, 2));
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
    const kestrel::Pocket pocket{std::min(first, second), std::max(first, second)};
    const auto found = std::ranges::find(pockets, pocket);
    if (first == second || found == pockets.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - pockets.begin());
}

std::vector<std::string> DecisionView::action_names() const {
    return named(*this, action_display_name);
}

std::vector<std::string> DecisionView::action_types() const {
    return named(*this, action_type_name);
}

std::optional<DecisionView> view_decision(const FinishedSolve& solve, std::uint64_t index) {
    const kestrel::Game& game = *solve.game;
    if (index >= game.nodes.size()) {
        return std::nullopt;
    }
    const kestrel::GameNode& node = game.nodes[index];
    const std::size_t actions = node.actions.size();
    if (node.kind != kestrel::NodeKind::Decision || actions == 0 ||
        node.children.size() < actions) {
        return std::nullopt;
    }
    const auto& pockets = game.cards.pockets[index_of(node.seat)];
    std::vector<float> strategy = solve.solver->average_strategy(index);
    if (strategy.size() != actions * pockets.size()) {
        return std::nullopt;
    }
    const std::vector<float>& weights = game.cards.pocket_weights[index_of(node.seat)];
    return DecisionView{solve,     game,    game.cards, index,   node,
                        node.seat, pockets, weights,    actions, std::move(strategy)};
}

}  // namespace kestrel_app
