#include "engine/game/check_tree.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace kestrel {
namespace {

void require(bool holds, std::size_t node, const char* what) {
    if (!holds) {
        throw std::logic_error("Node " + std::to_string(node) + ": " + what);
    }
}

void check_money(const PlanOptions& options, const GameNode& node, std::size_t i) {
    const auto [smaller, larger] = std::minmax(node.contributed[0], node.contributed[1]);
    require(node.pot == options.starting_pot + node.contributed[0] + node.contributed[1], i,
            "the pot is not what was put in");
    require(node.matched == smaller, i, "the matched amount is not the smaller contribution");
    require(smaller >= 0 && larger <= options.effective_stack, i, "more put in than the stack");
}

void check_kind(const GameNode& node, std::size_t i) {
    const bool terminal = node.kind == NodeKind::Terminal;
    require(node.actions.size() == node.children.size(), i, "actions without children");
    require(node.kind != NodeKind::Decision || !node.actions.empty(), i,
            "a decision without actions");
    require(!terminal || node.runout_pending == !node.actions.empty(), i,
            "only a terminal with cards to come has children");
    require(terminal || !node.runout_pending, i, "cards to come at a node that is no terminal");
    require(node.river == NO_CARD || node.turn != NO_CARD, i, "a river without a turn");
    const bool showdown = terminal && node.last_action != ActionKind::fold;
    require(!showdown || node.contributed[0] == node.contributed[1], i,
            "a showdown with unequal contributions");
    require(!showdown || (node.river == NO_CARD) == node.runout_pending, i,
            "a showdown on an incomplete board that is not pending");
}

/// The child behind action `a` of decision i.
void check_played(const GameNode& node, std::size_t i, std::size_t a, const GameNode& child) {
    const std::size_t c = node.children[a];
    const Action action = node.actions[a];
    require(child.last_action == action.kind && child.last_actor == node.seat, c,
            "the last action is not the one that led here");
    require(child.turn == node.turn && child.river == node.river, c, "a card dealt by a bet");
    const bool ended = child.kind == NodeKind::Terminal && child.last_action == ActionKind::fold;
    require((action.kind == ActionKind::fold) == ended, c, "a fold that does not end the hand");
    if (a > 0 && node.actions[a - 1].amount > 0 && node.actions[a - 1].kind != ActionKind::call) {
        require(node.actions[a - 1].amount < action.amount, i, "wagers that do not rise");
    }
}

/// The child behind card `a` of deal i.
void check_dealt(const CardContext& cards, const GameNode& node, std::size_t i, std::size_t a,
                 const GameNode& child) {
    const std::size_t c = node.children[a];
    require(node.actions[a].kind == ActionKind::chance, i, "a deal without a card");
    const Card card = static_cast<Card>(node.actions[a].amount);
    require(card == (node.turn == NO_CARD ? child.turn : child.river), c,
            "another card than the one dealt");
    require((cards.board_mask & card_bit(card)) == 0 ||
                std::ranges::find(cards.board, card) >= cards.board.begin() + 3,
            c, "a flop card dealt again");
    require(a == 0 || node.actions[a - 1].amount < node.actions[a].amount, i,
            "cards that do not rise");
    require(child.contributed == node.contributed, c, "chips put in by a deal");
}

}  // namespace

void check_tree(const Game& game) {
    std::vector<std::uint8_t> parents(game.nodes.size(), 0);
    for (std::size_t i = 0; i < game.nodes.size(); ++i) {
        const GameNode& node = game.nodes[i];
        check_money(game.options, node, i);
        check_kind(node, i);
        for (std::size_t a = 0; a < node.children.size(); ++a) {
            const std::size_t c = node.children[a];
            require(c > i && c < game.nodes.size(), i, "a child that stands before its parent");
            require(parents[c]++ == 0, c, "two parents");
            if (node.kind == NodeKind::Decision) {
                check_played(node, i, a, game.nodes[c]);
            } else {
                check_dealt(game.cards, node, i, a, game.nodes[c]);
            }
        }
    }
    for (std::size_t i = 1; i < parents.size(); ++i) {
        require(parents[i] == 1, i, "no parent");
    }
}

}  // namespace kestrel
