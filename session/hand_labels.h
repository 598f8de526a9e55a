#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "engine/poker/cards.h"

namespace kestrel_app {

/// Starting hands up to the exchange of suits, in a grid of 13 by 13 over the ranks from the ace
/// down: pairs on the diagonal, suited hands above it, offsuit hands below.
inline constexpr std::size_t label_count = 169;

/// Label of a place in the grid, row * 13 + column: "AA" at 0, "AKs" at 1, "AKo" at 13, "22" at
/// 168. The higher rank comes first.
const std::string& hand_label(std::size_t index);

/// The place of a pocket's label in the grid.
std::size_t label_index(const kestrel::Pocket& pocket);

/// The place of a label; `label_count` for a text that is none.
std::size_t label_index(std::string_view label);

}  // namespace kestrel_app
