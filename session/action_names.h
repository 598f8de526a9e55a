#pragma once

#include <cstdint>
#include <string>

#include "engine/game/game.h"

namespace kestrel_app {

/// Text of an action for people: "Check", "Bet 50%", "Raise 125%", "All-In", a card such as "2c".
/// `pot` in hundredths of a chip; percentages are the raise-to amount over it. A pot below 1 leaves
/// the percentage out.
std::string action_display_name(const kestrel::Action& action, std::int32_t pot);

/// Word for filters and colours: "check", "bet 50%", "allin", "chance".
std::string action_type_name(const kestrel::Action& action, std::int32_t pot);

/// The pot that the actions of a node are named by, in hundredths of a chip: the starting pot at
/// the root, elsewhere the node's own; each stands in where the other is below 1.
std::int32_t naming_pot(const kestrel::Game& game, std::uint64_t node);

}  // namespace kestrel_app
