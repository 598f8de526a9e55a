#include "engine/solver/terminal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <vector>

#include "tests/engine/support.h"

namespace kestrel {
namespace {

/// Terminals of a game: at most `most` folds and as many showdowns, evenly picked.
std::vector<std::size_t> terminals_of(const Game& game, std::size_t most) {
    std::array<std::vector<std::size_t>, 2> all;
    for (std::size_t i = 0; i < game.nodes.size(); ++i) {
        if (game.nodes[i].kind == NodeKind::Terminal) {
            all[game.nodes[i].last_action == ActionKind::fold].push_back(i);
        }
    }
    std::vector<std::size_t> picked;
    for (const auto& list : all) {
        EXPECT_FALSE(list.empty());
        for (std::size_t k = 0; k < std::min(most, list.size()); ++k) {
            picked.push_back(list[k * list.size() / std::min(most, list.size())]);
        }
    }
    return picked;
}

/// Values against the pairwise form. The totals behind a value are sums in double and it is rounded
/// to f32 once or twice, 6e-8 of its size each; a run-out that is averaged adds one rounding of the
/// running sum, and over 1176 of them these stay below 1e-5 of the largest possible value even if
/// few cancel.
void expect_pairwise(const Game& game, std::size_t index, std::uint32_t seed) {
    const GameNode& node = game.nodes[index];
    for (const Seat seat : {Seat::OOP, Seat::IP}) {
        const std::size_t s = index_of(seat);
        const auto reach = random_row(game.cards.pockets[1 - s].size(), seed);
        std::vector<float> out(game.cards.pockets[s].size(), 7.0F);
        terminal_eval(game, node, seat, reach, out);
        const std::vector<double> expected = plain_terminal(game, node, seat, reach);
        const double scale = (game.options.starting_pot / 2.0 + node.matched) *
                             std::accumulate(reach.begin(), reach.end(), 0.0) /
                             plain_mass(game.cards);
        const CardMask dealt = card_bit(node.turn) | card_bit(node.river);
        for (std::size_t h = 0; h < out.size(); ++h) {
            ASSERT_NEAR(out[h], expected[h], 1e-5 * scale)
                << "node " << index << ", seat " << s << ", hand " << h;
            if ((pocket_mask(game.cards.pockets[s][h]) & dealt) != 0) {
                ASSERT_EQ(out[h], 0.0F) << "a hand that the board blocks";
            }
        }
    }
}

struct TerminalCase {
    const char* name;
    Spot spot;
};

std::vector<TerminalCase> terminal_cases() {
    const std::string wide = "22+,A2s+,A7o+,K8s+,KTo+,Q9s+,J9s+,T8s+,97s+,86s+";
    const std::string other_wide = "99-22,ATs+:0.5,KQo,QJs,T9o:0.25,76s,A5s-A2s,72o";
    Spot river{.board = "Td9d6h6c2s", .oop = wide, .ip = other_wide};
    river.river = both("75%", "3x");
    Spot quads{.board = "Td9d6h6c6s", .oop = "AA,KK,T9s,54s,A6s", .ip = "AKs,AKo,88,T9s,33-22"};
    quads.river = both("50%");
    Spot plays_the_board{.board = "AdKdQdJdTd", .oop = "99-77", .ip = "99-66"};
    plays_the_board.river = both("50%");
    Spot turn{.board = "Td9d6h6c", .oop = "TT,AJs,87s,KQo", .ip = "99,AJs:0.5,A6s,54s,T8s"};
    turn.turn = both("50%,a", "a");
    turn.river = both("50%");
    Spot flop{
        .board = "Td9d6h", .oop = "AdJd,8c7c,8s7s,TsTc,2c2d", .ip = "AdKd,AsJs,8c7c,6c6s,3c3h"};
    flop.flop = both("a");
    return {{"river", river},
            {"trips on the board", quads},
            {"all tie", plays_the_board},
            {"turn", turn},
            {"flop", flop}};
}

TEST(Terminal, AgainstPairwiseEvaluation) {
    struct Rake {
        double fraction, cap;
    };
    // The last rake is none in effect: a pot of 1000 gives 1e-10.
    for (const Rake rake :
         {Rake{0, 0}, Rake{0, 40}, Rake{0.05, 0}, Rake{0.05, 60}, Rake{1e-13, 0}}) {
        for (TerminalCase c : terminal_cases()) {
            SCOPED_TRACE(testing::Message() << c.name << ", rake " << rake.fraction);
            c.spot.rake = rake.fraction;
            c.spot.rake_cap = rake.cap;
            const Game game = game_from(c.spot);
            for (const std::size_t node : terminals_of(game, 30)) {
                expect_pairwise(game, node, static_cast<std::uint32_t>(node));
            }
        }
    }
}

TEST(Terminal, ShowdownsWithCardsToCome) {
    for (const auto& [fraction, cap] : {std::pair(0.0, 0.0), {0.05, 0.0}, {0.05, 60.0}}) {
        for (TerminalCase c : terminal_cases()) {
            c.spot.rake = fraction;
            c.spot.rake_cap = cap;
            if (c.spot.board.size() == 10) {
                continue;
            }
            const Game game = game_from(c.spot);
            const std::size_t called = descend(game.nodes, "a10000 c10000");
            ASSERT_TRUE(game.nodes[called].runout_pending);
            expect_pairwise(game, called, 1);
            if (c.spot.board.size() == 6) {
                expect_pairwise(game, descend(game.nodes, "a10000 c10000 d7d"), 2);
            }
        }
    }
}

TEST(Terminal, ExactAllInsCountTheRunoutsOfTwoHands) {
    for (const TerminalCase& c : terminal_cases()) {
        if (c.spot.board.size() == 10) continue;
        const Game plain = game_from(c.spot);
        PlanOptions options = options_from(c.spot);
        options.exact_all_in = true;
        const Game exact(options, cards_from(c.spot));
        const std::size_t node = descend(plain.nodes, "a10000 c10000");
        const float ratio = c.spot.board.size() == 8 ? 48.0F / 44.0F : 1176.0F / 990.0F;
        const std::vector<float> reach(plain.cards.pockets[1].size(), 1.0F);
        std::vector<float> a(plain.cards.pockets[0].size());
        std::vector<float> b(a.size());
        terminal_eval(plain, plain.nodes[node], Seat::OOP, reach, a);
        terminal_eval(exact, exact.nodes[node], Seat::OOP, reach, b);
        for (std::size_t h = 0; h < a.size(); ++h)
            EXPECT_FLOAT_EQ(b[h], a[h] * ratio);
    }
}

TEST(Terminal, AnswersOfZero) {
    Spot spot{.board = "Td9d6h6c", .oop = "TT,87s,76s", .ip = "99,76s"};
    spot.turn = both("a");
    spot.rake = 0.05;
    const Game game = game_from(spot);
    const std::vector<float> reach = random_row(game.cards.pockets[1].size(), 3);
    const std::size_t hands = game.cards.pockets[0].size();
    for (const char* path : {"a10000 f", "a10000 c10000", "x x d2s x x"}) {
        const GameNode& node = game.nodes[descend(game.nodes, path)];
        const auto zeros_for = [&](std::size_t reach_size, std::size_t out_size, float fill) {
            std::vector<float> row(reach_size, fill);
            std::vector<float> out(out_size, 7.0F);
            terminal_eval(game, node, Seat::OOP, row, out);
            return std::ranges::all_of(out, [](float value) { return value == 0.0F; });
        };
        EXPECT_TRUE(zeros_for(reach.size(), hands, 0.0F)) << path << ", no reach";
        EXPECT_TRUE(zeros_for(reach.size() + 1, hands, 1.0F)) << path << ", long reach";
        EXPECT_TRUE(zeros_for(reach.size() - 1, hands, 1.0F)) << path << ", short reach";
        EXPECT_TRUE(zeros_for(reach.size(), hands + 1, 1.0F)) << path << ", long out";
        EXPECT_FALSE(zeros_for(reach.size(), hands, 1.0F)) << path;
    }
    const GameNode& incomplete_board = game.nodes[descend(game.nodes, "a10000 c10000")];
    std::vector<float> out(hands, 7.0F);
    EXPECT_FALSE(showdown(game, incomplete_board, Seat::OOP, reach, out));
    EXPECT_EQ(out, std::vector<float>(hands, 7.0F));
}

TEST(Terminal, RakeOfAPot) {
    struct Case {
        double fraction, cap, pot, rake;
    };
    for (const Case& c : {Case{0.05, 0, 1000, 50}, Case{0.05, 40, 1000, 40},
                          Case{0.05, 60, 1000, 50}, Case{0, 40, 1000, 0}, Case{-0.1, 0, 1000, 0}}) {
        PlanOptions options;
        options.rake_fraction = c.fraction;
        options.rake_cap = c.cap;
        EXPECT_DOUBLE_EQ(rake_of(options, c.pot), c.rake);
    }
}

// A hand that the other seat could hold too is taken out of what it faces exactly once, and does
// not tie with itself: 9c8c against 9c8c alone meets nobody.
TEST(Terminal, TheSamePocketIsNoOpponent) {
    Spot spot{.board = "Td6h6c2s3d", .oop = "9c8c,AcAd", .ip = "9c8c,KcKd"};
    spot.river = both("50%");
    spot.rake = 0.1;
    const Game game = game_from(spot);
    std::vector<float> reach(2);
    reach[position_of(game, Seat::IP, "9c8c")] = 1.0F;
    const std::size_t own = position_of(game, Seat::OOP, "9c8c");
    for (const char* path : {"x x", "b500 f", "b500 c500"}) {
        std::vector<float> out(2);
        terminal_eval(game, game.nodes[descend(game.nodes, path)], Seat::OOP, reach, out);
        EXPECT_EQ(out[own], 0.0F) << path;
        EXPECT_GT(out[1 - own], 0.0F) << path;
    }
}

}  // namespace
}  // namespace kestrel
