#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "engine/game/game.h"

namespace kestrel_app {

/// The fixed play of one starting hand at one decision node; all its pockets get the same row.
struct NodeLockEntry {
    std::uint64_t node_index = 0;
    std::string hand;  ///< a label such as "AKs"
    /// Without `probs`: this action is taken with `action_prob`, the others share the rest alike.
    std::int32_t action_index = -1;
    float action_prob = 1.0F;  ///< clamped to 0 and 1
    std::vector<float> probs;  ///< one for each action, any scale; may be empty

    bool operator==(const NodeLockEntry&) const = default;
};

/// Whether an entry means anything in a tree. Not so: a node that does not exist or decides
/// nothing, a list of another length than the actions, an action that does not exist, a text that
/// is no label.
bool lock_fits(const kestrel::Game& game, const NodeLockEntry& lock);

/// Turns locks into the tables that a game holds; before the solve only. A later entry for the same
/// node and hand replaces an earlier one. What does not fit the tree then is dropped.
void apply_node_locks(kestrel::Game& game, std::span<const NodeLockEntry> locks);

}  // namespace kestrel_app
