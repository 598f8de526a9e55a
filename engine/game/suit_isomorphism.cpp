#include "engine/game/suit_isomorphism.h"

#include <optional>

namespace kestrel {
namespace {

using SuitRanks = std::array<std::uint16_t, suit_count>;  // mask of ranks by suit
using SuitClasses = std::array<int, suit_count>;
using Representatives = std::array<std::optional<int>, suit_count>;

SuitClasses suit_classes(const std::array<Range, 2>& weights) {
    SuitClasses classes{};
    int next_class = 1;
    for (int s = 1; s < suit_count; ++s) {
        std::optional<int> found;
        for (int t = 0; t < s && !found; ++t) {
            if (is_suit_symmetric(weights[0], s, t) && is_suit_symmetric(weights[1], s, t)) {
                found = classes[static_cast<std::size_t>(t)];
            }
        }
        classes[static_cast<std::size_t>(s)] = found ? *found : next_class++;
    }
    return classes;
}

/// The first lower suit that each suit can be renamed into, by the given test on suit indices.
template <class Interchangeable>
Representatives representatives(Interchangeable interchangeable) {
    Representatives result;
    for (std::size_t s = 1; s < suit_count; ++s) {
        for (std::size_t t = 0; t < s; ++t) {
            if (interchangeable(s, t)) {
                result[s] = static_cast<int>(t);
                break;
            }
        }
    }
    return result;
}

Card exchange_suits(Card card, int s, int t) {
    const int suit = suit_of(card);
    const int renamed = suit == s ? t : suit == t ? s : suit;
    return static_cast<Card>(card - suit + renamed);
}

SwapList swap_list(const std::array<std::vector<Pocket>, 2>& pockets, int s, int t) {
    SwapList result;
    for (std::size_t seat = 0; seat < 2; ++seat) {
        std::vector<std::uint16_t> position(pocket_count, no_position);
        const auto& list = pockets[seat];
        for (std::size_t i = 0; i < list.size(); ++i) {
            position[pocket_index(list[i].low, list[i].high)] = static_cast<std::uint16_t>(i);
        }
        for (std::size_t i = 0; i < list.size(); ++i) {
            const std::uint16_t j = position[pocket_index(exchange_suits(list[i].low, s, t),
                                                          exchange_suits(list[i].high, s, t))];
            if (j != no_position && j > i) {
                result[seat].emplace_back(static_cast<std::uint16_t>(i), j);
            }
        }
    }
    return result;
}

/// Splits the cards outside `dead` into those that are dealt, which take child positions in rising
/// card code, and those that a representative suit stands for.
void split_cards(CardMask dead, const Representatives& representative,
                 std::vector<std::uint8_t>& refs, std::vector<Card>& skipped) {
    std::array<std::uint8_t, card_count> child_position{};
    std::uint8_t next_child = 0;
    for (Card card = 0; card < card_count; ++card) {
        if ((dead & card_bit(card)) != 0) {
            continue;
        }
        const auto& stands_in = representative[static_cast<std::size_t>(suit_of(card))];
        if (stands_in) {
            // The representative suit is lower, so its card of this rank already has its position.
            refs.push_back(child_position[exchange_suits(card, suit_of(card), *stands_in)]);
            skipped.push_back(card);
        } else {
            child_position[card] = next_child++;
        }
    }
}

}  // namespace

SuitIsomorphism find_suit_isomorphism(const Board& board, const std::array<Range, 2>& weights,
                                      const std::array<std::vector<Pocket>, 2>& pockets) {
    SuitIsomorphism result;
    const bool has_turn = board[3] != NO_CARD;
    const bool has_river = board[4] != NO_CARD;
    if (has_river) {
        return result;
    }

    const SuitClasses classes = suit_classes(weights);
    SuitRanks flop_ranks{};
    CardMask flop_mask = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        flop_mask |= card_bit(board[i]);
        auto& ranks = flop_ranks[static_cast<std::size_t>(suit_of(board[i]))];
        ranks = static_cast<std::uint16_t>(ranks | 1U << rank_of(board[i]));
    }
    const auto fill_swaps = [&](const Representatives& representative,
                                std::array<SwapList, suit_count>& swaps) {
        for (std::size_t s = 1; s < suit_count; ++s) {
            if (representative[s] && swaps[s][0].empty() && swaps[s][1].empty()) {
                swaps[s] = swap_list(pockets, static_cast<int>(s), *representative[s]);
            }
        }
    };

    if (!has_turn) {
        const Representatives representative = representatives([&](std::size_t s, std::size_t t) {
            return flop_ranks[s] == flop_ranks[t] && classes[s] == classes[t];
        });
        fill_swaps(representative, result.turn_swaps);
        split_cards(flop_mask, representative, result.turn_refs, result.turn_cards);
    }

    for (Card turn = 0; turn < card_count; ++turn) {
        if (has_turn ? turn != board[3] : (flop_mask & card_bit(turn)) != 0) {
            continue;
        }
        const auto turn_suit = static_cast<std::size_t>(suit_of(turn));
        SuitRanks ranks = flop_ranks;
        ranks[turn_suit] = static_cast<std::uint16_t>(ranks[turn_suit] | 1U << rank_of(turn));
        const Representatives representative = representatives([&](std::size_t s, std::size_t t) {
            return (has_turn || flop_ranks[s] == flop_ranks[t]) && ranks[s] == ranks[t] &&
                   classes[s] == classes[t];
        });
        fill_swaps(representative, result.river_swaps[turn_suit]);
        std::vector<Card> skipped;
        split_cards(flop_mask | card_bit(turn), representative, result.river_refs[turn], skipped);
        if (result.river_cards[turn_suit].empty()) {
            result.river_cards[turn_suit] = std::move(skipped);
        }
    }
    return result;
}

}  // namespace kestrel
