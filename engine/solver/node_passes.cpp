#include "engine/solver/node_passes.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "engine/solver/profile.h"
#include "engine/solver/simd.h"

namespace kestrel {
namespace {

/// Calls pass with the number of actions as a constant.
template <class Pass>
void with_constant_actions(std::size_t actions, Pass pass) {
    const auto call = [&]<std::size_t... i>(std::index_sequence<i...>) {
        (void)((actions == i + 1 && (pass.template operator()<i + 1>(), true)) || ...);
    };
    call(std::make_index_sequence<most_fused_actions>());
}

/// The strategy of eight hands: their weights over the sum of these, by a multiplication with the
/// reciprocal as in regret matching, or by a division as in the average strategy.
template <std::size_t actions>
struct Shares {
    __m256 of[actions];

    static Shares by_reciprocal(const __m256 (&weights)[actions]) {
        const __m256 zero = _mm256_setzero_ps();
        const __m256 largest = _mm256_set1_ps(std::numeric_limits<float>::max());
        Shares result;
        const __m256 sum = positive_parts(weights, result.of);
        const __m256 quotient = _mm256_div_ps(_mm256_set1_ps(1.0F), sum);
        const __m256 reciprocal =
            _mm256_and_ps(quotient, _mm256_cmp_ps(quotient, largest, _CMP_LE_OQ));
        const __m256 plays = _mm256_cmp_ps(reciprocal, zero, _CMP_GT_OQ);
        for (auto& share : result.of) {
            share = _mm256_blendv_ps(uniform(), _mm256_mul_ps(share, reciprocal), plays);
        }
        return result;
    }

    static Shares by_division(const __m256 (&weights)[actions]) {
        Shares result;
        const __m256 sum = positive_parts(weights, result.of);
        const __m256 plays = _mm256_cmp_ps(sum, _mm256_setzero_ps(), _CMP_GT_OQ);
        for (auto& share : result.of) {
            share = _mm256_blendv_ps(uniform(), _mm256_div_ps(share, sum), plays);
        }
        return result;
    }

  private:
    static __m256 uniform() { return _mm256_set1_ps(1.0F / static_cast<float>(actions)); }

    static __m256 positive_parts(const __m256 (&weights)[actions], __m256 (&parts)[actions]) {
        const __m256 zero = _mm256_setzero_ps();
        __m256 sum = zero;
        for (std::size_t a = 0; a < actions; ++a) {
            // With zero second, -0 and NaN become +0.
            parts[a] = _mm256_max_ps(weights[a], zero);
            sum = _mm256_add_ps(sum, parts[a]);
        }
        return sum;
    }
};

/// A node's rows, eight hands at a time. The last eight overlap the ones before, so there is no
/// scalar tail; a row of fewer than eight hands works on a padded copy.
template <std::size_t actions>
class NodeRows {
  public:
    NodeRows(const float* rows, std::size_t hands) : rows_(rows), stride_(hands) {
        if (hands < vector_floats) {
            for (std::size_t a = 0; a < actions; ++a) {
                std::copy_n(rows + a * hands, hands, small_ + a * vector_floats);
            }
            rows_ = small_;
            stride_ = vector_floats;
        }
    }
    NodeRows(const NodeRows&) = delete;
    NodeRows& operator=(const NodeRows&) = delete;

    void load(std::size_t hand, __m256 (&to)[actions]) const {
        for (std::size_t a = 0; a < actions; ++a) {
            to[a] = _mm256_loadu_ps(rows_ + a * stride_ + hand);
        }
    }

  private:
    const float* rows_;
    std::size_t stride_;
    float small_[actions * vector_floats] = {};
};

/// Where the overlapping last eight hands of a row start.
std::size_t last_block(std::size_t hands) {
    return hands < vector_floats ? 0 : hands - vector_floats;
}

/// Calls block(hand) so that every hand of a row is in some eight; later ones may repeat hands.
template <class Block>
void for_each_block(std::size_t hands, Block block) {
    const std::size_t last = last_block(hands);
    for (std::size_t hand = 0; hand < last; hand += vector_floats) {
        block(hand);
    }
    block(last);
}

/// Fetches the rows ahead in step with the pass over eight hands at `hand`. Worked out as a number:
/// the address may lie beyond the rows' memory.
template <std::size_t actions>
void fetch_ahead(const float* ahead, std::size_t hand) {
    const std::uintptr_t address =
        reinterpret_cast<std::uintptr_t>(ahead) + hand * actions * sizeof(float);
    for (std::size_t a = 0; a < actions; ++a) {
        _mm_prefetch(reinterpret_cast<const char*>(address + a * vector_floats * sizeof(float)),
                     _MM_HINT_T0);
    }
}

template <std::size_t actions, class SharesOf>
void reach_pass(float* next, const float* weights, const float* reach, std::size_t hands,
                const float* ahead, SharesOf shares_of) {
    const NodeRows<actions> rows(weights, hands);
    const std::size_t stride = padded_row(hands);
    for_each_block(hands, [&](std::size_t h) {
        fetch_ahead<actions>(ahead, h);
        __m256 row[actions];
        rows.load(h, row);
        const Shares<actions> shares = shares_of(row);
        const __m256 here = _mm256_loadu_ps(reach + h);
        for (std::size_t a = 0; a < actions; ++a) {
            _mm256_storeu_ps(next + a * stride + h, _mm256_mul_ps(shares.of[a], here));
        }
    });
}

/// Double sums of eight hands, rounded once at the end.
struct DoubleSum {
    __m256d low = _mm256_setzero_pd();
    __m256d high = _mm256_setzero_pd();

    static __m256d widen_low(__m256 x) { return _mm256_cvtps_pd(_mm256_castps256_ps128(x)); }
    static __m256d widen_high(__m256 x) { return _mm256_cvtps_pd(_mm256_extractf128_ps(x, 1)); }

    void add(__m256 x) {
        low = _mm256_add_pd(low, widen_low(x));
        high = _mm256_add_pd(high, widen_high(x));
    }
    void add_product(__m256 x, __m256 y) {
        low = _mm256_add_pd(low, _mm256_mul_pd(widen_low(x), widen_low(y)));
        high = _mm256_add_pd(high, _mm256_mul_pd(widen_high(x), widen_high(y)));
    }
    __m256 rounded() const { return _mm256_set_m128(_mm256_cvtpd_ps(high), _mm256_cvtpd_ps(low)); }
};

/// The last eight hands of a node's n rows, or all hands where there are fewer, on their own.
template <std::size_t n>
struct LastBlock {
    LastBlock(float* node, std::size_t node_hands) : node_(node), hands_(node_hands) {
        for (std::size_t a = 0; a < n; ++a) {
            std::copy_n(place(a), count(), rows + a * vector_floats);
        }
    }

    void put_back() const {
        for (std::size_t a = 0; a < n; ++a) {
            std::copy_n(rows + a * vector_floats, count(), place(a));
        }
    }

    float rows[n * vector_floats] = {};

  private:
    float* place(std::size_t a) const { return node_ + a * hands_ + last_block(hands_); }
    std::size_t count() const { return std::min(hands_, vector_floats); }

    float* node_;
    std::size_t hands_;
};

}  // namespace

void update_own_node(float* regrets, float* sums, const float* values, float* out,
                     std::size_t actions, std::size_t hands, float alpha, float beta, float gamma,
                     const float* regrets_ahead, const float* sums_ahead) {
    if (SolverProfile::enabled()) {
        SolverProfile::count(ProfileSlot::regret_matching);
        SolverProfile::count(ProfileSlot::fma_actions);
        SolverProfile::count(ProfileSlot::strategy_sum_update);
    }
    const ProfileScope timer(ProfileSlot::update_regrets);
    // Hot, about 0.23 ns an element at 2.7 GHz, most of it the division and the blends; on rows
    // from memory about 0.6, bound by the misses that a core can have under way.
    with_constant_actions(actions, [&]<std::size_t n>() {
        const std::size_t stride = padded_row(hands);
        const __m256 zero = _mm256_setzero_ps();
        const __m256 rising = _mm256_set1_ps(alpha);
        const __m256 falling = _mm256_set1_ps(beta);
        const __m256 fading = _mm256_set1_ps(gamma);
        // Eight hands: `r` and `s` are their rows, `step` apart; h is where they stand in the node.
        const auto update = [&](float* r, float* s, std::size_t step, std::size_t h) {
            fetch_ahead<n>(regrets_ahead, h);
            fetch_ahead<n>(sums_ahead, h);
            __m256 old[n];
            for (std::size_t a = 0; a < n; ++a) {
                old[a] = _mm256_loadu_ps(r + a * step);
            }
            const Shares<n> shares = Shares<n>::by_reciprocal(old);
            __m256 value = _mm256_mul_ps(shares.of[0], _mm256_loadu_ps(values + h));
            for (std::size_t a = 1; a < n; ++a) {
                const __m256 action_value = _mm256_loadu_ps(values + a * stride + h);
                value = _mm256_add_ps(value, _mm256_mul_ps(shares.of[a], action_value));
            }
            for (std::size_t a = 0; a < n; ++a) {
                const __m256 sum = _mm256_loadu_ps(s + a * step);
                _mm256_storeu_ps(s + a * step,
                                 _mm256_add_ps(_mm256_mul_ps(fading, sum), shares.of[a]));
                const __m256 discount =
                    _mm256_blendv_ps(falling, rising, _mm256_cmp_ps(old[a], zero, _CMP_GE_OQ));
                const __m256 gain = _mm256_add_ps(_mm256_mul_ps(discount, old[a]),
                                                  _mm256_loadu_ps(values + a * stride + h));
                _mm256_storeu_ps(r + a * step, _mm256_sub_ps(gain, value));
            }
            _mm256_storeu_ps(out + h, value);
        };

        // The last eight hands overlap those before them, so their rows are set aside first.
        LastBlock<n> last_regrets(regrets, hands);
        LastBlock<n> last_sums(sums, hands);
        const std::size_t last = last_block(hands);
        for (std::size_t h = 0; h < last; h += vector_floats) {
            update(regrets + h, sums + h, hands, h);
        }
        update(last_regrets.rows, last_sums.rows, vector_floats, last);
        last_regrets.put_back();
        last_sums.put_back();
    });
}

void current_reach(float* next, const float* regrets, const float* reach, std::size_t actions,
                   std::size_t hands, const float* ahead) {
    const ProfileScope timer(ProfileSlot::regret_matching);
    with_constant_actions(actions, [&]<std::size_t n>() {
        reach_pass<n>(next, regrets, reach, hands, ahead,
                      [](const auto& weights) { return Shares<n>::by_reciprocal(weights); });
    });
}

void average_reach(float* next, const float* sums, const float* reach, std::size_t actions,
                   std::size_t hands, const float* ahead) {
    with_constant_actions(actions, [&]<std::size_t n>() {
        reach_pass<n>(next, sums, reach, hands, ahead,
                      [](const auto& weights) { return Shares<n>::by_division(weights); });
    });
}

void average_totals(double* totals, const float* sums, std::size_t actions, std::size_t hands) {
    // One chain of additions for each action: bound by their latency where a row is in the caches.
    with_constant_actions(actions, [&]<std::size_t n>() {
        const NodeRows<n> rows(sums, hands);
        double total[n] = {};
        std::size_t next = 0;  // the first hand that is not counted yet
        for_each_block(hands, [&](std::size_t h) {
            __m256 row[n];
            rows.load(h, row);
            const Shares<n> shares = Shares<n>::by_division(row);
            alignas(32) float share[n * vector_floats];
            for (std::size_t a = 0; a < n; ++a) {
                _mm256_store_ps(share + a * vector_floats, shares.of[a]);
            }
            const std::size_t end = std::min(h + vector_floats, hands);
            for (; next < end; ++next) {
                for (std::size_t a = 0; a < n; ++a) {
                    total[a] += static_cast<double>(share[a * vector_floats + next - h]);
                }
            }
        });
        std::copy_n(total, n, totals);
    });
}

void average_value(float* out, const float* sums, const float* values, std::size_t actions,
                   std::size_t hands) {
    with_constant_actions(actions, [&]<std::size_t n>() {
        const NodeRows<n> rows(sums, hands);
        const std::size_t stride = padded_row(hands);
        for_each_block(hands, [&](std::size_t h) {
            __m256 row[n];
            rows.load(h, row);
            const Shares<n> shares = Shares<n>::by_division(row);
            DoubleSum sum;
            for (std::size_t a = 0; a < n; ++a) {
                sum.add_product(_mm256_loadu_ps(values + a * stride + h), shares.of[a]);
            }
            _mm256_storeu_ps(out + h, sum.rounded());
        });
    });
}

void largest_value(float* out, const float* rows, std::size_t count, std::size_t hands) {
    const std::size_t stride = padded_row(hands);
    for (std::size_t h = 0; h < stride; h += vector_floats) {
        __m256 best = _mm256_load_ps(rows + h);
        for (std::size_t a = 1; a < count; ++a) {
            best = _mm256_max_ps(_mm256_load_ps(rows + a * stride + h), best);
        }
        _mm256_store_ps(out + h, best);
    }
}

void sum_padded_rows(float* out, const float* rows, std::size_t count, std::size_t hands) {
    const std::size_t stride = padded_row(hands);
    for (std::size_t h = 0; h < stride; h += vector_floats) {
        DoubleSum sum;
        for (std::size_t a = 0; a < count; ++a) {
            sum.add(_mm256_load_ps(rows + a * stride + h));
        }
        _mm256_store_ps(out + h, sum.rounded());
    }
}

}  // namespace kestrel
