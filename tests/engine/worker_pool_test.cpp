#include "engine/parallel/worker_pool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <new>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace kestrel {
namespace {

using Chunks = std::set<std::pair<std::size_t, std::size_t>>;

TEST(WorkerPoolParallel, Chunks) {
    struct Case {
        std::size_t threads, count;
        Chunks chunks;
    };
    const Case cases[] = {
        {8, 0, {{0, 0}}},
        {8, 1, {{0, 1}}},
        {1, 5, {{0, 5}}},
        {2, 3, {{0, 2}, {2, 3}}},
        {3, 4, {{0, 2}, {2, 4}}},
        {8, 49, {{0, 7}, {7, 14}, {14, 21}, {21, 28}, {28, 35}, {35, 42}, {42, 49}}},
        {5, 3, {{0, 1}, {1, 2}, {2, 3}}},
    };
    for (const Case& c : cases) {
        WorkerPool pool(c.threads - 1);
        std::mutex mutex;
        Chunks chunks;
        parallel_for(&pool, c.threads, c.count, [&](std::size_t begin, std::size_t end) {
            const std::scoped_lock lock(mutex);
            EXPECT_TRUE(chunks.emplace(begin, end).second);
        });
        EXPECT_EQ(chunks, c.chunks) << c.threads << " threads, " << c.count;
    }
    parallel_for(nullptr, 4, 100, [](std::size_t begin, std::size_t end) {
        EXPECT_EQ(end - begin, 100U) << "without a pool the caller does it all";
    });
}

TEST(WorkerPoolParallel, NestedFanOutEndsWithEveryWorkerBusy) {
    WorkerPool pool(2);
    std::vector<int> cells(6 * 6 * 6, 0);
    const std::function<void(std::size_t, int)> fill = [&](std::size_t first, int depth) {
        parallel_for(&pool, 3, 6, [&](std::size_t begin, std::size_t end) {
            for (std::size_t i = first * 6 + begin; i < first * 6 + end; ++i) {
                depth == 2 ? static_cast<void>(++cells[i]) : fill(i, depth + 1);
            }
        });
    };
    for (int round = 0; round < 50; ++round) {
        fill(0, 0);
    }
    EXPECT_EQ(cells, std::vector<int>(6 * 6 * 6, 50));
}

TEST(WorkerPoolParallel, TheLowestFailureReachesTheCallerAfterAllHaveEnded) {
    WorkerPool pool(3);
    for (int round = 0; round < 20; ++round) {
        std::atomic<int> ended{0};
        std::string message;
        try {
            parallel_for(&pool, 4, 4, [&](std::size_t begin, std::size_t) {
                // The lowest failure is the last in time, and a chunk behind it succeeds late.
                std::this_thread::sleep_for(std::chrono::microseconds(300 * (4 - begin)));
                ++ended;
                if (begin != 0) {
                    throw std::runtime_error("chunk " + std::to_string(begin));
                }
            });
        } catch (const std::runtime_error& error) {
            message = error.what();
        }
        EXPECT_EQ(message, "chunk 1");
        EXPECT_EQ(ended, 4);
    }
    // No memory on a worker, inside a nested fan-out; the pool is sound afterwards.
    const auto fail = [](std::size_t begin, std::size_t) {
        if (begin == 0) throw std::bad_alloc();
    };
    EXPECT_THROW(parallel_for(&pool, 4, 8,
                              [&](std::size_t, std::size_t) { parallel_for(&pool, 4, 8, fail); }),
                 std::bad_alloc);
    std::vector<std::atomic<int>> taken(1000);
    parallel_turns(&pool, 4, taken.size(), [&](Turns& turns) {
        while (const auto index = turns.take()) {
            ++taken[*index];
        }
    });
    EXPECT_TRUE(std::ranges::all_of(taken, [](const auto& times) { return times == 1; }));
}

TEST(WorkerPoolParallel, TheDestructorLetsQueuedTasksEnd) {
    std::atomic<int> ended{0};
    {
        WorkerPool pool(2);
        for (int i = 0; i < 100; ++i) {
            pool.submit([&] {
                std::this_thread::sleep_for(std::chrono::microseconds(50));
                ++ended;
            });
        }
    }
    EXPECT_EQ(ended, 100);
}

}  // namespace
}  // namespace kestrel
