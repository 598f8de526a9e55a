#include "engine/poker/range_writer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <utility>

namespace kestrel {
namespace {

TEST(RangeWriter, WritesShortRuns) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"AA,KK,QQ,22-55,T9s,98s,87s,76s", "QQ+, 55-22, T9s-76s"},
        {"A2s-A5s:0.5,AK,KQo,KQs", "AK, A5s-A2s:0.5, KQ"},
        {"AK,A2s+", "A2s+, AKo"},
        {"A2s+,A2o+,A7s:0", "A8+, A6-A2, A7o"},
        {"KK,KsKh:0,AhKh,AhQh,AhJh,QcQd:0.25", "KK, KsKh:0, AhJh+, QdQc:0.25"},
        {"JTs:0.333,JcTc:1e-5", "JTs:0.333, JcTc:1e-05"}};
    for (const auto& [text, written] : cases) {
        EXPECT_EQ(write_range(parse_range(text)), written);
    }
}

// Whatever the weights are, to the bit: hand by hand alike, combo by combo different, and both.
TEST(RangeWriter, ComesBackFromItsText) {
    std::mt19937 random(11);
    const float weights[] = {0.0F, 1.0F, 0.5F, 0.1F, 1.0F / 3.0F, 1e-30F};
    const auto any = [&] { return weights[random() % std::size(weights)]; };
    for (int round = 0; round < 400; ++round) {
        Range range{};
        for (std::uint8_t high = 0; high < rank_count; ++high) {
            for (std::uint8_t low = 0; low <= high; ++low) {
                const float weight = any();
                for (const auto pocket : expand_pattern({.high_rank = high, .low_rank = low})) {
                    range[pocket] =
                        random() % 8 < static_cast<unsigned>(round % 8) ? any() : weight;
                }
            }
        }
        ASSERT_EQ(parse_range(write_range(range)), range) << write_range(range);
    }
}

}  // namespace
}  // namespace kestrel
