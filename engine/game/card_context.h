#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "engine/game/card_tables.h"
#include "engine/game/suit_isomorphism.h"
#include "engine/poker/cards.h"
#include "engine/poker/range.h"

namespace kestrel {

/// Everything about a spot that depends on the cards alone: the two ranges reduced to the pockets
/// that can occur, the sorted showdown lists of every run-out, the pockets that each dealt card
/// blocks, and the suits that may be exchanged. The solver works on positions in the per-seat
/// pocket lists; this is the translation to cards. Immutable, so all threads read it unguarded.
///
/// A cheap value: copies and moves share the tables.
class CardContext {
  public:
    /// `board`: flop 1 to 3, turn, river, `NO_CARD` where absent. `weights`: OOP's table first.
    /// Throws std::invalid_argument ("Flop cards must be defined", "Flop cards must be unique",
    /// "Turn conflicts with flop", "River conflicts with existing cards", "River cannot be dealt
    /// without a turn", "Player range empty after filtering board cards") and std::out_of_range
    /// ("Card code must be in [0, 52)").
    CardContext(const Board& board, const std::array<Range, 2>& weights);

    /// The showdown lists of a turn and river in either order. An empty table where a card is
    /// `NO_CARD` or the pair cannot occur.
    const ShowdownTable& showdown_table(Card card_a, Card card_b) const;

    /// Bytes held by all lists.
    std::size_t memory_bytes() const;

    /// Threads to build with: the number in the environment variable KESTREL_CARDCTX_MAX_WORKERS
    /// when it is above 0, otherwise the hardware's, at least 1. Read anew at each call.
    static std::size_t worker_count();

    const Board board;
    const std::array<Range, 2> weights;
    const CardMask board_mask;
    const std::uint64_t cache_key;

  private:
    const std::shared_ptr<const CachedArtifacts> artifacts_;  // const: a move copies it

  public:
    /// Per seat, the pockets with weight above 0 that do not touch the board, in rising pocket
    /// number. The place of a pocket in this list is its position.
    const std::array<std::vector<Pocket>, 2>& pockets;
    const std::array<std::vector<float>, 2>& pocket_weights;  ///< aligned with `pockets`
    /// Per position: its weight times the opponent weight that shares no card with it.
    const std::array<std::vector<float>, 2>& removal_weights;
    const SuitIsomorphism& isomorphism;
    const std::vector<ShowdownTable>& showdown;  ///< by pocket number of the turn-river pair
    /// Per position: the position of the same two cards in the other seat's list, or `no_position`.
    const PositionLists& same_pocket;
    const PositionLists& all_positions;                 ///< 0, 1, 2 ... for each seat
    const std::vector<PositionLists>& valid_by_card;    ///< by card: positions that do not hold it
    const std::vector<PositionLists>& valid_by_pair;    ///< by pair: positions that hold neither
    const std::vector<PositionLists>& blocked_by_card;  ///< by card: positions that hold it
    const std::vector<PositionLists>& blocked_by_pair;  ///< by pair: positions that hold either
    /// Sum over all pairs of positions that share no card of the product of the two weights.
    const double combination_mass;
};

}  // namespace kestrel
