#include "engine/poker/evaluator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/engine/failure.h"

namespace kestrel {
namespace {

using Five = std::array<Card, 5>;
using Seven = std::array<Card, 7>;

Seven parse_seven(std::string_view text) {
    const std::string cards = without_white_space(text);
    Seven seven{};
    for (std::size_t i = 0; i < 7; ++i)
        seven[i] = parse_card(cards.substr(2 * i, 2));
    return seven;
}

std::uint32_t bit(int rank) {
    return 1u << rank;
}

// Five cards by the rules of the game: ranks ordered by how often they occur, then by height.
HandStrength strength_of_five(const Five& cards) {
    std::array<int, rank_count> count{};
    for (const Card card : cards)
        ++count[static_cast<std::size_t>(rank_of(card))];
    std::vector<int> ranks;
    for (int rank = 0; rank < rank_count; ++rank) {
        if (count[static_cast<std::size_t>(rank)] > 0) ranks.push_back(rank);
    }
    const auto times = [&](int rank) { return count[static_cast<std::size_t>(rank)]; };
    std::sort(ranks.begin(), ranks.end(),
              [&](int a, int b) { return times(a) != times(b) ? times(a) > times(b) : a > b; });
    const bool flush = std::all_of(cards.begin(), cards.end(),
                                   [&](Card card) { return suit_of(card) == suit_of(cards[0]); });
    int straight = ranks.size() == 5 && ranks[0] - ranks[4] == 4 ? ranks[0] : -1;
    if (ranks == std::vector{12, 3, 2, 1, 0}) straight = 3;

    std::uint32_t all = 0;
    for (const int rank : ranks)
        all |= bit(rank);
    const auto make = [](std::uint32_t category, std::uint32_t primary, std::uint32_t secondary) {
        return category << 26 | primary << 13 | secondary;
    };
    if (straight >= 0) return make(flush ? 8 : 4, bit(straight), 0);
    if (flush) return make(5, all, 0);
    const std::uint32_t first = bit(ranks[0]);
    if (times(ranks[0]) == 4) return make(7, first, all ^ first);
    if (times(ranks[0]) == 3) return make(ranks.size() == 2 ? 6 : 3, first, all ^ first);
    if (ranks.size() == 3) return make(2, all ^ bit(ranks[2]), bit(ranks[2]));
    if (ranks.size() == 4) return make(1, first, all ^ first);
    return make(0, all, 0);
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

TEST(Evaluator, KnownHands) {
    const std::pair<std::string_view, HandStrength> hands[] = {
        {"2c3d Ah Kh Qh Jh Th", 0x22000000},                      // royal flush on the board
        {"Ah2h 3h 4h 5h Kc Kd", 0x20010000},                      // steel wheel
        {"Ah2h 3h 4h 5h 6h Kd", 8u << 26 | bit(4) << 13},         // beaten by six high
        {"Ac2d 3h 4s 5c 9d Kd", 4u << 26 | bit(3) << 13},         // wheel
        {"Ac2d 3h 4s 5c 6d Kd", 4u << 26 | bit(4) << 13},         // six high goes first
        {"KcKd QcQd JcJd As", 2u << 26 | 0xC00u << 13 | 0x1000},  // kicker ace
        {"KcKd QcQd JcJd 2s", 2u << 26 | 0xC00u << 13 | 0x200},   // kicker from the third pair
        {"KcKdKh QcQdQh 2s", 6u << 26 | bit(11) << 13 | bit(10)},
        {"KcKdKh QcQd JcJd", 6u << 26 | bit(11) << 13 | bit(10)},
        {"AcAdAhAs KcKdKh", 7u << 26 | bit(12) << 13 | bit(11)},
        {"9h8h 7h 6h 5c 2h 4h", 5u << 26 | 0xF4u << 13},  // straight needs the club
        {"2c3d 4h 5s 7c 8d 9d", 0xECu << 13 | 0},         // the lowest ranks do not play
    };
    for (const auto& [text, strength] : hands) {
        EXPECT_EQ(evaluate_seven(parse_seven(text)), strength) << text;
    }
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
    EXPECT_EQ(categories.size(), 9u);
}

using Frequencies = std::array<std::uint64_t, 9>;

void count_hands(SuitLanes lanes, std::size_t first, std::size_t missing, Frequencies& counts) {
    if (missing == 0) {
        ++counts[evaluate_lanes(lanes) >> 26];
        return;
    }
    for (std::size_t card = first; card + missing <= card_count; ++card) {
        count_hands(lanes | suit_lanes(static_cast<Card>(card)), card + 1, missing - 1, counts);
    }
}

TEST(Evaluator, CategoriesOfAllHandsHaveTheTextbookFrequencies) {
    Frequencies counts{};
    count_hands(0, 0, 7, counts);
    EXPECT_EQ(counts, (Frequencies{23294460, 58627800, 31433400, 6461620, 6180020, 4047644, 3473184,
                                   224848, 41584}));
}

TEST(Evaluator, RefusesWhatIsNoHand) {
    const Pocket pocket{parse_card("2c"), parse_card("Ad")};
    const std::vector<Card> board{4, 9, 14, 19, 24, 29};
    for (const std::size_t size : {0u, 3u, 4u, 6u}) {
        EXPECT_EQ(failure_of([&] { evaluate_hand(pocket, std::span(board).first(size)); }),
                  "invalid argument: Board must contain exactly 5 cards for evaluation");
    }
    const Seven cards{pocket.low, pocket.high, 4, 9, 14, 19, 24};
    EXPECT_EQ(evaluate_hand(pocket, std::span(board).first(5)), evaluate_seven(cards));
    for (std::size_t place = 0; place < cards.size(); ++place) {
        for (const Card bad : {Card{52}, Card{128}, NO_CARD}) {
            Seven broken = cards;
            broken[place] = bad;
            EXPECT_EQ(failure_of([&] { evaluate_seven(broken); }),
                      "out of range: Card code must be in [0, 52)");
        }
    }
}

}  // namespace
}  // namespace kestrel
