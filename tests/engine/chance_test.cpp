#include "engine/solver/chance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "tests/engine/support.h"

namespace kestrel {
namespace {

TEST(Chance, FactorsCountTheCardsLeftForTwoPockets) {
    GameNode node;
    EXPECT_EQ(chance_factor(node), 45.0F);
    node.turn = 3;
    EXPECT_EQ(chance_factor(node), 44.0F);
    node.river = 4;
    EXPECT_EQ(chance_factor(node), 0.0F);
    ScratchFrame frame;
    scale_chance_reach(node, std::vector{0.5F, 2.0F}, frame);
    EXPECT_EQ(frame.chance_reach, (std::vector{0.5F, 2.0F}));
    node.river = NO_CARD;
    scale_chance_reach(node, std::vector{44.0F}, frame);
    EXPECT_FLOAT_EQ(frame.chance_reach[0], 1.0F);
}

TEST(Chance, RepeatedChildren) {
    const std::uint64_t children[] = {5, 6, 5, 7, 6, 5};
    GameNode node;
    node.children = children;
    ScratchFrame frame;
    find_unique_children(node, frame);
    EXPECT_EQ(frame.unique_children, (std::vector<std::uint16_t>{0, 1, 3}));
    EXPECT_EQ(frame.child_alias, (std::vector<std::uint16_t>{0, 1, 0, 3, 1, 0}));
    frame.child_values = {1, 2, 3, 4, 0, 0, 7, 8, 0, 0, 0, 0};
    copy_repeated_rows(frame, 2);
    EXPECT_EQ(frame.child_values, (std::vector<float>{1, 2, 3, 4, 1, 2, 7, 8, 3, 4, 1, 2}));
}

// A tree may share a child between cards: it is then visited once in an iteration, and its row
// counts for each of them.
TEST(Chance, ASharedChildIsVisitedOnce) {
    Spot spot{.board = "Td9d6h6c", .oop = "TT,87s", .ip = "99,54s"};
    spot.river = both("50%");
    const Game game = game_from(spot);
    auto& deal = const_cast<GameNode&>(game.nodes[descend(game.nodes, "x x")]);
    std::vector<std::uint64_t> children(deal.children.begin(), deal.children.end());
    children[7] = children[3];
    children.back() = children[3];
    deal.children = children;

    DiscountedCfr cfr(iterations(1));
    cfr.prepare_states(game);
    const auto uniform = (cfr.current_ev(game), cfr.measure_values[0]);
    EXPECT_FALSE(cfr.states.children_distinct(descend(game.nodes, "x x")));
    EXPECT_TRUE(cfr.states.children_distinct(0));
    cfr.solve_iteration(game, 0);
    // OOP walks first, so against uniform play; the measuring walk visits every repeat.
    for (std::size_t h = 0; h < uniform.size(); ++h) {
        EXPECT_FLOAT_EQ(cfr.root_values[0][h], uniform[h]);
    }
    cfr.solve_iteration(game, 2);  // gamma is 1 / 8
    const NodeState& shared = cfr.states[children[3]];
    for (std::size_t h = 0; h < shared.num_hands; ++h) {
        const float sum = shared.strategy_sum()[h] + shared.strategy_sum()[shared.num_hands + h];
        EXPECT_FLOAT_EQ(sum, 1.125F);
    }
}

struct IsomorphismCase {
    const char* name;
    Spot spot;
    std::string_view off;  // a weight on a dead hand that makes the suits differ
};

/// The same spot with suits that count as different: a dead hand tells them apart, the pockets
/// stay the same.
Spot without_isomorphism(const IsomorphismCase& c) {
    Spot spot = c.spot;
    spot.oop.append(",").append(c.off);
    return spot;
}

TEST(Chance, IsomorphismOnAgainstOff) {
    Spot two_tone{.board = "AdJd8s", .oop = "99,KQs,T9s", .ip = "TT:0.5,A9s,76s"};
    two_tone.turn = both("50%");
    Spot monotone{.board = "AhJh8h", .oop = "99,KTs", .ip = "T9s,QQ:0.5"};
    monotone.turn = both("50%");
    Spot paired{.board = "7h7s2c", .oop = "99,KQs", .ip = "A7s,87s,TT"};
    paired.river = both("50%");
    Spot fixed_turn{.board = "7h7s2c2d", .oop = "99,KQs,87s", .ip = "A7s,TT,KTs,54s"};
    fixed_turn.turn = fixed_turn.river = both("75%", "3x");
    const IsomorphismCase cases[] = {
        {"two-tone", two_tone, "Ad2h:0.5"},
        {"monotone", monotone, "Ah2c:0.5,Ah3d:0.5"},
        {"paired", paired, "7h2c:0.5"},
        {"fixed turn", fixed_turn, "7h2c:0.5"},
    };
    for (const IsomorphismCase& c : cases) {
        SCOPED_TRACE(c.name);
        const Game on = game_from(c.spot);
        const Game off = game_from(without_isomorphism(c));
        ASSERT_LT(on.nodes.size(), off.nodes.size());
        ASSERT_EQ(on.cards.pocket_weights, off.cards.pocket_weights);
        CfrOptions options = iterations(60);
        DiscountedCfr a(options);
        DiscountedCfr b(options);

        // Against uniform play both are the same sums in another order: up to 49 roundings of
        // 6e-8 at each of two deals, so far below 1e-5 of the largest value.
        a.prepare_states(on);
        b.prepare_states(off);
        for (const bool best : {false, true}) {
            best ? a.mes_ev(on) : a.current_ev(on);
            best ? b.mes_ev(off) : b.current_ev(off);
            for (std::size_t s = 0; s < 2; ++s) {
                const float largest = std::abs(*std::ranges::max_element(
                    a.measure_values[s], {}, [](float value) { return std::abs(value); }));
                for (std::size_t h = 0; h < a.measure_values[s].size(); ++h) {
                    ASSERT_NEAR(a.measure_values[s][h], b.measure_values[s][h], 1e-5F * largest);
                }
            }
        }

        // While they learn, the last bits decide where a regret is about 0, and the strategies
        // part; but each run's best responses enclose the value of the game, and it is the same.
        a.run(on);
        b.run(off);
        const auto best_on = a.mes_ev(on);
        const auto best_off = b.mes_ev(off);
        EXPECT_LE(-best_on[1], best_off[0] + 0.01F);
        EXPECT_LE(-best_off[1], best_on[0] + 0.01F);
        EXPECT_LT(a.exploitability, 0.01F * 1000);
        EXPECT_LT(b.exploitability, 0.01F * 1000);
    }
}

}  // namespace
}  // namespace kestrel
