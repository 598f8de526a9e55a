#include "engine/poker/bet_size.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/engine/failure.h"

namespace kestrel {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr std::int32_t int_max = std::numeric_limits<std::int32_t>::max();

SizeToken pot(double ratio) {
    return {.kind = SizeKind::PotPercent, .ratio = ratio};
}
SizeToken multiple(double ratio) {
    return {.kind = SizeKind::RaiseMultiple, .ratio = ratio};
}
SizeToken chips(std::int32_t amount, std::int32_t cap = 0) {
    return {.kind = SizeKind::Chips, .chips = amount, .raise_cap = cap};
}
SizeToken geometric(std::int32_t streets, double max_ratio = infinity) {
    return {.kind = SizeKind::Geometric, .max_ratio = max_ratio, .streets = streets};
}
const SizeToken all_in{.kind = SizeKind::AllIn};

TEST(BetSize, Tokens) {
    const std::pair<std::string_view, SizeToken> cases[] = {
        {" \t75% ", pot(0.75)}, {"33.3%", pot(33.3 / 100.0)},  {"-10%", pot(-0.1)},
        {"0x10%", pot(0.16)},   {"2.5X", multiple(2.5)},       {"500C", chips(500)},
        {"e", geometric(0)},    {"3%75E", geometric(3, 0.75)}, {"%75e", geometric(0, 0.75)},
        {"A", all_in},
    };
    for (const auto& [text, token] : cases) {
        EXPECT_EQ(parse_size_token(text, true), token) << text;
        if (token.kind == SizeKind::RaiseMultiple || token.raise_cap > 0) continue;
        EXPECT_EQ(parse_size_token(text, false), token) << text;
    }
    using Sizes = std::vector<SizeToken>;
    EXPECT_EQ(parse_size_list(" 33% ,, 75,\t", false), (Sizes{pot(0.33), chips(75)}));
    EXPECT_EQ(parse_donk_list("a,50%"), (Sizes{all_in, pot(0.5)}));
    const auto [bets, raises] = parse_bet_raise_lists("50%", "2.5x,300c1r");
    EXPECT_EQ(bets, Sizes{pot(0.5)});
    EXPECT_EQ(raises, (Sizes{multiple(2.5), chips(300, 1)}));
}

TEST(BetSize, Failures) {
    const std::string head = "invalid argument: ";
    const std::string no_integer = head + "Failed to parse integer from ";
    const std::string no_decimal = head + "Failed to parse floating-point number from ";
    const std::pair<std::string, std::vector<std::string_view>> cases[] = {
        {head + "Empty bet size token", {" \n"}},
        {head + "Relative raise must exceed 1.0x", {"1x"}},
        {head + "Raise cap must end with 'r'", {"500c2c"}},
        {head + "Raise cap must be positive", {"500c0r"}},
        {head + "Geometric streets must be positive", {"0e", "-1%50e"}},
        {no_integer + "'500c2'", {"500c2"}},
        {no_integer + "''", {"500cr"}},
        {no_integer + "' 2'", {"500c 2r"}},
        {no_integer + "'99999999999999999999'", {"99999999999999999999"}},
        {"out of range: Integer value is out of range", {"2147483648", "-2147483649c"}},
        {no_decimal + "'' (hex=)", {"%", "3%e"}},
        {no_decimal + "'75\xe9\x80' (hex=3735e980)", {"75\xe9\x80%"}},
        {no_decimal + "'1e999' (hex=3165393939)", {"1e999%"}},
        {no_decimal + "'5", {{"5\0%", 3}}}};  // as a C string the message ends at the NUL
    for (const auto& [failure, texts] : cases) {
        for (const std::string_view text : texts) {
            EXPECT_EQ(failure_of([&] { parse_size_token(text, true); }), failure);
        }
    }
    EXPECT_EQ(failure_of([] { parse_size_token("500c2c", false); }),
              head + "Raise cap is only valid for raises");
    EXPECT_EQ(failure_of([] { parse_bet_raise_lists("50%,2x", "2x"); }),
              head + "Relative raise (x) is not allowed in this context");
}

TEST(BetSize, Amounts) {
    const SizeContext context{.pot_after_call = 1001,
                              .street_bet = 301,
                              .max_raise_to = 5000,
                              .min_raise_to = 100,
                              .streets_left = 1,
                              .stack_to_pot = 4.0};
    const std::pair<SizeToken, std::int32_t> cases[] = {
        {pot(0.5), 501},  // 500.5, away from zero
        {pot(0.75), 751},      {pot(0.0), 100},          {pot(-1e30), 100},
        {pot(10.0), 5000},     {pot(1e30), 5000},        {pot(infinity), 5000},
        {pot(-infinity), 100}, {pot(nan), 5000},         {multiple(2.5), 753},
        {chips(500), 801},     {chips(int_max), 5000},   {chips(-400), 100},
        {geometric(0), 4004},  // the whole stack of four pots
        {geometric(2), 1001},  // (sqrt(9) - 1) / 2 pots
        {geometric(3), 541},   {geometric(2, 0.5), 501}, {geometric(2, nan), 1001},
        {all_in, 5000},
    };
    for (const auto& [token, amount] : cases) {
        EXPECT_EQ(resolve_size(token, context), amount)
            << static_cast<int>(token.kind) << ' ' << token.ratio;
    }
    EXPECT_EQ(resolve_size(geometric(0), {.max_raise_to = 9, .min_raise_to = 4}), 4);
    EXPECT_EQ(resolve_size(geometric(1), {.max_raise_to = 9, .stack_to_pot = infinity}), 9);
}

}  // namespace
}  // namespace kestrel
