#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>

namespace kestrel {

/// Uninitialised memory for `count` elements of a trivial type on a cache-line boundary. Throws
/// std::bad_alloc.
template <class T>
class AlignedBuffer {
  public:
    AlignedBuffer() = default;
    explicit AlignedBuffer(std::size_t count)
        : data_(static_cast<T*>(::operator new(count * sizeof(T), alignment))) {}

    T* data() const { return data_.get(); }
    T& operator[](std::size_t i) const { return data_.get()[i]; }

  private:
    static constexpr std::align_val_t alignment{64};

    struct Free {
        void operator()(T* p) const { ::operator delete(p, alignment); }
    };
    std::unique_ptr<T, Free> data_;
};

}  // namespace kestrel
