#pragma once

#include <cstddef>

namespace kestrel_app {

/// Makes one allocation of this thread fail with std::bad_alloc: of those of at least
/// `least_bytes`, the one after `skipped` others. Only once; arms anew at each call.
void fail_allocation_after(std::size_t skipped, std::size_t least_bytes);

/// Disarms, and tells whether the allocation did fail.
bool allocation_failed();

}  // namespace kestrel_app
