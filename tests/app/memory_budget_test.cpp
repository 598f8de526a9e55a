#include "app/memory_budget.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "tests/app/controller_support.h"

namespace tidewell {
namespace {

constexpr quint64 gigabyte = quint64{1} << 30;

TEST(MemoryBudget, Texts) {
    const std::pair<quint64, const char*> cases[] = {
        {0, "—"}, {10200547328, "9.5 GB"}, {10737418240, "10 GB"}};
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(formatBytes(bytes), text);
}

TEST(MemoryBudget, WhatASolveMayTake) {
    MemoryBudget budget;
    budget.requestEstimate(riverConfig());
    ASSERT_TRUE(waitUntil([&] { return budget.requiredBytes() != 0; }));
    const quint64 needed = budget.requiredBytes();
    // Available, and whether a solve may begin.
    const std::pair<quint64, bool> cases[] = {
        {needed - 1, false}, {needed, false}, {needed + 1, true}, {0, true}};
    for (const auto& [available, fits] : cases) {
        budget.setSystem(6 * gigabyte, available);
        EXPECT_EQ(budget.beginSolve(), fits) << available;
    }
    // The last result counts as available, up to what there is.
    EXPECT_EQ(budget.reclaimableBytes(), 0U);
    budget.keepResult();
    EXPECT_EQ(budget.reclaimableBytes(), needed);
    const quint64 most = std::numeric_limits<quint64>::max();
    const std::array<quint64, 3> effective[] = {{6 * gigabyte, gigabyte, gigabyte + needed},
                                                {gigabyte + 1, gigabyte, gigabyte + 1},
                                                {0, gigabyte, gigabyte + needed},
                                                {0, most - 1, most}};
    for (const auto& [total, available, expected] : effective) {
        budget.setSystem(total, available);
        EXPECT_EQ(budget.effectiveAvailableBytes(), expected);
    }
    budget.clearResult();
    EXPECT_EQ(budget.reclaimableBytes(), 0U);
}

}  // namespace
}  // namespace tidewell
