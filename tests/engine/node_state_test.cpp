#include "engine/solver/node_state.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "engine/solver/scratch_stack.h"
#include "tests/engine/support.h"

namespace kestrel {
namespace {

TEST(NodeState, Packing) {
    struct Case {
        std::vector<float> row;
        std::vector<std::int16_t> packed;
        float scale;
    };
    const Case cases[] = {
        {{}, {}, 1},
        {{0, -0.0F, 0}, {0, 0, 0}, 1},
        {{1e-9F, -5e-10F}, {0, 0}, 1},  // lost: not above 1e-9
        {{1.01e-9F, 0}, {32767, 0}, 1.01e-9F},
        {{0.5F, -2, 1}, {8192, -32767, 16384}, 2},  // halves away from zero
        {{-1, 0.5F}, {-32767, 16384}, 1},
        {{-3, -0.75F}, {-32767, -8192}, 3},
    };
    for (const Case& c : cases) {
        std::vector<std::int16_t> packed(c.row.size(), 77);
        EXPECT_EQ(pack_row(c.row, packed), c.scale);
        EXPECT_EQ(packed, c.packed);
        std::vector<float> back(c.row.size(), 77);
        unpack_row(packed, c.scale, back);
        for (std::size_t i = 0; i < back.size(); ++i) {
            EXPECT_EQ(back[i], static_cast<float>(c.packed[i]) / 32767.0F * c.scale);
            EXPECT_NEAR(back[i], c.row[i], c.scale / 65534.0F * 1.001F + 1e-9F);
        }
    }
    std::vector<float> row(3, 7);
    const std::vector<std::int16_t> packed{1, 2};
    unpack_row(packed, 1, row);  // fewer values than the row
    EXPECT_EQ(row, std::vector<float>(3, 0.0F));
    row = {7, 7};
    unpack_row(packed, 0, row);
    EXPECT_EQ(row, std::vector<float>(2, 0.0F));
}

TEST(NodeState, OneStateForEachDecision) {
    Spot spot{.board = "AdJd8s4c", .oop = "AA,76s", .ip = "KK,QQ,T9s"};
    spot.turn = both("50%", "3x");
    const Game game = game_from(spot);
    for (const bool compress : {false, true}) {
        StateTable states;
        states.prepare(game, compress, nullptr, 1);
        ASSERT_EQ(states.size(), game.nodes.size());
        std::vector<std::pair<const std::byte*, const std::byte*>> extents;
        for (std::size_t i = 0; i < states.size(); ++i) {
            const GameNode& node = game.nodes[i];
            const NodeState& state = states[i];
            EXPECT_TRUE(states.children_distinct(i));
            EXPECT_EQ(state.active, node.kind == NodeKind::Decision);
            EXPECT_EQ(state.regrets_scale, 1.0F);
            EXPECT_EQ(state.strategy_sum_scale, 1.0F);
            if (!state.active) {
                EXPECT_TRUE(state.regrets().empty() && state.regrets_packed().empty());
                continue;
            }
            const std::size_t size =
                node.actions.size() * game.cards.pockets[index_of(node.seat)].size();
            EXPECT_EQ(state.seat, node.seat);
            EXPECT_EQ(state.size(), size);
            EXPECT_EQ(state.regrets().size(), compress ? 0 : size);
            EXPECT_EQ(state.strategy_sum().size(), compress ? 0 : size);
            EXPECT_EQ(state.regrets_packed().size(), compress ? size : 0);
            EXPECT_EQ(state.strategy_sum_packed().size(), compress ? size : 0);
            std::vector<float> buffer;
            EXPECT_TRUE(same_bits(get_regrets(state, buffer), std::vector<float>(size)));
            EXPECT_TRUE(same_bits(get_strategy_sum(state, buffer), std::vector<float>(size)));
            const auto extent = [&](const auto& row) {
                const auto bytes = std::as_bytes(row);
                extents.emplace_back(bytes.data(), bytes.data() + bytes.size());
            };
            compress ? extent(state.regrets_packed()) : extent(state.regrets());
            compress ? extent(state.strategy_sum_packed()) : extent(state.strategy_sum());
        }
        std::ranges::sort(extents);
        for (std::size_t i = 1; i < extents.size(); ++i) {
            ASSERT_LE(extents[i - 1].second, extents[i].first) << "rows overlap";
        }
    }
}

TEST(ScratchStack, FramesStayInPlace) {
    ScratchStack stack;
    std::vector<ScratchFrame*> frames;
    for (std::size_t depth = 0; depth < 100; ++depth) {
        frames.push_back(&stack.frame(depth));
        frames.back()->strategy.assign(1, static_cast<float>(depth));
    }
    for (std::size_t depth = 0; depth < 100; ++depth) {
        EXPECT_EQ(&stack.frame(depth), frames[depth]);
        EXPECT_EQ(frames[depth]->strategy[0], static_cast<float>(depth));
    }
    ScratchStack deep;
    EXPECT_NE(&deep.frame(40), &deep.frame(32));
}

}  // namespace
}  // namespace kestrel
