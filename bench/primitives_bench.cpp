// Cards, tables and the tree: what a solve builds before its first iteration.

#include <benchmark/benchmark.h>

#include <random>

#include "bench/spots.h"
#include "engine/poker/evaluator.h"
#include "engine/solver/batched_walk.h"

namespace {

using namespace kestrel;

void BM_EvaluateSeven(benchmark::State& state) {
    std::mt19937 random(1);
    std::vector<std::array<Card, 7>> hands(4096);
    std::array<Card, card_count> deck{};
    for (std::size_t i = 0; i < deck.size(); ++i) {
        deck[i] = static_cast<Card>(i);
    }
    for (auto& hand : hands) {
        std::shuffle(deck.begin(), deck.end(), random);
        std::copy_n(deck.begin(), hand.size(), hand.begin());
    }
    for (auto _ : state) {
        HandStrength sum = 0;
        for (const auto& hand : hands) {
            sum += evaluate_seven(hand);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(hands.size()));
}
BENCHMARK(BM_EvaluateSeven);

/// On one core, as the builders see it.
void BM_CardContext(benchmark::State& state) {
    setenv("KESTREL_CARDCTX_MAX_WORKERS", "1", 1);
    auto spot = bench::quick_solve();
    // Another benchmark's game of the same cards may be alive, whose tables would be shared.
    spot.ranges[0][pocket_index(parse_card("Ks"), parse_card("Kh"))] = 0.5F;
    for (auto _ : state) {
        benchmark::DoNotOptimize(CardContext(spot.board, spot.ranges).combination_mass);
    }
    unsetenv("KESTREL_CARDCTX_MAX_WORKERS");
}
BENCHMARK(BM_CardContext)->Unit(benchmark::kMillisecond);

void BM_Tree(benchmark::State& state) {
    const auto spot = bench::quick_solve();
    const CardContext cards(spot.board, spot.ranges);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ActionPlan(spot.options, &cards).node_count());
    }
}
BENCHMARK(BM_Tree)->Unit(benchmark::kMillisecond);

void BM_PrepareStates(benchmark::State& state) {
    const auto game = bench::make_game(bench::quick_solve());
    for (auto _ : state) {
        DiscountedCfr solver(bench::options_of(false, static_cast<std::size_t>(state.range(0))));
        solver.prepare_states(*game);
        benchmark::DoNotOptimize(solver.states.size());
    }
}
BENCHMARK(BM_PrepareStates)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
