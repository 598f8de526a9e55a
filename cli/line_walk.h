#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "engine/game/game.h"
#include "session/finished_solve.h"

namespace tidewell_cli {

struct NodePath {
    std::vector<kestrel_app::PathStep> steps;
    std::uint64_t node = 0;
};

/// The node behind a line from the root such as "Check/Bet 50%/Call/2c"; the empty line is the
/// root. Names count in either case, blanks or not; "#2" is the second choice of a node. Throws
/// InputError for a step that does not exist, with the choices there are; for a card whose suit is
/// interchangeable with one that is dealt, with the card that stands for it.
NodePath walk_line(const kestrel::Game& game, std::string_view line);

/// The line that leads along a path, "root" for none.
std::string line_of(const kestrel::Game& game, const NodePath& path);

/// The names of a node's actions or cards, with commas.
std::string choices_at(const kestrel::Game& game, std::uint64_t node);

/// Prints the nodes at most `depth` steps below the root in tree order, one a line: index, kind or
/// player, pot, and the line that leads there.
void list_nodes(std::ostream& out, const kestrel::Game& game, std::size_t depth);

}  // namespace tidewell_cli
