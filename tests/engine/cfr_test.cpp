#include "engine/solver/discounted_cfr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tests/engine/support.h"

namespace kestrel {
namespace {

// Games with a known equilibrium. A bettor holds the nuts or nothing, the other seat a hand between
// the two, and no hands share cards. Sources: von Neumann's betting game; Chen and Ankenman, "The
// Mathematics of Poker" (2006), chapters on one-street and multi-street polar play.

constexpr double frequency_bound = 0.002;

/// "b500" to "b500 c500".
std::string bet_and_call(std::string_view bet) {
    return std::string(bet).append(" c").append(bet.substr(1));
}

// With pot P, bet b, and rake r(P) of a pot that is not called and r(P + 2b) of one that is:
// a bluff gains P - r(P) when IP folds and loses b when called, against 0 for a check, so IP calls
//     c = (P - r(P)) / (P - r(P) + b);
// a call wins P + b - r(P + 2b) from a bluff and loses b to the nuts, so of OOP's bets the share
//     b / (P + 2b - r(P + 2b))
// are bluffs. Without rake: P / (P + b) and b / (P + 2b).
TEST(DiscountedCfr, PolarisedRangeOnTheRiver) {
    struct Case {
        std::string_view size, bet;
        double amount, fraction = 0, cap = 0;
    };
    const Case cases[] = {
        {"33%", "b330", 330},
        {"75%", "b750", 750},
        {"100%", "b1000", 1000},
        {"200%", "b2000", 2000},
        {"a", "a10000", 10000},
        {"75%", "b750", 750, 0.05, 0},
        {"100%", "b1000", 1000, 0.05, 80},
        {"50%", "b500", 500, 0.1, 30},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.size << ", rake " << c.fraction << " to " << c.cap);
        // OOP: quads or nothing, IP: a better two pair than the board's. Nobody but OOP may bet.
        Spot spot{.board = "KsKd7c4h2s", .oop = "KcKh,6c5d", .ip = "AcAd"};
        spot.river.oop_bets = c.size;
        spot.rake = c.fraction;
        spot.rake_cap = c.cap;
        const Solved solved(spot, iterations(4000));
        const auto rake = [&](double pot) {
            return c.cap > 0 ? std::min(c.fraction * pot, c.cap) : c.fraction * pot;
        };
        const double pot = spot.pot;
        const double fold_gain = pot - rake(pot);
        const double calling = fold_gain / (fold_gain + c.amount);
        const double share_of_bluffs = c.amount / (pot + 2 * c.amount - rake(pot + 2 * c.amount));

        const double nuts = frequency(solved, c.bet, "KcKh");
        const double bluffs = frequency(solved, c.bet, "6c5d");
        EXPECT_NEAR(nuts, 1.0, frequency_bound);
        EXPECT_NEAR(bluffs / (nuts + bluffs), share_of_bluffs, frequency_bound);
        EXPECT_NEAR(frequency(solved, bet_and_call(c.bet), "AcAd"), calling, frequency_bound);
    }
}

// Turn and river, a bet on each, never all-in. No river card changes who is ahead, but some tell
// what OOP holds: of the 44 that two hands leave, 2 are cards of OOP's other hand. Pot P, bets b1
// and b2, the river pot Q = P + 2 b1; weights in units of the nuts'.
// River: IP calls Q / (Q + b2); OOP bluffs with the weight x2 = b2 / (Q + b2). Where the card shows
// that OOP has nothing it gives up, where it shows the nuts IP folds.
// Turn: a bluff that is called is worth 0 from there, so IP calls P / (P + b1). A call costs b1 and
// wins Q when OOP has nothing and does not bluff on, so with the weight x1 of bluffs
//     b1 (1 + x1) = Q (42/44 (x1 - x2) + 2/44 x1).
TEST(DiscountedCfr, PolarisedRangeOnTwoStreets) {
    const std::pair<std::string_view, double> sizes[] = {{"50%", 0.5}, {"100%", 1.0}};
    for (const auto& [text, fraction] : sizes) {
        SCOPED_TRACE(text);
        // The low cards make nothing better than the hand between on any river.
        Spot spot{.board = "KsKd7c4h", .oop = "KcKh:0.5,3c2d", .ip = "AcAd"};
        spot.turn.oop_bets = spot.river.oop_bets = text;
        const Solved solved(spot, iterations(4000));

        const double pot = spot.pot;
        const double b1 = fraction * pot;
        const double river_pot = pot + 2 * b1;
        const double b2 = fraction * river_pot;
        const double x2 = b2 / (river_pot + b2);
        const double x1 = (b1 + river_pot * x2 * 42 / 44) / (river_pot - b1);
        const std::string bet1 = "b" + std::to_string(std::lround(b1));
        const std::string bet2 = "b" + std::to_string(std::lround(b2));

        EXPECT_NEAR(frequency(solved, bet1, "KcKh"), 1.0, frequency_bound);
        EXPECT_NEAR(frequency(solved, bet1, "3c2d"), 0.5 * x1, frequency_bound);
        EXPECT_NEAR(frequency(solved, bet_and_call(bet1), "AcAd"), pot / (pot + b1),
                    frequency_bound);
        for (const std::string card : {"9h", "7d", "2s", "Qc"}) {
            SCOPED_TRACE(card);
            const std::string deal = bet_and_call(bet1) + " d" + card + " ";
            EXPECT_NEAR(frequency(solved, deal + bet2, "KcKh"), 1.0, frequency_bound);
            EXPECT_NEAR(frequency(solved, deal + bet2, "3c2d"), x2 / x1, frequency_bound);
            EXPECT_NEAR(frequency(solved, deal + bet_and_call(bet2), "AcAd"),
                        river_pot / (river_pot + b2), frequency_bound);
        }
    }
}

TEST(DiscountedCfr, DiscountSchedule) {
    struct Case {
        std::uint32_t t;
        double alpha, gamma;
    };
    const Case cases[] = {
        {0, 0, 0},
        {1, 0, 0},
        {2, 0.5, 0.125},
        {3, 0.738796, 0.296296},
        {4, 0.838610, 0},
        {15, 0.981268, 0.770255},
        {16, 0.983078, 0},
        {100, 0.998986, 0.921091},
        {0xFFFFFFFF, 1, std::pow(1 - 1 / (0xFFFFFFFF - 1073741823.0), 3)},
    };
    for (const Case& c : cases) {
        const Discounts discounts = discounts_of(c.t);
        EXPECT_NEAR(discounts.alpha, c.alpha, 1e-6) << c.t;
        EXPECT_NEAR(discounts.gamma, c.gamma, 1e-6) << c.t;
        EXPECT_EQ(discounts.beta, 0.5F);
    }
}

Spot small_river() {
    Spot spot{.board = "Td9d6h6c2s", .oop = "TT,87s:0.5,KQo", .ip = "99:0.75,AJs,A6s,54s"};
    spot.river = both("50%", "3x");
    return spot;
}

TEST(DiscountedCfr, TheAverageRestartsAtPowersOfFour) {
    for (const std::uint32_t count : {1U, 2U, 5U, 17U, 6U}) {
        const Solved solved(small_river(), iterations(count));
        const NodeState& root = solved.cfr.states[0];
        for (std::size_t h = 0; h < root.num_hands; ++h) {
            const float sum = root.strategy_sum()[h] + root.strategy_sum()[root.num_hands + h];
            EXPECT_NEAR(sum, count == 6 ? 1.125F : 1.0F, 1e-6F) << count;
        }
    }
}

TEST(DiscountedCfr, WhenARunEnds) {
    struct Case {
        const char* name;
        std::uint32_t most, interval;
        float target;
        std::uint32_t stop_at;  // the call of should_stop that says so; 0 for none
        std::uint32_t completed;
        std::vector<std::uint32_t> measured;  // iterations whose report brings a new value
    };
    const Case cases[] = {
        {"no iteration", 0, 5, 1e9F, 0, 0, {}},
        {"interval and last", 7, 3, 0, 0, 7, {3, 6, 7}},
        {"no interval", 7, 0, 1e9F, 0, 7, {7}},
        {"target at the first measurement", 50, 4, 1e9F, 0, 4, {4}},
        {"target on the last", 3, 50, 1e9F, 0, 3, {3}},
        {"no number is no target", 6, 2, std::nanf(""), 0, 6, {2, 4, 6}},
        {"stopped at once", 50, 4, 0, 1, 0, {}},
        {"stopped later", 50, 4, 0, 7, 6, {4}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        CfrOptions options = iterations(c.most);
        options.exploitability_interval = c.interval;
        options.target_exploitability = c.target;
        std::uint32_t asked = 0;
        options.should_stop = [&] { return ++asked == c.stop_at; };
        std::uint32_t reports = 0;
        std::vector<std::uint32_t> measured;
        float last = 0;
        options.progress = [&](std::uint32_t iteration, float exploitability, double ms) {
            EXPECT_EQ(iteration, ++reports);
            EXPECT_GE(ms, 0.0);
            if (exploitability != last) {
                measured.push_back(iteration);
                last = exploitability;
            }
        };
        const Solved solved(small_river(), options);
        EXPECT_EQ(solved.cfr.iterations_completed, c.completed);
        EXPECT_EQ(solved.cfr.exploitability, last);
        EXPECT_EQ(measured, c.measured);
        EXPECT_EQ(reports, c.completed);
    }
    // A measured value that equals the target is good enough.
    CfrOptions options = iterations(100);
    options.exploitability_interval = 10;
    options.target_exploitability = Solved(small_river(), iterations(10)).cfr.exploitability;
    EXPECT_EQ(Solved(small_river(), options).cfr.iterations_completed, 10U);
}

// Best responses and values by brute force: every hand against every other, every run-out that
// neither of two hands rules out. A value is off by the roundings of its sums to f32, up to 990 of
// 6e-8 where the run-outs of an all-in are added up, of which most cancel: 1e-5 of the largest pot
// bounds them.
TEST(DiscountedCfr, ValuesAgainstBruteForce) {
    Spot river{.board = "Td9d6h6c2s", .oop = "TcTh,8c7c:0.5,KcQd", .ip = "9c9h:0.75,AsJs,KcQd"};
    river.stack = 600;
    river.river = both("50%", "3x");
    Spot raked_river = river;
    raked_river.rake = 0.05;
    raked_river.rake_cap = 60;
    Spot turn = river;
    turn.board = "Td9d6h6c";
    turn.rake = 0.05;
    turn.turn = both("a");
    turn.exact_all_in = true;
    Spot flop = turn;
    flop.board = "Td9h6c";
    flop.oop = "TcTh,8c7c:0.5,AcAd";
    flop.ip = "9c9d:0.75,JsTs,AhKd";
    flop.flop = turn.turn;
    flop.turn = flop.river = {};
    Spot averaged_turn = turn;
    averaged_turn.exact_all_in = false;
    Spot averaged_flop = flop;
    averaged_flop.exact_all_in = false;
    for (const Spot& spot : {river, raked_river, turn, flop, averaged_turn, averaged_flop}) {
        SCOPED_TRACE(testing::Message() << spot.board << spot.rake << spot.exact_all_in);
        Solved solved(spot, iterations(9));
        const double bound = 1e-5 * (spot.pot + 2 * spot.stack);
        const auto current = solved.cfr.current_ev(solved.game);
        const auto best = solved.cfr.mes_ev(solved.game);
        const bool right = spot.exact_all_in || spot.board.size() == 10;
        const auto expect_near = [&](double value, double expected) {
            const double off = std::abs(value - expected);
            EXPECT_TRUE(right ? off <= bound : off > 10 * bound) << value << " for " << expected;
        };
        double both_played = 0;
        double both_answered = 0;
        double furthest = 0;
        for (const Seat seat : {Seat::OOP, Seat::IP}) {
            const auto& weights = solved.game.cards.pocket_weights;
            const std::size_t s = index_of(seat);
            const std::vector<double> reach(weights[1 - s].begin(), weights[1 - s].end());
            const auto played = plain_walk(solved, 0, seat, false, reach, true);
            const auto answered = plain_walk(solved, 0, seat, true, reach, true);
            for (std::size_t h = 0; h < played.size(); ++h) {
                const double weight = weights[s][h];
                both_played += weight * played[h];
                both_answered += weight * answered[h];
                const double row = solved.cfr.measure_values[s][h];
                furthest = std::max(furthest, std::abs(row - answered[h]));
            }
        }
        expect_near(current[0] + current[1], both_played);
        expect_near(furthest, 0);
        expect_near(best[0] + best[1], both_answered);
        expect_near(solved.cfr.exploitability, (both_answered - both_played) / 2);
    }
}

// The other queries stand in the tests of the walks.
TEST(DiscountedCfr, AverageStrategy) {
    const Solved solved(small_river(), iterations(25));
    const Solved untrained(small_river(), iterations(0));
    const NodeState& root = solved.cfr.states[0];
    const std::span<const float> sums = root.strategy_sum();
    const auto strategy = solved.cfr.average_strategy(0);
    ASSERT_EQ(strategy.size(), 2U * root.num_hands);
    for (std::size_t i = 0; i < strategy.size(); ++i) {
        const std::size_t h = i % root.num_hands;
        EXPECT_EQ(strategy[i], sums[i] / (sums[h] + sums[root.num_hands + h]));
        EXPECT_EQ(untrained.cfr.average_strategy(0)[i], 0.5F);
    }
}

// A packed value is off by at most half a step, 1 / 65534 of the largest of its row, at each visit,
// and errors fade as the regrets do; where a regret is near 0 the play may differ, which costs as
// little as the regret says. The bound is 0.1 % of the pot, on values and on exploitability.
TEST(DiscountedCfr, CompressionCostsLittle) {
    Spot turn{.board = "Td9d6h6c", .oop = "TT,87s:0.5,KQo", .ip = "99:0.75,AJs,A6s,54s"};
    turn.turn = turn.river = both("50%", "3x");
    for (const Spot& spot : {small_river(), turn}) {
        CfrOptions options = iterations(255);
        Solved plain(spot, options);
        options.compress = true;
        Solved packed(spot, options);
        const float bound = 0.001F * static_cast<float>(spot.pot);
        EXPECT_NEAR(plain.cfr.exploitability, packed.cfr.exploitability, bound);
        const auto a = plain.cfr.current_ev(plain.game);
        const auto b = packed.cfr.current_ev(packed.game);
        EXPECT_NEAR(a[0], b[0], bound);
        EXPECT_NEAR(a[1], b[1], bound);
        EXPECT_TRUE(packed.cfr.states[0].regrets().empty());
    }
}

}  // namespace
}  // namespace kestrel
