#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/game/game.h"
#include "engine/poker/cards.h"

namespace kestrel_app {

/// Classes of hands that people think in, in the order in which they are listed.
enum class HandTag : std::uint8_t {
    straight_flush,
    quads,
    full_house,
    flush,
    straight,
    set,
    trips,
    two_pair,
    top_pair,
    overpair,
    middle_pair,
    bottom_pair,
    dry_pair,
    flush_draw,
    missed_flush_draw,
    open_ended_straight_draw,
    missed_open_ended_straight_draw,
    gutter,
    missed_gutter,
    back_door_flush_draw,
    air,
    pair,  ///< between the middle and the bottom pair: a tag without a bucket
};

inline constexpr std::size_t bucket_count = 21;

/// "top pair", "missed FD", ...
std::string_view tag_name(HandTag tag);

/// A set of tags.
class HandTags {
  public:
    void add(HandTag tag) { bits_ |= bit(tag); }
    bool has(HandTag tag) const { return (bits_ & bit(tag)) != 0; }
    bool empty() const { return bits_ == 0; }

    /// Names in byte order.
    std::vector<std::string> names() const;

  private:
    static std::uint32_t bit(HandTag tag) { return std::uint32_t{1} << static_cast<int>(tag); }

    std::uint32_t bits_ = 0;
};

enum class HandCategory : std::uint8_t {
    high_card,
    pair,
    two_pair,
    trips,
    straight,
    flush,
    full_house,
    quads,
    straight_flush
};

/// The best hand's category among 5 to 7 cards; `high_card` for any other number of cards.
HandCategory hand_category(std::span<const kestrel::Card> cards);

/// The flop and what is dealt behind it at a node.
std::vector<kestrel::Card> board_cards(const kestrel::Game& game, const kestrel::GameNode& node);

/// The classes of a pocket on a board of 3 to 5 cards; "air" where no other one fits. A pair that
/// stands on the board alone is none. No tags on any other board.
HandTags classify(std::span<const kestrel::Card> board, const kestrel::Pocket& pocket);
HandTags classify(const kestrel::Game& game, const kestrel::GameNode& node,
                  const kestrel::Pocket& pocket);

}  // namespace kestrel_app
