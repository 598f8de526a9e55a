#include "engine/solver/kernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "engine/solver/aligned_buffer.h"
#include "engine/solver/node_passes.h"
#include "engine/solver/simd.h"

namespace kestrel {
namespace {

using Row = std::vector<float>;

constexpr float mark = 12345.0F;

/// Rows of `hands` floats each in a buffer of marks: one behind the other at an offset from a
/// vector boundary, or padded and aligned as the walk's own.
class Placed {
  public:
    Placed(const Row& rows, std::size_t hands, bool padded, std::size_t offset)
        : hands_(hands),
          stride_(padded ? padded_row(hands) : hands),
          count_(hands == 0 ? 0 : rows.size() / hands),
          begin_(padded ? margin : margin + offset),
          size_(begin_ + count_ * stride_ + margin),
          buffer_(size_) {
        std::fill_n(buffer_.data(), size_, mark);
        for (std::size_t r = 0; r < count_; ++r)
            std::copy_n(rows.data() + r * hands, hands, data() + r * stride_);
    }

    float* data() { return buffer_.data() + begin_; }

    void expect(const Row& rows, const char* what) {
        for (std::size_t r = 0; r < count_; ++r) {
            ASSERT_EQ(
                std::memcmp(data() + r * stride_, rows.data() + r * hands_, hands_ * sizeof(float)),
                0)
                << what << ", row " << r;
        }
        for (std::size_t i = 0; i < size_; ++i) {
            const bool outside = i < begin_ || i >= begin_ + count_ * stride_;
            ASSERT_TRUE(!outside || buffer_.data()[i] == mark) << what << " writes outside";
        }
    }

  private:
    static constexpr std::size_t margin = 16;

    std::size_t hands_, stride_, count_, begin_, size_;
    AlignedBuffer<float> buffer_;
};

/// Numbers of many sizes, every eighth a special one. No two NaNs with different bits, since which
/// of two survives an operation is the compiler's choice.
class Source {
  public:
    Row row(std::size_t size, bool weights) {
        static constexpr float nan = std::numeric_limits<float>::quiet_NaN();
        static constexpr float inf = std::numeric_limits<float>::infinity();
        static constexpr float special[] = {0.0F,   -0.0F,           nan, 0x1p-149F, -0x1p-149F,
                                            1e-38F, 0x1.fffffep127F, -inf};
        const std::size_t count = std::size(special) - (weights ? 0 : 2);
        Row result(size);
        for (float& value : result)
            value = random_() % 8 == 0 ? special[random_() % count] : number();
        return result;
    }
    float number() {
        return std::ldexp(static_cast<float>(random_()) * 0x1p-32F - 0.5F,
                          static_cast<int>(random_() % 40) - 20);
    }

  private:
    std::mt19937 random_{7};
};

/// What each kernel and each fused pass makes of a node, hand by hand, each step rounded to f32.
struct PlainNode {
    Row strategy, reciprocal, value, regrets, sums, next, average, average_next, average_value;
    Row largest, total;

    PlainNode(const Row& old_regrets, const Row& old_sums, const Row& values, const Row& reach,
              std::size_t actions, std::size_t hands, float alpha, float beta, float gamma)
        : regrets(old_regrets), sums(old_sums) {
        for (Row* row : {&strategy, &next, &average, &average_next})
            row->resize(regrets.size());
        for (Row* row : {&reciprocal, &value, &average_value, &largest, &total})
            row->resize(hands);
        const auto positive = [](float x) { return x > 0 ? x : 0.0F; };
        const float uniform = 1.0F / static_cast<float>(actions);
        for (std::size_t h = 0; h < hands; ++h) {
            float regret_sum = 0;
            float weight_sum = 0;
            for (std::size_t i = h; i < regrets.size(); i += hands) {
                regret_sum += positive(regrets[i]);
                weight_sum += positive(sums[i]);
            }
            const float inverse = 1.0F / regret_sum;
            reciprocal[h] = std::isfinite(inverse) ? inverse : 0.0F;
            double mean = 0;
            double sum = 0;
            for (std::size_t i = h; i < regrets.size(); i += hands) {
                strategy[i] = reciprocal[h] > 0 ? positive(regrets[i]) * reciprocal[h] : uniform;
                average[i] = weight_sum > 0 ? positive(sums[i]) / weight_sum : uniform;
                next[i] = strategy[i] * reach[h];
                average_next[i] = average[i] * reach[h];
                const float share = strategy[i] * values[i];
                value[h] = i == h ? share : value[h] + share;
                largest[h] = i == h || values[i] > largest[h] ? values[i] : largest[h];
                mean += static_cast<double>(values[i]) * static_cast<double>(average[i]);
                sum += static_cast<double>(values[i]);
            }
            average_value[h] = static_cast<float>(mean);
            total[h] = static_cast<float>(sum);
            for (std::size_t i = h; i < regrets.size(); i += hands) {
                const float discounted = (regrets[i] >= 0 ? alpha : beta) * regrets[i];
                regrets[i] = discounted + values[i] - value[h];
                const float faded = gamma * sums[i];
                sums[i] = faded + strategy[i];
            }
        }
    }
};

void check_node(Source& source, std::size_t actions, std::size_t hands) {
    const std::size_t n = actions * hands;
    const Row regrets = source.row(n, true);
    const Row sums = source.row(n, true);
    const Row values = source.row(n, false);
    const Row reach = source.row(hands, false);
    const float alpha = std::min(std::abs(source.number()), 1.0F);
    const float gamma = 0.75F;
    const PlainNode plain(regrets, sums, values, reach, actions, hands, alpha, 0.5F, gamma);
    // Runs what writes to rows that hold `before`, and expects `after`.
    const auto expect = [&](const char* what, bool padded, const Row& before, const Row& after,
                            const auto& run) {
        Placed rows(before, hands, padded, 1 + hands % 3);
        run(rows.data());
        rows.expect(after, what);
    };

    const Row blank(n, 7.0F);
    const Row blank_row(hands, 7.0F);
    expect("regret_matching", false, blank, plain.strategy, [&](float* out) {
        expect("reciprocals", false, blank_row, plain.reciprocal, [&](float* reciprocals) {
            regret_matching(out, reciprocals, regrets.data(), actions, hands);
        });
    });
    expect("update_regrets", false, regrets, plain.regrets, [&](float* out) {
        update_regrets(out, values.data(), plain.value.data(), actions, hands, alpha, 0.5F);
    });
    expect("fma_actions", false, blank_row, plain.value, [&](float* out) {
        fma_actions(out, plain.strategy.data(), values.data(), actions, hands);
    });
    expect("strategy_sum_update", false, sums, plain.sums,
           [&](float* out) { strategy_sum_update(out, plain.strategy.data(), gamma, n); });
    expect("sum_rows_in_double", false, blank_row, plain.total,
           [&](float* out) { sum_rows_in_double(out, values.data(), actions, hands); });
    if (hands == 0) return;

    Placed padded_values(values, hands, true, 0);
    Placed padded_reach(reach, hands, true, 0);
    const float* const rows = padded_values.data();
    expect("largest_value", true, blank_row, plain.largest,
           [&](float* out) { largest_value(out, rows, actions, hands); });
    expect("sum_padded_rows", true, blank_row, plain.total,
           [&](float* out) { sum_padded_rows(out, rows, actions, hands); });
    if (actions > most_fused_actions) return;
    expect("update_own_node", true, blank_row, plain.value, [&](float* out) {
        expect("its regrets", false, regrets, plain.regrets, [&](float* r) {
            expect("its sums", false, sums, plain.sums, [&](float* s) {
                update_own_node(r, s, rows, out, actions, hands, alpha, 0.5F, gamma, nullptr,
                                nullptr);
            });
        });
    });
    Placed tight_sums(sums, hands, false, 1);
    Placed tight_regrets(regrets, hands, false, 3);
    expect("current_reach", true, blank, plain.next, [&](float* out) {
        current_reach(out, tight_regrets.data(), padded_reach.data(), actions, hands, nullptr);
    });
    expect("average_reach", true, blank, plain.average_next, [&](float* out) {
        average_reach(out, tight_sums.data(), padded_reach.data(), actions, hands, nullptr);
    });
    expect("average_value", true, blank_row, plain.average_value,
           [&](float* out) { average_value(out, tight_sums.data(), rows, actions, hands); });
}

TEST(Kernels, FlatLoopsAndFusedPassesGiveTheBitsOfThePlainForm) {
    Source source;
    for (std::size_t hands = 0; hands <= 41; ++hands) {
        for (std::size_t actions = 1; actions <= 10; ++actions) {
            SCOPED_TRACE(testing::Message() << actions << " x " << hands);
            check_node(source, actions, hands == 41 ? 1100 : hands);
            if (HasFatalFailure()) return;
        }
    }
}

}  // namespace
}  // namespace kestrel
