#include "engine/poker/cards.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "tests/engine/failure.h"

namespace kestrel {
namespace {

constexpr auto bad_code = "out of range: Card code must be in [0, 52)";

TEST(Cards, CodesAndTextsAgree) {
    const std::string ranks = "23456789TJQKA";
    const std::string suits = "cdhs";
    for (int code = 0; code < 256; ++code) {
        const auto card = static_cast<Card>(code);
        if (code >= 52) {
            EXPECT_EQ(failure_of([&] { card_to_string(card); }), bad_code) << code;
            EXPECT_EQ(failure_of([&] { check_card(card); }), bad_code) << code;
            continue;
        }
        const std::string text{ranks[static_cast<std::size_t>(code / 4)],
                               suits[static_cast<std::size_t>(code % 4)]};
        EXPECT_EQ(card_to_string(card), text);
        EXPECT_EQ(parse_card(text), card);
        EXPECT_EQ(rank_char(rank_of(card)), text[0]);
    }
    EXPECT_EQ(parse_card("aS"), 51);
    EXPECT_EQ(parse_card("tC"), 32);
}

TEST(Cards, RefusesOtherCharacters) {
    for (int code = 0; code < 256; ++code) {
        const auto character = static_cast<char>(code);
        const bool is_rank = code != 0 && std::strchr("23456789TJQKAtjqka", character);
        const bool is_suit = code != 0 && std::strchr("cdhsCDHS", character);
        EXPECT_EQ(failure_of([&] { parse_rank(character); }),
                  is_rank ? "" : "invalid argument: Invalid rank character");
        EXPECT_EQ(failure_of([&] { parse_suit(character); }),
                  is_suit ? "" : "invalid argument: Invalid suit character");
    }
    EXPECT_EQ(failure_of([] { rank_char(13); }), "out of range: Rank is out of range");
    EXPECT_EQ(failure_of([] { rank_char(-1); }), "out of range: Rank is out of range");
    EXPECT_EQ(failure_of([] { parse_card("10h"); }),
              "invalid argument: Card token must consist of two characters");
    EXPECT_EQ(failure_of([] { parse_card("A"); }),
              "invalid argument: Card token must consist of two characters");
}

TEST(Cards, FlopKeepsTheOrderOfTheText) {
    const std::pair<std::string_view, std::string_view> flops[] = {
        {"7cAsKd", "7cAsKd"},       {"As Kd 7c", "AsKd7c"}, {"ahKDqS", "AhKdQs"},
        {"A s\tKd\n7 c", "AsKd7c"}, {"2c2d2h", "2c2d2h"},
    };
    for (const auto& [text, cards] : flops) {
        std::string flop;
        for (const Card card : parse_flop(text))
            flop += card_to_string(card);
        EXPECT_EQ(flop, cards) << text;
    }
    const std::pair<std::string_view, std::string> refused[] = {
        {"As Kd 7c 2h", "invalid argument: Flop string must contain exactly three cards"},
        {"AsKd7", "invalid argument: Flop string must contain exactly three cards"},
        {"", "invalid argument: Flop string must contain exactly three cards"},
        {"AsAs7c", "invalid argument: Flop cards must be unique"},
        {"7cAsaS", "invalid argument: Flop cards must be unique"},
        {"7cAs7C", "invalid argument: Flop cards must be unique"},
        {"AsKs10", "invalid argument: Invalid rank character"},
        {"AsKsQ\xe9", "invalid argument: Invalid suit character"},
    };
    for (const auto& [text, failure] : refused) {
        EXPECT_EQ(failure_of([&] { parse_flop(text); }), failure) << text;
    }
}

TEST(Cards, PocketNumbersAreLexicographic) {
    std::size_t next = 0;
    for (Card low = 0; low < 52; ++low) {
        for (auto high = static_cast<Card>(low + 1); high < 52; ++high, ++next) {
            ASSERT_EQ(pocket_index(low, high), next);
            ASSERT_EQ(pocket_index(high, low), next);
            ASSERT_EQ(pocket_from_index(next), (Pocket{low, high}));
            ASSERT_EQ(pocket_mask({low, high}), CardMask{1} << low | CardMask{1} << high);
        }
    }
    EXPECT_EQ(next, pocket_count);
    EXPECT_EQ(failure_of([] { pocket_from_index(pocket_count); }),
              "out of range: Pocket index is out of range");
    EXPECT_EQ(card_bit(NO_CARD), 0u);
}

}  // namespace
}  // namespace kestrel
