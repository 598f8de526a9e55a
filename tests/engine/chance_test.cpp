#include "engine/solver/chance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "tests/engine/support.h"

namespace kestrel {
namespace {

TEST(Chance, RepeatedChildren) {
    const std::uint64_t children[] = {5, 6, 5, 7, 6, 5};
    GameNode node;
    node.children = children;
    ScratchFrame frame;
    find_unique_children(node, frame);
    EXPECT_EQ(frame.unique_children, (std::vector<std::uint16_t>{0, 1, 3}));
    frame.child_values = {1, 2, 3, 4, 0, 0, 7, 8, 0, 0, 0, 0};
    copy_repeated_rows(frame, 2);
    EXPECT_EQ(frame.child_values, (std::vector<float>{1, 2, 3, 4, 1, 2, 7, 8, 3, 4, 1, 2}));
}

// The same spot with suits that count as different: a weight on a dead hand tells them apart, the
// pockets stay the same.
TEST(Chance, IsomorphismOnAgainstOff) {
    struct Case {
        Spot spot;
        std::string_view dead_hands;
    };
    Spot two_tone{.board = "AdJd8s", .oop = "99,KQs,T9s", .ip = "TT:0.5,A9s,76s"};
    two_tone.turn = both("50%");
    Spot monotone{.board = "AhJh8h", .oop = "99,KTs", .ip = "T9s,QQ:0.5"};
    monotone.turn = both("50%");
    Spot paired{.board = "7h7s2c", .oop = "99,KQs", .ip = "A7s,87s,TT"};
    paired.river = both("50%");
    Spot fixed_turn{.board = "7h7s2c2d", .oop = "99,KQs,87s", .ip = "A7s,TT,KTs,54s"};
    fixed_turn.turn = fixed_turn.river = both("75%", "3x");
    const Case cases[] = {{two_tone, ",Ad2h:0.5"},
                          {monotone, ",Ah2c:0.5,Ah3d:0.5"},
                          {paired, ",7h2c:0.5"},
                          {fixed_turn, ",7h2c:0.5"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.spot.board);
        Spot apart = c.spot;
        apart.oop.append(c.dead_hands);
        const Game on = game_from(c.spot);
        const Game off = game_from(apart);
        ASSERT_LT(on.nodes.size(), off.nodes.size());
        ASSERT_EQ(on.cards.pocket_weights, off.cards.pocket_weights);
        DiscountedCfr a(iterations(60));
        DiscountedCfr b(iterations(60));

        // Against uniform play both are the same sums in another order: up to 49 roundings of
        // 6e-8 at each of two deals, so far below 1e-5 of the largest value.
        a.prepare_states(on);
        b.prepare_states(off);
        a.mes_ev(on);
        b.mes_ev(off);
        for (std::size_t s = 0; s < 2; ++s) {
            const auto [least, most] = std::ranges::minmax(a.measure_values[s]);
            for (std::size_t h = 0; h < a.measure_values[s].size(); ++h) {
                ASSERT_NEAR(a.measure_values[s][h], b.measure_values[s][h],
                            1e-5F * std::max(-least, most));
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
