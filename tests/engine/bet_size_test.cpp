#include "engine/poker/bet_size.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>
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
        {"75%", pot(0.75)},
        {" \t75% ", pot(0.75)},
        {"33.3%", pot(33.3 / 100.0)},
        {"-10%", pot(-0.1)},
        {"inf%", pot(infinity)},
        {"3e75%", pot(3e75 / 100.0)},
        {"1e-400%", pot(0.0)},
        {"1.01x", multiple(1.01)},
        {"2.5X", multiple(2.5)},
        {"500c", chips(500)},
        {"500C", chips(500)},
        {"-5c", chips(-5)},
        {"500", chips(500)},
        {"+500", chips(500)},
        {"500c3r", chips(500, 3)},
        {"500C3R", chips(500, 3)},
        {"3e", geometric(3)},
        {"e", geometric(0)},
        {"3%75E", geometric(3, 0.75)},
        {"%75e", geometric(0, 0.75)},
        {"a", all_in},
        {"A", all_in},
        {"100a", all_in},
    };
    for (const auto& [text, token] : cases) {
        EXPECT_EQ(parse_size_token(text, true), token) << text;
        if (token.kind == SizeKind::RaiseMultiple || token.raise_cap > 0) continue;
        EXPECT_EQ(parse_size_token(text, false), token) << text;
    }
}

TEST(BetSize, Failures) {
    const std::string no_integer = "invalid argument: Failed to parse integer from ";
    const std::string no_decimal = "invalid argument: Failed to parse floating-point number from ";
    const std::tuple<std::string_view, bool, std::string> cases[] = {
        {"", true, "invalid argument: Empty bet size token"},
        {" \n", true, "invalid argument: Empty bet size token"},
        {"2x", false, "invalid argument: Relative raise (x) is not allowed in this context"},
        {"1x", true, "invalid argument: Relative raise must exceed 1.0x"},
        {"-2x", true, "invalid argument: Relative raise must exceed 1.0x"},
        {"500c2r", false, "invalid argument: Raise cap is only valid for raises"},
        {"500c2c", false, "invalid argument: Raise cap is only valid for raises"},
        {"500c2c", true, "invalid argument: Raise cap must end with 'r'"},
        {"500c0r", true, "invalid argument: Raise cap must be positive"},
        {"0e", true, "invalid argument: Geometric streets must be positive"},
        {"-1%50e", true, "invalid argument: Geometric streets must be positive"},
        {"500c2", true, no_integer + "'500c2'"},
        {"500r", true, no_integer + "'500r'"},
        {"c", true, no_integer + "''"},
        {"500cr", true, no_integer + "''"},
        {"500c 2r", true, no_integer + "' 2'"},
        {"1.5", true, no_integer + "'1.5'"},
        {"99999999999999999999", true, no_integer + "'99999999999999999999'"},
        {"2147483648", true, "out of range: Integer value is out of range"},
        {"-2147483649c", true, "out of range: Integer value is out of range"},
        {"abc%", true, no_decimal + "'abc' (hex=616263)"},
        {"%", true, no_decimal + "'' (hex=)"},
        {"1e%", true, no_decimal + "'1e' (hex=3165)"},
        {"75\xe9\x80%", true, no_decimal + "'75\xe9\x80' (hex=3735e980)"},
        {"1e999%", true, no_decimal + "'1e999' (hex=3165393939)"},
        {"3%e", true, no_decimal + "'' (hex=)"},
        {std::string_view("5\0%", 3), true, no_decimal + std::string("'5\0' (hex=3500)", 15)},
    };
    for (const auto& [text, relative, failure] : cases) {
        const auto parse = [&, text = text, relative = relative] {
            parse_size_token(text, relative);
        };
        // The message is a C string: a text with a NUL byte ends there.
        EXPECT_EQ(failure_of(parse), failure.c_str()) << text;
    }
    EXPECT_EQ(failure_of([] { parse_bet_raise_lists("50%,2x", "2x"); }),
              "invalid argument: Relative raise (x) is not allowed in this context");
}

TEST(BetSize, Lists) {
    using Sizes = std::vector<SizeToken>;
    EXPECT_EQ(parse_size_list(" 33% ,, 75,\t", false), (Sizes{pot(0.33), chips(75)}));
    EXPECT_EQ(parse_size_list(" , ", true), Sizes{});
    EXPECT_EQ(parse_donk_list("a,50%"), (Sizes{all_in, pot(0.5)}));
    const auto [bets, raises] = parse_bet_raise_lists("50%", "2.5x,300c1r");
    EXPECT_EQ(bets, Sizes{pot(0.5)});
    EXPECT_EQ(raises, (Sizes{multiple(2.5), chips(300, 1)}));
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
        {pot(0.75), 751},         {pot(0.0), 100},           {pot(-1e30), 100},
        {pot(10.0), 5000},        {pot(1e30), 5000},         {pot(infinity), 5000},
        {pot(-infinity), 100},    {pot(nan), 5000},          {multiple(2.5), 753},
        {chips(500), 801},        {chips(int_max), 5000},    {chips(-400), 100},
        {geometric(0), 4004},  // the whole stack of four pots
        {geometric(2), 1001},  // (sqrt(9) - 1) / 2 pots
        {geometric(2, 0.5), 501}, {geometric(2, nan), 1001}, {all_in, 5000},
    };
    for (const auto& [token, amount] : cases) {
        EXPECT_EQ(resolve_size(token, context), amount)
            << static_cast<int>(token.kind) << ' ' << token.ratio;
    }
    EXPECT_EQ(resolve_size(geometric(0), {.max_raise_to = 9, .min_raise_to = 4}), 4);
    EXPECT_EQ(resolve_size(geometric(1), {.max_raise_to = 9, .stack_to_pot = infinity}), 9);
}

// Bet and called on each street, the geometric fraction puts exactly the stack in.
TEST(BetSize, GeometricGrowthEndsAllIn) {
    for (const int streets : {1, 2, 3}) {
        for (const double stack : {25e3, 100e3, 987654.0}) {
            double pot_size = 1e5;
            double left = stack;
            const double start = pot_size;
            for (int street = streets; street > 0; --street) {
                const SizeContext context{.pot_after_call = static_cast<std::int32_t>(pot_size),
                                          .max_raise_to = int_max,
                                          .streets_left = street,
                                          .stack_to_pot = left / pot_size};
                const double bet = resolve_size(geometric(0), context);
                left -= bet;
                pot_size += 2 * bet;
            }
            EXPECT_NEAR(left, 0.0, 0.5) << streets << ' ' << stack;
            EXPECT_NEAR(pot_size, start + 2 * stack, 1.0);
        }
    }
}

TEST(BetSize, ClampAmount) {
    const std::tuple<double, std::int32_t, std::int32_t, std::int32_t> cases[] = {
        {2.5, 0, 10, 3},
        {-2.5, -10, 10, -3},
        {2.4999, 0, 10, 2},
        {50.0, 0, 10, 10},
        {5.0, 20, 10, 20},  // the lower limit wins
        {nan, 20, 10, 20},
        {nan, 0, 10, 10},
        {2147483647.4, 0, int_max, int_max},
        {2147483648.0, 0, 10, 10},
        {1e300, 0, int_max, int_max},
        {-1e300, -5, 10, -5},
    };
    for (const auto& [amount, low, high, expected] : cases) {
        EXPECT_EQ(clamp_amount(amount, low, high), expected) << amount;
    }
}

}  // namespace
}  // namespace kestrel
