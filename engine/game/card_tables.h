#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "engine/game/dealt_hands.h"
#include "engine/poker/cards.h"
#include "engine/poker/range.h"

namespace kestrel {

/// One hand of a showdown list. `strength` is the hand strength plus 1; 0 and 4294967295 mark the
/// sentinels at the two ends of a list, whose `position` is `no_position`.
struct ShowdownEntry {
    std::uint32_t strength;
    std::uint16_t position;
};

/// Per seat, the hands that are alive on one complete board, rising by strength and then position,
/// between two sentinels.
using ShowdownTable = std::array<std::vector<ShowdownEntry>, 2>;

/// Per seat, a list of positions in rising order.
using PositionLists = std::array<std::vector<std::uint16_t>, 2>;

/// Everything that is dear to compute about the cards of a spot. Immutable once built and shared by
/// all contexts of the same spot that are alive at one time.
struct CachedArtifacts : DealtHands {
    std::array<std::vector<float>, 2> removal_weights;
    PositionLists same_pocket;
    std::vector<ShowdownTable> showdown;
    PositionLists all_positions;
    std::vector<PositionLists> valid_by_card;
    std::vector<PositionLists> valid_by_pair;
    std::vector<PositionLists> blocked_by_card;
    std::vector<PositionLists> blocked_by_pair;

    // The inputs, so that a cache hit can be told from a collision of keys.
    Board board{};
    std::array<Range, 2> weights{};
};

/// Builds all tables of a valid board on up to `workers` threads, which have ended on return.
/// Throws std::invalid_argument "Player range empty after filtering board cards".
std::shared_ptr<const CachedArtifacts> build_card_tables(const Board& board,
                                                         const std::array<Range, 2>& weights,
                                                         std::size_t workers);

/// Bytes that all lists hold.
std::size_t tables_bytes(const CachedArtifacts& tables);

/// The same of tables that have not been built, from the hands alone.
std::size_t tables_bytes(const Board& board, const DealtHands& hands);

}  // namespace kestrel
