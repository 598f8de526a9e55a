#include "session/memory_estimate.h"

#include <gtest/gtest.h>

#include "engine/solver/discounted_cfr.h"
#include "session/signature.h"
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
        const auto parts =
            static_cast<double>(game.cards.memory_bytes() + game.plan.memory_bytes() + state_bytes);
        EXPECT_EQ(estimate.total_bytes, static_cast<std::uint64_t>(parts * 1.1));
    }
    // A size that does not parse is told without the seat's texts.
    config.oop_turn.bet_sizes = "2x";
    EXPECT_EQ(kestrel::failure_of([&] { estimate_solve_memory(config); }),
              "invalid argument: Relative raise (x) is not allowed in this context");
}

TEST(Signature, ParallelSolvesGiveTheSameBits) {
    EXPECT_EQ(solver_signature(1), solver_signature(3));
    EXPECT_EQ(signature_text(0x00c0ffee12345678), "00c0ffee12345678");
}

}  // namespace
}  // namespace kestrel_app
