#include "platform/memory_info.h"

#include <sys/resource.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <string>

namespace tidewell_platform {
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

/// The least limits of a process's control groups; `no_limit` where none is set.
struct GroupLimits {
    std::uint64_t total = no_limit;
    std::uint64_t left = no_limit;
};

/// Takes in what every level between the group and the mount point allows.
void tighten(GroupLimits& limits, const fs::path& mount, const std::string& group,
             const GroupFiles& files) {
    fs::path level = fs::path(group).relative_path();
    while (true) {
        const fs::path folder = mount / level;
        if (const auto limit = number_in(folder / files.limit)) {
            limits.total = std::min(limits.total, *limit);
            if (const auto usage = number_in(folder / files.usage)) {
                const std::uint64_t cache = field(folder / "memory.stat", files.cache).value_or(0);
                const std::uint64_t used = *usage - std::min(cache, *usage);
                limits.left = std::min(limits.left, *limit - std::min(used, *limit));
            }
        }
        if (level.empty()) {
            return;
        }
        level = level.parent_path();
    }
}

GroupLimits group_limits(const fs::path& root) {
    GroupLimits limits;
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
            tighten(limits, mount, group, version_2);
        } else if (controllers.find(",memory,") != std::string::npos) {
            tighten(limits, mount / "memory", group, version_1);
        }
    }
    return limits;
}

/// A line of /proc/meminfo in bytes.
std::optional<std::uint64_t> machine_memory(const fs::path& root, const std::string& name) {
    const auto kilobytes = field(root / "proc/meminfo", name);
    return kilobytes ? std::optional(*kilobytes * 1024) : std::nullopt;
}

std::optional<std::uint64_t> unless_unlimited(std::uint64_t bytes) {
    return bytes == no_limit ? std::nullopt : std::optional(bytes);
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
    return unless_unlimited(std::min(
        {left_of_limit(RLIMIT_AS, "VmSize:"), left_of_limit(RLIMIT_DATA, "VmData:"),
         machine_memory(root, "MemAvailable:").value_or(no_limit), group_limits(root).left}));
}

std::optional<std::uint64_t> total_memory(const fs::path& root) {
    return unless_unlimited(
        std::min(machine_memory(root, "MemTotal:").value_or(no_limit), group_limits(root).total));
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

}  // namespace tidewell_platform
