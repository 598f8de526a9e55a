#pragma once

#include <cstddef>

namespace kestrel {

class DiscountedCfr;

/// Writes where the time of a run went, as all threads have recorded it, to standard output.
void print_profile(const DiscountedCfr& solver, std::size_t threads);

}  // namespace kestrel
