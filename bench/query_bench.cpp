// What follows a solve of the quick-solve spot: the snapshot of its tree, and the questions to a
// node of each street. After a few iterations they cost what they cost after a whole solve.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>

#include "bench/spots.h"
#include "session/hand_distributions.h"
#include "session/node_queries.h"
#include "session/reach_strategy.h"
#include "session/result_snapshot.h"

namespace {

using namespace kestrel;
using kestrel_app::FinishedSolve;

constexpr std::size_t threads = 2;

const FinishedSolve& finished() {
    static const FinishedSolve solve = [] {
        const std::shared_ptr<Game> game = bench::make_game(bench::quick_solve());
        const auto solver = std::make_shared<DiscountedCfr>(bench::options_of(false, threads));
        solver->prepare_states(*game);
        for (std::uint32_t t = 0; t < 4; ++t) {
            solver->solve_iteration(*game, t);
        }
        return FinishedSolve(game, solver);
    }();
    return solve;
}

/// The first decision with three actions on a street, in tree order; the root on the flop.
std::uint64_t node_on(Street street) {
    const auto& nodes = finished().game->nodes;
    const auto found = std::ranges::find_if(nodes, [&](const GameNode& node) {
        return node.kind == NodeKind::Decision && node.street == street &&
               (street == Street::Flop || node.actions.size() == 3);
    });
    return static_cast<std::uint64_t>(found - nodes.begin());
}

void BM_Snapshot(benchmark::State& state) {
    const FinishedSolve& solve = finished();
    std::size_t bytes = 0;
    for (auto _ : state) {
        const kestrel_app::TreeSnapshot snapshot(*solve.game, *solve.solver);
        bytes = snapshot.memory_bytes();
    }
    state.counters["bytes_per_node"] =
        static_cast<double>(bytes) / static_cast<double>(solve.game->nodes.size());
}
BENCHMARK(BM_Snapshot)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Values of the acting seat at the node: what a question that needs them cannot do without.
void value_walk(const FinishedSolve& solve, std::uint64_t node) {
    benchmark::DoNotOptimize(
        solve.solver->node_values(*solve.game, node, solve.game->nodes[node].seat));
}

void reach_strategy(const FinishedSolve& solve, std::uint64_t node) {
    benchmark::DoNotOptimize(kestrel_app::reach_strategy(solve, node, ""));
}

void distributions(const FinishedSolve& solve, std::uint64_t node) {
    benchmark::DoNotOptimize(kestrel_app::hand_distributions(solve, node));
}

template <auto query>
void BM_Query(benchmark::State& state) {
    const std::uint64_t node = node_on(static_cast<Street>(state.range(0)));
    finished().parents();
    for (auto _ : state) {
        if constexpr (std::is_void_v<decltype(query(finished(), node))>) {
            query(finished(), node);
        } else {
            benchmark::DoNotOptimize(query(finished(), node));
        }
    }
}

void per_street(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("street")->DenseRange(0, 2)->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK(BM_Query<value_walk>)->Name("BM_QueryValueWalk")->Apply(per_street);
BENCHMARK(BM_Query<kestrel_app::node_action_stats>)->Name("BM_QueryActionStats")->Apply(per_street);
BENCHMARK(BM_Query<kestrel_app::hand_strategy>)->Name("BM_QueryHandStrategy")->Apply(per_street);
BENCHMARK(BM_Query<reach_strategy>)->Name("BM_QueryReachStrategy")->Apply(per_street);
BENCHMARK(BM_Query<kestrel_app::hand_combos>)->Name("BM_QueryHandCombos")->Apply(per_street);
BENCHMARK(BM_Query<kestrel_app::hand_buckets>)->Name("BM_QueryHandBuckets")->Apply(per_street);
BENCHMARK(BM_Query<distributions>)->Name("BM_QueryHandDistributions")->Apply(per_street);

void BM_ParentLinks(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(kestrel_app::ParentLinks(*finished().game));
    }
}
BENCHMARK(BM_ParentLinks)->Unit(benchmark::kMillisecond);

}  // namespace
