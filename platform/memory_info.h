#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace tidewell_platform {

/// Bytes that this process can still take: the least of what the kernel calls available, what the
/// limits of its control group (version 2 or 1, at any level) leave, and what its own resource
/// limits leave. Nothing when unknown. `root` stands in for "/" in tests.
std::optional<std::uint64_t> available_memory(const std::filesystem::path& root = "/");

/// Bytes of physical memory that this process could ever hold: what the machine has, or the least
/// limit of its control group (at any level). Nothing when unknown. `root` as above.
std::optional<std::uint64_t> total_memory(const std::filesystem::path& root = "/");

/// The largest resident size of this process so far, in bytes; 0 when unknown.
std::uint64_t peak_resident_bytes();

/// While it lives, the process can take about `bytes` more; beyond that allocations throw
/// std::bad_alloc, which can be reported, rather than have the kernel kill the process.
class AllocationLimit {
  public:
    explicit AllocationLimit(std::uint64_t bytes);
    ~AllocationLimit();

    AllocationLimit(const AllocationLimit&) = delete;
    AllocationLimit& operator=(const AllocationLimit&) = delete;

  private:
    std::uint64_t previous_ = 0;
    bool active_ = false;
};

}  // namespace tidewell_platform
