#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <vector>

namespace kestrel_app {

/// The lists of values that were worked out last, by node: several questions to one node share a
/// walk, which is dear near the root. Any number of threads may ask at once; those that ask for
/// the same list wait for whoever works it out.
class RecentValues {
  public:
    using Values = std::shared_ptr<const std::vector<float>>;

    /// What `work_out` gives, or has given lately. Throws what it throws, and keeps nothing then.
    Values of(std::uint64_t node, const std::function<std::vector<float>()>& work_out);

  private:
    struct Entry {
        std::uint64_t node = 0;
        std::once_flag made = {};
        std::vector<float> values = {};
    };

    std::shared_ptr<Entry> entry_of(std::uint64_t node);

    // Some 30 kB each with whole ranges: enough for the nodes that a person goes to and fro
    // between.
    static constexpr std::size_t most_kept = 16;

    std::mutex mutex_;                           // guards the list, not what its entries hold
    std::list<std::shared_ptr<Entry>> entries_;  // the last one first
};

}  // namespace kestrel_app
