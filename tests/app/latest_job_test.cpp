#include "app/results/latest_job.h"

#include <gtest/gtest.h>

#include <thread>

#include "tests/app/controller_support.h"

namespace tidewell {
namespace {

TEST(LatestJob, OnlyTheLastQuestionIsAnswered) {
    std::vector<int> answers;
    std::atomic<bool> stopped = false;
    std::atomic<bool> open = false;
    const auto done = [&](std::optional<int> answer) { answers.push_back(answer.value_or(-1)); };
    {
        LatestJob<int> job;
        job.start([](const auto&) { return 1; }, done);
        EXPECT_TRUE(waitUntil([&] { return answers.size() == 1; }));
        job.start(
            [&](const std::atomic<bool>& stop) {
                while (!stop) {
                    std::this_thread::yield();
                }
                stopped = true;
                return 2;
            },
            done);
        EXPECT_EQ(answers.size(), 1U) << "does not hold up who asks";
        job.start(
            [&](const auto&) {
                while (!open) {
                    std::this_thread::yield();
                }
                return 3;
            },
            done);
        open = true;
        EXPECT_TRUE(waitUntil([&] { return answers.size() == 2 && stopped; }));
        job.start([](const auto&) -> std::optional<int> { throw std::bad_alloc(); }, done);
        EXPECT_TRUE(waitUntil([&] { return answers.size() == 3; }));
        job.start(
            [](const std::atomic<bool>& stop) -> std::optional<int> {
                while (!stop) {
                    std::this_thread::yield();
                }
                return 4;
            },
            done);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(answers, (std::vector{1, 3, -1})) << "and none once nobody waits";
}

}  // namespace
}  // namespace tidewell
