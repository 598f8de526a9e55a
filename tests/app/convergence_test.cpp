#include "app/results/convergence.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using tidewell::Convergence;

// A solve that converges like a power is followed exactly, and one that does not tells nothing.
TEST(Convergence, LeadsToTheTarget) {
    Convergence falling;
    EXPECT_FALSE(falling.iterationAt(0.1));
    for (int iteration = 50; iteration <= 500; iteration += 50) {
        falling.add({iteration, iteration / 10.0, 30 * std::pow(iteration, -1.25)});
    }
    EXPECT_NEAR(falling.iterationAt(30 * std::pow(2000.0, -1.25)).value_or(0), 2000, 1e-6);
    EXPECT_EQ(falling.iterationAt(1), 500) << "it is there already";
    EXPECT_FALSE(falling.iterationAt(0));
    for (const double chips : {0.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0}) {
        falling.add({600, 60, chips});
    }
    EXPECT_FALSE(falling.iterationAt(0.1)) << "it rises, and all at once";
}

TEST(Convergence, KeepsAsManyPointsAsAChartHasColumns) {
    Convergence long_;
    constexpr int count = 100003;
    for (int i = 1; i <= count; ++i) {
        long_.add({i, 1.0 * i, 1.0 / i});
    }
    const auto points = long_.points();
    EXPECT_LE(points.size(), Convergence::most + 1);
    EXPECT_GT(points.size(), Convergence::most / 2);
    EXPECT_EQ(points.front().iteration, 1);
    EXPECT_EQ(points.back().iteration, count);
    for (std::size_t i = 2; i + 1 < points.size(); ++i) {
        ASSERT_EQ(points[i].iteration - points[i - 1].iteration,
                  points[1].iteration - points[0].iteration);
    }
}

}  // namespace
