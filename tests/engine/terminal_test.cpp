#include "engine/solver/terminal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "tests/engine/support.h"

namespace kestrel {
namespace {

/// Up to 30 each of a game's folds, showdowns and all-ins with cards to come, evenly picked.
std::vector<std::size_t> terminals_of(const Game& game) {
    std::array<std::vector<std::size_t>, 3> all;
    for (std::size_t i = 0; i < game.nodes.size(); ++i) {
        const GameNode& node = game.nodes[i];
        if (node.kind == NodeKind::Terminal) {
            const bool fold = node.last_action == ActionKind::fold;
            all[fold ? 0 : node.river != NO_CARD ? 1 : 2].push_back(i);
        }
    }
    std::vector<std::size_t> picked;
    for (const auto& list : all) {
        const std::size_t count = std::min<std::size_t>(30, list.size());
        for (std::size_t k = 0; k < count; ++k)
            picked.push_back(list[k * list.size() / count]);
    }
    return picked;
}

/// Values against the pairwise form. The totals behind a value are sums in double and it is rounded
/// to f32 once or twice, 6e-8 of its size each; a run-out that is averaged adds one rounding of the
/// running sum, and over 1176 of them these stay below 1e-5 of the largest possible value even if
/// few cancel.
void expect_pairwise(const Game& game, std::size_t index, Seat seat) {
    const GameNode& node = game.nodes[index];
    const std::size_t s = index_of(seat);
    const auto reach =
        random_row(game.cards.pockets[1 - s].size(), static_cast<std::uint32_t>(index));
    std::vector<float> out(game.cards.pockets[s].size(), 7.0F);
    terminal_eval(game, node, seat, reach, out);
    const auto expected =
        plain_terminal(game, node, seat, {reach.begin(), reach.end()}, game.options.exact_all_in);
    const double scale = plain_pot(game, node) / 2 *
                         std::accumulate(reach.begin(), reach.end(), 0.0) / plain_mass(game.cards);
    const CardMask dealt = card_bit(node.turn) | card_bit(node.river);
    for (std::size_t h = 0; h < out.size(); ++h) {
        ASSERT_NEAR(out[h], expected[h], 1e-5 * scale) << "node " << index << ", hand " << h;
        if ((pocket_mask(game.cards.pockets[s][h]) & dealt) != 0) {
            ASSERT_EQ(out[h], 0.0F) << "a hand that the board blocks";
        }
    }
}

TEST(Terminal, AgainstPairwiseEvaluation) {
    const std::string wide = "22+,A2s+,A7o+,K8s+,KTo+,Q9s+,J9s+,T8s+,97s+,86s+";
    const std::string other_wide = "99-22,ATs+:0.5,KQo,QJs,T9o:0.25,76s,A5s-A2s,72o";
    Spot river{.board = "Td9d6h6c2s", .oop = wide, .ip = other_wide};
    river.river = both("75%", "3x");
    Spot quads{.board = "Td9d6h6c6s", .oop = "AA,KK,T9s,54s,A6s", .ip = "AKs,AKo,88,T9s,33-22"};
    quads.river = both("50%");
    Spot all_tie{.board = "AdKdQdJdTd", .oop = "99-77", .ip = "99-66"};
    all_tie.river = both("50%");
    Spot turn{.board = "Td9d6h6c", .oop = "TT,AJs,87s,KQo", .ip = "99,AJs:0.5,A6s,54s,T8s"};
    turn.turn = both("50%,a", "a");
    turn.river = both("50%");
    Spot flop{
        .board = "Td9d6h", .oop = "AdJd,8c7c,8s7s,TsTc,2c2d", .ip = "AdKd,AsJs,8c7c,6c6s,3c3h"};
    flop.flop = both("a");

    // The last rake is none in effect: a pot of 1000 gives 1e-10.
    const std::pair<double, double> rakes[] = {{0, 0}, {0, 40}, {0.05, 0}, {0.05, 60}, {1e-13, 0}};
    for (const auto& [fraction, cap] : rakes) {
        for (Spot spot : {river, quads, all_tie, turn, flop}) {
            for (const bool exact : {false, true}) {
                if (exact && spot.board.size() == 10) continue;
                SCOPED_TRACE(testing::Message() << spot.board << ", rake " << fraction << exact);
                spot.rake = fraction;
                spot.rake_cap = cap;
                spot.exact_all_in = exact;
                const Game game = game_from(spot);
                for (const std::size_t node : terminals_of(game)) {
                    expect_pairwise(game, node, Seat::OOP);
                    expect_pairwise(game, node, Seat::IP);
                }
            }
        }
    }
}

TEST(Terminal, AnswersOfZero) {
    Spot spot{.board = "Td9d6h6c", .oop = "TT,87s,76s", .ip = "99,76s"};
    spot.turn = both("a");
    spot.rake = 0.05;
    const Game game = game_from(spot);
    const std::size_t hands = game.cards.pockets[0].size();
    const std::size_t reaches = game.cards.pockets[1].size();
    for (const char* path : {"a10000 f", "a10000 c10000", "x x d2s x x"}) {
        const auto all_zero = [&](std::size_t reach_size, std::size_t out_size, float fill) {
            std::vector<float> out(out_size, 7.0F);
            terminal_eval(game, game.nodes[descend(game.nodes, path)], Seat::OOP,
                          std::vector<float>(reach_size, fill), out);
            return std::ranges::all_of(out, [](float value) { return value == 0.0F; });
        };
        EXPECT_TRUE(all_zero(reaches, hands, 0.0F)) << path << ", no reach";
        EXPECT_TRUE(all_zero(reaches + 1, hands, 1.0F)) << path << ", long reach";
        EXPECT_TRUE(all_zero(reaches, hands + 1, 1.0F)) << path << ", long out";
        EXPECT_FALSE(all_zero(reaches, hands, 1.0F)) << path;
    }
}

}  // namespace
}  // namespace kestrel
