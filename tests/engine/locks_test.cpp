#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "engine/solver/best_response.h"
#include "tests/engine/support.h"

namespace kestrel {
namespace {

// IP's answer to a bet is locked: two actions, fold and call, for three hands.
constexpr std::string_view locked_path = "b500";
constexpr std::size_t hands = 3;

Spot spot() {
    Spot result{.board = "KsKd7c4h2s", .oop = "KcKh,3c2d,9c8c", .ip = "AcAd,QcQd,8h8d"};
    result.river = both("50%");
    return result;
}

struct LockedRun {
    Game game;
    std::size_t node;
    DiscountedCfr cfr;

    LockedRun(const std::vector<float>& lock, std::uint32_t count, bool compress = false)
        : game(game_from(spot())), node(descend(game.nodes, locked_path)), cfr([&] {
              CfrOptions options = iterations(count);
              options.compress = compress;
              return options;
          }()) {
        if (!lock.empty()) {
            game.set_node_lock(node, lock);
        }
        cfr.run(game);
    }

    std::vector<float> regrets() const {
        std::vector<float> buffer;
        const auto row = get_regrets(cfr.states[node], buffer);
        return {row.begin(), row.end()};
    }

    /// Values of IP at the node or one of its children, when IP answers best.
    std::vector<float> best_values(std::size_t at, std::vector<float> reach) const {
        std::vector<float> out(hands);
        ScratchStack scratch;
        MeasuringWalk(game, cfr.states, Seat::IP, nullptr, 1)
            .compute_best_cfvalue_recursive(at, reach, out, 0, scratch);
        return out;
    }
};

TEST(Locks, AFullyLockedNodePlaysItsLock) {
    const std::vector<float> lock{0.25F, 0, 0, 0.75F, 1, 1};
    for (const bool compress : {false, true}) {
        for (const std::uint32_t count : {1U, 2U, 5U, 300U}) {
            const LockedRun run(lock, count, compress);
            EXPECT_TRUE(same_bits(run.regrets(), std::vector<float>(6)));
            const auto average = run.cfr.average_strategy(run.node);
            for (std::size_t i = 0; i < average.size(); ++i) {
                EXPECT_NEAR(average[i], lock[i], compress ? 1e-4F : 1e-6F);
            }
        }
        // The other seat answers the lock: a bluff of half the pot is called 11 times in 12, more
        // than the 2 in 3 that it can bear, so it is given up; the nuts bet.
        const LockedRun run(lock, 300, compress);
        EXPECT_LT(run.cfr.exploitability, 1.0F) << "the best response is held to the lock";
        const auto root = run.cfr.average_strategy(0);
        const std::size_t nuts = position_of(run.game, Seat::OOP, "KcKh");
        EXPECT_GT(root[hands + nuts], 0.99F);
        EXPECT_LT(root[hands + position_of(run.game, Seat::OOP, "3c2d")], 0.01F);
    }
}

TEST(Locks, APartlyLockedNodeLearnsForTheOthers) {
    std::vector<float> lock{0.5F, -1, -1, 0.5F, -1, -1};
    const LockedRun run(lock, 300);
    const auto regrets = run.regrets();
    const auto average = run.cfr.average_strategy(run.node);
    EXPECT_EQ(regrets[0], 0.0F);
    EXPECT_EQ(regrets[hands], 0.0F);
    EXPECT_NEAR(average[0], 0.5F, 1e-6F);
    EXPECT_TRUE(regrets[1] != 0 && regrets[2] != 0 && regrets[hands + 1] != 0);

    // The same update by hand, one iteration from zero regrets: the value of a hand is that of the
    // strategy under the lock, and the regrets of the free hands are measured from it.
    const LockedRun first(lock, 1);
    const LockedRun unlocked({}, 1);
    const auto once = first.regrets();
    const auto free = unlocked.regrets();
    for (std::size_t i = 0; i < once.size(); ++i) {
        EXPECT_EQ(once[i], i % hands == 0 ? 0.0F : free[i]);
    }
    // The bettor's walk meets the locked play.
    const LockedRun always({0, -1, -1, 1, -1, -1}, 1);
    EXPECT_NE(always.cfr.root_values[0], first.cfr.root_values[0]);
}

TEST(Locks, ASignBitMeansFree) {
    const LockedRun unlocked({}, 50);
    for (const float free : {-0.0F, -1.0F}) {
        const LockedRun run(std::vector<float>(6, free), 50);
        EXPECT_TRUE(same_states(run.cfr.states, unlocked.cfr.states));
        EXPECT_EQ(run.cfr.exploitability, unlocked.cfr.exploitability);
    }
}

TEST(Locks, AShortRowReachesAsFarAsItGoes) {
    // Two hands are locked in the first action alone; the third learns, so the node is not locked
    // as a whole.
    const LockedRun run({1, 1}, 1);
    const auto regrets = run.regrets();
    EXPECT_EQ((std::array{regrets[0], regrets[1], regrets[3], regrets[4]}),
              (std::array<float, 4>{}));
    EXPECT_NE(regrets[2], 0.0F);
    const auto sums = run.cfr.states[run.node].strategy_sum();
    EXPECT_TRUE(std::ranges::equal(sums, std::vector{1.0F, 1.0F, 0.5F, 0.5F, 0.5F, 0.5F}));
}

TEST(Locks, TheBestResponseIsHeldToTheLock) {
    const auto expected_for = [](const std::vector<float>& lock,
                                 const std::function<double(std::size_t, double, double)>& mix) {
        const LockedRun run(lock, 20);
        const std::vector<float> reach{1, 0.5F, 0.25F};
        const auto out = run.best_values(run.node, reach);
        const auto& children = run.game.nodes[run.node].children;
        const auto folded = run.best_values(children[0], reach);
        const auto called = run.best_values(children[1], reach);
        for (std::size_t h = 0; h < hands; ++h) {
            EXPECT_FLOAT_EQ(out[h], static_cast<float>(mix(h, folded[h], called[h]))) << h;
        }
    };
    const auto best = [](std::size_t, double fold, double call) { return std::max(fold, call); };
    expected_for({}, best);
    expected_for(std::vector<float>(6, -1.0F), best);
    expected_for({1, 1, 1, 0}, best);  // neither one mix nor a whole table: ignored
    expected_for({0.75F, 0.25F}, [](std::size_t, double fold, double call) {
        return 0.75 * fold + 0.25 * call;  // as many entries as actions: one mix for all hands
    });
    expected_for({0.5F, -1, 1, 0.5F, -1, -1}, [&](std::size_t h, double fold, double call) {
        // The last hand's second action is left out of its lock and counts as nothing.
        return h == 0 ? 0.5 * fold + 0.5 * call : h == 1 ? best(h, fold, call) : fold;
    });
}

}  // namespace
}  // namespace kestrel
