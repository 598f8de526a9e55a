#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "engine/solver/best_response.h"
#include "tests/engine/support.h"

namespace kestrel {
namespace {

constexpr std::size_t hands = 3;

/// IP's answer to a bet is locked: two actions, fold and call, for three hands.
struct LockedRun {
    Game game;
    std::size_t node;
    DiscountedCfr cfr;

    LockedRun(const std::vector<float>& lock, CfrOptions options)
        : game(game_from({.board = "KsKd7c4h2s",
                          .oop = "KcKh,3c2d,9c8c",
                          .ip = "AcAd,QcQd,8h8d",
                          .river = both("50%")})),
          node(descend(game.nodes, "b500")),
          cfr(std::move(options)) {
        if (!lock.empty()) game.set_node_lock(node, lock);
        cfr.run(game);
    }

    std::vector<float> regrets() const {
        std::vector<float> buffer;
        const auto row = get_regrets(cfr.states[node], buffer);
        return {row.begin(), row.end()};
    }

    /// Values of IP at the node or one of its children, when IP answers best.
    std::vector<float> best_values(std::size_t at) const {
        std::vector<float> out(hands);
        ScratchStack scratch;
        MeasuringWalk(game, cfr.states, Seat::IP, nullptr, 1)
            .compute_best_cfvalue_recursive(at, std::vector{1.0F, 0.5F, 0.25F}, out, 0, scratch);
        return out;
    }
};

TEST(Locks, AFullyLockedNodePlaysItsLock) {
    const std::vector<float> lock{0.25F, 0, 0, 0.75F, 1, 1};
    for (const bool compress : {false, true}) {
        CfrOptions options = iterations(300);
        options.compress = compress;
        const LockedRun run(lock, options);
        EXPECT_TRUE(same_bits(run.regrets(), std::vector<float>(6)));
        const auto average = run.cfr.average_strategy(run.node);
        for (std::size_t i = 0; i < average.size(); ++i)
            EXPECT_NEAR(average[i], lock[i], compress ? 1e-4F : 1e-6F);
        // The other seat answers the lock: a bluff of half the pot is called 11 times in 12, more
        // than the 2 in 3 that it can bear, so it is given up; the nuts bet.
        EXPECT_LT(run.cfr.exploitability, 1.0F) << "the best response is held to the lock";
        const auto root = run.cfr.average_strategy(0);
        EXPECT_GT(root[hands + position_of(run.game, Seat::OOP, "KcKh")], 0.99F);
        EXPECT_LT(root[hands + position_of(run.game, Seat::OOP, "3c2d")], 0.01F);
    }
}

TEST(Locks, FreeHandsLearnAsWithoutALock) {
    // A lock of the first hand, and one that is cut short and so holds the first two.
    for (const std::vector<float>& lock :
         {std::vector{0.5F, -1.0F, -1.0F, 0.5F, -1.0F, -1.0F}, std::vector{1.0F, 1.0F}}) {
        const std::size_t locked = lock.size() == 2 ? 2 : 1;
        const auto once = LockedRun(lock, iterations(1)).regrets();
        const auto free = LockedRun({}, iterations(1)).regrets();
        for (std::size_t i = 0; i < once.size(); ++i) {
            EXPECT_EQ(once[i], i % hands < locked ? 0.0F : free[i]) << i;
        }
        EXPECT_NE(free[2], 0.0F);
    }
    const LockedRun unlocked({}, iterations(50));
    for (const float sign_bit : {-0.0F, -1.0F}) {
        const LockedRun run(std::vector<float>(6, sign_bit), iterations(50));
        EXPECT_TRUE(same_states(run.cfr.states, unlocked.cfr.states));
    }
}

TEST(Locks, TheBestResponseIsHeldToTheLock) {
    using Mix = std::function<double(std::size_t, double, double)>;
    const Mix best = [](std::size_t, double fold, double call) { return std::max(fold, call); };
    const std::pair<std::vector<float>, Mix> cases[] = {
        {{}, best},
        {std::vector<float>(6, -1.0F), best},
        {{1, 1, 1, 0}, best},  // neither one mix nor a whole table: ignored
        // As many entries as actions: one mix for all hands.
        {{0.75F, 0.25F},
         [](std::size_t, double fold, double call) { return 0.75 * fold + 0.25 * call; }},
        // The last hand's second action is left out of its lock and counts as nothing.
        {{0.5F, -1, 1, 0.5F, -1, -1},
         [&](std::size_t h, double fold, double call) {
             return h == 0 ? 0.5 * fold + 0.5 * call : h == 1 ? best(h, fold, call) : fold;
         }},
    };
    for (const auto& [lock, mix] : cases) {
        const LockedRun run(lock, iterations(20));
        const auto& children = run.game.nodes[run.node].children;
        const auto out = run.best_values(run.node);
        const auto folded = run.best_values(children[0]);
        const auto called = run.best_values(children[1]);
        for (std::size_t h = 0; h < hands; ++h)
            EXPECT_FLOAT_EQ(out[h], static_cast<float>(mix(h, folded[h], called[h]))) << h;
    }
}

}  // namespace
}  // namespace kestrel
