#include "engine/solver/kernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace kestrel {
namespace {

using Row = std::vector<float>;

constexpr float inf = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float denormal = std::numeric_limits<float>::denorm_min();
constexpr float huge = std::numeric_limits<float>::max();

// Plain forms of the kernels, a hand at a time, each step rounded to f32.
namespace plain {

void regret_matching(Row& strategy, Row& denominator, const Row& regrets, std::size_t actions,
                     std::size_t hands) {
    for (std::size_t h = 0; h < hands; ++h) {
        float sum = 0;
        for (std::size_t a = 0; a < actions; ++a) {
            sum += regrets[a * hands + h] > 0 ? regrets[a * hands + h] : 0.0F;
        }
        const float reciprocal = sum > 0 && std::isfinite(1.0F / sum) ? 1.0F / sum : 0.0F;
        denominator[h] = reciprocal;
        for (std::size_t a = 0; a < actions; ++a) {
            const float regret = regrets[a * hands + h];
            strategy[a * hands + h] = reciprocal > 0 ? (regret > 0 ? regret : 0.0F) * reciprocal
                                                     : 1.0F / static_cast<float>(actions);
        }
    }
}

void update_regrets(Row& regrets, const Row& values, const Row& ev, std::size_t actions,
                    std::size_t hands, float alpha, float beta) {
    for (std::size_t i = 0; i < actions * hands; ++i) {
        const float discounted = (regrets[i] >= 0 ? alpha : beta) * regrets[i];
        regrets[i] = discounted + values[i];
    }
    for (std::size_t i = 0; i < actions * hands; ++i) {
        regrets[i] -= ev[i % hands];
    }
}

Row fma_actions(const Row& strategy, const Row& values, std::size_t actions, std::size_t hands) {
    Row out(hands);
    for (std::size_t h = 0; h < hands; ++h) {
        out[h] = strategy[h] * values[h];
        for (std::size_t a = 1; a < actions; ++a) {
            const float product = strategy[a * hands + h] * values[a * hands + h];
            out[h] = out[h] + product;
        }
    }
    return out;
}

}  // namespace plain

/// Bit by bit, but every NaN is like any other: which operand's payload survives an addition is
/// the compiler's choice.
void expect_same_bits(const float* actual, const Row& expected, const std::string& what) {
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (!(std::isnan(actual[i]) && std::isnan(expected[i]))) {
            ASSERT_EQ(std::bit_cast<std::uint32_t>(actual[i]),
                      std::bit_cast<std::uint32_t>(expected[i]))
                << what << " at " << i;
        }
    }
}

/// A row at an offset from a vector boundary, with a mark behind it that nothing may touch.
class Placed {
  public:
    Placed(const Row& row, std::size_t offset) : offset_(offset) {
        buffer_.assign(offset + row.size() + 9, 12345.0F);
        std::ranges::copy(row, data());
    }
    ~Placed() {
        EXPECT_TRUE(std::all_of(buffer_.begin(), buffer_.begin() + offset(), is_mark));
        EXPECT_TRUE(std::all_of(buffer_.end() - 9, buffer_.end(), is_mark));
    }
    Placed(const Placed&) = delete;
    Placed& operator=(const Placed&) = delete;

    float* data() { return buffer_.data() + offset_; }

  private:
    static bool is_mark(float value) { return value == 12345.0F; }
    std::ptrdiff_t offset() const { return static_cast<std::ptrdiff_t>(offset_); }

    std::size_t offset_;
    Row buffer_;
};

class Source {
  public:
    Row row(std::size_t size) {
        static constexpr float special[] = {0.0F,     -0.0F,     nan,  inf,   -inf,
                                            denormal, -denormal, huge, -huge, 1e-38F};
        Row result(size);
        for (float& value : result) {
            value = random_() % 8 == 0 ? special[random_() % std::size(special)] : number();
        }
        return result;
    }
    float number() {
        return std::ldexp(static_cast<float>(random_()) * 0x1p-32F - 0.5F,
                          static_cast<int>(random_() % 40) - 20);
    }

  private:
    std::mt19937 random_{7};
};

TEST(Kernels, SameBitsAsThePlainForm) {
    Source source;
    for (const std::size_t hands : {0, 1, 2, 7, 8, 9, 15, 16, 17, 31, 40, 67}) {
        for (const std::size_t actions : {0, 1, 2, 3, 5}) {
            for (const std::size_t offset : {0, 1, 3}) {
                SCOPED_TRACE(testing::Message() << actions << " x " << hands << " + " << offset);
                const std::size_t n = actions * hands;
                const Row a = source.row(n);
                const Row b = source.row(n);
                const Row ev = source.row(hands);
                const float alpha = std::abs(source.number());
                Placed pa(a, offset);
                Placed pb(b, offset + 2);
                Placed pev(ev, offset + 1);
                // Runs a kernel on a copy of `before` and compares it with `after`.
                const auto expect = [&](const char* name, const Row& before, const Row& after,
                                        const auto& kernel) {
                    Placed placed(before, offset);
                    kernel(placed.data());
                    expect_same_bits(placed.data(), after, name);
                };

                Row strategy = b;
                Row denominator = ev;
                if (n != 0) plain::regret_matching(strategy, denominator, a, actions, hands);
                expect("regret_matching", b, strategy, [&](float* out) {
                    Placed reciprocals(ev, offset);
                    regret_matching(out, reciprocals.data(), pa.data(), actions, hands);
                    expect_same_bits(reciprocals.data(), denominator, "denominator");
                });
                Row regrets = a;
                plain::update_regrets(regrets, b, ev, actions, hands, alpha, 0.5F);
                expect("update_regrets", a, regrets, [&](float* out) {
                    update_regrets(out, pb.data(), pev.data(), actions, hands, alpha, 0.5F);
                });
                expect("fma_actions", ev, n == 0 ? ev : plain::fma_actions(a, b, actions, hands),
                       [&](float* out) { fma_actions(out, pa.data(), pb.data(), actions, hands); });

                Row sum = a;
                Row scaled = a;
                Row product = a;
                Row added = a;
                for (std::size_t i = 0; i < n; ++i) {
                    const float discounted = alpha * a[i];
                    sum[i] = discounted + b[i];
                    scaled[i] = alpha * b[i];
                    product[i] = a[i] * b[i];
                    added[i] = a[i] + scaled[i];
                }
                expect("strategy_sum_update", a, sum,
                       [&](float* out) { strategy_sum_update(out, pb.data(), alpha, n); });
                expect("scale_row", a, scaled,
                       [&](float* out) { scale_row(out, pb.data(), alpha, n); });
                expect("multiply_rows", a, product,
                       [&](float* out) { multiply_rows(out, pa.data(), pb.data(), n); });
                expect("add_scaled_row", a, added,
                       [&](float* out) { add_scaled_row(out, pb.data(), n, alpha); });
                expect("add_scaled_row by 0", a, a,
                       [&](float* out) { add_scaled_row(out, pb.data(), n, 0.0F); });

                Row rows = ev;
                Row in_double(hands);
                for (std::size_t h = 0; h < hands; ++h) {
                    double wide = 0;
                    for (std::size_t i = h; i < n; i += hands) {
                        rows[h] += b[i];
                        wide += static_cast<double>(b[i]);
                    }
                    in_double[h] = static_cast<float>(wide);
                }
                expect("sum_rows_into", ev, rows,
                       [&](float* out) { sum_rows_into(out, pb.data(), actions, hands); });
                expect("sum_rows_in_double", ev, in_double,
                       [&](float* out) { sum_rows_in_double(out, pb.data(), actions, hands); });
            }
        }
    }
}

TEST(Kernels, RegretMatchingByHand) {
    struct Case {
        Row regrets, strategy;
    };
    const Case cases[] = {
        {{3, -1, 1}, {0.75F, 0, 0.25F}},
        {{-1, -2, -3, -4}, {0.25F, 0.25F, 0.25F, 0.25F}},
        {{-0.0F, 0.0F}, {0.5F, 0.5F}},
        {{nan, 2}, {0, 1}},
        {{nan, nan}, {0.5F, 0.5F}},
        {{huge, huge}, {0.5F, 0.5F}},   // the sum is not finite: its reciprocal is 0
        {{denormal, 0}, {0.5F, 0.5F}},  // nor is the reciprocal of a denormal
        {{1e-37F, 3e-37F}, {0.25F, 0.75F}},
    };
    for (const Case& c : cases) {
        Row strategy(c.regrets.size());
        float denominator = 0;
        regret_matching(strategy.data(), &denominator, c.regrets.data(), c.regrets.size(), 1);
        for (std::size_t i = 0; i < strategy.size(); ++i) {
            EXPECT_FLOAT_EQ(strategy[i], c.strategy[i]) << c.regrets[0] << " at " << i;
        }
    }
}

TEST(Kernels, UpdateRegretsByHand) {
    struct Case {
        float regret, value, ev, alpha, expected;
    };
    const Case cases[] = {
        {-2, 5, 1, 0.9F, 3},  // a half of what is below 0 stays
        {7, 5, 1, 0, 4},      // what is above 0 goes, with alpha 0
        {4, 5, 1, 0.75F, 7},
    };
    for (const Case& c : cases) {
        float regret = c.regret;
        update_regrets(&regret, &c.value, &c.ev, 1, 1, c.alpha, 0.5F);
        EXPECT_EQ(regret, c.expected);
    }
    const float negative_zero = -0.0F;
    float sum = -0.0F;
    update_regrets(&sum, &negative_zero, &negative_zero, 1, 1, -1.0F, 0.5F);
    EXPECT_FALSE(std::signbit(sum)) << "-0 is discounted by alpha";
}

}  // namespace
}  // namespace kestrel
