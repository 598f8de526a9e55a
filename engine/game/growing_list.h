#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <type_traits>

namespace kestrel {

/// A list of trivial records that grows in place where the allocator can: a large list moves its
/// pages, not its bytes, so millions of records are neither copied nor held twice on the way.
template <class T>
class GrowingList {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

  public:
    /// Throws std::bad_alloc, with the list as it was.
    void push_back(const T& value) {
        if (size_ == capacity_) {
            const T copy = value;  // may stand in the list itself
            grow();
            std::construct_at(data_.get() + size_, copy);
        } else {
            std::construct_at(data_.get() + size_, value);
        }
        ++size_;
    }

    std::size_t size() const { return size_; }
    T& operator[](std::size_t i) { return data_.get()[i]; }
    const T& operator[](std::size_t i) const { return data_.get()[i]; }
    const T* data() const { return data_.get(); }
    const T* begin() const { return data_.get(); }
    const T* end() const { return data_.get() + size_; }

  private:
    void grow() {
        const std::size_t capacity = capacity_ == 0 ? 64 : 2 * capacity_;
        void* const grown = std::realloc(static_cast<void*>(data_.get()), capacity * sizeof(T));
        if (grown == nullptr) {
            throw std::bad_alloc();
        }
        static_cast<void>(data_.release());
        data_.reset(static_cast<T*>(grown));
        capacity_ = capacity;
    }

    struct Free {
        void operator()(T* p) const { std::free(static_cast<void*>(p)); }
    };
    std::unique_ptr<T, Free> data_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace kestrel
