#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kestrel {

/// Rows that will be wanted soon, fetched into the caches a few lines at a time while something
/// else computes. Terminals compute on rows that are in the caches and leave memory idle; the rows
/// of decisions come from memory and need little computing.
class RowFetcher {
  public:
    void clear() {
        ranges_.clear();
        range_ = 0;
        next_ = end_ = 0;
    }

    /// An address is a number here, as a predicted one need not be valid: to fetch it does nothing.
    void add(std::uintptr_t first, std::size_t bytes) { ranges_.push_back({first, first + bytes}); }
    void add(std::span<const float> row) {
        add(reinterpret_cast<std::uintptr_t>(row.data()), row.size_bytes());
    }

    /// Fetches the next few lines, if there are any left.
    void step() {
        if (next_ == end_) {
            if (range_ == ranges_.size()) {
                return;
            }
            next_ = ranges_[range_].begin;
            end_ = ranges_[range_].end;
            ++range_;
        }
        for (std::size_t i = 0; i < lines_per_step; ++i) {
            _mm_prefetch(reinterpret_cast<const char*>(next_ + i * line), _MM_HINT_T1);
        }
        next_ = next_ + lines_per_step * line < end_ ? next_ + lines_per_step * line : end_;
    }

  private:
    static constexpr std::size_t line = 64;  // bytes of a cache line
    /// A decision has two rows, regrets and strategy sums, for each of the terminals' own.
    static constexpr std::size_t lines_per_step = 2;

    struct Range {
        std::uintptr_t begin;
        std::uintptr_t end;
    };
    std::vector<Range> ranges_;
    std::size_t range_ = 0;
    std::uintptr_t next_ = 0;
    std::uintptr_t end_ = 0;
};

}  // namespace kestrel
