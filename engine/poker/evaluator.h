#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <span>

#include "engine/poker/cards.h"

namespace kestrel {

/// Strength of a hand of seven cards; a plain comparison of two is the poker comparison, equal
/// numbers are a tie. From high to low: category (0 high card to 8 straight flush) from bit 26,
/// primary rank mask in bits 25 to 13, secondary rank mask in bits 12 to 0, bit r for rank r.
/// As the fields are masks, comparing them compares kickers from high to low. Always above 0, at
/// most 0x22000000 (royal flush).
using HandStrength = std::uint32_t;

/// A set of cards by suit: 16-bit lane s holds the rank mask of suit s. Sets join by "|".
using SuitLanes = std::uint64_t;

/// The lanes of one card. `card` is a valid code; not checked.
constexpr SuitLanes suit_lanes(Card card) {
    return SuitLanes{1} << ((card & 3) << 4 | card >> 2);
}

/// Strength of seven different cards given as lanes. Another number of cards gives no meaning to
/// the result.
HandStrength evaluate_lanes(SuitLanes lanes);

/// Strength of seven different cards in any order; with repeated cards the result has no meaning.
/// Throws std::out_of_range "Card code must be in [0, 52)".
HandStrength evaluate_seven(const std::array<Card, 7>& cards);

/// Strength of a pocket on a board of five cards. Throws std::invalid_argument
/// "Board must contain exactly 5 cards for evaluation", or as evaluate_seven does.
HandStrength evaluate_hand(Pocket pocket, std::span<const Card> board);

namespace detail {

enum class HandCategory : std::uint32_t {
    HighCard,
    Pair,
    TwoPair,
    Trips,
    Straight,
    Flush,
    FullHouse,
    Quads,
    StraightFlush
};

constexpr HandStrength make_strength(HandCategory category, std::uint32_t primary,
                                     std::uint32_t secondary = 0) {
    return static_cast<std::uint32_t>(category) << 26 | primary << 13 | secondary;
}

/// The set without its lowest rank; an empty set stays empty.
constexpr std::uint32_t without_lowest(std::uint32_t ranks) {
    return ranks & (ranks - 1);
}

/// Bit of the highest straight's top rank, 0 without a straight.
constexpr std::uint32_t straight_top(std::uint32_t ranks) {
    // One place higher, so that the ace can also stand below the deuce: then the wheel is a run
    // like any other, and the lowest.
    const std::uint32_t both_aces = ranks << 1 | ranks >> 12;
    const std::uint32_t run_of_two = both_aces & both_aces << 1;
    const std::uint32_t run_of_five = run_of_two & run_of_two << 2 & both_aces << 4;
    return std::bit_floor(run_of_five) >> 1;
}

/// Strength of a hand whose flush suit holds five to seven cards.
constexpr HandStrength flush_strength(std::uint32_t suit_ranks) {
    if (const std::uint32_t top = straight_top(suit_ranks)) {
        return make_strength(HandCategory::StraightFlush, top);
    }
    for (int count = std::popcount(suit_ranks); count > 5; --count) {
        suit_ranks = without_lowest(suit_ranks);
    }
    return make_strength(HandCategory::Flush, suit_ranks);
}

/// The ranks of seven cards by how often they are held, as sets of 13 bits.
struct RankSets {
    std::uint32_t quads;
    std::uint32_t trips;
    std::uint32_t pairs;
    std::uint32_t singles;
    std::uint32_t all;

    /// Adds up the four suits' sets bit by bit, 13 ranks at a time.
    RankSets(std::uint32_t clubs, std::uint32_t diamonds, std::uint32_t hearts,
             std::uint32_t spades) {
        const std::uint32_t both_minor = clubs & diamonds;
        const std::uint32_t both_major = hearts & spades;
        const std::uint32_t one_minor = clubs ^ diamonds;
        const std::uint32_t one_major = hearts ^ spades;
        const std::uint32_t one_or_three = one_minor ^ one_major;
        const std::uint32_t two_or_three = both_minor ^ both_major ^ (one_minor & one_major);
        quads = both_minor & both_major;
        trips = one_or_three & two_or_three;
        pairs = two_or_three & ~one_or_three;
        singles = one_or_three & ~two_or_three;
        all = one_or_three | two_or_three | quads;
    }
};

/// The strength of seven cards without a flush. As there are seven, kickers need no counting loop:
/// the singles are always the best kickers and two more.
inline HandStrength rank_strength(const RankSets& held) {
    if (held.quads != 0) {
        return make_strength(HandCategory::Quads, held.quads,
                             std::bit_floor(held.all ^ held.quads));
    }
    if (held.trips != 0) {
        // Two trips leave no room for a pair, so the lower trips and the pairs never compete.
        const std::uint32_t top = std::bit_floor(held.trips);
        if (const std::uint32_t full = (held.trips ^ top) | held.pairs) {
            return make_strength(HandCategory::FullHouse, top, std::bit_floor(full));
        }
    }
    if (const std::uint32_t top = straight_top(held.all)) {
        return make_strength(HandCategory::Straight, top);
    }
    const std::uint32_t kickers = without_lowest(without_lowest(held.singles));
    if (held.trips != 0) {
        return make_strength(HandCategory::Trips, held.trips, kickers);
    }
    if (held.pairs == 0) {
        return make_strength(HandCategory::HighCard, kickers);
    }
    const std::uint32_t upper_pairs = without_lowest(held.pairs);
    if (upper_pairs == 0) {
        return make_strength(HandCategory::Pair, held.pairs, kickers);
    }
    const std::uint32_t two_pair = without_lowest(upper_pairs) == 0 ? held.pairs : upper_pairs;
    return make_strength(HandCategory::TwoPair, two_pair, std::bit_floor(held.all ^ two_pair));
}

}  // namespace detail

// Runs once per pocket and run-out when the showdown tables are built. About 6 ns a hand over all
// pockets of random boards, a fifth of what an array of counts takes; turning the last branches
// into selects was slower.
inline HandStrength evaluate_lanes(SuitLanes lanes) {
    const auto clubs = static_cast<std::uint32_t>(lanes & 0xFFFF);
    const auto diamonds = static_cast<std::uint32_t>(lanes >> 16 & 0xFFFF);
    const auto hearts = static_cast<std::uint32_t>(lanes >> 32 & 0xFFFF);
    const auto spades = static_cast<std::uint32_t>(lanes >> 48);
    // A flush excludes quads and a full house, so it can come first.
    for (const std::uint32_t suit : {clubs, diamonds, hearts, spades}) {
        if (std::popcount(suit) >= 5) {
            return detail::flush_strength(suit);
        }
    }
    return detail::rank_strength({clubs, diamonds, hearts, spades});
}

inline HandStrength evaluate_seven(const std::array<Card, 7>& cards) {
    SuitLanes lanes = 0;
    for (const Card card : cards) {
        check_card(card);
        lanes |= suit_lanes(card);
    }
    return evaluate_lanes(lanes);
}

}  // namespace kestrel
