#include "platform/memory_info.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "tests/temporary_folder.h"

namespace tidewell_platform {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kilo(std::uint64_t count) {
    return count * 1024;
}

/// Stands in for "/" with a machine of 900 kB, 500 of them available.
class MemoryInfo : public testing::Test {
  protected:
    MemoryInfo() {
        write("proc/meminfo", "MemTotal: 900 kB\nMemFree: 1 kB\nMemAvailable:   500 kB\n");
    }

    void write(const std::string& name, const std::string& text) const {
        fs::create_directories((root_ / name).parent_path());
        std::ofstream(root_ / name) << text;
    }
    void write(const std::string& name, std::uint64_t bytes) const {
        write(name, std::to_string(bytes) + "\n");
    }

    const tidewell_tests::TemporaryFolder folder_;
    const fs::path root_ = folder_.path();
};

TEST_F(MemoryInfo, TakesTheTightestLevelOfTheGroup) {
    EXPECT_EQ(total_memory(root_), kilo(900));
    EXPECT_EQ(available_memory(root_), kilo(500));

    write("proc/self/cgroup", "0::/batch/job\n");
    write("sys/fs/cgroup/batch/job/memory.max", "max\n");
    write("sys/fs/cgroup/batch/job/memory.current", kilo(1));
    EXPECT_EQ(total_memory(root_), kilo(900));
    EXPECT_EQ(available_memory(root_), kilo(500));

    write("sys/fs/cgroup/batch/memory.max", kilo(400));
    write("sys/fs/cgroup/batch/memory.current", kilo(300));
    EXPECT_EQ(total_memory(root_), kilo(400));
    EXPECT_EQ(available_memory(root_), kilo(100));
    write("sys/fs/cgroup/batch/memory.stat", "anon 5\ninactive_file 51200\n");
    EXPECT_EQ(available_memory(root_), kilo(150));

    // A container sees its own group as the mount point.
    write("sys/fs/cgroup/memory.max", kilo(320));
    EXPECT_EQ(total_memory(root_), kilo(320));
    EXPECT_EQ(available_memory(root_), kilo(150));  // nobody says what the container uses
}

TEST_F(MemoryInfo, ReadsVersionOne) {
    write("proc/self/cgroup", "5:cpu:/x\n4:pids,memory:/job\n");
    write("sys/fs/cgroup/memory/memory.limit_in_bytes", "9223372036854771712\n");  // unlimited
    write("sys/fs/cgroup/memory/memory.usage_in_bytes", kilo(700));
    EXPECT_EQ(total_memory(root_), kilo(900));
    EXPECT_EQ(available_memory(root_), kilo(500));
    write("sys/fs/cgroup/memory/job/memory.limit_in_bytes", kilo(90));
    write("sys/fs/cgroup/memory/job/memory.usage_in_bytes", kilo(90));
    EXPECT_EQ(total_memory(root_), kilo(90));
    EXPECT_EQ(available_memory(root_), 0U);  // which is not the same as unknown
    fs::remove_all(root_ / "proc");
    EXPECT_EQ(available_memory(root_), std::nullopt);
}

TEST(MemoryOfThisMachine, IsPlausible) {
    ASSERT_TRUE(total_memory() && available_memory());
    EXPECT_LE(*available_memory(), *total_memory());
    EXPECT_GT(*available_memory(), kilo(1024));
    EXPECT_GT(peak_resident_bytes(), kilo(1024));
}

// The address sanitizer ends a process that runs out of memory.
#ifndef __SANITIZE_ADDRESS__
TEST(AllocationLimit, TurnsExcessIntoAnException) {
    constexpr std::size_t size = std::size_t{256} << 20;
    {
        const AllocationLimit limit(size / 4);
        EXPECT_THROW(std::vector<char>(size, 'x'), std::bad_alloc);
    }
    EXPECT_EQ(std::vector<char>(size, 'x').back(), 'x');
}
#endif

}  // namespace
}  // namespace tidewell_platform
