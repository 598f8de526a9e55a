#pragma once

#include <array>
#include <vector>

#include "engine/game/suit_isomorphism.h"
#include "engine/poker/cards.h"
#include "engine/poker/range.h"

namespace kestrel {

/// What two ranges leave to play with on a board. Found in a few milliseconds.
struct DealtHands {
    /// Per seat, the pockets with weight above 0 that do not touch the board, in rising pocket
    /// number, and their weights.
    std::array<std::vector<Pocket>, 2> pockets;
    std::array<std::vector<float>, 2> pocket_weights;
    SuitIsomorphism isomorphism;
    /// Sum over all pairs of pockets that share no card of the product of the two weights.
    double combination_mass = 0;
};

/// All cards of a board as a mask.
CardMask mask_of(const Board& board);

/// The board itself. Throws std::invalid_argument ("Flop cards must be defined", "Flop cards must
/// be unique", "Turn conflicts with flop", "River conflicts with existing cards", "River cannot be
/// dealt without a turn") and std::out_of_range ("Card code must be in [0, 52)").
const Board& checked_board(const Board& board);

/// The turn-river pairs that a valid board allows, lower card first.
std::vector<Pocket> runouts_on(const Board& board);

/// `weights`: OOP's table first. The board is valid. Throws std::invalid_argument "Player range
/// empty after filtering board cards".
DealtHands deal_hands(const Board& board, const std::array<Range, 2>& weights);

}  // namespace kestrel
