#include "engine/poker/cards.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/engine/failure.h"

namespace kestrel {
namespace {

TEST(Cards, CodesAndTextsAgree) {
    const std::string ranks = "23456789TJQKA";
    const std::string suits = "cdhs";
    for (int code = 0; code < 256; ++code) {
        const auto card = static_cast<Card>(code);
        if (code >= 52) {
            EXPECT_EQ(failure_of([&] { card_to_string(card); }),
                      "out of range: Card code must be in [0, 52)");
            continue;
        }
        const std::string text{ranks[static_cast<std::size_t>(code / 4)],
                               suits[static_cast<std::size_t>(code % 4)]};
        EXPECT_EQ(card_to_string(card), text);
        EXPECT_EQ(parse_card(text), card);
    }
    EXPECT_EQ(parse_card("aS"), 51);
    for (const int rank : {-1, 13}) {
        EXPECT_EQ(failure_of([&] { rank_char(rank); }), "out of range: Rank is out of range");
    }
    for (const char* text : {"10h", "A"}) {
        EXPECT_EQ(failure_of([&] { parse_card(text); }),
                  "invalid argument: Card token must consist of two characters");
    }
}

TEST(Cards, FlopKeepsTheOrderOfTheText) {
    EXPECT_EQ(parse_flop("A s\tKD\n7 c"), (std::array<Card, 3>{51, 45, 20}));
    const std::pair<std::string, std::vector<std::string_view>> failures[] = {
        {"Flop string must contain exactly three cards", {"As Kd 7c 2h", "AsKd7", ""}},
        {"Flop cards must be unique", {"AsAs7c", "7cAsaS", "7cAs7C"}},
        {"Invalid suit character", {"AsKsQ\xe9"}}};
    for (const auto& [failure, texts] : failures) {
        for (const std::string_view text : texts) {
            EXPECT_EQ(failure_of([&] { parse_flop(text); }), "invalid argument: " + failure);
        }
    }
}

TEST(Cards, PocketNumbersAreLexicographic) {
    std::size_t next = 0;
    for (Card low = 0; low < 52; ++low) {
        for (auto high = static_cast<Card>(low + 1); high < 52; ++high, ++next) {
            ASSERT_EQ(pocket_index(low, high), next);
            ASSERT_EQ(pocket_index(high, low), next);
            ASSERT_EQ(pocket_from_index(next), (Pocket{low, high}));
        }
    }
    EXPECT_EQ(next, pocket_count);
    EXPECT_EQ(failure_of([] { pocket_from_index(pocket_count); }),
              "out of range: Pocket index is out of range");
    EXPECT_EQ(card_bit(NO_CARD), 0U);
}

}  // namespace
}  // namespace kestrel
