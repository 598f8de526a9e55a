#include "engine/solver/discounted_cfr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "engine/solver/best_response.h"
#include "engine/solver/traversal.h"
#include "tests/engine/support.h"

namespace kestrel {
namespace {

// Games with a known equilibrium. A bettor holds the nuts or nothing, the other seat a hand between
// the two, and no hands share cards. Sources: von Neumann's betting game; Chen and Ankenman, "The
// Mathematics of Poker" (2006), chapters on one-street and multi-street polar play.

constexpr double frequency_bound = 0.002;

/// OOP: quads or nothing, IP: a better two pair than the board's. Nobody but OOP may bet.
Spot polar_river(std::string_view bet) {
    Spot spot{.board = "KsKd7c4h2s", .oop = "KcKh,6c5d", .ip = "AcAd"};
    spot.river.oop_bets = bet;
    return spot;
}

/// "b500" to "b500 c500".
std::string bet_and_call(std::string_view bet) {
    return std::string(bet).append(" c").append(bet.substr(1));
}

struct PolarCase {
    std::string_view size;
    std::string_view bet;
    double amount;
    double fraction = 0;
    double cap = 0;
};

// With pot P, bet b, and rake r(P) of a pot that is not called and r(P + 2b) of one that is:
// a bluff gains P - r(P) when IP folds and loses b when called, against 0 for a check, so IP calls
//     c = (P - r(P)) / (P - r(P) + b);
// a call wins P + b - r(P + 2b) from a bluff and loses b to the nuts, so of OOP's bets the share
//     b / (P + 2b - r(P + 2b))
// are bluffs. Without rake: P / (P + b) and b / (P + 2b).
TEST(DiscountedCfr, PolarisedRangeOnTheRiver) {
    const PolarCase cases[] = {
        {"33%", "b330", 330},
        {"75%", "b750", 750},
        {"100%", "b1000", 1000},
        {"200%", "b2000", 2000},
        {"a", "a10000", 10000},
        {"75%", "b750", 750, 0.05, 0},
        {"100%", "b1000", 1000, 0.05, 80},
        {"50%", "b500", 500, 0.1, 30},
    };
    for (const PolarCase& c : cases) {
        SCOPED_TRACE(testing::Message() << c.size << ", rake " << c.fraction << " to " << c.cap);
        Spot spot = polar_river(c.size);
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
    const auto gamma = [](double g) { return std::pow(g / (g + 1), 3); };
    const Case cases[] = {
        {0, 0, 0},
        {1, 0, 0},
        {2, 0.5, 0.125},
        {3, 0.738796, 0.296296},
        {4, 0.838610, 0},
        {5, 0.888889, 0.125},
        {15, 0.981268, 0.770255},
        {16, 0.983078, 0},
        {63, 0.997956, gamma(47)},
        {64, 0.998004, 0},
        {100, 0.998986, 0.921091},
        {1U << 30, 1, 0},
        {0xFFFFFFFF, 1, gamma(0xFFFFFFFF - 1073741824.0)},
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
        const auto sums = root.strategy_sum();
        for (std::size_t h = 0; h < root.num_hands; ++h) {
            float sum = 0;
            for (std::size_t a = 0; a < root.num_actions; ++a) {
                sum += sums[a * root.num_hands + h];
            }
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
        std::vector<std::uint32_t> reports;
        std::vector<std::uint32_t> measured;
        float last = 0;
        options.progress = [&](std::uint32_t iteration, float exploitability, double ms) {
            reports.push_back(iteration);
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
        ASSERT_EQ(reports.size(), c.completed);
        for (std::uint32_t i = 0; i < c.completed; ++i) {
            EXPECT_EQ(reports[i], i + 1);
        }
        EXPECT_EQ(solved.cfr.states.size(), solved.game.nodes.size());
    }
    // A measured value that equals the target is good enough.
    CfrOptions options = iterations(100);
    options.exploitability_interval = 10;
    options.target_exploitability = Solved(small_river(), iterations(10)).cfr.exploitability;
    EXPECT_EQ(Solved(small_river(), options).cfr.iterations_completed, 10U);
}

TEST(DiscountedCfr, FailuresOfCallbacksLeaveTheRun) {
    const Game game = game_from(small_river());
    CfrOptions options = iterations(10);
    options.progress = [](std::uint32_t, float, double) { throw std::runtime_error("progress"); };
    DiscountedCfr progress(options);
    EXPECT_THROW(progress.run(game), std::runtime_error);
    EXPECT_EQ(progress.iterations_completed, 1U);
    options.should_stop = []() -> bool { throw std::invalid_argument("stop"); };
    DiscountedCfr stop(options);
    EXPECT_THROW(stop.run(game), std::invalid_argument);
    EXPECT_EQ(stop.iterations_completed, 0U);
}

/// The average strategies as a policy of the plain evaluation, with one seat's decisions replaced
/// by a number that holds a choice for each of its nodes.
class AveragePolicy {
  public:
    explicit AveragePolicy(const Solved& solved) : solved_(solved) {
        for (std::size_t i = 0; i < solved.game.nodes.size(); ++i) {
            strategies_.push_back(solved.cfr.average_strategy(i));
        }
    }

    /// Number of pure strategies of a seat.
    std::size_t pure_strategies(Seat seat) {
        pure_seat_ = seat;
        radix_.assign(solved_.game.nodes.size(), 0);
        std::size_t count = 1;
        for (std::size_t i = 0; i < solved_.game.nodes.size(); ++i) {
            const GameNode& node = solved_.game.nodes[i];
            if (node.kind == NodeKind::Decision && node.seat == seat) {
                radix_[i] = count;
                count *= node.actions.size();
            }
        }
        return count;
    }
    void play_pure(std::size_t number) { pure_ = number; }

    double operator()(std::size_t node, std::size_t hand, std::size_t action) const {
        const GameNode& n = solved_.game.nodes[node];
        if (!radix_.empty() && n.seat == pure_seat_) {
            return pure_ / radix_[node] % n.actions.size() == action ? 1.0 : 0.0;
        }
        const std::size_t hands = solved_.game.cards.pockets[index_of(n.seat)].size();
        return strategies_[node][action * hands + hand];
    }

  private:
    const Solved& solved_;
    std::vector<std::vector<float>> strategies_;
    Seat pure_seat_ = Seat::OOP;
    std::vector<std::size_t> radix_;
    std::size_t pure_ = 0;
};

/// The value of one hand against the other range, per unit of combination mass.
double plain_value(const Game& game, Seat seat, std::size_t hand, const AveragePolicy& policy) {
    const auto& own = game.cards.pockets[index_of(seat)];
    const auto& theirs = game.cards.pockets[index_of(other(seat))];
    double value = 0;
    for (std::size_t j = 0; j < theirs.size(); ++j) {
        if ((pocket_mask(own[hand]) & pocket_mask(theirs[j])) == 0) {
            value += static_cast<double>(game.cards.pocket_weights[index_of(other(seat))][j]) *
                     plain_pair_value(game, 0, seat, hand, j, policy);
        }
    }
    return value / plain_mass(game.cards);
}

TEST(DiscountedCfr, BestResponseAndCurrentValuesByEnumeration) {
    for (const double rake : {0.0, 0.05}) {
        Spot spot{.board = "Td9d6h6c2s", .oop = "TcTh,8c7c:0.5,KcQd", .ip = "9c9h:0.75,AsJs,KcQd"};
        spot.river = {"50%", "3x", "50%", "", std::nullopt};
        spot.rake = rake;
        Solved solved(spot, iterations(9));
        AveragePolicy policy(solved);
        const auto best = solved.cfr.mes_ev(solved.game);
        const auto best_rows = solved.cfr.measure_values;
        const auto current = solved.cfr.current_ev(solved.game);
        for (const Seat seat : {Seat::OOP, Seat::IP}) {
            const std::size_t s = index_of(seat);
            const auto& weights = solved.game.cards.pocket_weights[s];
            double total = 0;
            double best_total = 0;
            for (std::size_t h = 0; h < weights.size(); ++h) {
                AveragePolicy pure = policy;
                double highest = -1e9;
                for (std::size_t n = pure.pure_strategies(seat); n-- > 0;) {
                    pure.play_pure(n);
                    highest = std::max(highest, plain_value(solved.game, seat, h, pure));
                }
                EXPECT_NEAR(best_rows[s][h], highest, 1e-3);
                best_total += highest * static_cast<double>(weights[h]);
                total +=
                    plain_value(solved.game, seat, h, policy) * static_cast<double>(weights[h]);
            }
            EXPECT_NEAR(best[s], best_total, 1e-3);
            EXPECT_NEAR(current[s], total, 1e-3);
        }
        const double gains = best[0] + best[1] - (rake > 0 ? current[0] + current[1] : 0.0F);
        EXPECT_NEAR(solved.cfr.exploitability, gains / 2, 1e-3);
    }
}

TEST(DiscountedCfr, ValuesAddUpToTheRake) {
    for (const auto& [fraction, cap] : {std::pair(0.0, 0.0), {0.05, 0.0}, {0.05, 60.0}}) {
        Spot spot = small_river();
        spot.rake = fraction;
        spot.rake_cap = cap;
        Solved solved(spot, iterations(30));
        const auto values = solved.cfr.current_ev(solved.game);
        // The expected rake is what the values of the two seats lack at every terminal.
        const AveragePolicy policy(solved);
        double lost = 0;
        for (const Seat seat : {Seat::OOP, Seat::IP}) {
            for (std::size_t h = 0; h < solved.game.cards.pockets[index_of(seat)].size(); ++h) {
                lost -= static_cast<double>(solved.game.cards.pocket_weights[index_of(seat)][h]) *
                        plain_value(solved.game, seat, h, policy);
            }
        }
        EXPECT_NEAR(values[0] + values[1], -lost, 1e-3);
        // At least the rake of the pot that stands at the start, at most that of both stacks.
        const auto rake = [f = fraction, c = cap](double pot) {
            return c > 0 ? std::min(f * pot, c) : f * pot;
        };
        EXPECT_GE(lost, rake(spot.pot) - 1e-3);
        EXPECT_LE(lost, rake(spot.pot + 2.0 * spot.stack) + 1e-3);
    }
}

TEST(DiscountedCfr, Queries) {
    Solved solved(small_river(), iterations(25));
    const Game& game = solved.game;
    for (std::size_t i = 0; i < game.nodes.size(); ++i) {
        const GameNode& node = game.nodes[i];
        const auto strategy = solved.cfr.average_strategy(i);
        const auto frequencies = solved.cfr.action_frequencies(i);
        if (node.kind != NodeKind::Decision) {
            EXPECT_TRUE(strategy.empty() && frequencies.empty());
            continue;
        }
        const std::size_t hands = game.cards.pockets[index_of(node.seat)].size();
        const std::size_t actions = node.actions.size();
        ASSERT_EQ(strategy.size(), actions * hands);
        ASSERT_EQ(frequencies.size(), actions);
        const auto sums = solved.cfr.states[i].strategy_sum();
        for (std::size_t a = 0; a < actions; ++a) {
            double mean = 0;
            for (std::size_t h = 0; h < hands; ++h) {
                float sum = 0;
                for (std::size_t b = 0; b < actions; ++b) {
                    sum += sums[b * hands + h];
                }
                ASSERT_EQ(strategy[a * hands + h], sums[a * hands + h] / sum);
                mean += strategy[a * hands + h];
            }
            EXPECT_FLOAT_EQ(frequencies[a], static_cast<float>(mean / static_cast<double>(hands)));
        }
    }
    EXPECT_TRUE(solved.cfr.average_strategy(game.nodes.size()).empty());
    EXPECT_TRUE(solved.cfr.action_frequencies(game.nodes.size()).empty());
    EXPECT_TRUE(solved.cfr.node_values(game, game.nodes.size(), Seat::OOP).empty());

    // The values at the root, weighted by the range, are the seats' values; a reach of half the
    // weight is worth half.
    const auto current = solved.cfr.current_ev(game);
    for (const Seat seat : {Seat::OOP, Seat::IP}) {
        const std::size_t s = index_of(seat);
        const auto values = solved.cfr.node_values(game, 0, seat);
        std::vector<float> half = game.cards.pocket_weights[1 - s];
        for (float& weight : half) {
            weight /= 2;
        }
        const auto halved = solved.cfr.node_values(game, 0, seat, half);
        double total = 0;
        for (std::size_t h = 0; h < values.size(); ++h) {
            total += static_cast<double>(game.cards.pocket_weights[s][h]) *
                     static_cast<double>(values[h]);
            EXPECT_NEAR(halved[h], values[h] / 2, 1e-4F);
        }
        EXPECT_NEAR(current[s], total, 1e-3);
    }

    DiscountedCfr untrained(iterations(0));
    untrained.run(game);
    for (const float share : untrained.average_strategy(0)) {
        EXPECT_EQ(share, 0.5F);
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

Spot flop_spot() {
    Spot spot{.board = "AdJd8s",
              .oop = "TT-66,KQs,KTs,T9s,98s,AQo,QJs,54s,A4s-A2s",
              .ip = "QQ,TT-99:0.5,A9s-A2s,K9s+,76s,54s"};
    spot.turn = both("75%");
    spot.rake = 0.05;
    return spot;
}

// The walk that works through many nodes at a time against the one that takes them one by one.
TEST(DiscountedCfr, BatchedAndPlainWalksGiveTheSameBits) {
    Spot raked_turn{.board = "Td9d6h6c", .oop = "TT,87s:0.5,KQo", .ip = "99:0.75,AJs,A6s,54s"};
    raked_turn.turn = raked_turn.river = both("50%,a", "3x,a");
    raked_turn.rake = 0.05;
    raked_turn.rake_cap = 60;
    Spot turn = raked_turn;
    turn.rake = 0;
    Spot flop = flop_spot();
    flop.oop = "TT,KQs:0.5,98s";
    flop.ip = "88:0.5,KQs,A2s";
    flop.flop = both("a");
    flop.river = both("50%");
    for (const Spot& spot : {small_river(), turn, raked_turn, flop}) {
        for (const bool compress : {false, true}) {
            SCOPED_TRACE(testing::Message() << spot.board << spot.rake << compress);
            Game game = game_from(spot);
            const auto lock = [&](std::string_view path, std::size_t size, std::size_t locked) {
                std::vector<float> table(size, -1.0F);
                std::fill_n(table.begin(), locked, 0.5F);
                game.set_node_lock(descend(game.nodes, path), table);
            };
            lock("", 2 * game.cards.pockets[0].size(), 3);
            lock("x", 4, 4);
            CfrOptions options = iterations(6);
            options.compress = compress;
            DiscountedCfr batched(options);
            options.plain_walk = true;
            DiscountedCfr plain(options);
            batched.run(game);
            plain.run(game);
            EXPECT_TRUE(same_states(batched.states, plain.states));
            for (const bool best : {false, true}) {
                const auto values = best ? batched.mes_ev(game) : batched.current_ev(game);
                EXPECT_EQ(values, best ? plain.mes_ev(game) : plain.current_ev(game));
                for (std::size_t s = 0; s < 2; ++s) {
                    EXPECT_TRUE(same_bits(batched.root_values[s], plain.root_values[s]));
                    EXPECT_TRUE(same_bits(batched.measure_values[s], plain.measure_values[s]));
                }
            }
        }
    }
}

// Two deals, so that a fan-out stands inside another; hands enough for both to be worth it.
TEST(DiscountedCfrParallel, TheSameBitsAtEveryThreadCount) {
    for (const auto& [compress, plain] : {std::pair(false, false), {true, false}, {false, true}}) {
        CfrOptions options = iterations(2);
        options.compress = compress;
        options.plain_walk = plain;
        const Solved one(flop_spot(), options);
        ASSERT_GE(one.cfr.root_values[0].size(), 64U);
        ASSERT_GE(one.cfr.root_values[1].size(), 64U);
        for (const std::size_t threads : {2U, 5U}) {
            options.threads = threads;
            const Solved many(flop_spot(), options);
            EXPECT_TRUE(same_states(one.cfr.states, many.cfr.states)) << threads;
            for (std::size_t s = 0; s < 2; ++s) {
                EXPECT_TRUE(same_bits(one.cfr.root_values[s], many.cfr.root_values[s]));
                EXPECT_TRUE(same_bits(one.cfr.measure_values[s], many.cfr.measure_values[s]));
            }
            EXPECT_EQ(one.cfr.exploitability, many.cfr.exploitability);
        }
    }
}

}  // namespace
}  // namespace kestrel
