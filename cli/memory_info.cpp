#include "cli/memory_info.h"

#include <sys/resource.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <string>

namespace tidewell_cli {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t no_limit = std::numeric_limits<std::uint64_t>::max();

/// The number behind `name` on a line of its own, as in /proc/meminfo and memory.stat.
std::optional<std::uint64_t> field(const fs::path& file, const std::string& name) {
    std::ifstream in(file);
    std::string line;
    while (std::getline(in, line)) {
        if (line.starts_with(name)) {
            return std::strtoull(line.c_str() + name.size(), nullptr, 10);
        }
    }
    return std::nullopt;
}

/// The whole file as a number; nothing for "max" and for a file that is not there.
std::optional<std::uint64_t> number_in(const fs::path& file) {
    std::ifstream in(file);
    std::uint64_t number = 0;
    if (in >> number) {
        return number;
    }
    return std::nullopt;
}

struct GroupFiles {
    const char* limit;
    const char* usage;
    const char* cache;  // in memory.stat: file pages that the kernel gives back first
};

constexpr GroupFiles version_2 = {"memory.max", "memory.current", "inactive_file "};
constexpr GroupFiles version_1 = {"memory.limit_in_bytes", "memory.usage_in_bytes",
                                  "total_inactive_file "};

/// The least that any level between the group and the mount point leaves.
std::uint64_t left_in_group(const fs::path& mount, const std::string& group,
                            const GroupFiles& files) {
    std::uint64_t left = no_limit;
    fs::path level = fs::path(group).relative_path();
    while (true) {
        const fs::path folder = mount / level;
        const auto limit = number_in(folder / files.limit);
        const auto usage = number_in(folder / files.usage);
        if (limit && usage) {
            const std::uint64_t cache = field(folder / "memory.stat", files.cache).value_or(0);
            const std::uint64_t used = *usage - std::min(cache, *usage);
            left = std::min(left, *limit - std::min(used, *limit));
        }
        if (level.empty()) {
            return left;
        }
        level = level.parent_path();
    }
}

constexpr const char* process_status = "/proc/self/status";

/// What a resource limit leaves this process; `field_name` names the kilobytes in use.
std::uint64_t left_of_limit(decltype(RLIMIT_AS) resource, const char* field_name) {
    rlimit limit{};
    const auto in_use = field(process_status, field_name);
    if (!in_use || getrlimit(resource, &limit) != 0) {
        return no_limit;
    }
    return limit.rlim_cur == RLIM_INFINITY
               ? no_limit
               : limit.rlim_cur - std::min<std::uint64_t>(*in_use * 1024, limit.rlim_cur);
}

}  // namespace

std::optional<std::uint64_t> available_memory(const fs::path& root) {
    std::uint64_t available =
        std::min(left_of_limit(RLIMIT_AS, "VmSize:"), left_of_limit(RLIMIT_DATA, "VmData:"));
    if (const auto kilobytes = field(root / "proc/meminfo", "MemAvailable:")) {
        available = std::min(available, *kilobytes * 1024);
    }
    std::ifstream groups(root / "proc/self/cgroup");
    std::string line;  // hierarchy:controllers:path
    while (std::getline(groups, line)) {
        const std::size_t first = line.find(':');
        const std::size_t second = line.find(':', first + 1);
        if (first == std::string::npos || second == std::string::npos) {
            continue;
        }
        const std::string controllers = "," + line.substr(first + 1, second - first - 1) + ",";
        const std::string group = line.substr(second + 1);
        const fs::path mount = root / "sys/fs/cgroup";
        if (controllers == ",,") {
            available = std::min(available, left_in_group(mount, group, version_2));
        } else if (controllers.find(",memory,") != std::string::npos) {
            available = std::min(available, left_in_group(mount / "memory", group, version_1));
        }
    }
    if (available == no_limit) {
        return std::nullopt;
    }
    return available;
}

std::uint64_t peak_resident_bytes() {
    // getrusage would count what the process was before it became this program.
    if (const auto kilobytes = field(process_status, "VmHWM:")) {
        return *kilobytes * 1024;
    }
    rusage usage{};
    if (getrusage(RUSAGE_SELF, &usage) != 0) {
        return 0;
    }
    return static_cast<std::uint64_t>(usage.ru_maxrss) * 1024;
}

AllocationLimit::AllocationLimit(std::uint64_t bytes) {
    const auto in_use = field(process_status, "VmData:");
    rlimit limit{};
    if (!in_use || getrlimit(RLIMIT_DATA, &limit) != 0) {
        return;
    }
    previous_ = limit.rlim_cur;
    limit.rlim_cur = std::min<std::uint64_t>(limit.rlim_cur, *in_use * 1024 + bytes);
    active_ = setrlimit(RLIMIT_DATA, &limit) == 0;
}

AllocationLimit::~AllocationLimit() {
    rlimit limit{};
    if (!active_ || getrlimit(RLIMIT_DATA, &limit) != 0) {
        return;
    }
    limit.rlim_cur = previous_;
    setrlimit(RLIMIT_DATA, &limit);
}

}  // namespace tidewell_cli
