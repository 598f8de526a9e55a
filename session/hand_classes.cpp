#include "session/hand_classes.h"

#include <algorithm>
#include <bit>

namespace kestrel_app {
namespace {

using kestrel::Card;
using kestrel::Pocket;
using kestrel::rank_of;
using kestrel::suit_of;

using RankMask = std::uint32_t;  // bit r for rank r, the deuce at 0

constexpr std::array<std::string_view, bucket_count + 1> tag_names = {"straight flush",
                                                                      "quads",
                                                                      "full house",
                                                                      "flush",
                                                                      "straight",
                                                                      "set",
                                                                      "trips",
                                                                      "two pair",
                                                                      "top pair",
                                                                      "overpair",
                                                                      "middle pair",
                                                                      "bottom pair",
                                                                      "dry pair",
                                                                      "flush draw",
                                                                      "missed FD",
                                                                      "open ended straight draw",
                                                                      "missed OESD",
                                                                      "gutter",
                                                                      "missed gutter",
                                                                      "back door flush draw",
                                                                      "air",
                                                                      "pair"};

constexpr RankMask rank_bit(int rank) {
    return RankMask{1} << rank;
}

RankMask rank_mask(std::span<const Card> cards) {
    RankMask mask = 0;
    for (const Card card : cards) {
        mask |= rank_bit(rank_of(card));
    }
    return mask;
}

bool has_straight(RankMask ranks) {
    constexpr RankMask wheel = 0x100F;
    const RankMask runs = ranks & ranks >> 1 & ranks >> 2 & ranks >> 3 & ranks >> 4;
    return runs != 0 || (ranks & wheel) == wheel;
}

/// How many ranks would complete a straight; 0 when there is one.
int straight_outs(std::span<const Card> cards) {
    const RankMask ranks = rank_mask(cards);
    if (has_straight(ranks)) {
        return 0;
    }
    int outs = 0;
    for (int rank = 0; rank < kestrel::rank_count; ++rank) {
        outs += has_straight(ranks | rank_bit(rank)) ? 1 : 0;
    }
    return outs;
}

/// The size of the largest suit, if the pocket holds a card of it; otherwise 0.
int suited_with_pocket(std::span<const Card> cards, const Pocket& pocket) {
    std::array<int, kestrel::suit_count> counts{};
    for (const Card card : cards) {
        ++counts[static_cast<std::size_t>(suit_of(card))];
    }
    const auto largest = std::ranges::max_element(counts);
    const auto suit = static_cast<int>(largest - counts.begin());
    return suit_of(pocket.low) == suit || suit_of(pocket.high) == suit ? *largest : 0;
}

bool is_flush(HandCategory category) {
    return category == HandCategory::flush || category == HandCategory::straight_flush;
}

bool is_straight(HandCategory category) {
    return category == HandCategory::straight || category == HandCategory::straight_flush;
}

void add_pair_tag(HandTags& tags, std::span<const Card> board, const Pocket& pocket) {
    const RankMask ranks = rank_mask(board);
    if (rank_of(pocket.low) == rank_of(pocket.high)) {
        const bool above = rank_bit(rank_of(pocket.low)) > ranks;
        tags.add(above ? HandTag::overpair : HandTag::dry_pair);
        return;
    }
    const RankMask paired =
        ranks & (rank_bit(rank_of(pocket.low)) | rank_bit(rank_of(pocket.high)));
    if (paired == 0) {
        return;
    }
    const int highest = std::bit_width(paired) - 1;
    const int above = std::popcount(ranks >> (highest + 1));
    const int last = std::popcount(ranks) - 1;
    tags.add(above == 0      ? HandTag::top_pair
             : above == 1    ? HandTag::middle_pair
             : above == last ? HandTag::bottom_pair
                             : HandTag::pair);
}

void add_made_tag(HandTags& tags, HandCategory category, std::span<const Card> board,
                  const Pocket& pocket) {
    switch (category) {
        case HandCategory::high_card:
            break;
        case HandCategory::pair:
            add_pair_tag(tags, board, pocket);
            break;
        case HandCategory::two_pair:
            tags.add(HandTag::two_pair);
            break;
        case HandCategory::trips: {
            const int rank = rank_of(pocket.low);
            const bool is_set = rank == rank_of(pocket.high) &&
                                std::ranges::count(board, rank, kestrel::rank_of) == 1;
            tags.add(is_set ? HandTag::set : HandTag::trips);
            break;
        }
        case HandCategory::straight:
            tags.add(HandTag::straight);
            break;
        case HandCategory::flush:
            tags.add(HandTag::flush);
            break;
        case HandCategory::full_house:
            tags.add(HandTag::full_house);
            break;
        case HandCategory::quads:
            tags.add(HandTag::quads);
            break;
        case HandCategory::straight_flush:
            tags.add(HandTag::straight_flush);
            break;
    }
}

void add_draw_tags(HandTags& tags, HandCategory category, std::span<const Card> all,
                   const Pocket& pocket) {
    constexpr std::size_t on_the_flop = 5;
    if (!is_flush(category)) {
        const int suited = suited_with_pocket(all, pocket);
        if (suited == 4) {
            tags.add(HandTag::flush_draw);
        } else if (suited == 3 && all.size() == on_the_flop) {
            tags.add(HandTag::back_door_flush_draw);
        }
    }
    if (!is_straight(category)) {
        const int outs = straight_outs(all);
        if (outs >= 2) {
            tags.add(HandTag::open_ended_straight_draw);
        } else if (outs == 1) {
            tags.add(HandTag::gutter);
        }
    }
}

/// What a hand that came to nothing on the river had hoped for on the turn.
void add_missed_tags(HandTags& tags, std::span<const Card> on_the_turn, const Pocket& pocket) {
    const HandCategory category = hand_category(on_the_turn);
    if (!is_flush(category) && suited_with_pocket(on_the_turn, pocket) == 4) {
        tags.add(HandTag::missed_flush_draw);
    }
    if (!is_straight(category)) {
        const int outs = straight_outs(on_the_turn);
        if (outs >= 2) {
            tags.add(HandTag::missed_open_ended_straight_draw);
        } else if (outs == 1) {
            tags.add(HandTag::missed_gutter);
        }
    }
}

}  // namespace

std::string_view tag_name(HandTag tag) {
    return tag_names.at(static_cast<std::size_t>(tag));
}

std::vector<std::string> HandTags::names() const {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < tag_names.size(); ++i) {
        if (has(static_cast<HandTag>(i))) {
            names.emplace_back(tag_names[i]);
        }
    }
    std::ranges::sort(names);
    return names;
}

HandCategory hand_category(std::span<const Card> cards) {
    if (cards.size() < 5 || cards.size() > 7) {
        return HandCategory::high_card;
    }
    std::array<int, kestrel::suit_count> by_suit{};
    std::array<RankMask, kestrel::suit_count> ranks_of_suit{};
    std::array<int, kestrel::rank_count> by_rank{};
    for (const Card card : cards) {
        const auto suit = static_cast<std::size_t>(suit_of(card));
        ++by_suit[suit];
        ranks_of_suit[suit] |= rank_bit(rank_of(card));
        ++by_rank[static_cast<std::size_t>(rank_of(card))];
    }
    for (std::size_t suit = 0; suit < by_suit.size(); ++suit) {
        if (by_suit[suit] >= 5) {
            return has_straight(ranks_of_suit[suit]) ? HandCategory::straight_flush
                                                     : HandCategory::flush;
        }
    }
    // A pocket that the board blocks may make five of a rank.
    const auto fours = std::ranges::count_if(by_rank, [](int count) { return count >= 4; });
    const auto threes = std::ranges::count(by_rank, 3);
    const auto twos = std::ranges::count(by_rank, 2);
    if (fours > 0) {
        return HandCategory::quads;
    }
    if (threes > 1 || (threes == 1 && twos > 0)) {
        return HandCategory::full_house;
    }
    if (has_straight(rank_mask(cards))) {
        return HandCategory::straight;
    }
    if (threes == 1) {
        return HandCategory::trips;
    }
    return twos > 1    ? HandCategory::two_pair
           : twos == 1 ? HandCategory::pair
                       : HandCategory::high_card;
}

std::vector<Card> board_cards(const kestrel::Game& game, const kestrel::GameNode& node) {
    const kestrel::Board& board = game.cards.board;
    std::vector<Card> cards(board.begin(), board.begin() + 3);
    for (const Card card : {node.turn, node.river}) {
        if (card != kestrel::NO_CARD) {
            cards.push_back(card);
        }
    }
    return cards;
}

HandTags classify(std::span<const Card> board, const Pocket& pocket) {
    HandTags tags;
    if (board.size() < 3 || board.size() > 5) {
        return tags;
    }
    std::array<Card, 7> cards{pocket.low, pocket.high};
    std::ranges::copy(board, cards.begin() + 2);
    const std::span<const Card> all(cards.data(), board.size() + 2);
    const HandCategory category = hand_category(all);
    add_made_tag(tags, category, board, pocket);
    if (board.size() < 5) {
        add_draw_tags(tags, category, all, pocket);
    } else if (category == hand_category(board) && category < HandCategory::two_pair) {
        add_missed_tags(tags, all.first(6), pocket);
    }
    if (tags.empty()) {
        tags.add(HandTag::air);
    }
    return tags;
}

HandTags classify(const kestrel::Game& game, const kestrel::GameNode& node, const Pocket& pocket) {
    return classify(board_cards(game, node), pocket);
}

}  // namespace kestrel_app
