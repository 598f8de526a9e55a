#include "engine/poker/evaluator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <random>
#include <span>
#include <utility>
#include <vector>

#include "tests/engine/failure.h"

namespace kestrel {
namespace {

using Five = std::array<Card, 5>;
using Seven = std::array<Card, 7>;

std::uint32_t bit(int rank) {
    return 1U << rank;
}

// Five cards by the rules of the game: ranks ordered by how often they occur, then by height.
HandStrength strength_of_five(const Five& cards) {
    std::map<int, int> count;
    bool flush = true;
    std::uint32_t all = 0;
    for (const Card card : cards) {
        ++count[rank_of(card)];
        flush = flush && suit_of(card) == suit_of(cards[0]);
        all |= bit(rank_of(card));
    }
    std::vector<std::pair<int, int>> ranks;  // times, rank
    for (const auto& [rank, times] : count) {
        ranks.emplace_back(times, rank);
    }
    std::ranges::sort(ranks, std::greater());
    const bool wheel = all == 0x100FU;
    const bool straight = ranks.size() == 5 && ranks[0].second - ranks[4].second == 4;
    const auto make = [](std::uint32_t category, std::uint32_t primary, std::uint32_t secondary) {
        return category << 26 | primary << 13 | secondary;
    };
    if (wheel || straight) return make(flush ? 8 : 4, bit(wheel ? 3 : ranks[0].second), 0);
    if (flush) return make(5, all, 0);
    const std::uint32_t first = bit(ranks[0].second);
    if (ranks[0].first == 4) return make(7, first, all ^ first);
    if (ranks[0].first == 3) return make(ranks.size() == 2 ? 6 : 3, first, all ^ first);
    const std::uint32_t last = bit(ranks.back().second);
    if (ranks.size() == 3) return make(2, all ^ last, last);
    return ranks.size() == 4 ? make(1, first, all ^ first) : make(0, all, 0);
}

HandStrength best_of_21(const Seven& cards) {
    HandStrength best = 0;
    for (std::size_t i = 0; i < 7; ++i) {
        for (std::size_t j = i + 1; j < 7; ++j) {
            Five five{};
            std::size_t size = 0;
            for (std::size_t k = 0; k < 7; ++k) {
                if (k != i && k != j) five[size++] = cards[k];
            }
            best = std::max(best, strength_of_five(five));
        }
    }
    return best;
}

TEST(Evaluator, EqualsBestOfAllFiveCardHands) {
    std::mt19937 generator(2024);
    // Small decks make the rare shapes common: few ranks for full houses and quads, few suits for
    // flushes.
    const std::vector<std::vector<int>> decks = {
        {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, {8, 10, 11, 12}, {0, 1, 2, 3, 4, 5, 12}};
    std::map<HandStrength, int> categories;
    for (const auto& ranks : decks) {
        for (const int suits : {4, 2}) {
            std::vector<Card> deck;
            for (const int rank : ranks) {
                for (int suit = 0; suit < suits; ++suit) {
                    deck.push_back(static_cast<Card>(rank * 4 + suit));
                }
            }
            for (int hand = 0; hand < 4000; ++hand) {
                std::shuffle(deck.begin(), deck.end(), generator);
                Seven cards{};
                std::copy_n(deck.begin(), 7, cards.begin());
                ++categories[best_of_21(cards) >> 26];
                ASSERT_EQ(evaluate_seven(cards), best_of_21(cards))
                    << ::testing::PrintToString(cards);
            }
        }
    }
    EXPECT_EQ(categories.size(), 9U);
}

TEST(Evaluator, RefusesWhatIsNoHand) {
    EXPECT_EQ(evaluate_seven({0, 5, 34, 38, 42, 46, 50}), 0x22000000U);  // a royal flush
    const Pocket pocket{parse_card("2c"), parse_card("Ad")};
    const std::vector<Card> board{4, 9, 14, 19, 24, 29};
    for (const std::size_t size : {0U, 4U, 6U}) {
        EXPECT_EQ(failure_of([&] { evaluate_hand(pocket, std::span(board).first(size)); }),
                  "invalid argument: Board must contain exactly 5 cards for evaluation");
    }
    for (const Card broken : {Card{52}, NO_CARD}) {
        EXPECT_EQ(failure_of([&] {
                      evaluate_seven({0, 5, 34, 38, 42, 46, broken});
                  }),
                  "out of range: Card code must be in [0, 52)");
    }
}

}  // namespace
}  // namespace kestrel
