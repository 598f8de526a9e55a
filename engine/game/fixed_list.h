#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <type_traits>

namespace kestrel {

/// Places for a number of trivial records that is known from the start, uninitialised: a page of a
/// large list takes no memory before something is written to it.
template <class T>
class FixedList {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

  public:
    FixedList() = default;

    /// Throws std::bad_alloc.
    explicit FixedList(std::size_t size)
        : data_(static_cast<T*>(std::malloc(std::max<std::size_t>(size, 1) * sizeof(T)))),
          size_(size) {
        if (data_ == nullptr) {
            throw std::bad_alloc();
        }
    }

    std::size_t size() const { return size_; }
    T& operator[](std::size_t i) { return data_.get()[i]; }
    const T& operator[](std::size_t i) const { return data_.get()[i]; }
    T* data() { return data_.get(); }
    const T* data() const { return data_.get(); }
    const T* begin() const { return data_.get(); }
    const T* end() const { return data_.get() + size_; }

  private:
    struct Free {
        void operator()(T* p) const { std::free(static_cast<void*>(p)); }
    };
    std::unique_ptr<T, Free> data_;
    std::size_t size_ = 0;
};

}  // namespace kestrel
