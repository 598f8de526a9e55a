#pragma once

#include <immintrin.h>

#include <cstddef>
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
        next_ = end_ = nullptr;
    }

    /// The addresses need not be valid: a fetch of a bad one does nothing.
    void add(const void* first, std::size_t bytes) {
        const char* const begin = static_cast<const char*>(first);
        ranges_.push_back({begin, begin + bytes});
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
            _mm_prefetch(next_ + i * line, _MM_HINT_T1);
        }
        next_ = next_ + lines_per_step * line < end_ ? next_ + lines_per_step * line : end_;
    }

  private:
    static constexpr std::size_t line = 64;
    static constexpr std::size_t lines_per_step = 2;

    struct Range {
        const char* begin;
        const char* end;
    };
    std::vector<Range> ranges_;
    std::size_t range_ = 0;
    const char* next_ = nullptr;
    const char* end_ = nullptr;
};

}  // namespace kestrel
