#pragma once

#include "engine/game/game.h"

namespace kestrel {

/// Checks every invariant of a finished tree: parents before children, chips adding up, children
/// aligned with actions, cards dealt once. Throws std::logic_error naming the first node at fault.
/// For tests and debugging; walks the whole tree.
void check_tree(const Game& game);

}  // namespace kestrel
