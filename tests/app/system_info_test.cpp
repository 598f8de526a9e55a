#include "app/system_info.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <tuple>

namespace tidewell {
namespace {

TEST(SystemInfo, ProcessorCountFallsBackStepByStep) {
    const std::tuple<qint64, int, unsigned, int> cases[] = {
        {8, 4, 2, 8},          {1, 4, 2, 1}, {0, 4, 2, 4},  {-1, 4, 2, 4},
        {2147483648, 4, 2, 4}, {0, 0, 2, 2}, {0, -1, 0, 1}, {0, 0, 4000000000U, 1}};
    for (const auto& [reported, ideal, hardware, count] : cases) {
        EXPECT_EQ(chooseProcessorCount(reported, ideal, hardware), count)
            << reported << ' ' << ideal << ' ' << hardware;
    }
}

TEST(SystemInfo, CountsOnlyPermittedProcessors) {
    cpu_set_t before;
    ASSERT_EQ(sched_getaffinity(0, sizeof before, &before), 0);
    EXPECT_EQ(logicalProcessorCount(), CPU_COUNT(&before));
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(sched_getcpu(), &one);
    ASSERT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
    EXPECT_EQ(logicalProcessorCount(), 1);
    sched_setaffinity(0, sizeof before, &before);
}

}  // namespace
}  // namespace tidewell
