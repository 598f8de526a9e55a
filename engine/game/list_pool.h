#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace kestrel {

/// Hands out short arrays that stay in place and live as long as the pool: one large block instead
/// of an allocation for each list.
template <class T>
class ListPool {
  public:
    /// `count` value-initialised elements.
    std::span<T> allocate(std::size_t count) {
        if (count > free_.size()) {
            const std::size_t block = std::max(count, elements_per_block);
            blocks_.push_back(std::make_unique<T[]>(block));
            free_ = {blocks_.back().get(), block};
        }
        const std::span<T> result = free_.first(count);
        free_ = free_.subspan(count);
        return result;
    }

  private:
    /// 128 KB of children: from this size on the system hands out pages of their own.
    static constexpr std::size_t elements_per_block = 16384;

    std::vector<std::unique_ptr<T[]>> blocks_;
    std::span<T> free_;
};

}  // namespace kestrel
