#include "engine/game/game.h"

#include <utility>

namespace kestrel {

Game::Game(PlanOptions plan_options, CardContext card_context, const TreeLimits& limits)
    : options(std::move(plan_options)),
      cards(std::move(card_context)),
      plan(options, &cards, limits),
      nodes(plan.nodes) {}

void Game::set_node_lock(std::uint64_t node_index, std::vector<float> table) {
    node_locks[node_index] = std::move(table);
}

std::span<const float> Game::node_lock(std::uint64_t node_index) const {
    if (node_locks.empty()) {
        return {};
    }
    const auto found = node_locks.find(node_index);
    return found == node_locks.end() ? std::span<const float>() : found->second;
}

const SwapList& Game::swap_list(const GameNode& node, std::size_t position) const {
    const SuitIsomorphism& iso = cards.isomorphism;
    if (node.street == Street::Turn) {
        if (position < iso.turn_cards.size()) {
            return iso.turn_swaps[static_cast<std::size_t>(suit_of(iso.turn_cards[position]))];
        }
    } else if (node.street == Street::River && node.turn != NO_CARD) {
        const auto turn_suit = static_cast<std::size_t>(suit_of(node.turn));
        const std::vector<Card>& list = iso.river_cards[turn_suit];
        if (position < list.size()) {
            return iso.river_swaps[turn_suit][static_cast<std::size_t>(suit_of(list[position]))];
        }
    }
    return no_swaps;
}

const std::vector<std::uint8_t>& Game::references(const GameNode& node) const {
    if (node.street == Street::Turn) {
        return cards.isomorphism.turn_refs;
    }
    if (node.street == Street::River && node.turn != NO_CARD) {
        return cards.isomorphism.river_refs[node.turn];
    }
    return no_cards;
}

}  // namespace kestrel
