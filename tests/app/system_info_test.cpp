#include "app/platform/system_info.h"

#include <gtest/gtest.h>
#include <sched.h>

#include "session/memory_info.h"

namespace tidewell {
namespace {

TEST(SystemInfo, ProcessorCountFallsBackStepByStep) {
    struct Case {
        qint64 reported;
        int ideal;
        unsigned hardware;
        int count;
    };
    const Case cases[] = {
        {8, 4, 2, 8},
        {1, 4, 2, 1},
        {0, 4, 2, 4},
        {-1, 4, 2, 4},
        {2147483647, 4, 2, 2147483647},
        {2147483648, 4, 2, 4},
        {0, 1, 2, 1},
        {0, 0, 2, 2},
        {0, -1, 0, 1},
        {0, 0, 4000000000U, 1},
    };
    for (const Case& expected : cases) {
        EXPECT_EQ(chooseProcessorCount(expected.reported, expected.ideal, expected.hardware),
                  expected.count)
            << expected.reported << ' ' << expected.ideal << ' ' << expected.hardware;
    }
}

TEST(SystemInfo, CountsOnlyPermittedProcessors) {
    cpu_set_t before;
    ASSERT_EQ(sched_getaffinity(0, sizeof before, &before), 0);
    EXPECT_EQ(logicalProcessorCount(), CPU_COUNT(&before));
    int permitted = 0;
    while (!CPU_ISSET(permitted, &before)) {
        ++permitted;
    }
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(permitted, &one);
    ASSERT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
    EXPECT_EQ(logicalProcessorCount(), 1);
    sched_setaffinity(0, sizeof before, &before);
}

TEST(SystemInfo, MemoryIsKnown) {
    EXPECT_EQ(totalMemoryBytes(), kestrel_app::total_memory());
    EXPECT_GT(availableMemoryBytes(), 0U);
    EXPECT_LE(availableMemoryBytes(), totalMemoryBytes());
}

}  // namespace
}  // namespace tidewell
