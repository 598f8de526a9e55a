#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "engine/poker/cards.h"
#include "engine/poker/range.h"

namespace kestrel {

/// Stands for "no position" where a position is asked for.
inline constexpr std::uint16_t no_position = 65535;

/// For each seat, the pairs of positions (lower first) that trade places when two suits trade
/// names. A pocket that is its own image, or whose image is not in the seat's list, is in no pair.
using SwapList = std::array<std::vector<std::pair<std::uint16_t, std::uint16_t>>, 2>;

/// The cards that a chance node need not deal, because renaming suits turns their subtree into the
/// subtree of a card that is dealt. "Child position" is the index into the chance node's children.
struct SuitIsomorphism {
    std::vector<std::uint8_t> turn_refs;  ///< per skipped turn card: the child that stands for it
    std::vector<Card> turn_cards;         ///< the skipped turn cards, rising
    std::array<SwapList, suit_count> turn_swaps;  ///< by suit of the skipped card

    std::array<std::vector<std::uint8_t>, card_count> river_refs;  ///< by turn card, as `turn_refs`
    std::array<std::vector<Card>, suit_count> river_cards;         ///< by suit of the turn card
    /// By suit of the turn card and suit of the skipped river card.
    std::array<std::array<SwapList, suit_count>, suit_count> river_swaps;
};

/// Finds the interchangeable suits of a spot: those under whose exchange both ranges and the board
/// so far stay the same. `pockets` are the seats' lists in rising pocket number.
SuitIsomorphism find_suit_isomorphism(const Board& board, const std::array<Range, 2>& weights,
                                      const std::array<std::vector<Pocket>, 2>& pockets);

}  // namespace kestrel
