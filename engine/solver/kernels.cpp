#include "engine/solver/kernels.h"

#include <limits>

#include "engine/solver/profile.h"

namespace kestrel {

void regret_matching(float* __restrict strategy, float* __restrict denominator,
                     const float* __restrict regrets, std::size_t actions, std::size_t hands) {
    const ProfileScope timer(ProfileSlot::regret_matching);
    if (actions == 0 || hands == 0) {
        return;
    }
    for (std::size_t h = 0; h < hands; ++h) {
        denominator[h] = 0.0F;
    }
    for (std::size_t a = 0; a < actions; ++a) {
        const float* row = regrets + a * hands;
        float* to = strategy + a * hands;
        for (std::size_t h = 0; h < hands; ++h) {
            const float positive = row[h] > 0.0F ? row[h] : 0.0F;
            to[h] = positive;
            denominator[h] += positive;
        }
    }
    for (std::size_t h = 0; h < hands; ++h) {
        const float reciprocal = 1.0F / denominator[h];
        denominator[h] = reciprocal <= std::numeric_limits<float>::max() ? reciprocal : 0.0F;
    }
    const float uniform = 1.0F / static_cast<float>(actions);
    for (std::size_t a = 0; a < actions; ++a) {
        float* row = strategy + a * hands;
        for (std::size_t h = 0; h < hands; ++h) {
            const float share = row[h] * denominator[h];
            row[h] = denominator[h] > 0.0F ? share : uniform;
        }
    }
}

void update_regrets(float* __restrict regrets, const float* __restrict action_values,
                    const float* __restrict ev, std::size_t actions, std::size_t hands, float alpha,
                    float beta) {
    const ProfileScope timer(ProfileSlot::update_regrets);
    for (std::size_t a = 0; a < actions; ++a) {
        float* row = regrets + a * hands;
        const float* values = action_values + a * hands;
        for (std::size_t h = 0; h < hands; ++h) {
            const float discount = row[h] >= 0.0F ? alpha : beta;
            row[h] = discount * row[h] + values[h] - ev[h];
        }
    }
}

void fma_actions(float* __restrict out, const float* __restrict strategy,
                 const float* __restrict action_values, std::size_t actions, std::size_t hands) {
    const ProfileScope timer(ProfileSlot::fma_actions);
    if (actions == 0) {
        return;
    }
    for (std::size_t h = 0; h < hands; ++h) {
        out[h] = strategy[h] * action_values[h];
    }
    for (std::size_t a = 1; a < actions; ++a) {
        const float* shares = strategy + a * hands;
        const float* values = action_values + a * hands;
        for (std::size_t h = 0; h < hands; ++h) {
            out[h] += shares[h] * values[h];
        }
    }
}

void strategy_sum_update(float* __restrict sum, const float* __restrict strategy, float gamma,
                         std::size_t n) {
    const ProfileScope timer(ProfileSlot::strategy_sum_update);
    for (std::size_t i = 0; i < n; ++i) {
        sum[i] = gamma * sum[i] + strategy[i];
    }
}

void sum_rows_into(float* __restrict dst, const float* __restrict rows, std::size_t actions,
                   std::size_t hands) {
    const ProfileScope timer(ProfileSlot::sum_rows_into);
    for (std::size_t a = 0; a < actions; ++a) {
        const float* row = rows + a * hands;
        for (std::size_t h = 0; h < hands; ++h) {
            dst[h] += row[h];
        }
    }
}

void sum_rows_in_double(float* __restrict out, const float* __restrict rows, std::size_t actions,
                        std::size_t hands) {
    for (std::size_t h = 0; h < hands; ++h) {
        double sum = 0.0;
        for (std::size_t a = 0; a < actions; ++a) {
            sum += static_cast<double>(rows[a * hands + h]);
        }
        out[h] = static_cast<float>(sum);
    }
}

void scale_row(float* __restrict dst, const float* __restrict src, float s, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        dst[i] = s * src[i];
    }
}

void multiply_rows(float* __restrict dst, const float* __restrict a, const float* __restrict b,
                   std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        dst[i] = a[i] * b[i];
    }
}

void add_scaled_row(float* __restrict dst, const float* __restrict src, std::size_t n, float s) {
    if (s == 0.0F) {
        return;
    }
    for (std::size_t i = 0; i < n; ++i) {
        dst[i] += s * src[i];
    }
}

}  // namespace kestrel
