#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace kestrel_app {

/// Solves a fixed suite of small spots for a fixed number of iterations each and hashes every
/// regret and strategy sum to the bit (64-bit FNV-1a; Fowler, Noll and Vo). The same at every
/// thread count and build type: a change that moves it changes what the solver computes.
std::uint64_t solver_signature(std::size_t threads);

/// The hash as 16 lower-case hex digits.
std::string signature_text(std::uint64_t hash);

}  // namespace kestrel_app
