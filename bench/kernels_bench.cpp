// The loops over a node's rows: each kernel, and the fused passes against the kernels that they
// stand for. Rows hot in cache, three actions, 1100 hands.

#include <benchmark/benchmark.h>

#include <random>

#include "engine/solver/aligned_buffer.h"
#include "engine/solver/kernels.h"
#include "engine/solver/node_passes.h"
#include "engine/solver/simd.h"

namespace {

using namespace kestrel;

constexpr std::size_t actions = 3;
constexpr std::size_t hands = 1100;

struct Rows {
    AlignedBuffer<float> regrets{actions * hands};
    AlignedBuffer<float> sums{actions * hands};
    // Two sets of values in turn keep the regrets in motion, so that none fades into denormals.
    AlignedBuffer<float> values[2]{AlignedBuffer<float>(actions * padded_row(hands)),
                                   AlignedBuffer<float>(actions* padded_row(hands))};
    AlignedBuffer<float> strategy{actions * hands};
    AlignedBuffer<float> next{actions * padded_row(hands)};
    AlignedBuffer<float> reach{padded_row(hands)};
    AlignedBuffer<float> row{padded_row(hands)};
    AlignedBuffer<float> out{padded_row(hands)};

    Rows() {
        std::mt19937 random(1);
        std::uniform_real_distribution<float> value(-1.0F, 1.0F);
        for (std::size_t i = 0; i < actions * hands; ++i) {
            regrets[i] = value(random);
            sums[i] = 1.0F + value(random);
            strategy[i] = 1.0F + value(random);
        }
        for (std::size_t i = 0; i < actions * padded_row(hands); ++i) {
            values[0][i] = value(random);
            values[1][i] = value(random);
            next[i] = 0.0F;
        }
        for (std::size_t i = 0; i < padded_row(hands); ++i) {
            reach[i] = 1.0F + value(random);
            row[i] = out[i] = 0.0F;
        }
    }
};

void per_element(benchmark::State& state, std::size_t elements) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(elements));
}

void BM_OwnNodePlain(benchmark::State& state) {
    Rows r;
    std::size_t turn = 0;
    for (auto _ : state) {
        const float* const values = r.values[turn ^= 1].data();
        regret_matching(r.strategy.data(), r.row.data(), r.regrets.data(), actions, hands);
        fma_actions(r.out.data(), r.strategy.data(), values, actions, hands);
        strategy_sum_update(r.sums.data(), r.strategy.data(), 1.0F, actions * hands);
        update_regrets(r.regrets.data(), values, r.out.data(), actions, hands, 0.9F, 0.5F);
        benchmark::ClobberMemory();
    }
    per_element(state, actions * hands);
}
BENCHMARK(BM_OwnNodePlain);

void BM_OwnNodeFused(benchmark::State& state) {
    Rows r;
    std::size_t turn = 0;
    for (auto _ : state) {
        update_own_node(r.regrets.data(), r.sums.data(), r.values[turn ^= 1].data(), r.out.data(),
                        actions, hands, 0.9F, 0.5F, 1.0F, r.regrets.data(), r.sums.data());
        benchmark::ClobberMemory();
    }
    per_element(state, actions * hands);
}
BENCHMARK(BM_OwnNodeFused);

void BM_OpponentNodePlain(benchmark::State& state) {
    Rows r;
    for (auto _ : state) {
        regret_matching(r.strategy.data(), r.row.data(), r.regrets.data(), actions, hands);
        for (std::size_t a = 0; a < actions; ++a) {
            multiply_rows(r.next.data() + a * hands, r.strategy.data() + a * hands, r.reach.data(),
                          hands);
        }
        benchmark::ClobberMemory();
    }
    per_element(state, actions * hands);
}
BENCHMARK(BM_OpponentNodePlain);

void BM_OpponentNodeFused(benchmark::State& state) {
    Rows r;
    for (auto _ : state) {
        current_reach(r.next.data(), r.regrets.data(), r.reach.data(), actions, hands,
                      r.regrets.data());
        benchmark::ClobberMemory();
    }
    per_element(state, actions * hands);
}
BENCHMARK(BM_OpponentNodeFused);

template <class Call>
void run_kernel(benchmark::State& state, std::size_t elements, Call call) {
    Rows r;
    for (auto _ : state) {
        call(r);
        benchmark::ClobberMemory();
    }
    per_element(state, elements);
}

void BM_RegretMatching(benchmark::State& state) {
    run_kernel(state, actions * hands, [](Rows& r) {
        regret_matching(r.strategy.data(), r.row.data(), r.regrets.data(), actions, hands);
    });
}
BENCHMARK(BM_RegretMatching);

void BM_UpdateRegrets(benchmark::State& state) {
    run_kernel(state, actions * hands, [](Rows& r) {
        update_regrets(r.regrets.data(), r.values[0].data(), r.out.data(), actions, hands, 0.9F,
                       0.5F);
    });
}
BENCHMARK(BM_UpdateRegrets);

void BM_FmaActions(benchmark::State& state) {
    run_kernel(state, actions * hands, [](Rows& r) {
        fma_actions(r.out.data(), r.strategy.data(), r.values[0].data(), actions, hands);
    });
}
BENCHMARK(BM_FmaActions);

void BM_StrategySumUpdate(benchmark::State& state) {
    run_kernel(state, actions * hands, [](Rows& r) {
        strategy_sum_update(r.sums.data(), r.strategy.data(), 1.0F, actions * hands);
    });
}
BENCHMARK(BM_StrategySumUpdate);

void BM_SumRowsInto(benchmark::State& state) {
    run_kernel(state, actions * hands,
               [](Rows& r) { sum_rows_into(r.out.data(), r.values[0].data(), actions, hands); });
}
BENCHMARK(BM_SumRowsInto);

void BM_MultiplyRows(benchmark::State& state) {
    run_kernel(state, hands, [](Rows& r) {
        multiply_rows(r.out.data(), r.strategy.data(), r.reach.data(), hands);
    });
}
BENCHMARK(BM_MultiplyRows);

}  // namespace
