#include "session/memory_estimate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <string>
#include <utility>

#include "engine/solver/discounted_cfr.h"
#include "session/signature.h"
#include "session/solve_session.h"
#include "tests/engine/failure.h"

namespace kestrel_app {
namespace {

SolveConfig turn_config() {
    SolveConfig config;
    config.board = "QsJs8h2c";
    config.starting_street = "turn";
    config.oop_range = "22+,AKs,A5s";
    config.ip_range = "TT-22,KQs,JTs";
    config.starting_pot = 1000;
    config.effective_stack = 4000;
    config.oop_turn = config.ip_turn = {"50", "60", true, false};
    config.oop_river = config.ip_river = {"75", "", false, true};
    return config;
}

kestrel::Game game_of(const SolveConfig& config) {
    SpotInputs spot = parse_spot(config);
    return {std::move(spot.options), kestrel::CardContext(spot.board, spot.ranges)};
}

TEST(MemoryEstimate, CountsWhatASolveHolds) {
    SolveConfig config = turn_config();
    const kestrel::Game game = game_of(config);
    for (const bool compress : {false, true}) {
        config.compress = compress;
        const SolveMemoryEstimate estimate = estimate_solve_memory(config);

        kestrel::CfrOptions options;
        options.compress = compress;
        kestrel::DiscountedCfr solver(options);
        solver.prepare_states(game);
        std::uint64_t decisions = 0;
        std::uint64_t state_bytes = 0;
        for (std::size_t i = 0; i < game.nodes.size(); ++i) {
            if (!solver.states[i].active) continue;
            ++decisions;
            state_bytes += solver.states[i].size() * (compress ? 4 : 8);
        }
        EXPECT_EQ(estimate.solver_bytes, state_bytes);
        EXPECT_EQ(estimate.decision_node_count, decisions);
        EXPECT_EQ(estimate.node_count, game.nodes.size());
        EXPECT_EQ(estimate.oop_hand_count, game.cards.pockets[0].size());
        EXPECT_EQ(estimate.ip_hand_count, game.cards.pockets[1].size());
        EXPECT_EQ(estimate.card_context_bytes, game.cards.memory_bytes());
        EXPECT_EQ(estimate.tree_bytes, game.plan.memory_bytes() + 16);  // the root has no edge
        EXPECT_GT(estimate.total_bytes, estimate.card_context_bytes + estimate.tree_bytes +
                                            state_bytes + estimate.result_bytes);
    }
}

TEST(MemoryEstimate, EndsEarly) {
    SolveConfig config = turn_config();
    const std::uint64_t needed = estimate_solve_memory(config).total_bytes;
    EXPECT_FALSE(estimate_solve_memory(config, {needed}).at_least);
    EXPECT_TRUE(estimate_solve_memory(config, {1000}).at_least);
    const std::atomic<bool> stop = true;
    EXPECT_THROW(estimate_solve_memory(config, {needed, &stop}), kestrel::BuildStopped);
    // What no machine can hold is known at once, also without a budget.
    config.board = "QsJs8h";
    config.starting_street = "flop";
    for (StreetSizingText* const text :
         {&config.oop_flop, &config.ip_flop, &config.oop_river, &config.ip_river}) {
        *text = {"5,10,15,20,25,30,35,40,45,50,55,60,65,70,75,80,85,90,95,100",
                 "5,10,15,20,25,30,35,40,45,50,55,60,65,70,75,80,85,90,95,100", true, false};
    }
    config.effective_stack = 100000;
    EXPECT_TRUE(estimate_solve_memory(config).at_least);
}

TEST(MemoryEstimate, RefusesWhatCannotBeSolved) {
    using Change = void (*)(SolveConfig&);
    const std::pair<const char*, Change> cases[] = {
        // A size that does not parse is told without the seat's texts.
        {"Relative raise (x) is not allowed in this context",
         [](SolveConfig& c) { c.oop_turn.bet_sizes = "2x"; }},
        {"The ranges can never meet", [](SolveConfig& c) { c.oop_range = c.ip_range = "AhKh"; }},
        {"The weights are too small",
         [](SolveConfig& c) { c.oop_range = c.ip_range = "AA:1e-20,KK:1e-20"; }},
        {"The weights are too small",
         [](SolveConfig& c) { c.oop_range = c.ip_range = "AA:3e-19,KK:3e-19"; }},
        {"Player range empty after filtering board cards",
         [](SolveConfig& c) { c.oop_range = "QsJs"; }},
        {"Turn conflicts with flop", [](SolveConfig& c) { c.board = "QsJs8h8h"; }},
    };
    for (const auto& [message, change] : cases) {
        SolveConfig config = turn_config();
        change(config);
        const std::string failure = std::string("invalid argument: ") + message;
        EXPECT_EQ(kestrel::failure_of([&] { estimate_solve_memory(config); }), failure);
        // A solve is stopped by the same guard.
        SolveSession session;
        std::promise<SolveResult> told;
        session.start(config, [&](const SolveProgress& report) {
            if (report.result) told.set_value(*report.result);
        });
        EXPECT_THAT(told.get_future().get().error, ::testing::EndsWith(message));
    }
}

TEST(MemoryEstimate, NoSolveBeginsBeyondItsBudget) {
    SolveSession session;
    std::promise<SolveResult> told;
    const std::uint64_t needed = estimate_solve_memory(turn_config()).total_bytes;
    session.start(
        turn_config(),
        [&](const SolveProgress& report) {
            if (report.result) told.set_value(*report.result);
        },
        needed);
    EXPECT_THAT(told.get_future().get().error, ::testing::StartsWith("Not enough memory"));
}

TEST(Signature, ParallelSolvesGiveTheSameBits) {
    EXPECT_EQ(solver_signature(1), solver_signature(3));
    EXPECT_EQ(signature_text(0x00c0ffee12345678), "00c0ffee12345678");
}

}  // namespace
}  // namespace kestrel_app
