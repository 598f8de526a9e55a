#include "session/action_breakdown.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <span>
#include <utility>

#include "engine/solver/chance.h"
#include "engine/solver/terminal.h"
#include "session/action_names.h"
#include "session/decision_view.h"
#include "session/reach.h"
#include "session/reached_values.h"

namespace kestrel_app {
namespace {

using kestrel::Card;
using kestrel::CardMask;
using kestrel::GameNode;
using kestrel::NodeKind;
using kestrel::Pocket;
using kestrel::ShowdownEntry;

bool share_cards(const Pocket& a, const Pocket& b) {
    return (pocket_mask(a) & pocket_mask(b)) != 0;
}

using Row = std::vector<float>;
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Thrown when nobody waits for the answer any more.
struct Stopped {};

/// Sees a tree with the eyes of one hand of the seat that acts at a decision.
class HandSight {
  public:
    HandSight(const DecisionView& view, double half_pot, std::size_t hand,
              const std::atomic<bool>* stop)
        : view_(view), half_pot_(half_pot), hand_(hand), stop_(stop) {}

    Follows follows(std::uint64_t index) const {
        const GameNode& node = node_at(index);
        if (node.kind == NodeKind::Chance) {
            return Follows::deal;
        }
        if (node.kind == NodeKind::Terminal) {
            return node.last_action == kestrel::ActionKind::fold ? Follows::nothing
                                                                 : Follows::showdown;
        }
        return node.seat == view_.hero ? Follows::nothing : Follows::answers;
    }

    /// What follows at a node to which the opponent comes with `reach`.
    std::vector<FollowUp> parts(std::uint64_t index, const Row& reach) const {
        switch (follows(index)) {
            case Follows::answers:
                return answers(index, reach);
            case Follows::deal:
                return cards(index, reach);
            case Follows::showdown:
                return outcomes(index, reach);
            case Follows::nothing:
                break;
        }
        return {};
    }

  private:
    const GameNode& node_at(std::uint64_t index) const { return view_.game.nodes[index]; }

    /// Of the opponent's hands that share no card with one of the seat's.
    double met(std::size_t hand, const Row& reach) const {
        const auto& theirs = view_.cards.pockets[index_of(other(view_.hero))];
        double sum = 0;
        for (std::size_t o = 0; o < theirs.size(); ++o) {
            sum += share_cards(view_.pockets[hand], theirs[o])
                       ? 0.0
                       : static_cast<double>(usable(reach[o]));
        }
        return sum;
    }

    /// From the opponent's reach; the seat's hands in the order of the solver.
    Row values(std::uint64_t index, const Row& reach) const {
        if (stop_ != nullptr && *stop_) {
            throw Stopped();
        }
        return view_.solve.solver->node_values(view_.game, index, view_.hero, reach);
    }

    /// The solver's value for a hand that meets so much weight.
    double ev(float value, double met_weight) const {
        return static_cast<double>(value) * (view_.cards.combination_mass / met_weight) + half_pot_;
    }

    std::vector<FollowUp> answers(std::uint64_t index, const Row& reach) const {
        const GameNode& node = node_at(index);
        const double all = met(hand_, reach);
        const std::size_t hands = reach.size();
        const Row strategy = view_.solve.solver->average_strategy(index);
        std::vector<FollowUp> result;
        for (std::size_t a = 0; a < node.actions.size(); ++a) {
            Row row = reach;
            for (std::size_t o = 0; o < hands && !strategy.empty(); ++o) {
                row[o] = usable(row[o] * usable(strategy[a * hands + o]));
            }
            const std::int32_t pot = naming_pot(view_.game, index);
            FollowUp part{.name = action_display_name(node.actions[a], pot),
                          .type = action_type_name(node.actions[a], pot),
                          .follows = follows(node.children[a])};
            const double weight = met(hand_, row);
            part.probability = all > 0 ? weight / all : 0.0;
            if (!(weight > 0)) {
                part.ev = nan;
            } else if (part.follows == Follows::deal || part.follows == Follows::showdown) {
                part.parts = parts(node.children[a], row);
                part.ev = mean(part.parts);
            } else {
                part.ev = ev(values(node.children[a], row)[hand_], weight);
            }
            result.push_back(std::move(part));
        }
        return result;
    }

    static double mean(const std::vector<FollowUp>& parts) {
        double sum = 0;
        for (const FollowUp& part : parts) {
            sum += part.probability > 0 ? part.probability * part.ev : 0.0;
        }
        return sum;
    }

    /// A card after which the tree goes on at `child` as it does for another hand of the seat,
    /// which is this hand with suits renamed where the card is not dealt itself.
    struct Deal {
        Card card;
        std::size_t child;
        std::size_t hand;
    };

    std::vector<Deal> deals(const GameNode& node) const {
        std::vector<Deal> result;
        for (std::size_t k = 0; k < node.children.size(); ++k) {
            result.push_back({static_cast<Card>(node.actions[k].amount), k, hand_});
        }
        const auto& references = view_.game.references(node);
        const kestrel::SuitIsomorphism& iso = view_.cards.isomorphism;
        const std::vector<Card>& skipped =
            node.street == kestrel::Street::Turn
                ? iso.turn_cards
                : iso.river_cards[static_cast<std::size_t>(kestrel::suit_of(node.turn))];
        for (std::size_t k = 0; k < references.size(); ++k) {
            if (references[k] >= node.children.size()) {
                continue;
            }
            std::size_t hand = hand_;
            for (const auto& [x, y] : view_.game.swap_list(node, k)[index_of(view_.hero)]) {
                if (x == hand_ || y == hand_) {
                    hand = x == hand_ ? y : x;
                    break;
                }
            }
            result.push_back({skipped[k], references[k], hand});
        }
        return result;
    }

    std::vector<FollowUp> cards(std::uint64_t index, const Row& reach) const {
        const GameNode& node = node_at(index);
        const auto& theirs = view_.cards.pockets[index_of(other(view_.hero))];
        const double all = met(hand_, reach) * static_cast<double>(kestrel::chance_factor(node));
        std::vector<Row> child_reach(node.children.size());
        std::vector<Row> child_values(node.children.size());
        std::vector<FollowUp> result;
        for (const Deal& deal : deals(node)) {
            if ((pocket_mask(view_.pockets[hand_]) & kestrel::card_bit(deal.card)) != 0) {
                continue;
            }
            Row& row = child_reach[deal.child];
            if (row.empty()) {
                const CardMask dealt =
                    kestrel::card_bit(static_cast<Card>(node.actions[deal.child].amount));
                row = reach;
                for (std::size_t o = 0; o < row.size(); ++o) {
                    row[o] = (pocket_mask(theirs[o]) & dealt) != 0 ? 0.0F : row[o];
                }
                child_values[deal.child] = values(node.children[deal.child], row);
            }
            const double weight = met(deal.hand, row);
            if (weight > 0) {  // otherwise the opponent always holds it
                result.push_back({.name = kestrel::card_to_string(deal.card),
                                  .type = "chance",
                                  .probability = weight / all,
                                  .ev = ev(child_values[deal.child][deal.hand], weight)});
            }
        }
        std::ranges::stable_sort(result, std::greater(), &FollowUp::ev);
        return result;
    }

    /// Weight of the opponent's hands that lose, tie and win, all run-outs added up.
    struct Compared {
        double won = 0;
        double tied = 0;
        double lost = 0;
        std::size_t boards = 0;
    };

    void compare(const kestrel::ShowdownTable& table, const Row& reach, Compared& sums) const {
        const auto& own = table[index_of(view_.hero)];
        const auto& theirs = table[index_of(other(view_.hero))];
        constexpr std::size_t sentinels = 2;
        if (own.size() <= sentinels || theirs.size() <= sentinels) {
            return;
        }
        ++sums.boards;
        const auto alive = [](const auto& list) {
            return std::span(list).subspan(1, list.size() - sentinels);
        };
        const auto entry = std::ranges::find(alive(own), hand_, [](const ShowdownEntry& hand) {
            return static_cast<std::size_t>(hand.position);
        });
        if (entry == alive(own).end()) {
            return;
        }
        const auto& pockets = view_.cards.pockets[index_of(other(view_.hero))];
        for (const ShowdownEntry& hand : alive(theirs)) {
            if (!share_cards(view_.pockets[hand_], pockets[hand.position])) {
                const auto weight = static_cast<double>(usable(reach[hand.position]));
                (hand.strength < entry->strength    ? sums.won
                 : hand.strength == entry->strength ? sums.tied
                                                    : sums.lost) += weight;
            }
        }
    }

    std::vector<FollowUp> outcomes(std::uint64_t index, const Row& reach) const {
        const GameNode& node = node_at(index);
        const bool whole = node.turn != kestrel::NO_CARD && node.river != kestrel::NO_CARD;
        Compared sums;
        if (whole) {
            compare(view_.cards.showdown_table(node.turn, node.river), reach, sums);
        } else {
            for (const auto& [turn, river] : kestrel::runouts_of(view_.game, node)) {
                compare(view_.cards.showdown_table(turn, river), reach, sums);
            }
        }
        const double divisor =
            whole ? 1.0
                  : static_cast<double>(kestrel::runout_divisor(view_.game, node)
                                            .value_or(static_cast<float>(sums.boards)));
        const double all = met(hand_, reach) * divisor;
        const kestrel::TerminalPayoffs payoffs = (whole ? kestrel::showdown_rule(view_.game, node)
                                                        : kestrel::runout_rule(view_.game, node))
                                                     .payoffs;
        const double mass = view_.cards.combination_mass;
        std::vector<FollowUp> result;
        double left = 1;
        const auto add = [&](const char* name, double weight, double payoff) {
            const double probability = all > 0 ? weight / all : 0.0;
            left -= probability;
            result.push_back({.name = name,
                              .type = name,
                              .probability = probability,
                              .ev = weight > 0 ? payoff * mass + half_pot_ : nan});
        };
        add("Win", sums.won, payoffs.win);
        add("Tie", sums.tied, payoffs.tie);
        add("Lose", sums.lost, payoffs.lose);
        constexpr double rounding = 1e-9;
        if (left > rounding) {
            add("Blocked", left * all, 0);
        }
        return result;
    }

    const DecisionView& view_;
    const double half_pot_;  // at the decision, hundredths
    const std::size_t hand_;
    const std::atomic<bool>* const stop_;
};

}  // namespace

std::optional<ActionBreakdown> action_breakdown(const FinishedSolve& solve, std::uint64_t node,
                                                std::string_view c1, std::string_view c2,
                                                std::size_t action, const std::atomic<bool>* stop) {
    const auto view = view_decision(solve, node);
    if (!view || action >= view->actions) {
        return std::nullopt;
    }
    const auto hand = view->position_of(c1, c2);
    if (!hand || !(view->weight(*hand) > 0) ||
        (pocket_mask(view->pockets[*hand]) & board_at(view->game, view->node)) != 0) {
        return std::nullopt;
    }
    const ReachedValues reached(*view);
    const HandSight sight(*view, std::max(reached.scale.half_pot(), 0.0), *hand, stop);
    ActionBreakdown result{sight.follows(view->node.children[action]), nan, {}};
    if (!reached.scale.meets(*hand)) {
        return result;
    }
    result.ev = reached.of(action, *hand);
    try {
        result.parts = sight.parts(view->node.children[action], reached.their_reach);
    } catch (const Stopped&) {
        return std::nullopt;
    }
    return result;
}

}  // namespace kestrel_app
