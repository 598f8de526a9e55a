#include "session/node_locks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

#include "session/hand_labels.h"

namespace kestrel_app {
namespace {

using kestrel::Game;
using kestrel::GameNode;

/// Per label, the entry that counts; null for a free hand.
using LocksOfNode = std::array<const NodeLockEntry*, label_count>;

/// The row of a hand, one probability for each action.
std::vector<float> lock_row(const NodeLockEntry& lock, std::size_t actions) {
    if (lock.probs.empty()) {
        // NaN counts as 0.
        const float prob = lock.action_prob > 0.0F ? std::min(lock.action_prob, 1.0F) : 0.0F;
        if (actions == 1) {
            return std::vector{1.0F};
        }
        std::vector<float> row(actions, (1.0F - prob) / static_cast<float>(actions - 1));
        row[static_cast<std::size_t>(lock.action_index)] = prob;
        return row;
    }
    const auto usable = [](float prob) { return std::isfinite(prob) && prob > 0.0F; };
    double sum = 0;
    for (const float prob : lock.probs) {
        sum += usable(prob) ? static_cast<double>(prob) : 0.0;
    }
    std::vector<float> row(actions, 1.0F / static_cast<float>(actions));
    for (std::size_t a = 0; sum > 0 && a < actions; ++a) {
        const float prob = lock.probs[a];
        row[a] = usable(prob) ? static_cast<float>(static_cast<double>(prob) / sum) : 0.0F;
    }
    return row;
}

/// The table of a node: A x H, -1 for free hands. Empty when no hand is locked.
std::vector<float> lock_table(const Game& game, const GameNode& node, const LocksOfNode& locks) {
    const std::size_t actions = node.actions.size();
    const std::vector<kestrel::Pocket>& pockets = game.cards.pockets[index_of(node.seat)];
    std::vector<float> table(actions * pockets.size(), -1.0F);
    bool locked = false;
    for (std::size_t h = 0; h < pockets.size(); ++h) {
        const NodeLockEntry* const lock = locks[label_index(pockets[h])];
        if (lock == nullptr || !lock_fits(game, *lock)) {
            continue;
        }
        const std::vector<float> row = lock_row(*lock, actions);
        locked = true;
        for (std::size_t a = 0; a < actions; ++a) {
            table[a * pockets.size() + h] = row[a];
        }
    }
    return locked ? std::move(table) : std::vector<float>();
}

}  // namespace

bool lock_fits(const Game& game, const NodeLockEntry& lock) {
    if (lock.node_index >= game.nodes.size() || label_index(lock.hand) == label_count) {
        return false;
    }
    const GameNode& node = game.nodes[lock.node_index];
    const std::size_t actions = node.actions.size();
    return node.kind == kestrel::NodeKind::Decision &&
           (lock.probs.empty() ? lock.action_index >= 0 && std::cmp_less(lock.action_index, actions)
                               : lock.probs.size() == actions);
}

void apply_node_locks(Game& game, std::span<const NodeLockEntry> locks) {
    std::map<std::uint64_t, LocksOfNode> by_node;
    for (const NodeLockEntry& lock : locks) {
        const std::size_t label = label_index(lock.hand);
        if (label == label_count || lock.node_index >= game.nodes.size()) {
            continue;
        }
        const GameNode& node = game.nodes[lock.node_index];
        if (node.kind == kestrel::NodeKind::Decision && !node.actions.empty()) {
            by_node[lock.node_index][label] = &lock;
        }
    }
    for (const auto& [index, of_node] : by_node) {
        std::vector<float> table = lock_table(game, game.nodes[index], of_node);
        if (!table.empty()) {
            game.set_node_lock(index, std::move(table));
        }
    }
}

}  // namespace kestrel_app
