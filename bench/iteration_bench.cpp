// Whole iterations and measurements, the batched walk against the plain one, on states that have
// run for a while.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>

#include "bench/spots.h"

namespace {

using namespace kestrel;

constexpr std::uint32_t iterations_before = 60;

/// A spot whose rows have run for a while, by the fast walk: the bits are the same.
struct Warm {
    std::unique_ptr<Game> game;
    DiscountedCfr solver{bench::options_of(false, 2)};

    explicit Warm(const kestrel_app::SpotInputs& spot) : game(bench::make_game(spot)) {
        solver.prepare_states(*game);
        for (std::uint32_t t = 0; t < iterations_before; ++t) {
            solver.solve_iteration(*game, t);
        }
    }
};

const Warm& warm_turn() {
    static const Warm warm(bench::full_turn(false));
    return warm;
}

const Warm& warm_quick_solve() {
    static const Warm warm(bench::quick_solve());
    return warm;
}

/// A solver of its own on a copy of warm rows.
struct Running {
    const Game* game;
    DiscountedCfr solver;
    std::uint32_t t = iterations_before;

    Running(const Warm& warm, bool plain, std::size_t threads)
        : game(warm.game.get()), solver(bench::options_of(plain, threads)) {
        solver.prepare_states(*game);
        for (std::size_t node = 0; node < game->nodes.size(); ++node) {
            const NodeState& from = warm.solver.states[node];
            std::ranges::copy(from.regrets(), solver.states[node].regrets().begin());
            std::ranges::copy(from.strategy_sum(), solver.states[node].strategy_sum().begin());
        }
    }

    /// Bytes of the rows that an iteration must move: each node's regrets and sums are read and
    /// written in one walk, its regrets read in the other.
    double bytes_moved() const {
        double elements = 0;
        for (std::size_t node = 0; node < game->nodes.size(); ++node) {
            elements += static_cast<double>(solver.states[node].regrets().size());
        }
        return 20.0 * elements;
    }
};

void run_iterations(benchmark::State& state, const Warm& warm) {
    Running running(warm, state.range(0) != 0, static_cast<std::size_t>(state.range(1)));
    for (auto _ : state) {
        running.solver.solve_iteration(*running.game, running.t++);
    }
    state.counters["bytes_moved"] =
        benchmark::Counter(running.bytes_moved(), benchmark::Counter::kIsIterationInvariantRate);
}

void BM_IterationTurn(benchmark::State& state) {
    run_iterations(state, warm_turn());
}
BENCHMARK(BM_IterationTurn)
    ->ArgNames({"plain", "threads"})
    ->Args({1, 1})
    ->Args({0, 1})
    ->Args({0, 2})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void BM_IterationQuickSolve(benchmark::State& state) {
    run_iterations(state, warm_quick_solve());
}
BENCHMARK(BM_IterationQuickSolve)
    ->ArgNames({"plain", "threads"})
    ->Args({1, 1})
    ->Args({0, 1})
    ->Args({1, 2})
    ->Args({0, 2})
    ->Args({0, 4})
    ->Args({0, 8})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

/// What a measurement of the raked spot costs: four walks.
void BM_MeasureQuickSolve(benchmark::State& state) {
    Running running(warm_quick_solve(), state.range(0) != 0,
                    static_cast<std::size_t>(state.range(1)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(running.solver.measure_exploitability(*running.game));
    }
}
BENCHMARK(BM_MeasureQuickSolve)
    ->ArgNames({"plain", "threads"})
    ->Args({1, 1})
    ->Args({0, 1})
    ->Args({0, 2})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

/// The limit: regrets and sums of the quick-solve spot multiplied in place, nothing else.
void BM_InPlaceUpdate(benchmark::State& state) {
    const std::size_t floats = std::size_t{260} * 1000 * 1000;
    const AlignedBuffer<float> rows(floats);
    std::fill_n(rows.data(), floats, 1.0F);
    for (auto _ : state) {
        float* const p = rows.data();
        for (std::size_t i = 0; i < floats; ++i) {
            p[i] *= 0.999F;
        }
        benchmark::ClobberMemory();
    }
    state.counters["bytes_moved"] = benchmark::Counter(
        8.0 * static_cast<double>(floats), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_InPlaceUpdate)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
